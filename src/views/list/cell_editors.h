// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/list/fault_label.h"

#include <QStyledItemDelegate>

#include <vector>

namespace tessaro {

class CListVw;
class UiText;

/// Paints the rows of the event list and opens a line in a cell. Enter and Tab take what was typed when it can be read,
/// Tab goes on to the next cell; Escape leaves the old value. What cannot be read is said below the line, which stays
/// open. While a line has the focus, plain keys are its own.
class CellEditors : public QStyledItemDelegate {
public:
    static constexpr int padding = 8; ///< left and right of the text in a cell

    /// The view owns this object.
    CellEditors(CListVw& view, const UiText& text);

    void endFault() { m_fault.end(); }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* editor, QEvent* event) override;

private:
    bool end(QLineEdit& line);
    [[nodiscard]] bool isFine(const QString& text, const QModelIndex& index, QLineEdit& line);
    void take(const QString& text, const QModelIndex& index) const;
    void openNext(bool backwards) const;
    [[nodiscard]] std::vector<EvntRef> meant(std::size_t row) const;

    CListVw& m_view;
    const UiText& m_text;
    mutable FaultLabel m_fault;
    mutable QPersistentModelIndex m_open;
};

} // namespace tessaro
