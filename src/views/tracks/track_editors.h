// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

namespace tessaro {

class TrackListModel;
class CTrkPramView;

/// The editors of the track list's cells: a line for the name, a list for the port, numbers for channel and
/// transposition. Enter and a click elsewhere take the value, Escape leaves the old one, Tab goes on to the next cell.
/// While an editor has the focus, plain keys are its own and not commands of the window.
class TrackEditors : public QStyledItemDelegate {
public:
    /// The view owns this object.
    TrackEditors(const TrackListModel& table, CTrkPramView& view);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    /// Over the cell; wider where the cell is narrow.
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* editor, QEvent* event) override;

    const TrackListModel& m_table;

private:
    QWidget* makeNumber(QWidget* parent, const QModelIndex& index) const;

    CTrkPramView& m_view;
};

} // namespace tessaro
