// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/clock_follower.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaro {

namespace {

// Clocks from 2 to 1,200 beats a minute.
constexpr double shortestPeriod = 2'083'333;
constexpr double longestPeriod = 1'250'000'000;

constexpr double memory = 40e9; // ns that the line is fitted through
constexpr double leastMemory = 240;
constexpr double mostMemory = 6000;

constexpr double leastSpread = 0.3e6;
constexpr double farOut = 4; // of the spread
constexpr double spreadClocks = 128;

constexpr int settledCount = 12; // clocks before one can be told from its jitter
constexpr int shortMemory = 16;  // what is left of the line when it drifts
constexpr int guessedCount = 4;  // what a good guess is worth
constexpr double driftClocks = 8;
constexpr double leastDrift = 3e6; // more than a driver's period of 256 frames makes of even clocks
constexpr double driftSpreads = 1.75;

constexpr int mostLost = 3;
constexpr double longestGap = 5; // periods

} // namespace

bool ClockFollower::settled() const { return m_count >= settledCount; }

void ClockFollower::guess(double nanos) { m_period = std::clamp(nanos, shortestPeriod, longestPeriod); }

void ClockFollower::begin(Nanos when)
{
    m_base = when;
    m_arrival = m_offset = m_drift = m_outlier = 0;
    m_count = 1;
    m_assumedLost = 0;
}

/// Keeps the period from before if this may be it.
void ClockFollower::second(double step)
{
    const double deviation = step - m_period;
    m_measured = true;
    if (std::abs(deviation) <= m_period / 4 + farOut * m_spread) {
        m_count = guessedCount - 1;
        correct(deviation);
    } else {
        m_count = 2;
        guess(step);
        m_offset = m_arrival;
    }
}

int ClockFollower::clock(Nanos when)
{
    if (m_count == 0) {
        begin(when);
        return 1;
    }
    const double arrival = static_cast<double>((when - m_base).count());
    const double step = arrival - m_arrival;
    const double stepBefore = std::exchange(m_step, step);
    m_arrival = arrival;
    if (step > longestGap * m_period) {
        begin(when);
        return 1;
    }
    if (m_count == 1) {
        second(step);
        return 1;
    }

    double deviation = arrival - (m_offset + m_period);
    int clocks = 1;
    if (settled()) {
        const int before = m_assumedLost;
        m_assumedLost = 0;
        if (before > 0 && std::abs(deviation) > m_period / 2) {
            refit((step + stepBefore) / 2, deviation);
            return 1 - before;
        }
        clocks += countLost(step, deviation);
        if (leavesLine(deviation)) {
            refit((step + stepBefore) / 2, deviation);
            return clocks;
        }
    }
    correct(deviation);
    watchDrift(deviation);

    const auto whole = static_cast<Nanos::rep>(m_offset);
    m_base += Nanos(whole);
    m_offset -= static_cast<double>(whole);
    m_arrival -= static_cast<double>(whole);
    return clocks;
}

/// Both the line and the clock before must speak for it.
int ClockFollower::countLost(double step, double& deviation)
{
    const auto lost = static_cast<int>(std::lround(deviation / m_period));
    const double rest = deviation - lost * m_period;
    const double misfit = std::max(std::abs(rest), std::abs(step - (1 + lost) * m_period));
    if (lost < 1 || lost > mostLost || misfit > m_period / 4 || m_spread > m_period / 8) return 0;
    m_offset += lost * m_period;
    deviation = rest;
    m_assumedLost = lost;
    return lost;
}

/// True for the second clock in a row that is far out at the same side; the first is held at what is usual.
bool ClockFollower::leavesLine(double& deviation)
{
    const double limit = farOut * std::max(m_spread, leastSpread);
    const double before = m_outlier;
    m_outlier = std::abs(deviation) > limit ? deviation : 0;
    if (m_outlier * before > 0) return true;
    deviation = std::clamp(deviation, -limit, limit);
    return false;
}

/// The clocks have moved, or the tempo has changed: what came before the last two clocks tells nothing.
void ClockFollower::refit(double stepMean, double deviation)
{
    m_drift = m_outlier = 0;
    if (std::abs(deviation) <= m_period / 4) {
        m_count = guessedCount;
        correct(deviation);
        return;
    }
    if (std::abs(m_step - m_period) > m_period / 4 + m_spread) guess(stepMean);
    m_count = guessedCount - 1;
    m_offset = m_arrival;
}

/// The gains are those of a least squares fit over the clocks so far.
void ClockFollower::correct(double deviation)
{
    const double most = std::clamp(memory / m_period, leastMemory, mostMemory);
    m_count = static_cast<int>(std::min<double>(m_count + 1, most));
    const double n = m_count;
    m_offset += m_period + 2 * (2 * n - 1) / (n * (n + 1)) * deviation;
    m_period = std::clamp(m_period + 6 / (n * (n + 1)) * deviation, shortestPeriod, longestPeriod);
}

void ClockFollower::watchDrift(double deviation)
{
    m_drift += (deviation - m_drift) / driftClocks;
    const double jitter = deviation - m_drift;
    m_spread = std::sqrt(m_spread * m_spread + (jitter * jitter - m_spread * m_spread) / spreadClocks);
    if (std::abs(m_drift) <= std::max(leastDrift, driftSpreads * m_spread)) return;
    m_count = std::min(m_count, shortMemory);
    m_drift = 0;
}

} // namespace tessaro
