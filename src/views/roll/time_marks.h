// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace tessaro {

class CEditor;

/// A line across a time axis. Ticks.
struct TimeMark {
    enum class Rank : std::uint8_t { bar, beat, grid };

    std::uint32_t tick = 0;
    std::uint32_t measure = 0; ///< of a bar line, from 1
    Rank rank = Rank::bar;
    bool operator==(const TimeMark&) const = default;
};

/// The lines from one tick up to, but without, another: of bars, of beats and of the grid, each kind only where it
/// stands at least `room` ticks apart, a line once by its highest rank. `gridLength` answers the step of the grid in
/// the measure at a tick, 0 for none. Costs a step for each line.
void timeMarks(const CEditor& editor, std::uint32_t first, std::uint32_t end, std::uint32_t room,
               const std::function<std::uint32_t(std::uint32_t)>& gridLength, std::vector<TimeMark>& marks);

} // namespace tessaro
