// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/watch.h"

#include <utility>

namespace tessaro {

Watch::Watch(std::chrono::milliseconds interval, std::function<void()> errand)
    : m_interval(interval)
    , m_errand(std::move(errand))
    , m_thread([this] { run(); })
{
}

Watch::~Watch()
{
    {
        const std::lock_guard guard(m_lock);
        m_stop = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void Watch::wake()
{
    {
        const std::lock_guard guard(m_lock);
        m_wake = true;
    }
    m_changed.notify_one();
}

void Watch::run()
{
    std::unique_lock guard(m_lock);
    while (!m_stop) {
        guard.unlock();
        m_errand();
        guard.lock();
        m_changed.wait_for(guard, m_interval, [this] { return m_stop || m_wake; });
        m_wake = false;
    }
}

} // namespace tessaro
