// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/lights.h"
#include "views/tracks/track_rows.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <functional>
#include <vector>

namespace tessaro {

class UiText;

enum class TrackColumn { light, number, name, port, channel, transpose, record, mute, solo };
inline constexpr int trackColumns = 9;

/// The rows of the track list as a table of the toolkit. It changes nothing itself: a click on a switch or an edited
/// cell goes out through the functions below with the track and what is wanted, and comes back as new rows. A cell's
/// value for editing is the name as text, or the setting as the song holds it.
class TrackListModel : public QAbstractTableModel {
public:
    explicit TrackListModel(const UiText& text) : m_text(text) {}

    std::function<void(int track, bool on)> onRecord;
    std::function<void(int track, bool on)> onMute;
    std::function<void(int track, bool on)> onSolo;
    std::function<void(int track, const QString& name)> onName;
    /// Port, channel or transposition.
    std::function<void(int track, TrackColumn setting, int value)> onSetting;
    /// The names of the output ports.
    std::function<QStringList()> portNames;

    /// Tells the view only what differs.
    void setRows(std::vector<TrackRow> rows);
    void setLights(const Lights& lights);
    void retranslate();
    void toggle(const QModelIndex& index);

    [[nodiscard]] static bool isEditable(const QModelIndex& index);
    /// What a track without a name is called.
    [[nodiscard]] QString unnamed(int track) const;
    [[nodiscard]] QString transposeOff() const;
    [[nodiscard]] QString shownName(const TrackRow& row) const;
    /// What assistive technology calls the editor of a cell.
    [[nodiscard]] QString editorName(const QModelIndex& index) const;

    [[nodiscard]] const std::vector<TrackRow>& rows() const { return m_rows; }
    [[nodiscard]] const TrackRow& row(const QModelIndex& index) const
    {
        return m_rows[static_cast<std::size_t>(index.row())];
    }
    [[nodiscard]] int lightLevel(const QModelIndex& index) const
    {
        return m_levels[static_cast<std::size_t>(index.row())];
    }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    [[nodiscard]] QString cellText(const TrackRow& row, TrackColumn column) const;
    [[nodiscard]] QString cellTip(const TrackRow& row, TrackColumn column) const;
    [[nodiscard]] QString headerText(TrackColumn column) const;
    [[nodiscard]] QString fullName(TrackColumn column) const;

    const UiText& m_text;
    std::vector<TrackRow> m_rows;
    std::vector<int> m_levels;
};

} // namespace tessaro
