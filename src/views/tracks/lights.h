// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tessaro {

/// The activity lights of tracks 0 to 100: a struck light shines by its velocity and fades within a third of a second.
class Lights {
public:
    static constexpr int brightest = 16;

    void strike(int track, int velocity);
    /// Lets this much time pass.
    void fade(int milliseconds);
    void clear();
    /// 0 is dark, `brightest` the most.
    [[nodiscard]] int level(int track) const;

private:
    static constexpr int fadeTime = 320;
    std::array<int, 101> m_left{}; ///< milliseconds of shining left
};

} // namespace tessaro
