// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/play_owners.h"

#include "realtime/loom/loom.h"

#include <bit>

namespace tessaro {

namespace {
struct Kind {
    std::uint8_t code;
    std::uint8_t bit;
};

Kind kindOf(const LoomRingEntry& entry) noexcept
{
    switch (entry.status & 0xF0U) {
    case 0x90:
        return entry.data2 == 0 ? Kind{played::noteOff, played::noteOffBit} : Kind{played::noteOn, played::noteOnBit};
    case 0xB0: return {played::control, played::controlBit};
    case 0xC0: return {played::program, played::programBit};
    case 0xF0: return {played::sysex, played::sysexBit};
    default: return {0, 0};
    }
}
} // namespace

int PlayOwners::add(MessageTarget* owner, std::uint8_t mask)
{
    for (std::size_t i = 0; i < m_slots.size(); ++i) {
        if (m_slots[i].owner.load(std::memory_order_relaxed)) continue;
        m_slots[i].mask.store(mask, std::memory_order_relaxed);
        m_slots[i].owner.store(owner, std::memory_order_release);
        if (m_count == 0) m_loom.setLoomOwner(owner);
        ++m_count;
        return static_cast<int>(i);
    }
    return -1;
}

void PlayOwners::release(int slot)
{
    if (slot < 0 || static_cast<std::size_t>(slot) >= m_slots.size()) return;
    Slot& s = m_slots[static_cast<std::size_t>(slot)];
    if (!s.owner.load(std::memory_order_relaxed)) return;
    s.owner.store(nullptr);
    while (m_posting.load()) m_clock.sleepFor(std::chrono::milliseconds{1});
    if (--m_count < 1) {
        m_loom.setLoomOwner(nullptr);
        m_count = 0;
    }
}

void PlayOwners::clear()
{
    for (int slot = 0; slot < static_cast<int>(m_slots.size()); ++slot) release(slot);
}

void PlayOwners::spread(const LoomRingEntry& entry, bool now)
{
    const Kind kind = kindOf(entry);
    if (kind.bit == 0) return;
    if (!now) m_posting.store(true); // before an owner is read, so that a release waits for us
    const Copy* copy = nullptr;
    for (Slot& slot : m_slots) {
        MessageTarget* owner = slot.owner.load();
        if (!owner || !(slot.mask.load(std::memory_order_relaxed) & kind.bit)) continue;
        if (!copy) copy = &keep(entry);
        const Message message{msg::data, kind.code, reinterpret_cast<std::intptr_t>(copy)};
        if (now)
            owner->send(message);
        else
            owner->post(message);
    }
    if (!now) m_posting.store(false);
}

const PlayOwners::Copy& PlayOwners::keep(const LoomRingEntry& entry) noexcept
{
    Copy& copy = m_copies[m_next.fetch_add(1, std::memory_order_relaxed) % m_copies.size()];
    const Words words = std::bit_cast<Words>(entry);
    for (std::size_t i = 0; i < words.size(); ++i) copy[i].store(words[i], std::memory_order_relaxed);
    return copy;
}

PlayedMessage PlayOwners::read(const Message& message) noexcept
{
    const Copy& copy = *reinterpret_cast<const Copy*>(message.lParam);
    Words words;
    for (std::size_t i = 0; i < words.size(); ++i) words[i] = copy[i].load(std::memory_order_relaxed);
    const auto entry = std::bit_cast<LoomRingEntry>(words);
    return {static_cast<std::uint8_t>(entry.time), entry.status, entry.data1, entry.data2};
}

} // namespace tessaro
