// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/que_rec.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

/// A ring of messages on their way out of the engine, 599 at a time, with room for the bytes of system exclusives.
/// The engine writes; readers walk from their own index to writeIndex() and free the entries in order. An entry and
/// its bytes stand still until freed.
class MessageRing {
public:
    static constexpr std::size_t byteRoom = 1 << 20;

    MessageRing() : m_bytes(byteRoom) {}

    // Engine thread. False when the ring or the room for bytes is full, and the message is lost.
    bool putShort(std::uint32_t time, std::uint8_t status, std::uint8_t data1, std::uint8_t data2) noexcept;
    /// A whole system exclusive or a slice. The entry has status 0xF0 if `first` starts with it and the length fits 16
    /// bits, otherwise 0xF7. The bytes are those of `first` followed by those of `rest`.
    bool putSysex(std::uint32_t time, std::span<const std::uint8_t> first,
                  std::span<const std::uint8_t> rest = {}) noexcept;

    // Any thread.
    [[nodiscard]] const LoomRingEntry* entries() const noexcept { return m_entries.data(); }
    [[nodiscard]] std::uint16_t writeIndex() const noexcept { return m_write.load(std::memory_order_acquire); }
    /// Where the oldest entry is, or will be.
    [[nodiscard]] std::uint16_t readIndex() const noexcept { return m_read.load(std::memory_order_acquire); }
    /// Frees the oldest entry; nothing on an empty ring.
    void free() noexcept;

private:
    bool put(const LoomRingEntry& entry, std::size_t start) noexcept;
    [[nodiscard]] bool full() const noexcept;
    std::uint8_t* reserve(std::size_t size) noexcept;

    std::array<LoomRingEntry, loomRingEntries> m_entries{};
    std::array<std::size_t, loomRingEntries> m_start{}; // where the bytes of each entry and the later ones start
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_head = 0; // first byte behind those of the newest entry
    std::atomic<std::uint16_t> m_write = 0;
    std::atomic<std::uint16_t> m_read = 0;
};

} // namespace tessaro
