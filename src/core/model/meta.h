// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

namespace tessaro {

/// Meta event types that the song model itself reads.
namespace meta {
inline constexpr std::uint8_t text = 0x01;
inline constexpr std::uint8_t copyright = 0x02;
inline constexpr std::uint8_t trackName = 0x03;
inline constexpr std::uint8_t lyric = 0x05;
inline constexpr std::uint8_t endOfTrack = 0x2F;
inline constexpr std::uint8_t tempo = 0x51;
inline constexpr std::uint8_t timeSignature = 0x58;
inline constexpr std::uint8_t keySignature = 0x59;
inline constexpr std::uint8_t sequencer = 0x7F;
} // namespace meta

/// True when a meta event of this type may have a body of `size` bytes. Types of 0x80 and above never may.
[[nodiscard]] constexpr bool isMetaSizeLegal(std::uint8_t type, std::uint32_t size) noexcept
{
    switch (type) {
    case 0x00: return size == 2;
    case 0x20: return size == 1;
    case 0x2F: return size == 0;
    case 0x51: return size == 3;
    case 0x55: return size == 5;
    case 0x58: return size == 4;
    case 0x59: return size == 2;
    default: return type < 0x80;
    }
}

/// True for the body of a sequencer meta that refers to a score entry: a head of three bytes and a number in five
/// bytes of 7 bits.
[[nodiscard]] inline bool isScoreLinkBody(std::span<const std::uint8_t> body) noexcept
{
    return body.size() == 8 && body[0] == 0x43 && body[1] == 0x00 && body[2] == 0x00
        && std::all_of(body.begin() + 3, body.end(), [](std::uint8_t b) { return b < 0x80; });
}

} // namespace tessaro
