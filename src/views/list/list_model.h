// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/evnt_cells.h"
#include "views/list/evnt_rows.h"

#include <QAbstractTableModel>

namespace tessaro {

/// The rows of the event list as a table of the toolkit. It changes nothing itself.
class ListModel : public QAbstractTableModel {
public:
    ListModel(const EvntCells& cells, const UiText& text) : m_cells(cells), m_text(text) {}

    [[nodiscard]] const EvntRows& rows() const { return m_rows; }
    void build(const CEditor& editor, int track, const RowFilter& filter);
    void clear();
    void retranslate();

    /// What a cell says.
    [[nodiscard]] QString cellText(std::size_t row, ListColumn column) const;
    [[nodiscard]] bool isEditable(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    const EvntCells& m_cells;
    const UiText& m_text;
    EvntRows m_rows;
};

} // namespace tessaro
