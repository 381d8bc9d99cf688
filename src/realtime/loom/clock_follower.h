// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

namespace tessaro {

/// Smooths the arrival times of MIDI clocks: tells where a clock would stand without jitter, and the time from clock to
/// clock. A filter of second order with fast gains at first, falling to a slow lock; a clock far from its
/// expected time starts it anew. Engine thread.
class ClockFollower {
public:
    /// A clock has arrived.
    void clock(Nanos when);
    /// Forgets where the clocks stand, keeps their distance as a first guess.
    void restart() { m_count = 0; }
    void setPeriod(double nanos) { m_period = nanos; }

    /// Where the last clock should have stood.
    [[nodiscard]] Nanos last() const { return Nanos(static_cast<Nanos::rep>(m_offset)) + m_base; }
    /// Time from clock to clock in nanoseconds.
    [[nodiscard]] double period() const { return m_period; }
    /// True when the period was measured, not guessed.
    [[nodiscard]] bool locked() const { return m_count >= 2; }

private:
    Nanos m_base{};      // keeps the numbers below small
    double m_offset = 0; // of the smoothed clock behind m_base
    double m_period = 20'833'333;
    int m_count = 0; // clocks since the filter started
};

} // namespace tessaro
