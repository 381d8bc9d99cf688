// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <vector>

namespace tessaro {

/// Simulated time: it stands still until somebody sleeps, and then the tasks that are due run on the
/// sleeper's thread, in order of due time, those of one time in order of their start. The same calls
/// give the same result, each time. One thread; it outlives its tasks.
///
/// While a task runs, now() is its due time. A task that sleeps inside its own step runs the others,
/// never itself; when another step sleeps past it in turn, it wakes up late. A task may ask to run
/// again at the present time, but has to ask for a later one in the end, or time stands still for good.
/// A task that is destroyed while its own step sleeps finishes that step and does not run again.
class TESSARO_API ManualClock final : public Clock {
public:
    explicit ManualClock(Nanos start = Nanos::zero());
    ~ManualClock() override;
    ManualClock(const ManualClock&) = delete;
    ManualClock& operator=(const ManualClock&) = delete;

    [[nodiscard]] Nanos now() const noexcept override { return m_now; }
    /// Runs all tasks that are due up to `deadline`, that time included, and leaves now() at it.
    void sleepUntil(Nanos deadline) override;
    void advanceTo(Nanos time) { sleepUntil(time); }
    /// The first step is due now; it runs when time is next advanced, be it by nothing.
    [[nodiscard]] std::unique_ptr<TimedTask> start(Urgency urgency, Step step) override;

    /// When the next step is due, the caller's own task left out; Nanos::max() when there is none.
    [[nodiscard]] Nanos nextDue() const noexcept;

private:
    struct Entry;
    class Task;

    [[nodiscard]] Entry* next() const noexcept;
    void run(Entry& entry);
    void wake(Entry& entry);
    void end(Entry& entry) noexcept;
    void remove(const Entry& entry) noexcept;

    std::vector<std::unique_ptr<Entry>> m_entries; // in order of start
    Nanos m_now;
    int m_depth = 0;      // steps under way
    int m_standstill = 0; // steps run since time last moved
};

} // namespace tessaro
