// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_list_model.h"

#include "views/text/ui_text.h"

namespace tessaro {
namespace {

bool isSwitch(const QModelIndex& index)
{
    const auto column = static_cast<TrackColumn>(index.column());
    return column == TrackColumn::mute || column == TrackColumn::solo;
}

} // namespace

void TrackListModel::setRows(std::vector<TrackRow> rows)
{
    const bool sameTracks = std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(),
                                       [](const TrackRow& a, const TrackRow& b) { return a.track == b.track; });
    if (!sameTracks) {
        beginResetModel();
        m_rows = std::move(rows);
        m_levels.assign(m_rows.size(), 0);
        endResetModel();
        return;
    }
    for (std::size_t r = 0; r < rows.size(); ++r) {
        if (rows[r] == m_rows[r]) continue;
        m_rows[r] = std::move(rows[r]);
        const int line = static_cast<int>(r);
        dataChanged(index(line, 0), index(line, trackColumns - 1));
    }
}

void TrackListModel::setLights(const Lights& lights)
{
    for (std::size_t r = 0; r < m_rows.size(); ++r) {
        const int level = lights.level(m_rows[r].track);
        if (level == m_levels[r]) continue;
        m_levels[r] = level;
        const QModelIndex cell = index(static_cast<int>(r), static_cast<int>(TrackColumn::light));
        dataChanged(cell, cell, {Qt::DecorationRole});
    }
}

void TrackListModel::retranslate()
{
    headerDataChanged(Qt::Horizontal, 0, trackColumns - 1);
    if (!m_rows.empty()) dataChanged(index(0, 0), index(rowCount() - 1, trackColumns - 1));
}

void TrackListModel::toggle(const QModelIndex& index)
{
    if (!index.isValid() || !isSwitch(index)) return;
    const TrackRow& r = row(index);
    if (static_cast<TrackColumn>(index.column()) == TrackColumn::mute) {
        if (onMute) onMute(r.track, !r.mute);
    } else if (onSolo) {
        onSolo(r.track, !r.solo);
    }
}

int TrackListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TrackListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : trackColumns; }

QString TrackListModel::cellText(const TrackRow& r, TrackColumn column) const
{
    switch (column) {
    case TrackColumn::light: return {};
    case TrackColumn::number: return QString::number(r.track);
    case TrackColumn::name: return r.name.empty() ? m_text(TextId::trackUnnamed).arg(r.track) : songText(r.name);
    case TrackColumn::port: return QString::number(r.port + 1);
    case TrackColumn::channel: return QString::number(r.channel + 1);
    case TrackColumn::mute: return m_text(TextId::columnMute);
    case TrackColumn::solo: return m_text(TextId::columnSolo);
    }
    return {};
}

QString TrackListModel::cellTip(const TrackRow& r, TrackColumn column) const
{
    switch (column) {
    case TrackColumn::light: return m_text(TextId::tipLight);
    case TrackColumn::name: return cellText(r, column);
    case TrackColumn::port: return m_text(TextId::tipPort).arg(r.port + 1).arg(portName ? portName(r.port) : QString());
    case TrackColumn::mute: return m_text(TextId::tipMute);
    case TrackColumn::solo: return m_text(TextId::tipSolo);
    default: return {};
    }
}

QVariant TrackListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const TrackRow& r = row(index);
    const auto column = static_cast<TrackColumn>(index.column());
    switch (role) {
    case Qt::DisplayRole: return cellText(r, column);
    case Qt::ToolTipRole: return cellTip(r, column);
    case Qt::AccessibleTextRole:
        if (isSwitch(index)) {
            const bool on = column == TrackColumn::mute ? r.mute : r.solo;
            return QStringLiteral("%1: %2").arg(
                m_text(column == TrackColumn::mute ? TextId::commandMute : TextId::commandSolo),
                m_text(on ? TextId::stateOn : TextId::stateOff));
        }
        return cellText(r, column);
    case Qt::CheckStateRole:
        if (!isSwitch(index)) return {};
        return (column == TrackColumn::mute ? r.mute : r.solo) ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
        return static_cast<int>((column == TrackColumn::name ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter);
    default: return {};
    }
}

QVariant TrackListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) return {};
    const auto column = static_cast<TrackColumn>(section);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((column == TrackColumn::name ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    switch (column) {
    case TrackColumn::light: return {};
    case TrackColumn::number: return m_text(TextId::columnNumber);
    case TrackColumn::name: return m_text(TextId::columnName);
    case TrackColumn::port: return m_text(TextId::columnPort);
    case TrackColumn::channel: return m_text(TextId::columnChannel);
    case TrackColumn::mute:
    case TrackColumn::solo: return {};
    }
    return {};
}

Qt::ItemFlags TrackListModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (isSwitch(index)) flags |= Qt::ItemIsUserCheckable;
    return flags;
}

/// For assistive technology, which checks a cell; the mouse goes through `toggle`.
bool TrackListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || !isSwitch(index)) return false;
    if (value != data(index, role)) toggle(index);
    return true;
}

} // namespace tessaro
