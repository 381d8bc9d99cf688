// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/message_ring.h"

#include "realtime/loom/midi_bytes.h"

#include <algorithm>
#include <limits>

namespace tessaro {

namespace {

std::uint16_t after(std::uint16_t index)
{
    return index + 1 == loomRingEntries ? std::uint16_t{0} : static_cast<std::uint16_t>(index + 1);
}

} // namespace

bool MessageRing::full() const noexcept
{
    return after(m_write.load(std::memory_order_relaxed)) == m_read.load(std::memory_order_acquire);
}

bool MessageRing::put(const LoomRingEntry& entry, std::size_t start) noexcept
{
    const std::uint16_t write = m_write.load(std::memory_order_relaxed);
    m_entries[write] = entry;
    m_start[write] = start;
    m_write.store(after(write), std::memory_order_release);
    return true;
}

bool MessageRing::putShort(std::uint32_t time, std::uint8_t status, std::uint8_t data1, std::uint8_t data2) noexcept
{
    if (full()) return false;
    LoomRingEntry entry;
    entry.time = time;
    entry.status = status;
    entry.data1 = data1;
    entry.data2 = data2;
    return put(entry, m_head);
}

bool MessageRing::putSysex(std::uint32_t time, std::span<const std::uint8_t> first,
                           std::span<const std::uint8_t> rest) noexcept
{
    const std::size_t size = first.size() + rest.size();
    if (size == 0 || full()) return false;
    std::uint8_t* bytes = reserve(size);
    if (!bytes) return false;
    std::ranges::copy(rest, std::ranges::copy(first, bytes).out);

    LoomRingEntry entry;
    entry.time = time;
    const bool whole = bytes[0] == midi::sysex && size <= std::numeric_limits<std::uint16_t>::max();
    entry.status = whole ? midi::sysex : midi::sysexEnd;
    entry.size = static_cast<std::uint32_t>(size);
    entry.length = static_cast<std::uint16_t>(size);
    entry.data = bytes;
    return put(entry, static_cast<std::size_t>(bytes - m_bytes.data()));
}

/// The place for `size` bytes in one piece, behind the newest entry's or at the start; null when there is none.
std::uint8_t* MessageRing::reserve(std::size_t size) noexcept
{
    const std::uint16_t read = m_read.load(std::memory_order_acquire);
    std::size_t tail = 0;
    if (read == m_write.load(std::memory_order_relaxed)) {
        m_head = 0;
    } else {
        tail = m_start[read];
    }
    // head == tail means that no byte is in use, so the head never catches up with the tail.
    std::size_t start = m_head;
    if (m_head >= tail) {
        if (m_bytes.size() - m_head < size) {
            if (tail <= size) return nullptr;
            start = 0;
        }
    } else if (tail - m_head <= size) {
        return nullptr;
    }
    m_head = start + size;
    return m_bytes.data() + start;
}

void MessageRing::free() noexcept
{
    std::uint16_t read = m_read.load(std::memory_order_relaxed);
    do {
        if (read == m_write.load(std::memory_order_acquire)) return;
    } while (!m_read.compare_exchange_weak(read, after(read), std::memory_order_acq_rel));
}

} // namespace tessaro
