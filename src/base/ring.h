// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tessaro {

/// Distance that keeps two threads off each other's cache lines.
inline constexpr std::size_t cacheLine = 64;

/// A ring of N entries between one writer thread and one reader thread, N - 1 of them usable at a
/// time. No waiting, no allocation. The reader may also look at entries in place: they stand still
/// until dropped. A full ring refuses the new entry.
template <class T, std::size_t N>
class SpscRing {
    static_assert(std::is_trivially_copyable_v<T> && N >= 2);

public:
    static constexpr std::size_t capacity = N - 1;

    /// Writer.
    bool push(const T& value) noexcept
    {
        const std::size_t write = m_write.load(std::memory_order_relaxed);
        const std::size_t next = after(write);
        if (next == m_read.load(std::memory_order_acquire)) return false;
        m_entries[write] = value;
        m_write.store(next, std::memory_order_release);
        return true;
    }

    /// Reader: the oldest entry, null when there is none. It stays until drop().
    [[nodiscard]] T* front() noexcept
    {
        const std::size_t read = m_read.load(std::memory_order_relaxed);
        return read == m_write.load(std::memory_order_acquire) ? nullptr : &m_entries[read];
    }

    /// Reader: the entry that many places behind the oldest, null when there is none.
    [[nodiscard]] T* peek(std::size_t behind) noexcept
    {
        return behind < size() ? &m_entries[(m_read.load(std::memory_order_relaxed) + behind) % N] : nullptr;
    }

    /// Reader: gives the oldest entry's place back. Nothing on an empty ring.
    void drop() noexcept
    {
        if (front()) m_read.store(after(m_read.load(std::memory_order_relaxed)), std::memory_order_release);
    }

    /// Reader.
    bool pop(T& value) noexcept
    {
        const T* oldest = front();
        if (!oldest) return false;
        value = *oldest;
        drop();
        return true;
    }

    /// Reader: makes the ring empty.
    void clear() noexcept { m_read.store(m_write.load(std::memory_order_acquire), std::memory_order_release); }

    /// Any thread; the other side may be changing it meanwhile.
    [[nodiscard]] std::size_t size() const noexcept { return (writeIndex() + N - readIndex()) % N; }
    [[nodiscard]] bool empty() const noexcept { return writeIndex() == readIndex(); }

    /// For readers that walk by index: the place of the next entry to be written and of the oldest
    /// one, both from 0 to N - 1.
    [[nodiscard]] std::size_t writeIndex() const noexcept { return m_write.load(std::memory_order_acquire); }
    [[nodiscard]] std::size_t readIndex() const noexcept { return m_read.load(std::memory_order_acquire); }
    [[nodiscard]] T* entries() noexcept { return m_entries.data(); }

private:
    static std::size_t after(std::size_t index) noexcept { return index + 1 == N ? 0 : index + 1; }

    alignas(cacheLine) std::atomic<std::size_t> m_write = 0;
    alignas(cacheLine) std::atomic<std::size_t> m_read = 0;
    alignas(cacheLine) std::array<T, N> m_entries{};
};

/// A queue of at most N values from many writer threads to one reader thread. No lock, no allocation;
/// the reader never waits. The values of one writer arrive in the order of their writing. A value
/// whose writer was interrupted half-way holds back the later ones until it is finished.
template <class T, std::size_t N>
class MpscQueue {
    static_assert(std::is_trivially_copyable_v<T> && N >= 2);

public:
    static constexpr std::size_t capacity = N;

    MpscQueue() noexcept
    {
        for (std::size_t i = 0; i < N; ++i) m_cells[i].turn.store(i, std::memory_order_relaxed);
    }

    /// Any thread. False when the queue is full.
    bool push(const T& value) noexcept
    {
        std::uint64_t ticket = m_tail.load(std::memory_order_relaxed);
        for (;;) {
            Cell& cell = m_cells[ticket % N];
            const std::uint64_t turn = cell.turn.load(std::memory_order_acquire);
            if (turn < ticket) return false; // still holds the value of the round before
            if (turn > ticket) {             // another writer was faster
                ticket = m_tail.load(std::memory_order_relaxed);
            } else if (m_tail.compare_exchange_weak(ticket, ticket + 1, std::memory_order_relaxed)) {
                cell.value = value;
                cell.turn.store(ticket + 1, std::memory_order_release);
                return true;
            }
        }
    }

    /// Reader. False when nothing is ready.
    bool pop(T& value) noexcept
    {
        if (!ready()) return false;
        Cell& cell = m_cells[m_head % N];
        value = cell.value;
        cell.turn.store(m_head + N, std::memory_order_release);
        ++m_head;
        return true;
    }

    /// Reader: true when the next pop will succeed.
    [[nodiscard]] bool ready() const noexcept
    {
        return m_cells[m_head % N].turn.load(std::memory_order_acquire) == m_head + 1;
    }

private:
    // A cell's turn tells whose it is: the ticket it waits for, or that ticket + 1 when it holds a value.
    struct Cell {
        std::atomic<std::uint64_t> turn;
        T value;
    };

    alignas(cacheLine) std::atomic<std::uint64_t> m_tail = 0;
    alignas(cacheLine) std::uint64_t m_head = 0;
    alignas(cacheLine) std::array<Cell, N> m_cells{};
};

} // namespace tessaro
