// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_list_model.h"

#include "views/text/ui_text.h"
#include "views/tracks/transpose_box.h"
#include "views/tracks/transpose_text.h"

namespace tessaro {
namespace {

bool isSwitch(const QModelIndex& index)
{
    const auto column = static_cast<TrackColumn>(index.column());
    return column == TrackColumn::record || column == TrackColumn::mute || column == TrackColumn::solo;
}

/// For switches, and for the light whether the track can be heard.
bool isOn(const TrackRow& r, TrackColumn column)
{
    return column == TrackColumn::record ? r.record
         : column == TrackColumn::mute   ? r.mute
         : column == TrackColumn::solo   ? r.solo
                                         : r.sounding && r.used;
}

QVariant cellValue(const TrackRow& r, TrackColumn column)
{
    switch (column) {
    case TrackColumn::name: return songText(r.name);
    case TrackColumn::port: return r.port;
    case TrackColumn::channel: return r.channel;
    case TrackColumn::transpose: return r.transposes ? r.transpose : TransposeBox::off;
    default: return {};
    }
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
    const auto column = static_cast<TrackColumn>(index.column());
    const auto& ask = column == TrackColumn::record ? onRecord : column == TrackColumn::mute ? onMute : onSolo;
    if (ask) ask(r.track, !isOn(r, column));
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
    case TrackColumn::name: return shownName(r);
    case TrackColumn::port: return QString::number(r.port + 1);
    case TrackColumn::channel: return QString::number(r.channel + 1);
    case TrackColumn::transpose: return r.transposes ? transposeText(r.transpose) : transposeOff();
    case TrackColumn::record: return m_text(TextId::columnRecord);
    case TrackColumn::mute: return m_text(TextId::columnMute);
    case TrackColumn::solo: return m_text(TextId::columnSolo);
    }
    return {};
}

QString TrackListModel::cellTip(const TrackRow& r, TrackColumn column) const
{
    switch (column) {
    case TrackColumn::light: return m_text(TextId::tipLight);
    case TrackColumn::name: return m_text(TextId::tipTrackName).arg(shownName(r));
    case TrackColumn::port:
        return m_text(TextId::tipPort)
            .arg(r.port + 1)
            .arg(portNames ? portNames().value(r.port, m_text(TextId::noDevice)) : QString());
    case TrackColumn::channel: return m_text(TextId::tipChannel).arg(r.channel + 1);
    case TrackColumn::transpose:
        return m_text(r.transposes ? TextId::tipTranspose : TextId::tipTransposeOff).arg(transposeText(r.transpose));
    case TrackColumn::record: return m_text(TextId::tipRecord);
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
    case Qt::EditRole: return cellValue(r, column);
    case Qt::ToolTipRole: return cellTip(r, column);
    case Qt::AccessibleTextRole:
        if (column == TrackColumn::name || column == TrackColumn::number) return cellText(r, column);
        return QStringLiteral("%1: %2").arg(fullName(column),
                                            isSwitch(index) || column == TrackColumn::light
                                                ? m_text(isOn(r, column) ? TextId::stateOn : TextId::stateOff)
                                                : cellText(r, column));
    case Qt::CheckStateRole:
        if (!isSwitch(index)) return {};
        return isOn(r, column) ? Qt::Checked : Qt::Unchecked;
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
    if (role == Qt::AccessibleTextRole) return fullName(column);
    return role == Qt::DisplayRole ? headerText(column) : QVariant();
}

QString TrackListModel::headerText(TrackColumn column) const
{
    switch (column) {
    case TrackColumn::number: return m_text(TextId::columnNumber);
    case TrackColumn::name: return m_text(TextId::columnName);
    case TrackColumn::port: return m_text(TextId::columnPort);
    case TrackColumn::channel: return m_text(TextId::columnChannel);
    case TrackColumn::transpose: return m_text(TextId::columnTranspose);
    default: return {};
    }
}

/// Also of the columns whose header is too narrow for it.
QString TrackListModel::fullName(TrackColumn column) const
{
    switch (column) {
    case TrackColumn::light: return m_text(TextId::columnLight);
    case TrackColumn::record: return m_text(TextId::commandArm);
    case TrackColumn::mute: return m_text(TextId::commandMute);
    case TrackColumn::solo: return m_text(TextId::commandSolo);
    default: return headerText(column);
    }
}

bool TrackListModel::isEditable(const QModelIndex& index)
{
    const auto column = static_cast<TrackColumn>(index.column());
    return index.isValid() && column >= TrackColumn::name && column <= TrackColumn::transpose;
}

QString TrackListModel::unnamed(int track) const { return m_text(TextId::trackUnnamed).arg(track); }

QString TrackListModel::transposeOff() const { return m_text(TextId::transposeOff); }

QString TrackListModel::shownName(const TrackRow& r) const
{
    return r.name.empty() ? unnamed(r.track) : songText(r.name);
}

QString TrackListModel::editorName(const QModelIndex& index) const
{
    return QStringLiteral("%1: %2").arg(shownName(row(index)), headerText(static_cast<TrackColumn>(index.column())));
}

Qt::ItemFlags TrackListModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (isSwitch(index)) flags |= Qt::ItemIsUserCheckable;
    if (isEditable(index)) flags |= Qt::ItemIsEditable;
    return flags;
}

/// A check comes from assistive technology; the mouse goes through `toggle`. What is equal already asks for nothing:
/// a name keeps its bytes.
bool TrackListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role == Qt::CheckStateRole && isSwitch(index)) {
        if (value != data(index, role)) toggle(index);
        return true;
    }
    if (role != Qt::EditRole || !isEditable(index)) return false;
    if (value == data(index, role)) return true;
    const auto column = static_cast<TrackColumn>(index.column());
    const int track = row(index).track;
    if (column == TrackColumn::name) {
        if (onName) onName(track, value.toString());
    } else if (onSetting) {
        onSetting(track, column, value.toInt());
    }
    return true;
}

} // namespace tessaro
