// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/records.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaro {

class CEditor;

/// Song ticks as bar, beat and clock, bars and beats from 1, and back. Without a song a bar has 1920 ticks and a beat
/// 480.
class PositionScale {
public:
    /// `song` may be null; otherwise borrowed.
    explicit PositionScale(const CEditor* song) : m_song(song) {}

    /// "0012:3:240".
    [[nodiscard]] std::string text(std::uint32_t tick) const;
    /// Any character that is no digit parts two numbers. What is left out is 0, and beat 0 is the first one. Nothing
    /// for bar 0, for a fourth number, and for what lies beyond the longest song.
    [[nodiscard]] std::optional<std::uint32_t> parse(std::string_view text) const;
    /// The same beat and clock of another bar, of the first one at least.
    [[nodiscard]] std::uint32_t moveBars(std::uint32_t tick, int bars) const;

private:
    [[nodiscard]] _EDT_MEAS placeOf(std::uint32_t tick) const;
    [[nodiscard]] std::optional<std::uint32_t> tickOf(const _EDT_MEAS& place) const;

    const CEditor* m_song;
};

/// A range whose end never lies before its start: the end that is set pushes the other one along. Song ticks.
struct PushedRange {
    std::uint32_t start = 0;
    std::uint32_t end = 0;

    void setStart(std::uint32_t tick)
    {
        start = tick;
        if (end < start) end = start;
    }
    void setEnd(std::uint32_t tick)
    {
        end = tick;
        if (start > end) start = end;
    }
};

} // namespace tessaro
