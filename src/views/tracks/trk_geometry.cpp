// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_geometry.h"

#include "core/model/tick.h"

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

constexpr double zoomStep = 1.25;

std::uint32_t wholeTick(double time)
{
    return static_cast<std::uint32_t>(std::clamp(time, 0.0, static_cast<double>(tick::latest)));
}

/// Where a view of this size is to begin so that low to high is inside, or at least low.
int revealed(int start, int size, int low, int high) { return std::min(low, std::max(start, high - size)); }

} // namespace

void TrkGeometry::setZoom(double ticksAPixel) { m_zoom = std::clamp(ticksAPixel, leastZoom, mostZoom); }

void TrkGeometry::setRowHeight(int pixels)
{
    const int before = m_rowHeight;
    m_rowHeight = std::clamp(pixels, leastRowHeight, mostRowHeight);
    setScrollY(m_scrollY * m_rowHeight / before);
}

int TrkGeometry::x(std::uint32_t time) const { return static_cast<int>(time / m_zoom) + leftMargin; }

std::uint32_t TrkGeometry::time(int x) const { return x < leftMargin ? 0 : wholeTick((x - leftMargin) * m_zoom); }

int TrkGeometry::track(int y) const { return std::clamp((y - rulerHeight) / m_rowHeight + 1, 1, rows); }

QRect TrkGeometry::blkRect(int track, std::uint32_t top, std::uint32_t end) const
{
    const int left = x(top);
    return {left, y(track), std::max(x(end) - left, leastBlkWidth), m_rowHeight};
}

int TrkGeometry::snappedRows(int dy) const
{
    const int whole = dy / m_rowHeight;
    const int rest = dy % m_rowHeight;
    if (std::abs(rest) < m_rowHeight / 2 + 1) return whole;
    return rest < 0 ? whole - 1 : whole + 1;
}

int TrkGeometry::shiftedTrack(int track, int by) { return std::clamp(track + by, 1, rows); }

int TrkGeometry::mostScrollY() const { return std::max(0, bottom() - m_size.height()); }

void TrkGeometry::setScrollY(int pixels) { m_scrollY = std::clamp(pixels, 0, mostScrollY()); }

QPoint TrkGeometry::offset() const { return {static_cast<int>(m_origin / m_zoom), m_scrollY}; }

TrkGeometry::Span TrkGeometry::times(const QRect& window) const
{
    const QRect song = toSong(window);
    return {time(song.left()), time(song.right() + 1)};
}

void TrkGeometry::zoomAt(double ticksAPixel, int windowX)
{
    const int fromMargin = std::max(windowX - leftMargin, 0);
    const double under = m_origin + fromMargin * m_zoom;
    setZoom(ticksAPixel);
    m_origin = wholeTick(under - fromMargin * m_zoom);
}

void TrkGeometry::zoomBy(double steps, int windowX) { zoomAt(m_zoom / std::pow(zoomStep, steps), windowX); }

void TrkGeometry::fit(std::uint32_t from, std::uint32_t to)
{
    const int room = std::max(m_size.width() - 2 * leftMargin, 1);
    setZoom(static_cast<double>(std::max(to, from) - from) / room);
    m_origin = from;
}

std::uint32_t TrkGeometry::pageAt(std::uint32_t line, std::uint32_t time) const
{
    const auto page = wholeTick(std::max(m_size.width() - leftMargin - 2, 1) * m_zoom);
    return line + (time - line) / page * page;
}

void TrkGeometry::reveal(const QRect& song)
{
    const int left = offset().x();
    const int newLeft = revealed(left, m_size.width(), song.left() - leftMargin, song.right() + 1);
    if (newLeft != left) m_origin = wholeTick(std::ceil(newLeft * m_zoom));
    setScrollY(revealed(m_scrollY, m_size.height(), song.top() - rulerHeight, song.bottom() + 1));
}

} // namespace tessaro
