// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/roll/roll_scale.h"

#include <cstdint>

namespace tessaro {

class SettingsStore;

/// Places of the master track's picture: time to the right of the names, a ruler, a lane for each kind of flag, and
/// below them the tempo in beats a minute, the fastest at the top. Pixels are those of the interface, from the corner
/// of the view.
class TempoScale {
public:
    static constexpr int left = 96;
    static constexpr int ruler = 22;
    static constexpr int laneHeight = 22;
    static constexpr int lanes = 4;
    static constexpr int curveTop = ruler + lanes * laneHeight;
    static constexpr int margin = 12; ///< above and below the curve
    static constexpr int longestFlag = 160;
    static constexpr double leastZoom = 1;
    static constexpr double mostZoom = 240;

    void resize(int width, int height);
    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }

    /// Ticks a pixel.
    [[nodiscard]] double zoom() const { return m_zoom; }
    void setZoom(double ticksAPixel);
    /// The tick at the left margin.
    [[nodiscard]] std::uint32_t start() const { return m_start; }
    void setStart(std::uint32_t tick) { m_start = tick; }
    /// `start` for what lies left of the margin.
    [[nodiscard]] std::uint32_t time(int x) const;
    /// Far outside for what is out of sight.
    [[nodiscard]] int x(std::uint32_t time) const;
    [[nodiscard]] TickRange span() const;
    /// The tick at x stays where it is.
    void zoomAt(int x, double ticksAPixel);
    void showSpan(TickRange span);

    /// The tempos that the curve has room for: those told, and some around them.
    void setTempos(double slowest, double fastest);
    [[nodiscard]] double slowest() const { return m_slowest; }
    [[nodiscard]] double fastest() const { return m_fastest; }
    [[nodiscard]] int y(double beats) const;
    /// Held to the range.
    [[nodiscard]] double beats(int y) const;
    /// Beats a minute from one line across to the next, so that lines stand readably apart.
    [[nodiscard]] int lineStep() const;

    /// The lane at y, -1 for none.
    [[nodiscard]] static int lane(int y);
    [[nodiscard]] static int yOfLane(int lane) { return ruler + lane * laneHeight; }

    void load(const SettingsStore& store);
    void save(SettingsStore& store) const;

private:
    double m_zoom = 24;
    std::uint32_t m_start = 0;
    int m_width = 0;
    int m_height = 0;
    double m_slowest = 60;
    double m_fastest = 180;
};

} // namespace tessaro
