// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/editors/view_parts.h"
#include "views/tracks/blk_commands.h"
#include "views/tracks/blk_gesture.h"
#include "views/tracks/meas_scroll.h"
#include "views/tracks/trk_blks.h"
#include "views/tracks/trk_geometry.h"
#include "views/tracks/trk_painter.h"
#include "views/tracks/trk_selection.h"

#include <QAbstractScrollArea>
#include <QTimer>

#include <optional>

class QHelpEvent;
class QMenu;

namespace tessaro {

/// The right side of the track window: the blocks of the tracks over a time line. It draws what the painter draws and
/// hands the mouse to the gesture; what comes of it goes to the block commands and the control panel. The horizontal
/// scroll bar counts measures. Ticks; points are those of the viewport.
class CTrkBlkView final : public QAbstractScrollArea {
public:
    explicit CTrkBlkView(const ViewParts& parts, QWidget* parent = nullptr);

    /// A press on a row of this track.
    std::function<void(int track)> onTrack;
    /// The small editor of a block is asked for.
    std::function<void(const BlkRef& blk)> onProperties;
    /// A click has put the loop to another place, or turned it on.
    std::function<void()> onLoop;
    std::function<void()> onZoom;

    [[nodiscard]] const TrkGeometry& geometry() const { return m_geometry; }
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

    /// The tick behind the left margin, as far as there are measures.
    void setOrigin(std::int64_t tick);
    void setZoom(double ticksAPixel);
    /// Around the middle of the window.
    void zoomBy(double steps);
    void setRowHeight(int pixels);
    void zoomToSong();
    void zoomToSelection();
    void reveal(const BlkRef& blk);
    void reveal(int track);
    /// Opens the window of the block's notes.
    void openNotes(const BlkRef& blk);
    /// The bar line at or before the play position, where a new block would begin.
    [[nodiscard]] std::uint32_t barAtPosition() const;
    /// The place of a block in the viewport.
    [[nodiscard]] QRect placeOf(const BlkRef& blk) const;
    /// Fits cursor and colours to tool and settings.
    void toolChanged();
    void readColours();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// A drag with the middle button.
    struct Pan {
        QPoint from;
        std::uint32_t origin;
        int scrollY;
    };

    void perform(const BlkOutcome& outcome);
    void locate(std::uint32_t tick);
    void pressed(QMouseEvent& event);
    void endGesture();
    /// At the edges of the window while something is dragged.
    void autoScroll();
    void pan(QPoint at);
    void stepPages(int action);
    /// The bars follow the geometry.
    void showScroll();
    void scrolled();
    void stale();
    void showCursor(QPoint at);
    void showTip(QHelpEvent& event);
    [[nodiscard]] QString tipOf(const BlkRef& blk);
    void fillMenu(QMenu& menu, bool onBlk) const;
    void selectBeside(int step);
    [[nodiscard]] bool locked() const { return m_parts.isLocked && m_parts.isLocked(); }
    [[nodiscard]] BarLines bars() const;

    const ViewParts m_parts;
    TrkGeometry m_geometry;
    MeasScroll m_scroll;
    TrkBlks m_blks;
    TrkSelection m_selection;
    BlkCommands m_commands;
    BlkGesture m_gesture;
    TrkPainter m_painter;
    QTimer m_clickTimer;
    QTimer m_scrollTimer;
    std::optional<Pan> m_pan;
    QPoint m_pointer;     ///< where a gesture is
    bool m_stale = false; ///< a painting is on its way
    bool m_showingScroll = false;
};

} // namespace tessaro
