// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace tessaro {

/// Sums of ticks that stop at the ends of time instead of wrapping round.
namespace tick {

inline constexpr std::uint32_t latest = std::numeric_limits<std::uint32_t>::max();

[[nodiscard]] constexpr std::uint32_t clamped(std::int64_t time) noexcept
{
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(time, 0, latest));
}

[[nodiscard]] constexpr std::uint32_t later(std::uint32_t time, std::uint32_t span) noexcept
{
    return clamped(std::int64_t{time} + span);
}

[[nodiscard]] constexpr std::uint32_t shifted(std::uint32_t time, std::int64_t delta) noexcept
{
    constexpr std::int64_t all = latest;
    return clamped(std::int64_t{time} + std::clamp(delta, -all, all));
}

} // namespace tick
} // namespace tessaro
