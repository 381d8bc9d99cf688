// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/song_scale.h"

namespace tessaro {
namespace {

/// The smallest power of two of measures that takes `room` pixels on the average.
std::uint32_t step(double pixelsAMeasure, double room)
{
    std::uint32_t measures = 1;
    while (measures * pixelsAMeasure < room && measures < (1U << 30U)) measures *= 2;
    return measures;
}

} // namespace

std::vector<RulerMark> rulerMarks(const SongScale& scale, std::uint32_t measures, int room,
                                  const std::function<std::uint32_t(std::uint32_t)>& measureTop)
{
    std::vector<RulerMark> marks;
    if (measures == 0) return marks;
    const double average = static_cast<double>(scale.span()) / measures;
    const std::uint32_t labels = step(average, room);
    const std::uint32_t lines = std::min(labels, step(average, 6));
    double free = 0; // where the next label may start
    for (std::uint32_t m = 0; m < measures; m += lines) {
        const std::uint32_t top = measureTop(m);
        if (top > scale.end()) break;
        RulerMark mark{.measure = m + 1, .x = scale.x(top)};
        mark.labelled = m % labels == 0 && mark.x >= free;
        if (mark.labelled) free = mark.x + room;
        marks.push_back(mark);
    }
    return marks;
}

} // namespace tessaro
