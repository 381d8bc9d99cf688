// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

namespace tessaro {

/// Smooths the arrival times of MIDI clocks: tells where a clock would stand without jitter, and the time from clock to
/// clock. A line fitted through the clocks of the last 40 s, that is, a filter of second order whose gains fall as long
/// as the tempo holds. Clocks that leave the line for good make it forget: a small lasting deviation most of what it
/// knows, two clocks in a row far outside the usual jitter everything. One such clock alone counts for little, and a
/// gap of few clocks that fits the line is one of lost clocks. Engine thread.
class ClockFollower {
public:
    /// A clock has arrived. The result is how many it stands for: 1, more when clocks before it were lost, less when
    /// that had been assumed and turns out to have been a change of tempo.
    int clock(Nanos when);
    /// The distance of clocks to start from, before any came.
    void guess(double nanos);

    /// Where the last clock should have stood.
    [[nodiscard]] Nanos last() const { return Nanos(static_cast<Nanos::rep>(m_offset)) + m_base; }
    /// Time from clock to clock in nanoseconds.
    [[nodiscard]] double period() const { return m_period; }
    /// How many of the clocks told last may have been none.
    [[nodiscard]] int doubtful() const { return m_assumedLost; }
    /// True when the period was measured, not guessed.
    [[nodiscard]] bool measured() const { return m_measured; }

private:
    void begin(Nanos when);
    void second(double step);
    void refit(double stepMean, double deviation);
    int countLost(double step, double& deviation);
    [[nodiscard]] bool leavesLine(double& deviation);
    void correct(double deviation);
    void watchDrift(double deviation);
    [[nodiscard]] bool settled() const;

    Nanos m_base{};       // keeps the numbers below small
    double m_arrival = 0; // of the last clock behind m_base, as it came
    double m_step = 0;    // from the clock before
    double m_offset = 0;  // the last clock's place, smoothed
    double m_period = 20'833'333;
    double m_spread = 1e6; // usual deviation, root of the mean square
    double m_drift = 0;    // mean of the latest deviations
    double m_outlier = 0;  // deviation of the last clock if it was far out
    int m_count = 0;       // clocks that the line is fitted through
    int m_assumedLost = 0; // right before the last clock
    bool m_measured = false;
};

} // namespace tessaro
