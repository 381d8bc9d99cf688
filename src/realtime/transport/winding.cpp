// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/winding.h"

#include "core/edit/editor.h"

#include <algorithm>
#include <utility>

namespace tessaro {

namespace {
constexpr std::uint32_t shortHold = 19; // repetitions
constexpr std::int64_t last = 0x7FFF'FFFF;
} // namespace

std::uint32_t Winding::repeat(const CEditor& song, std::uint32_t tick, int direction, WindStep step)
{
    ++m_repeats;
    const bool back = direction < 0;
    _EDT_MEAS place;
    _EDT_MEASINFO measure;
    song.TimeToMeas(back && tick > 0 ? tick - 1 : tick, place);
    song.GetMeasInfo(place.meas, measure);

    std::int64_t distance = 0;
    switch (step) {
    case WindStep::beat: distance = measure.beatClock; break;
    case WindStep::bar: distance = measure.measClock; break;
    case WindStep::faster: distance = std::int64_t{m_repeats / 10 + 1} * m_repeats; break;
    }
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(back ? tick - distance : tick + distance, 0, last));
}

std::uint32_t Winding::release(const CEditor& song, std::uint32_t tick)
{
    return std::exchange(m_repeats, 0) > shortHold ? song.GetMeasTime(tick) : tick;
}

} // namespace tessaro
