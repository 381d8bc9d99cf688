// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

namespace tessaro {

class CListVw;

/// Paints the rows of the event list and opens a line in a cell. Enter and Tab take what was typed when it can be read,
/// Tab goes on to the next cell; Escape leaves the old value. While a line has the focus, plain keys are its own.
class CellEditors : public QStyledItemDelegate {
public:
    static constexpr int padding = 8; ///< left and right of the text in a cell

    /// The view owns this object.
    explicit CellEditors(CListVw& view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* editor, QEvent* event) override;

private:
    CListVw& m_view;
    mutable QPersistentModelIndex m_open;
};

} // namespace tessaro
