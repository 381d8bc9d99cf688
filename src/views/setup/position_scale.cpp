// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/position_scale.h"

#include "core/edit/editor.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>

namespace tessaro {
namespace {

constexpr std::uint32_t barTicks = 1920;
constexpr std::uint32_t beatTicks = 480;
constexpr std::uint32_t largestNumber = 2'000'000; ///< more than the bars of the longest song
constexpr std::uint32_t lastTick = std::numeric_limits<std::int32_t>::max();

} // namespace

_EDT_MEAS PositionScale::placeOf(std::uint32_t tick) const
{
    if (!m_song) return {tick / barTicks + 1, tick % barTicks / beatTicks + 1, tick % beatTicks};
    _EDT_MEAS place;
    m_song->TimeToMeas(tick, place);
    return place;
}

std::optional<std::uint32_t> PositionScale::tickOf(const _EDT_MEAS& place) const
{
    const _EDT_MEAS fromZero{place.meas - 1, std::max(place.beat, 1U) - 1, place.tick};
    const std::uint32_t tick =
        m_song ? m_song->MeasToTime(fromZero) : fromZero.meas * barTicks + fromZero.beat * beatTicks + fromZero.tick;
    // A bar so late that its tick has no room in a number comes out as an earlier one.
    if (tick > lastTick || placeOf(tick).meas < place.meas) return std::nullopt;
    return tick;
}

std::string PositionScale::text(std::uint32_t tick) const
{
    const _EDT_MEAS place = placeOf(tick);
    std::array<char, 48> line{};
    std::snprintf(line.data(), line.size(), "%04u:%u:%03u", place.meas, place.beat, place.tick);
    return line.data();
}

std::optional<std::uint32_t> PositionScale::parse(std::string_view text) const
{
    std::array<std::uint32_t, 3> numbers{};
    std::size_t field = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            if (++field == numbers.size()) return std::nullopt;
            continue;
        }
        numbers[field] = numbers[field] * 10 + static_cast<std::uint32_t>(c - '0');
        if (numbers[field] > largestNumber) return std::nullopt;
    }
    if (numbers[0] == 0) return std::nullopt;
    return tickOf({numbers[0], numbers[1], numbers[2]});
}

std::uint32_t PositionScale::moveBars(std::uint32_t tick, int bars) const
{
    _EDT_MEAS place = placeOf(tick);
    const std::int64_t bar = std::max<std::int64_t>(std::int64_t{place.meas} + bars, 1);
    place.meas = static_cast<std::uint32_t>(bar);
    return tickOf(place).value_or(tick);
}

} // namespace tessaro
