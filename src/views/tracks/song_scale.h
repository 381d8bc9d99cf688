// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

namespace tessaro {

/// Maps the whole song onto the width of a pane, with a margin on both sides. Ticks and pixels of the interface.
class SongScale {
public:
    static constexpr int margin = 8;

    SongScale(std::uint32_t end, int width) : m_end(std::max(end, 1U)), m_span(std::max(width - 2 * margin, 1)) {}

    [[nodiscard]] double x(std::uint32_t tick) const { return margin + static_cast<double>(tick) * m_span / m_end; }
    /// The nearest tick inside the song.
    [[nodiscard]] std::uint32_t tick(double x) const
    {
        const double t = (x - margin) * m_end / m_span;
        return t <= 0 ? 0 : static_cast<std::uint32_t>(std::min(t + 0.5, static_cast<double>(m_end)));
    }
    [[nodiscard]] std::uint32_t end() const { return m_end; }
    [[nodiscard]] int span() const { return m_span; }

private:
    std::uint32_t m_end;
    int m_span;
};

/// A bar line of the ruler.
struct RulerMark {
    std::uint32_t measure = 0; ///< from 1
    double x = 0;
    bool labelled = false;
};

/// The bar lines that a ruler shows: labels stand at least `room` pixels apart, lines between them at least 6.
/// `measureTop` answers the tick of a measure counted from 0; it is asked once for each line shown.
[[nodiscard]] std::vector<RulerMark> rulerMarks(const SongScale& scale, std::uint32_t measures, int room,
                                                const std::function<std::uint32_t(std::uint32_t)>& measureTop);

} // namespace tessaro
