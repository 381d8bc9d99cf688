// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <vector>

namespace tessaro {

/// A value at an absolute tick.
struct StripPoint {
    std::uint32_t time = 0;
    int value = 0;
    bool operator==(const StripPoint&) const = default;
};

/// A line drawn over time: straight from knot to knot, or bent as a whole to a parabola. What is drawn later replaces
/// what it passes over.
class StripPath {
public:
    /// Forgets what was drawn.
    void start(StripPoint at);
    /// Goes on from where it ended.
    void lineTo(StripPoint to);
    /// Value by which the middle is lifted over the straight line.
    void setBend(double value) { m_bend = value; }

    [[nodiscard]] bool empty() const { return m_knots.empty(); }
    [[nodiscard]] std::uint32_t first() const { return m_knots.begin()->first; }
    [[nodiscard]] std::uint32_t last() const { return m_knots.rbegin()->first; }
    /// Outside of the path the value of its nearer end. Not for an empty one.
    [[nodiscard]] double valueAt(std::uint32_t time) const;

private:
    std::map<std::uint32_t, int> m_knots;
    StripPoint m_end; ///< where the line goes on
    double m_bend = 0;
};

} // namespace tessaro
