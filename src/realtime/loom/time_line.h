// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <cstdint>

namespace tessaro {

/// Length of a tick as a fraction, in units of 1/480 us: at plain tempo it is just the tempo.
struct TickLength {
    std::int64_t numerator = 500'000;
    std::int64_t denominator = 1;

    bool operator==(const TickLength&) const = default;
};

/// A straight line between ticks and time, redrawn at every change of tempo. Ticks count from the start of a run;
/// times are exact fractions of 1/480 us, rounded to the nearest nanosecond only in answers, so error does not add up.
/// Engine thread.
class TimeLine {
public:
    /// Tick 0 is at `time`, the others follow at this distance.
    void start(Nanos time, TickLength length);
    /// The first nanosecond at which the tick has fallen due.
    [[nodiscard]] Nanos due(std::int64_t tick) const;
    /// The last tick that is due at `time`.
    [[nodiscard]] std::int64_t tickAt(Nanos time) const;
    /// The tick nearest to `time`, the later of two equally near.
    [[nodiscard]] std::int64_t nearestTickAt(Nanos time) const;
    /// The tick at `time` with the part of it that has gone by; not exact.
    [[nodiscard]] double positionAt(Nanos time) const;
    [[nodiscard]] TickLength length() const { return m_length; }

    /// New length from `tick` on.
    void setLengthFrom(std::int64_t tick, TickLength length);
    /// New length from `time` on, which is inside a tick; the rest of that tick keeps its share.
    void setLengthAt(Nanos time, TickLength length);
    /// Everything from now on falls due later by `span`.
    void shift(Nanos span) { m_origin += span; }
    /// Makes `tick` fall due at `time`.
    void place(std::int64_t tick, Nanos time);

private:
    // Wide enough for any tick of 32 bits at any tempo.
    __extension__ typedef __int128 Wide;

    [[nodiscard]] Wide partsOf(std::int64_t tick) const;
    void moveTo(std::int64_t tick);

    Nanos m_origin{};
    TickLength m_length;
    // Tick m_tick lies m_units + m_part / denominator units behind the origin.
    std::int64_t m_tick = 0;
    std::int64_t m_units = 0;
    std::int64_t m_part = 0;
};

} // namespace tessaro
