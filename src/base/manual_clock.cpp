// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace tessaro {

namespace {

// More steps than any burst of events at one time takes: a task has stopped asking for later times.
constexpr int standstillLimit = 10'000'000;

} // namespace

struct ManualClock::Entry {
    Step step;
    Nanos due;
    bool running = false;
    bool woken = false; // while running: run again at once
    bool ended = false; // while running: delete after the step
};

class ManualClock::Task final : public TimedTask {
public:
    Task(ManualClock& clock, Entry& entry) : m_clock(clock), m_entry(entry) {}
    ~Task() override { m_clock.end(m_entry); }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;

    void wake() noexcept override { m_clock.wake(m_entry); }

private:
    ManualClock& m_clock;
    Entry& m_entry;
};

ManualClock::ManualClock(Nanos start) : m_now(start) {}

ManualClock::~ManualClock() { assert(m_entries.empty()); }

std::unique_ptr<TimedTask> ManualClock::start(Urgency, Step step)
{
    m_entries.push_back(std::make_unique<Entry>(Entry{.step = std::move(step), .due = m_now}));
    return std::make_unique<Task>(*this, *m_entries.back());
}

void ManualClock::sleepUntil(Nanos deadline)
{
    for (Entry* entry = next(); entry && entry->due <= deadline; entry = next()) run(*entry);
    if (m_now < deadline) {
        m_now = deadline;
        m_standstill = 0;
    }
}

Nanos ManualClock::nextDue() const noexcept
{
    const Entry* entry = next();
    return entry ? entry->due : Nanos::max();
}

ManualClock::Entry* ManualClock::next() const noexcept
{
    Entry* earliest = nullptr;
    for (const auto& entry : m_entries)
        if (!entry->running && (!earliest || entry->due < earliest->due)) earliest = entry.get();
    return earliest;
}

void ManualClock::run(Entry& entry)
{
    if (entry.due > m_now) {
        m_now = entry.due;
        m_standstill = 0;
    }
    ++m_standstill;
    assert(m_standstill < standstillLimit);

    entry.running = true;
    ++m_depth;
    const Nanos wanted = entry.step(m_now);
    --m_depth;
    entry.running = false;
    entry.due = std::exchange(entry.woken, false) ? m_now : std::max(wanted, m_now);
    if (entry.ended) remove(entry);
}

void ManualClock::wake(Entry& entry)
{
    if (entry.running) {
        entry.woken = true;
        return;
    }
    entry.due = m_now;
    if (m_depth == 0) sleepUntil(m_now);
}

void ManualClock::end(Entry& entry) noexcept
{
    entry.ended = true;
    if (!entry.running) remove(entry);
}

void ManualClock::remove(const Entry& entry) noexcept
{
    std::erase_if(m_entries, [&](const auto& e) { return e.get() == &entry; });
}

} // namespace tessaro
