// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/ruler_lines.h"

#include "core/maps/meas_map.h"
#include "views/tracks/bar_lines.h"

#include <algorithm>

namespace tessaro {
namespace {

constexpr int leastBar = 8; ///< pixels between two lines
constexpr int leastBeat = 12;

/// The smallest power of two of measures that takes `room` pixels.
std::uint32_t step(double pixelsAMeasure, int room)
{
    std::uint32_t measures = 1;
    while (measures * pixelsAMeasure < room && measures < (1U << 20U)) measures *= 2;
    return measures;
}

} // namespace

std::vector<RulerLine> rulerLines(const TrkGeometry& geometry, const MeasMap& map, const QRect& area, int room)
{
    std::vector<RulerLine> lines;
    const BarLines bars(map);
    const TrkGeometry::Span span = geometry.times(area.adjusted(-2 * room, 0, 1, 0)); // whose number may reach in
    const std::uint32_t first = bars.number(span.from);
    const double width = map.GetMeasInfo(std::int64_t{first} + 1).measClock / geometry.zoom();
    const std::uint32_t labels = step(width, room);
    const std::uint32_t every = std::min(labels, step(width, leastBar));
    for (std::uint32_t number = first / every * every;; number += every) {
        const std::uint32_t top = bars.top(number);
        if (top > span.to || (number > 0 && top <= bars.top(number - 1))) break;
        const auto kind = number % labels == 0 ? RulerLine::Kind::labelled : RulerLine::Kind::bar;
        lines.push_back({kind, number + 1, geometry.windowX(top)});
        const _EDT_MEASINFO measure = map.GetMeasInfo(std::int64_t{number} + 1);
        if (every > 1 || measure.beatClock / geometry.zoom() < leastBeat) continue;
        for (std::uint32_t beat = measure.beatClock; beat < measure.measClock; beat += measure.beatClock)
            lines.push_back({RulerLine::Kind::beat, number + 1, geometry.windowX(top + beat)});
    }
    return lines;
}

} // namespace tessaro
