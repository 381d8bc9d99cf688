// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <thread>

namespace tessaro {

/// A small table of borrowed objects that one callback thread walks while another thread changes it. The walk
/// never waits. `remove` waits until a walk under way is over, so that the object may be destroyed behind it;
/// it is not to be called from within a walk.
template <class T, std::size_t Size>
class RtSlots {
public:
    /// Control thread; one at a time. False when the table is full.
    bool add(T& object) noexcept
    {
        for (auto& slot : m_slots) {
            if (slot.load(std::memory_order_relaxed)) continue;
            slot.store(&object, std::memory_order_release);
            return true;
        }
        return false;
    }

    /// Control thread; one at a time. Does nothing for an object that is not in the table.
    void remove(const T& object) noexcept
    {
        for (auto& slot : m_slots)
            if (slot.load(std::memory_order_relaxed) == &object) slot.store(nullptr, std::memory_order_seq_cst);
        waitForWalk();
    }

    /// Callback thread; one at a time. Objects come in no particular order.
    template <class Visit>
    void forEach(Visit&& visit) noexcept
    {
        m_walks.fetch_add(1, std::memory_order_seq_cst);
        for (auto& slot : m_slots)
            if (T* object = slot.load(std::memory_order_seq_cst)) visit(*object);
        m_walks.fetch_add(1, std::memory_order_seq_cst);
    }

    /// Control thread, when the callback thread has ended for good, in the midst of a walk perhaps.
    void reset() noexcept { m_walks.store(0, std::memory_order_seq_cst); }

private:
    // The count is odd during a walk. A walk that begins later sees the slot already empty.
    void waitForWalk() const noexcept
    {
        const std::uint32_t seen = m_walks.load(std::memory_order_seq_cst);
        if (seen % 2 == 0) return;
        while (m_walks.load(std::memory_order_seq_cst) == seen)
            std::this_thread::sleep_for(std::chrono::microseconds(50));
    }

    std::array<std::atomic<T*>, Size> m_slots{};
    std::atomic<std::uint32_t> m_walks{0};
};

} // namespace tessaro
