// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tessaro {

/// Bits of a filter mask; a set bit drops the kind. The same in the output, thru and input masks.
namespace filter {
inline constexpr std::uint32_t note = 0x01;
inline constexpr std::uint32_t polyPressure = 0x04;
inline constexpr std::uint32_t control = 0x08;
inline constexpr std::uint32_t program = 0x10;
inline constexpr std::uint32_t pressure = 0x20;
inline constexpr std::uint32_t pitchBend = 0x40;
inline constexpr std::uint32_t sysex = 0x80;
inline constexpr std::uint32_t tempo = 0x0800;
inline constexpr std::uint32_t realTime = 0x1000; ///< input mask only

/// The bit that drops an event of this status on its way out, 0 for what is never dropped.
[[nodiscard]] constexpr std::uint32_t bitOf(std::uint8_t status) noexcept
{
    switch (status & 0xF0U) {
    case 0x10:
    case 0x20:
    case 0xB0: return control;
    case 0x30:
    case 0xC0: return program;
    case 0x60:
    case 0x90: return note;
    case 0xA0: return polyPressure;
    case 0xD0: return pressure;
    case 0xE0: return pitchBend;
    default: return status == 0xF0 ? sysex : 0;
    }
}
} // namespace filter

} // namespace tessaro
