// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_scale.h"

#include "core/model/tick.h"
#include "core/ports/settings_store.h"
#include "views/editors/stored_zoom.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>

namespace tessaro {
namespace {

constexpr const char* section = "View Condition";
constexpr int absent = -1;
constexpr int farAway = 1 << 29; // pixels; sums of two of them still fit

} // namespace

RollScale::RollScale()
{
    std::vector<std::uint8_t> all(keys);
    std::iota(all.rbegin(), all.rend(), std::uint8_t{0});
    setRows(std::move(all));
}

void RollScale::resize(int width, int height)
{
    m_width = width;
    m_height = height;
    clampScroll();
}

void RollScale::setZoom(double ticksAPixel) { m_zoom = std::clamp(ticksAPixel, leastZoom, mostZoom); }

std::uint32_t RollScale::time(int x) const { return x < left ? m_start : tick::clamped(rawTime(x)); }

std::int64_t RollScale::rawTime(int x) const
{
    return std::int64_t{m_start} + static_cast<std::int64_t>(std::floor((x - left) * m_zoom));
}

int RollScale::x(std::uint32_t time) const
{
    if (time < m_start) return left;
    return left + static_cast<int>(std::min<double>((time - m_start) / m_zoom, farAway));
}

TickRange RollScale::span() const { return {m_start, time(std::max(m_width, left))}; }

void RollScale::zoomAt(int x, double ticksAPixel)
{
    const int distance = std::max(x - left, 0);
    const double held = m_start + distance * m_zoom;
    setZoom(ticksAPixel);
    m_start = tick::clamped(std::llround(held - distance * m_zoom));
}

void RollScale::showSpan(TickRange span)
{
    setZoom(static_cast<double>(span.to - span.from) / std::max(m_width - left, 1));
    m_start = span.from;
}

void RollScale::setRows(std::vector<std::uint8_t> keysFromTop)
{
    m_keys = std::move(keysFromTop);
    m_rows.assign(keys, -1);
    for (int row = 0; row < rows(); ++row) m_rows[keyOfRow(row)] = row;
    clampScroll();
}

void RollScale::setRowHeight(int pixels)
{
    m_rowHeight = std::clamp(pixels, leastRow, mostRow);
    clampScroll();
}

void RollScale::setScroll(int pixels)
{
    m_scroll = pixels;
    clampScroll();
}

int RollScale::mostScroll() const { return std::max(rows() * m_rowHeight - (m_height - ruler), 0); }

void RollScale::clampScroll() { m_scroll = std::clamp(m_scroll, 0, mostScroll()); }

int RollScale::row(int y) const
{
    const int below = y - ruler + m_scroll;
    return std::clamp(below < 0 ? 0 : below / m_rowHeight, 0, rows() - 1);
}

int RollScale::y(std::uint8_t key) const
{
    const int row = rowOfKey(key);
    return row < 0 ? -farAway : yOfRow(row);
}

std::pair<int, int> RollScale::visibleRows() const { return {row(ruler), row(std::max(m_height - 1, ruler))}; }

void RollScale::zoomRowsAt(int y, int pixels)
{
    const int inside = std::max(y - ruler, 0);
    const double held = static_cast<double>(inside + m_scroll) / m_rowHeight;
    setRowHeight(pixels);
    setScroll(static_cast<int>(std::lround(held * m_rowHeight)) - inside);
}

void RollScale::showKey(std::uint8_t key)
{
    const int row = rowOfKey(key);
    if (row < 0) return;
    const int room = m_height - ruler;
    const int top = row * m_rowHeight;
    const int above = m_scroll - top;
    const int below = top + m_rowHeight - (m_scroll + room);
    if (std::max(above, below) > room / 2)
        setScroll(top - (room - m_rowHeight) / 2);
    else if (above > 0)
        setScroll(top);
    else if (below > 0)
        setScroll(m_scroll + below);
}

void RollScale::load(const SettingsStore& store, const char* name)
{
    if (const auto zoom = loadZoom(store, name)) setZoom(*zoom);
    const int rowZoom = store.getInt(section, std::string(name) + " VZoom", absent);
    if (rowZoom != absent) setRowHeight(rowZoom);
}

void RollScale::save(SettingsStore& store, const char* name) const
{
    saveZoom(store, name, m_zoom);
    store.setInt(section, std::string(name) + " VZoom", m_rowHeight);
}

} // namespace tessaro
