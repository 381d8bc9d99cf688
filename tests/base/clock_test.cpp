// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"
#include "base/real_clock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

namespace tessaro {
namespace {

using namespace std::chrono_literals;

/// Collects what ran, as "name@milliseconds ".
struct Diary {
    ManualClock clock;
    std::string lines;

    void note(char name) { lines += name + ("@" + std::to_string(clock.now() / 1ms)) + ' '; }
    std::string take() { return std::exchange(lines, {}); }

    /// A task that notes each of its steps and runs every `period`.
    std::unique_ptr<TimedTask> every(char name, Nanos period)
    {
        return clock.start(Urgency::normal, [this, name, period](Nanos now) {
            note(name);
            return now + period;
        });
    }
};

TEST(ManualClock, RunsTasksInOrderOfDueTimeAndOfStart)
{
    Diary d;
    const auto a = d.every('a', 3ms);
    const auto b = d.every('b', 2ms);
    EXPECT_EQ(d.lines, "");
    d.clock.advanceTo(6ms);
    EXPECT_EQ(d.take(), "a@0 b@0 b@2 a@3 b@4 a@6 b@6 ");
    EXPECT_EQ(d.clock.now(), 6ms);
    EXPECT_EQ(d.clock.nextDue(), 8ms);
    d.clock.advanceTo(8ms - 1ns);
    d.clock.advanceTo(1ms); // time does not go back
    EXPECT_EQ(d.clock.now(), 8ms - 1ns);
    EXPECT_EQ(d.take(), "");
    d.clock.advanceTo(8ms);
    EXPECT_EQ(d.take(), "b@8 ");
}

TEST(ManualClock, ASleepingStepRunsTheOthersAndNotItself)
{
    Diary d;
    const auto sleeper = d.clock.start(Urgency::normal, [&](Nanos now) {
        d.note('(');
        d.clock.sleepUntil(now + 5ms);
        d.note(')');
        return now + 6ms;
    });
    const auto other = d.every('o', 2ms);
    d.clock.advanceTo(1ms); // the first step sleeps past the time asked for
    EXPECT_EQ(d.take(), "(@0 o@0 o@2 o@4 )@5 ");
    EXPECT_EQ(d.clock.now(), 5ms);
    d.clock.advanceTo(6ms);
    EXPECT_EQ(d.take(), "(@6 o@6 o@8 o@10 )@11 ");
}

TEST(ManualClock, WakeRunsAtOnceFromOutsideAndAfterTheStepFromInside)
{
    Diary d;
    const auto woken = d.every('w', 100ms);
    TimedTask* self = nullptr;
    int again = 2;
    const auto waker = d.clock.start(Urgency::normal, [&](Nanos now) {
        d.note('<');
        woken->wake();
        if (self && again-- > 0) self->wake(); // its own wake makes it run once more
        d.note('>');
        return now + 10ms;
    });
    self = waker.get();
    d.clock.advanceTo(1ms);
    EXPECT_EQ(d.take(), "w@0 <@0 >@0 w@0 <@0 >@0 w@0 <@0 >@0 w@0 ");
    woken->wake();
    EXPECT_EQ(d.take(), "w@1 ");
    EXPECT_EQ(d.clock.nextDue(), 10ms);
    d.clock.advanceTo(101ms);
    EXPECT_EQ(d.take().substr(0, 14), "<@10 >@10 w@10"); // the wake at 1 moved the due time away from 100
}

TEST(ManualClock, TasksMayEndEachOther)
{
    Diary d;
    auto victim = d.every('v', 2ms);
    const auto killer = d.clock.start(Urgency::normal, [&](Nanos now) {
        victim.reset();
        return now + 6ms;
    });
    d.clock.advanceTo(4ms);
    EXPECT_EQ(d.take(), "v@0 ");

    // One that is ended while it sleeps inside its step finishes the step and is gone.
    victim = d.clock.start(Urgency::normal, [&](Nanos now) {
        d.clock.sleepUntil(now + 5ms);
        d.note('v');
        return now;
    });
    d.clock.advanceTo(20ms);
    EXPECT_EQ(d.take(), "v@9 ");
    EXPECT_EQ(d.clock.nextDue(), 24ms); // the killer's
}

TEST(RealClock, KeepsDeadlinesAndWakesEarly)
{
    RealClock clock;
    std::atomic<int> steps = 0;
    int written = 0; // not atomic: wake() has to carry it over
    std::atomic<int> seen = 0;
    const Nanos begin = clock.now();
    {
        const auto task = clock.start(Urgency::engine, [&](Nanos now) {
            EXPECT_GE(now, begin);
            if (steps > 0) seen = written;
            ++steps;
            return steps == 1 ? now + 1h : Nanos::max();
        });
        static_cast<void>(clock.realtimeGranted()); // either answer is fine
        while (steps < 1) std::this_thread::yield();
        written = 7;
        task->wake();
        while (seen != 7) std::this_thread::yield();
        EXPECT_LT(clock.now() - begin, 1min);

        const auto sleeper = clock.start(Urgency::feeder, [](Nanos) { return Nanos::min(); }); // always late
        clock.sleepFor(2ms);
        EXPECT_GE(clock.now() - begin, 2ms);
    } // both end, one from an endless wait
    const int after = steps;
    clock.sleepUntil(begin);
    EXPECT_EQ(steps, after);
}

} // namespace
} // namespace tessaro
