// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/ring.h"
#include "realtime/loom/que_rec.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace tessaro {

/// The road from the feeder to the engine: records in the order of playing. One writer thread at a time, one reader.
/// Dropping is asked for by anybody but the reader and seen at once in size(); the reader skips what was dropped.
class PlayQueue {
public:
    static constexpr std::size_t capacity = 32'767;

    /// Writer. False when the queue is full.
    bool put(const _LOOM_QUE_REC& record) noexcept
    {
        if (m_ring.size() == capacity) return false;
        // Counted first: the reader may take the record before push() returns.
        m_put.fetch_add(1, std::memory_order_release);
        return m_ring.push(record);
    }

    /// Any thread but the reader's: what stands in the queue now will not be played.
    void drop() noexcept { m_begin.store(m_put.load(std::memory_order_acquire), std::memory_order_release); }

    /// Any thread: records that wait.
    [[nodiscard]] std::size_t size() const noexcept
    {
        const std::uint64_t begin = m_begin.load(std::memory_order_acquire);
        const std::uint64_t taken = m_taken.load(std::memory_order_acquire);
        const std::uint64_t put = m_put.load(std::memory_order_acquire);
        const std::uint64_t gone = begin > taken ? begin : taken;
        return put > gone ? static_cast<std::size_t>(put - gone) : 0;
    }

    /// Reader: the next record to play, null when there is none. It stands still until pop().
    [[nodiscard]] const _LOOM_QUE_REC* front() noexcept
    {
        const std::uint64_t begin = m_begin.load(std::memory_order_acquire);
        while (m_taken.load(std::memory_order_relaxed) < begin && m_ring.front()) pop();
        return m_ring.front();
    }
    /// Reader: the record that many places behind front(), null when there is none.
    [[nodiscard]] const _LOOM_QUE_REC* peek(std::size_t behind) noexcept { return m_ring.peek(behind); }
    void pop() noexcept
    {
        m_ring.drop();
        m_taken.fetch_add(1, std::memory_order_release);
    }
    /// Reader: drops what is there.
    void clear() noexcept
    {
        while (m_ring.front()) pop();
    }

private:
    SpscRing<_LOOM_QUE_REC, capacity + 1> m_ring;
    std::atomic<std::uint64_t> m_put = 0;   // records ever put
    std::atomic<std::uint64_t> m_taken = 0; // records ever taken out
    std::atomic<std::uint64_t> m_begin = 0; // records put before this count are dropped
};

} // namespace tessaro
