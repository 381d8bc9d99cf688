// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/tempo_scale.h"

#include "core/model/tick.h"
#include "core/ports/settings_store.h"

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

constexpr double grain = 20; ///< the range of tempos ends at multiples of it
constexpr double usualSlowest = 60;
constexpr double usualFastest = 180;
constexpr int farOut = 1 << 20;
constexpr int leastLineRoom = 24;
constexpr const char* section = "View Condition";
constexpr const char* zoomKey = "Master Zoom";

} // namespace

void TempoScale::resize(int width, int height)
{
    m_width = width;
    m_height = height;
}

void TempoScale::setZoom(double ticksAPixel) { m_zoom = std::clamp(ticksAPixel, leastZoom, mostZoom); }

std::uint32_t TempoScale::time(int x) const
{
    return x < left ? m_start : tick::later(m_start, static_cast<std::uint32_t>((x - left) * m_zoom));
}

int TempoScale::x(std::uint32_t time) const
{
    const double pixels = (static_cast<double>(time) - m_start) / m_zoom;
    return left + static_cast<int>(std::floor(std::clamp<double>(pixels, -farOut, farOut)));
}

TickRange TempoScale::span() const { return {m_start, time(std::max(m_width, left))}; }

void TempoScale::zoomAt(int x, double ticksAPixel)
{
    const std::uint32_t kept = time(x);
    setZoom(ticksAPixel);
    m_start = tick::shifted(kept, -static_cast<std::int64_t>(std::max(x - left, 0) * m_zoom));
}

void TempoScale::showSpan(TickRange span)
{
    const int room = std::max(m_width - left - 2 * margin, 1);
    setZoom(static_cast<double>(std::max(span.to, span.from + 1) - span.from) / room);
    m_start = span.from;
}

void TempoScale::setTempos(double slowest, double fastest)
{
    m_slowest = std::max(0.0, std::min(usualSlowest, (std::floor(slowest / grain) - 1) * grain));
    m_fastest = std::max(usualFastest, (std::ceil(fastest / grain) + 1) * grain);
}

int TempoScale::y(double beats) const
{
    const double room = std::max(m_height - curveTop - 2 * margin, 1);
    const double share = (m_fastest - beats) / (m_fastest - m_slowest);
    return curveTop + margin + static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * room));
}

double TempoScale::beats(int y) const
{
    const double room = std::max(m_height - curveTop - 2 * margin, 1);
    const double share = std::clamp((y - curveTop - margin) / room, 0.0, 1.0);
    return m_fastest - share * (m_fastest - m_slowest);
}

int TempoScale::lineStep() const
{
    const double room = std::max(m_height - curveTop - 2 * margin, 1);
    for (const int step : {5, 10, 20, 50, 100, 200})
        if (room * step / (m_fastest - m_slowest) >= leastLineRoom) return step;
    return 500;
}

int TempoScale::lane(int y) { return y < ruler || y >= curveTop ? -1 : (y - ruler) / laneHeight; }

void TempoScale::load(const SettingsStore& store)
{
    const int zoom = store.getInt(section, zoomKey, -1);
    if (zoom > 0) setZoom(zoom);
}

void TempoScale::save(SettingsStore& store) const
{
    store.setInt(section, zoomKey, static_cast<int>(std::lround(m_zoom)));
}

} // namespace tessaro
