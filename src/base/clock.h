// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <chrono>
#include <functional>
#include <memory>

namespace tessaro {

/// Time since the zero of the clock in use; also a distance in time.
using Nanos = std::chrono::nanoseconds;

/// How soon a task has to run once it is due.
enum class Urgency {
    normal, ///< default priority
    feeder, ///< above normal
    engine, ///< real-time priority where the system grants it
};

/// A step that a Clock runs again and again. Destroying the task ends it: the destructor returns when
/// the step is over and will not run again. Not to be destroyed from its own step.
class TESSARO_API TimedTask {
public:
    virtual ~TimedTask();
    /// Runs the step before its deadline, as soon as possible. Any thread; never blocks.
    virtual void wake() noexcept = 0;
};

/// The source of time and the runner of timed work. Engine, feeder and record thread know time and
/// threads only through it, so the same code runs in real time and in simulated time.
class TESSARO_API Clock {
public:
    virtual ~Clock();

    /// Any thread.
    [[nodiscard]] virtual Nanos now() const noexcept = 0;
    /// Returns when `deadline` has come; at once when it has passed. Not from an engine step.
    virtual void sleepUntil(Nanos deadline) = 0;
    void sleepFor(Nanos span) { sleepUntil(now() + span); }

    /// One call of the work. `now` is the time of the call; the result is the time of the next one.
    using Step = std::function<Nanos(Nanos now)>;
    /// Starts running `step` at once, and then at the times it asks for.
    [[nodiscard]] virtual std::unique_ptr<TimedTask> start(Urgency urgency, Step step) = 0;
    /// False when a task asked for real-time priority and the system refused it.
    [[nodiscard]] virtual bool realtimeGranted() const noexcept { return true; }
};

} // namespace tessaro
