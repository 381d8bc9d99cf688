// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/trk_geometry.h"

#include <QTableView>

#include <functional>

namespace tessaro {

class TrackListModel;
enum class TrackColumn;

/// The left side of the track window: the table of tracks with their switches and settings. A click toggles a switch, a
/// double click edits a cell. Its rows stand beside those of the blocks.
class CTrkPramView : public QTableView {
public:
    static constexpr int headerHeight = TrkGeometry::rulerHeight;

    /// The small editor of a track is asked for.
    std::function<void(int track)> onProperties;
    /// The menu of a track, at this place of the screen.
    std::function<void(int track, const QPoint& at)> onMenu;

    explicit CTrkPramView(TrackListModel& table, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    void setRowHeight(int height);
    /// Sets the widths of the narrow columns for the font in use.
    void fitColumns();
    /// Takes what stands in the open editor, if there is one, and closes it.
    void finishEditing();
    /// Closes it and leaves the old value.
    void abandonEditing();
    /// Opens the current cell for typing, if it can be edited.
    void editCell();
    /// The same, or toggles it.
    void openCell();
    /// A switch of the current track.
    void toggle(TrackColumn column);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    /// The next or the previous cell that can be edited, across rows; none at the ends.
    [[nodiscard]] QModelIndex editableBeside(const QModelIndex& index, int step) const;
    bool toggleAt(const QPoint& place);

    TrackListModel& m_table;
    bool m_opensList = false; ///< a double click on a port has still to be let go
};

} // namespace tessaro
