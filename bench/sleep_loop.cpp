// SPDX-License-Identifier: GPL-3.0-or-later
// How late a bare loop of absolute-time sleeps wakes up on this machine: the floor under every dispatcher.
#include <benchmark/benchmark.h>
#include <sched.h>
#include <sys/prctl.h>
#include <time.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr std::int64_t nanosPerSecond = 1'000'000'000;
constexpr std::int64_t step = 4'000'000;

std::int64_t now()
{
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC, &t);
    return t.tv_sec * nanosPerSecond + t.tv_nsec;
}

void sleepUntil(std::int64_t deadline)
{
    const timespec t{deadline / nanosPerSecond, deadline % nanosPerSecond};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &t, nullptr) != 0) {}
}

double percentile(std::vector<std::int64_t>& values, double part)
{
    const auto at = static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + at, values.end());
    return static_cast<double>(values[static_cast<std::size_t>(at)]) / 1000;
}

void sleepLoop(benchmark::State& state)
{
    sched_param priority{};
    priority.sched_priority = 70;
    const bool realtime = sched_setscheduler(0, SCHED_FIFO, &priority) == 0;
    prctl(PR_SET_TIMERSLACK, 1UL);
    std::vector<std::int64_t> late;
    std::int64_t deadline = now();
    for ([[maybe_unused]] auto _ : state) {
        deadline += step;
        sleepUntil(deadline);
        late.push_back(now() - deadline);
    }
    state.counters["realtime"] = realtime;
    state.counters["p50_us"] = percentile(late, 0.5);
    state.counters["p99_us"] = percentile(late, 0.99);
    state.counters["max_us"] = percentile(late, 1);
}
BENCHMARK(sleepLoop)->Iterations(4000)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
