// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_model.h"

#include "views/text/ui_text.h"

namespace tessaro {
namespace {

constexpr TextId headers[listColumns] = {TextId::listPlace,  TextId::listKind, TextId::listChannel, TextId::listValue1,
                                         TextId::listValue2, TextId::listGate, TextId::listData};

Qt::Alignment alignment(ListColumn column)
{
    const bool isNumber = column == ListColumn::place || column == ListColumn::channel || column == ListColumn::value2
                       || column == ListColumn::gate;
    return (isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

std::size_t rowOf(const QModelIndex& index) { return static_cast<std::size_t>(index.row()); }
ListColumn columnOf(const QModelIndex& index) { return static_cast<ListColumn>(index.column()); }

} // namespace

void ListModel::build(const CEditor& editor, int track, const RowFilter& filter)
{
    const std::size_t before = m_rows.count();
    EvntRows rows;
    rows.build(editor, track, filter);
    if (rows.count() == before) {
        m_rows = std::move(rows);
        if (before) dataChanged(index(0, 0), index(rowCount() - 1, listColumns - 1));
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void ListModel::clear()
{
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void ListModel::retranslate() { headerDataChanged(Qt::Horizontal, 0, listColumns - 1); }

QString ListModel::cellText(std::size_t row, ListColumn column) const
{
    return m_cells.shown(m_rows.event(row), m_rows.time(row), column);
}

bool ListModel::isEditable(const QModelIndex& index) const
{
    return index.isValid() && rowOf(index) < m_rows.count()
        && m_cells.isEditable(m_rows.event(rowOf(index)), columnOf(index));
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.count());
}

int ListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : listColumns; }

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || rowOf(index) >= m_rows.count()) return {};
    switch (role) {
    case Qt::DisplayRole: return cellText(rowOf(index), columnOf(index));
    case Qt::ToolTipRole:
        if (columnOf(index) == ListColumn::place) return m_cells.clockText(m_rows.time(rowOf(index)));
        return cellText(rowOf(index), columnOf(index));
    case Qt::EditRole: return m_cells.typed(m_rows.event(rowOf(index)), m_rows.time(rowOf(index)), columnOf(index));
    case Qt::AccessibleTextRole:
        return QStringLiteral("%1: %2").arg(m_text(headers[index.column()]), cellText(rowOf(index), columnOf(index)));
    case Qt::TextAlignmentRole: return static_cast<int>(alignment(columnOf(index)));
    default: return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return static_cast<int>(alignment(static_cast<ListColumn>(section)));
    return role == Qt::DisplayRole ? m_text(headers[section]) : QVariant();
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags always = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return isEditable(index) ? always | Qt::ItemIsEditable : always;
}

} // namespace tessaro
