// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/tick.h"
#include "views/roll/roll_scale.h"

#include <QPoint>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace tessaro {

/// What gestures over notes and in the strip have in common.
namespace roll_drag {

inline constexpr int distance = 4; ///< pixels after which a press is no click any more

[[nodiscard]] inline bool isFar(int way) { return std::abs(way) >= distance; }
[[nodiscard]] inline bool isFar(QPoint way) { return isFar(way.x()) || isFar(way.y()); }

/// The keys that select in addition.
[[nodiscard]] inline bool goesOn(Qt::KeyboardModifiers keys)
{
    return keys & (Qt::ControlModifier | Qt::ShiftModifier);
}

/// What lies between two times, whichever is first.
[[nodiscard]] inline TickRange between(std::int64_t one, std::int64_t other)
{
    return {tick::clamped(std::min(one, other)), tick::clamped(std::max(one, other))};
}

} // namespace roll_drag
} // namespace tessaro
