// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/clock_follower.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

// Gains of the lock. The first is the share of a deviation that moves the clock's place; the second, critically
// damped to it, the share that changes the period.
constexpr double placeGain = 0.1;
constexpr double periodGain = placeGain * placeGain / (2 - placeGain);

// Clocks from 2 to 1,200 beats a minute.
constexpr double shortestPeriod = 2'083'333;
constexpr double longestPeriod = 1'250'000'000;

} // namespace

void ClockFollower::clock(Nanos when)
{
    const double arrival = static_cast<double>((when - m_base).count());
    if (m_count == 0) {
        m_base = when;
        m_offset = 0;
        m_count = 1;
        return;
    }
    if (m_count == 1) {
        m_offset = arrival;
        m_period = std::clamp(arrival, shortestPeriod, longestPeriod);
        m_count = 2;
        return;
    }

    const double expected = m_offset + m_period;
    const double deviation = arrival - expected;
    if (std::abs(deviation) > m_period / 2) {
        m_base = when;
        m_offset = 0;
        m_count = 1;
        return;
    }
    ++m_count;
    // Gains of a least squares fit over the clocks so far.
    const double n = m_count;
    const double place = std::max(placeGain, 2 * (2 * n - 1) / (n * (n + 1)));
    const double rate = std::max(periodGain, 6 / (n * (n + 1)));
    m_offset = expected + place * deviation;
    m_period = std::clamp(m_period + rate * deviation, shortestPeriod, longestPeriod);
    m_count = std::min(m_count, 1000);

    m_base += Nanos(static_cast<Nanos::rep>(m_offset));
    m_offset -= std::trunc(m_offset);
}

} // namespace tessaro
