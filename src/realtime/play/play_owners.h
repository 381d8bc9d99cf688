// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"
#include "base/messages.h"
#include "realtime/loom/que_rec.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace tessaro {

class Loom;

/// A channel message that was played, as its receiver reads it from message 0x432.
struct PlayedMessage {
    std::uint8_t port = 0;
    std::uint8_t status = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
};

/// Codes of played messages, in wParam.
namespace played {
inline constexpr std::uint8_t noteOn = 1;
inline constexpr std::uint8_t noteOff = 2;
inline constexpr std::uint8_t control = 4;
inline constexpr std::uint8_t program = 5;
inline constexpr std::uint8_t sysex = 8;

/// Bits of an owner's mask.
inline constexpr std::uint8_t noteOffBit = 0x01;
inline constexpr std::uint8_t noteOnBit = 0x02;
inline constexpr std::uint8_t controlBit = 0x08;
inline constexpr std::uint8_t programBit = 0x10;
inline constexpr std::uint8_t sysexBit = 0x80;
} // namespace played

/// The up to 8 receivers that hear of played messages, each with a mask of the kinds it wants.
///
/// Registering, releasing and `tell` belong to the user interface thread, `post` to the record thread. After a release
/// the receiver gets nothing more. The entry behind a message is a copy in a ring of its own: read it with `read`,
/// soon; it is used again 4,096 messages later.
class TESSARO_API PlayOwners {
public:
    PlayOwners(Loom& loom, Clock& clock) : m_loom(loom), m_clock(clock) {}

    /// The slot, or -1 when all are in use.
    int add(MessageTarget* owner, std::uint8_t mask);
    /// Ignores a slot that is outside 0 to 7 or empty.
    void release(int slot);
    void clear();

    void post(const LoomRingEntry& entry) { spread(entry, false); }
    /// The receivers have handled it when this returns.
    void tell(const LoomRingEntry& entry) { spread(entry, true); }

    [[nodiscard]] static PlayedMessage read(const Message& message) noexcept;

private:
    struct Slot {
        std::atomic<MessageTarget*> owner{nullptr};
        std::atomic<std::uint8_t> mask{0};
    };
    // As many words as an entry; whole words, so that a reader that is late by a whole ring reads an odd message
    // and nothing worse.
    using Words = std::array<std::uint32_t, sizeof(LoomRingEntry) / sizeof(std::uint32_t)>;
    using Copy = std::array<std::atomic<std::uint32_t>, std::tuple_size_v<Words>>;
    static_assert(sizeof(Copy) == sizeof(LoomRingEntry));

    void spread(const LoomRingEntry& entry, bool now);
    const Copy& keep(const LoomRingEntry& entry) noexcept;

    Loom& m_loom;
    Clock& m_clock;
    std::array<Slot, 8> m_slots;
    int m_count = 0;
    std::atomic<bool> m_posting{false};
    std::atomic<std::uint32_t> m_next{0};
    std::array<Copy, 4096> m_copies{};
};

} // namespace tessaro
