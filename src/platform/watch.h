// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace tessaro {

/// A background thread at normal priority that runs one errand again and again: the place for device work that
/// may take its time. Destroying it waits for an errand under way.
class Watch {
public:
    /// The errand runs at once, and then with a pause of `interval` between two runs.
    Watch(std::chrono::milliseconds interval, std::function<void()> errand);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// Cuts the pause short. Any thread but a real-time one.
    void wake();

private:
    void run();

    const std::chrono::milliseconds m_interval;
    const std::function<void()> m_errand;
    std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_stop = false;
    bool m_wake = false;
    std::thread m_thread;
};

} // namespace tessaro
