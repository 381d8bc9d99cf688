// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tessaro {

class MeasMap;

/// The bar lines and beats of a song, as places that a drag snaps to. Ticks; the last tick where a line would lie
/// behind it. Borrows the map; each answer takes a bisection.
class BarLines {
public:
    explicit BarLines(const MeasMap& map) : m_map(map) {}

    /// The bar line at or before the tick.
    [[nodiscard]] std::uint32_t before(std::uint32_t time) const { return measureAt(time).top; }
    /// The first bar line behind the tick.
    [[nodiscard]] std::uint32_t after(std::uint32_t time) const { return measureAt(time).end; }
    /// The nearest bar line; at exactly half the earlier one.
    [[nodiscard]] std::uint32_t nearest(std::uint32_t time) const { return nearer(time, measureAt(time)); }
    /// The same for beats, which bar lines are, too.
    [[nodiscard]] std::uint32_t beatBefore(std::uint32_t time) const { return beatAt(time).top; }
    [[nodiscard]] std::uint32_t beatAfter(std::uint32_t time) const { return beatAt(time).end; }
    [[nodiscard]] std::uint32_t nearestBeat(std::uint32_t time) const { return nearer(time, beatAt(time)); }
    /// The line so many bars from the tick, 0 at the least: the first step goes to the next line on that side.
    [[nodiscard]] std::uint32_t stepped(std::uint32_t time, int bars) const;

    /// The number of the measure at the tick, from 0, and its first tick.
    [[nodiscard]] std::uint32_t number(std::uint32_t time) const { return measureAt(time).number; }
    [[nodiscard]] std::uint32_t top(std::uint32_t number) const;

private:
    struct Cell {
        std::uint32_t top;
        std::uint32_t end;
        std::uint32_t number = 0; ///< of the measure
    };
    [[nodiscard]] static std::uint32_t nearer(std::uint32_t time, const Cell& cell);
    [[nodiscard]] Cell measureAt(std::uint32_t time) const;
    [[nodiscard]] Cell beatAt(std::uint32_t time) const;

    const MeasMap& m_map;
};

} // namespace tessaro
