// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>

#include <cstdint>

namespace tessaro {

/// Where the track window shows what: a row for each of the tracks 1 to 100 below a ruler, time from left to right.
/// Points and rectangles of the song are pixels counted from its upper left corner, ruler and left margin included;
/// those of the window are what the song's look like after scrolling, while the ruler stays on top. Times are ticks.
class TrkGeometry {
public:
    static constexpr int leftMargin = 40; ///< before tick 0
    static constexpr int rulerHeight = 22;
    static constexpr int rows = 100;
    static constexpr int usualRowHeight = 20;
    static constexpr int leastRowHeight = 20;
    static constexpr int mostRowHeight = 80;
    static constexpr double leastZoom = 6; ///< ticks a pixel
    static constexpr double mostZoom = 384;
    static constexpr double usualZoom = 24;
    static constexpr int leastBlkWidth = 3;

    // Scale

    [[nodiscard]] double zoom() const { return m_zoom; }
    void setZoom(double ticksAPixel);
    [[nodiscard]] int rowHeight() const { return m_rowHeight; }
    /// The row at the window's upper edge stays there.
    void setRowHeight(int pixels);

    [[nodiscard]] int x(std::uint32_t time) const;
    /// 0 in the left margin.
    [[nodiscard]] std::uint32_t time(int x) const;
    [[nodiscard]] int y(int track) const { return rulerHeight + (track - 1) * m_rowHeight; }
    /// 1 to 100, also above and below the rows.
    [[nodiscard]] int track(int y) const;
    [[nodiscard]] bool isRow(int y) const { return y >= rulerHeight && y < bottom(); }
    /// The song's pixels from the top of the ruler to the end of the last row.
    [[nodiscard]] int bottom() const { return rulerHeight + rows * m_rowHeight; }
    /// A block of no length is still wide enough to be seen and hit.
    [[nodiscard]] QRect blkRect(int track, std::uint32_t top, std::uint32_t end) const;

    /// How many rows a drag of this height goes: a rest of 11 of 20 pixels counts as a row.
    [[nodiscard]] int snappedRows(int dy) const;
    /// The track so many rows away, 1 to 100.
    [[nodiscard]] static int shiftedTrack(int track, int by);

    // Window

    void setSize(QSize window) { m_size = window; }
    [[nodiscard]] QSize size() const { return m_size; }
    /// The tick behind the left margin.
    [[nodiscard]] std::uint32_t origin() const { return m_origin; }
    void setOrigin(std::uint32_t time) { m_origin = time; }
    /// Pixels by which the rows are scrolled up.
    [[nodiscard]] int scrollY() const { return m_scrollY; }
    void setScrollY(int pixels);
    [[nodiscard]] int mostScrollY() const;

    [[nodiscard]] QPoint toSong(QPoint window) const { return window + offset(); }
    [[nodiscard]] QRect toSong(const QRect& window) const { return window.translated(offset()); }
    [[nodiscard]] QPoint toWindow(QPoint song) const { return song - offset(); }
    [[nodiscard]] QRect toWindow(const QRect& song) const { return song.translated(-offset()); }
    [[nodiscard]] int windowX(std::uint32_t time) const { return x(time) - offset().x(); }
    [[nodiscard]] static bool isRuler(QPoint window) { return window.y() < rulerHeight; }

    struct Span {
        std::uint32_t from;
        std::uint32_t to;
    };
    /// The ticks and tracks that the window, or a part of it, shows at least in part.
    [[nodiscard]] Span times(const QRect& window) const;
    [[nodiscard]] Span times() const { return times(QRect({0, 0}, m_size)); }
    [[nodiscard]] int firstTrack(const QRect& window) const { return track(toSong(window).top()); }
    [[nodiscard]] int lastTrack(const QRect& window) const { return track(toSong(window).bottom()); }

    /// The tick under the pointer stays there, as far as the song's beginning lets it.
    void zoomAt(double ticksAPixel, int windowX);
    /// One step closer, or away for negative steps.
    void zoomBy(double steps, int windowX);
    /// As close as the span goes into the window with some room on both sides.
    void fit(std::uint32_t from, std::uint32_t to);
    /// Where a page begins that shows the tick: at the line before it, or where that is too far, whole windows behind
    /// it.
    [[nodiscard]] std::uint32_t pageAt(std::uint32_t line, std::uint32_t time) const;
    /// Scrolls no more than it takes to have the rectangle in the window, its upper left corner rather than its end.
    void reveal(const QRect& song);

private:
    [[nodiscard]] QPoint offset() const;

    double m_zoom = usualZoom;
    QSize m_size;
    std::uint32_t m_origin = 0;
    int m_scrollY = 0;
    int m_rowHeight = usualRowHeight;
};

} // namespace tessaro
