// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/timed_messages.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <thread>

namespace tessaro {

TimedMessages::TimedMessages(std::size_t capacity)
    : m_count(std::bit_ceil(std::max<std::size_t>(capacity / sizeof(Cell), 8)))
    , m_cells(std::make_unique_for_overwrite<Cell[]>(m_count))
{
}

bool TimedMessages::isSysex(std::span<const std::uint8_t> bytes) noexcept
{
    return bytes[0] == 0xF0 || bytes[0] == 0xF7 || bytes[0] < 0x80;
}

std::size_t TimedMessages::cellsFor(std::size_t bytes) noexcept
{
    return 1 + (bytes + sizeof(Cell) - 1) / sizeof(Cell);
}

bool TimedMessages::push(std::span<const std::uint8_t> bytes, Nanos due) noexcept
{
    if (bytes.empty() || bytes.size() > m_count * sizeof(Cell)) return false;
    const std::size_t needed = cellsFor(bytes.size());
    std::size_t at = m_written.load(std::memory_order_relaxed);
    const std::size_t room = m_count - (at - m_read.load(std::memory_order_acquire));
    const std::size_t toEnd = m_count - place(at);
    const bool wraps = needed > toEnd;
    if (needed + (wraps ? toEnd : 0) > room) return false;
    if (wraps) {
        m_cells[place(at)].size = skip;
        at += toEnd;
    }
    Cell* cell = &m_cells[place(at)];
    cell->due = due.count();
    cell->size = bytes.size();
    std::memcpy(cell + 1, bytes.data(), bytes.size());
    if (isSysex(bytes)) m_sysex.fetch_add(1, std::memory_order_release);
    m_written.store(at + needed, std::memory_order_release);
    return true;
}

bool TimedMessages::drain(Nanos longest) const
{
    constexpr std::chrono::milliseconds step{1};
    for (Nanos waited{}; m_read.load(std::memory_order_acquire) != m_written.load(std::memory_order_acquire);
         waited += step) {
        if (waited >= longest) return false;
        std::this_thread::sleep_for(step);
    }
    return true;
}

TimedMessages::Record TimedMessages::front() noexcept
{
    std::size_t at = m_read.load(std::memory_order_relaxed);
    if (at == m_written.load(std::memory_order_acquire)) return {};
    if (m_cells[place(at)].size == skip) {
        at += m_count - place(at);
        m_read.store(at, std::memory_order_release);
    }
    const Cell* cell = &m_cells[place(at)];
    return {Nanos(cell->due), {reinterpret_cast<const std::uint8_t*>(cell + 1), cell->size}};
}

void TimedMessages::pop() noexcept
{
    const Record record = front();
    if (!record) return;
    if (isSysex(record.bytes)) m_sysex.fetch_sub(1, std::memory_order_release);
    m_read.store(m_read.load(std::memory_order_relaxed) + cellsFor(record.bytes.size()), std::memory_order_release);
}

void TimedMessages::clear() noexcept
{
    while (front()) pop();
}

} // namespace tessaro
