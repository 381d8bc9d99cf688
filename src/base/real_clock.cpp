// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/real_clock.h"

#include <pthread.h>
#include <sched.h>
#include <semaphore.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <ctime>
#include <thread>
#include <utility>

namespace tessaro {

namespace {

Nanos monotonicNow() noexcept
{
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC, &t);
    return std::chrono::seconds(t.tv_sec) + Nanos(t.tv_nsec);
}

timespec toTimespec(Nanos time) noexcept
{
    if (time < Nanos::zero()) return {};
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(time);
    return {.tv_sec = whole.count(), .tv_nsec = (time - whole).count()};
}

bool setPolicy(int policy, int priority) noexcept
{
    sched_param param{};
    param.sched_priority = priority;
    return pthread_setschedparam(pthread_self(), policy, &param) == 0;
}

bool setNice(int nice) noexcept { return setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), nice) == 0; }

/// Gives the calling thread the priority of its urgency, or what comes closest. False when real-time
/// priority was wanted and refused.
bool applyUrgency(Urgency urgency) noexcept
{
    switch (urgency) {
    case Urgency::normal: return true;
    case Urgency::feeder:
        if (!setNice(-10)) setPolicy(SCHED_RR, 1);
        return true;
    case Urgency::engine:
        prctl(PR_SET_TIMERSLACK, 1UL); // the least there is, in ns; the default is 50 µs
        // Above audio servers and their clients, below the kernel's interrupt threads at 50.
        if (setPolicy(SCHED_FIFO, 20) || setPolicy(SCHED_FIFO, 1)) return true;
        setNice(-15);
        return false;
    }
    return true;
}

class Semaphore {
public:
    Semaphore() { sem_init(&m_sem, 0, 0); }
    ~Semaphore() { sem_destroy(&m_sem); }
    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;

    void post() noexcept { sem_post(&m_sem); }

    /// Returns at the deadline or as soon as somebody posts.
    void waitUntil(Nanos deadline) noexcept
    {
        const timespec t = toTimespec(deadline);
        while (sem_clockwait(&m_sem, CLOCK_MONOTONIC, &t) != 0 && errno == EINTR) {}
    }

private:
    sem_t m_sem;
};

class ThreadTask final : public TimedTask {
public:
    ThreadTask(Urgency urgency, Clock::Step step, std::atomic<bool>& refused) : m_step(std::move(step))
    {
        m_thread = std::thread([this, urgency, &refused] {
            if (!applyUrgency(urgency)) refused = true;
            m_ready = true;
            m_ready.notify_one();
            run();
        });
        m_ready.wait(false); // so that the caller can ask at once what was granted
    }

    ~ThreadTask() override
    {
        assert(m_thread.get_id() != std::this_thread::get_id());
        m_stop = true;
        wake();
        m_thread.join();
    }

    ThreadTask(const ThreadTask&) = delete;
    ThreadTask& operator=(const ThreadTask&) = delete;

    void wake() noexcept override
    {
        if (!m_woken.exchange(true)) m_semaphore.post();
    }

private:
    void run()
    {
        while (!m_stop) {
            m_semaphore.waitUntil(m_step(monotonicNow()));
            m_woken.exchange(false); // pairs with wake(): what was written before it is seen by the step
        }
    }

    Clock::Step m_step;
    Semaphore m_semaphore;
    std::atomic<bool> m_ready = false;
    std::atomic<bool> m_stop = false;
    std::atomic<bool> m_woken = false; // keeps the semaphore's count small
    std::thread m_thread;
};

} // namespace

Nanos RealClock::now() const noexcept { return monotonicNow(); }

void RealClock::sleepUntil(Nanos deadline)
{
    const timespec t = toTimespec(deadline);
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &t, nullptr) == EINTR) {}
}

std::unique_ptr<TimedTask> RealClock::start(Urgency urgency, Step step)
{
    return std::make_unique<ThreadTask>(urgency, std::move(step), m_refused);
}

} // namespace tessaro
