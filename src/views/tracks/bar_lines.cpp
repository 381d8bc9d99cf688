// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/bar_lines.h"

#include "core/maps/meas_map.h"
#include "core/model/tick.h"

#include <algorithm>

namespace tessaro {

std::uint32_t BarLines::nearer(std::uint32_t time, const Cell& cell)
{
    return time - cell.top > (cell.end - cell.top) / 2 ? cell.end : cell.top;
}

BarLines::Cell BarLines::measureAt(std::uint32_t time) const
{
    // Without a map measures are counted from 0, not from 1.
    const std::uint32_t number = m_map.TimeToMeas(time).meas - (m_map.count() ? 1 : 0);
    const std::uint32_t start = top(number);
    const std::uint32_t end = top(number + 1);
    return {start, end > start ? end : tick::latest, number};
}

BarLines::Cell BarLines::beatAt(std::uint32_t time) const
{
    const Cell measure = measureAt(time);
    const std::uint32_t beat = m_map.GetMeasInfo(std::int64_t{measure.number} + 1).beatClock;
    const std::uint32_t start = time - (time - measure.top) % beat;
    return {start, std::min(tick::later(start, beat), measure.end), measure.number};
}

std::uint32_t BarLines::stepped(std::uint32_t time, int bars) const
{
    const Cell measure = measureAt(time);
    const std::int64_t begun = bars < 0 && time > measure.top ? 1 : 0;
    return top(tick::clamped(std::int64_t{measure.number} + bars + begun));
}

std::uint32_t BarLines::top(std::uint32_t number) const { return m_map.MeasToTime({number, 0, 0}); }

} // namespace tessaro
