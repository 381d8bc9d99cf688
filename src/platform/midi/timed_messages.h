// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace tessaro {

/// A single-writer, single-reader ring of timed MIDI messages of any length. Neither side waits or allocates.
class TimedMessages {
public:
    struct Record {
        Nanos due{};
        std::span<const std::uint8_t> bytes; ///< in the ring: valid until `pop`
        [[nodiscard]] explicit operator bool() const noexcept { return !bytes.empty(); }
    };

    /// `capacity` in bytes; each message takes its length and up to 31 bytes more. A message of less than
    /// half the capacity always fits in an empty ring.
    explicit TimedMessages(std::size_t capacity);

    /// Writer. False: no room, or nothing to put.
    bool push(std::span<const std::uint8_t> bytes, Nanos due) noexcept;

    /// Any thread but the reader's. Waits until the reader has taken all that was put, at most `longest`; false when it
    /// has not.
    bool drain(Nanos longest) const;

    /// Reader. The oldest message, or an empty record.
    [[nodiscard]] Record front() noexcept;
    /// Reader. Drops the oldest message, which `front` has shown.
    void pop() noexcept;
    /// Reader. Drops all that has been put so far.
    void clear() noexcept;

    /// Any thread. A system exclusive, or a slice of one, waits in the ring.
    [[nodiscard]] bool holdsSysex() const noexcept { return m_sysex.load(std::memory_order_acquire) != 0; }

private:
    struct alignas(16) Cell {
        std::int64_t due;
        std::size_t size;
    };
    static constexpr std::size_t skip = ~std::size_t{0}; ///< size of the mark "go on at the start"

    [[nodiscard]] static bool isSysex(std::span<const std::uint8_t> bytes) noexcept;
    [[nodiscard]] static std::size_t cellsFor(std::size_t bytes) noexcept;
    [[nodiscard]] std::size_t place(std::size_t index) const noexcept { return index % m_count; }

    const std::size_t m_count; ///< cells
    const std::unique_ptr<Cell[]> m_cells;
    std::atomic<std::size_t> m_written{0}; ///< cells ever written, skipped ones included
    std::atomic<std::size_t> m_read{0};
    std::atomic<std::uint32_t> m_sysex{0};
};

} // namespace tessaro
