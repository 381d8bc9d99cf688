// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/trk_geometry.h"

#include <cstdint>
#include <vector>

namespace tessaro {

class MeasMap;

/// A line of the time line: a bar with its number, one without, or a beat.
struct RulerLine {
    enum class Kind { labelled, bar, beat };
    Kind kind = Kind::bar;
    std::uint32_t measure = 0; ///< from 1
    int x = 0;                 ///< of the window
};

/// The lines of a part of the window, from left to right: as dense as the zoom allows, numbers at least `room` pixels
/// apart. What it costs depends on the width alone.
[[nodiscard]] std::vector<RulerLine> rulerLines(const TrkGeometry& geometry, const MeasMap& map, const QRect& area,
                                                int room);

} // namespace tessaro
