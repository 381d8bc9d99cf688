// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tessaro {

namespace midi {
inline constexpr std::uint8_t noteOff = 0x80;
inline constexpr std::uint8_t noteOn = 0x90;
inline constexpr std::uint8_t polyTouch = 0xA0;
inline constexpr std::uint8_t control = 0xB0;
inline constexpr std::uint8_t program = 0xC0;
inline constexpr std::uint8_t channelTouch = 0xD0;
inline constexpr std::uint8_t pitchBend = 0xE0;
inline constexpr std::uint8_t sysex = 0xF0;
inline constexpr std::uint8_t songPosition = 0xF2;
inline constexpr std::uint8_t sysexEnd = 0xF7;
inline constexpr std::uint8_t clock = 0xF8;
inline constexpr std::uint8_t start = 0xFA;
inline constexpr std::uint8_t continuePlay = 0xFB;
inline constexpr std::uint8_t stop = 0xFC;

/// Ticks between two clocks, and of one unit of Song Position.
inline constexpr int ticksPerClock = 20;
inline constexpr int ticksPerSixteenth = 120;
} // namespace midi

constexpr bool isData(std::uint8_t byte) { return byte < 0x80; }
constexpr bool isChannelStatus(std::uint8_t status) { return status >= 0x80 && status < 0xF0; }
constexpr bool isRealtime(std::uint8_t status) { return status >= 0xF8; }
constexpr std::uint8_t kindOf(std::uint8_t status) { return status & 0xF0; }
constexpr std::uint8_t channelOf(std::uint8_t status) { return status & 0x0F; }

/// Bytes of a message with this status; 0 for a system exclusive and for what is no status.
constexpr std::size_t messageLength(std::uint8_t status)
{
    switch (kindOf(status)) {
    case midi::noteOff:
    case midi::noteOn:
    case midi::polyTouch:
    case midi::control:
    case midi::pitchBend: return 3;
    case midi::program:
    case midi::channelTouch: return 2;
    default: break;
    }
    switch (status) {
    case 0xF1:
    case 0xF3: return 2;
    case midi::songPosition: return 3;
    case 0xF6:
    case midi::clock:
    case midi::start:
    case midi::continuePlay:
    case midi::stop:
    case 0xFE:
    case 0xFF: return 1;
    default: return 0;
    }
}

/// A whole message that is no system exclusive, its data bytes valid.
inline bool isShortMessage(std::span<const std::uint8_t> bytes)
{
    return !bytes.empty() && messageLength(bytes[0]) == bytes.size()
        && std::all_of(bytes.begin() + 1, bytes.end(), isData);
}

constexpr bool isNoteOn(std::uint8_t status, std::uint8_t velocity)
{
    return kindOf(status) == midi::noteOn && velocity != 0;
}
constexpr bool isNoteOff(std::uint8_t status, std::uint8_t velocity)
{
    return kindOf(status) == midi::noteOff || (kindOf(status) == midi::noteOn && velocity == 0);
}

} // namespace tessaro
