// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/editors/view_parts.h"
#include "views/tracks/blk_commands.h"
#include "views/tracks/blk_gesture.h"
#include "views/tracks/trk_blks.h"
#include "views/tracks/trk_painter.h"
#include "views/tracks/trk_scroll_area.h"
#include "views/tracks/trk_selection.h"

#include <QColor>
#include <QTimer>

class QHelpEvent;

namespace tessaro {

/// The right side of the track window: the blocks of the tracks over a time line. It draws what the painter draws and
/// hands the mouse to the gesture; what comes of it goes to the block commands and the control panel. Ticks; points are
/// those of the viewport.
class CTrkBlkView final : public TrkScrollArea {
public:
    explicit CTrkBlkView(const ViewParts& parts, QWidget* parent = nullptr);

    /// A press on a row of this track.
    std::function<void(int track)> onTrack;
    /// The small editor of a block is asked for.
    std::function<void(const BlkRef& blk)> onProperties;
    /// A click has put the loop to another place, or turned it on.
    std::function<void()> onLoop;

    [[nodiscard]] TrkSelection& selection() { return m_selection; }
    [[nodiscard]] BlkCommands& commands() { return m_commands; }
    [[nodiscard]] TrkPainter& painter() { return m_painter; }
    [[nodiscard]] const BlkGesture& gesture() const { return m_gesture; }

    void setPosition(std::uint32_t tick, bool follow);
    void setLocation(std::uint32_t tick);
    void setLoop(std::uint32_t start, std::uint32_t end, bool on);
    void setTakes(std::vector<TrkTake> takes);
    void setSounding(const std::array<bool, trackCount>& sounding);
    void setCurrentTrack(int track);
    /// A hint of the editor: constant time for events.
    void follow(int code, CEditor& editor);
    void songReplaced();
    void selectionChanged();

    void zoomToSelection();
    using TrkScrollArea::reveal;
    void reveal(const BlkRef& blk);
    /// Opens the window of the block's notes, or of the track's at a tick.
    void openNotes(const BlkRef& blk);
    void openNotes(int track, std::uint32_t tick);
    /// The place of a block in the viewport.
    [[nodiscard]] QRect placeOf(const BlkRef& blk) const;
    /// Fits cursor and colours to tool and settings.
    void toolChanged();
    void readColours();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paint(QPainter& painter, const QRect& area) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void perform(const BlkOutcome& outcome);
    void locate(std::uint32_t tick);
    void pressed(QMouseEvent& event);
    void endGesture();
    /// At the edges of the window while something is dragged.
    void autoScroll();
    void showCursor(QPoint at);
    void showTip(QHelpEvent& event);
    [[nodiscard]] bool locked() const { return m_parts.isLocked && m_parts.isLocked(); }

    const ViewParts m_parts;
    TrkBlks m_blks;
    TrkSelection m_selection;
    BlkCommands m_commands;
    BlkGesture m_gesture;
    TrkPainter m_painter;
    QTimer m_clickTimer;
    QTimer m_scrollTimer;
    QPoint m_pointer;    ///< where a gesture is
    QColor m_background; ///< not valid for the theme's
};

} // namespace tessaro
