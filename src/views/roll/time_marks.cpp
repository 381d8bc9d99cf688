// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/time_marks.h"

#include "core/edit/editor.h"

#include <algorithm>

namespace tessaro {
namespace {

/// The lines between bar lines, at every multiple of `step` behind `top`, but not where `coarser` has one.
void addSteps(std::vector<TimeMark>& marks, TimeMark::Rank rank, std::uint32_t top, std::uint32_t from,
              std::uint32_t end, std::uint32_t step, std::uint32_t coarser)
{
    const std::uint64_t first = from <= top ? 1 : (from - top + step - 1) / step;
    for (std::uint64_t offset = std::max<std::uint64_t>(first, 1) * step; top + offset < end; offset += step)
        if (coarser == 0 || offset % coarser != 0) marks.push_back({static_cast<std::uint32_t>(top + offset), 0, rank});
}

} // namespace

void timeMarks(const CEditor& editor, std::uint32_t first, std::uint32_t end, std::uint32_t room,
               const std::function<std::uint32_t(std::uint32_t)>& gridLength, std::vector<TimeMark>& marks)
{
    marks.clear();
    _EDT_MEAS place;
    editor.TimeToMeas(first, place);
    std::uint32_t top = editor.MeasToTime({place.meas - 1, 0, 0});
    for (std::uint32_t measure = place.meas; top < end; ++measure) {
        const std::uint32_t next = editor.MeasToTime({measure, 0, 0});
        if (next <= top) return; // past what a tick can name
        if (top >= first) marks.push_back({top, measure, TimeMark::Rank::bar});
        _EDT_MEASINFO info;
        editor.GetMeasInfo(measure, info);
        const std::uint32_t stop = std::min(next, end);
        const std::uint32_t beat = info.beatClock >= room ? info.beatClock : 0;
        if (beat) addSteps(marks, TimeMark::Rank::beat, top, first, stop, beat, 0);
        const std::uint32_t grid = gridLength ? gridLength(top) : 0;
        if (beat && grid >= room && grid < info.measClock)
            addSteps(marks, TimeMark::Rank::grid, top, first, stop, grid, beat);
        top = next;
    }
}

} // namespace tessaro
