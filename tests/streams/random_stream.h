// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <cstdint>
#include <vector>

namespace tessaro::test {

using Bytes = std::vector<std::uint8_t>;

/// A message of a performance.
struct Played {
    Nanos at{}; ///< since the first one
    Bytes bytes;

    [[nodiscard]] std::uint8_t kind() const { return bytes[0] < 0xF0 ? bytes[0] & 0xF0U : bytes[0]; }
    [[nodiscard]] unsigned channel() const { return bytes[0] & 0x0FU; }
    [[nodiscard]] bool isNoteOn() const { return kind() == 0x90 && bytes[2] != 0; }
    [[nodiscard]] bool isNoteOff() const { return kind() == 0x80 || (kind() == 0x90 && bytes[2] == 0); }
};

/// What somebody might play on all sixteen channels: notes that overlap but never on one key, both pressures,
/// controllers, bends, programs and system exclusives of 5 to 2,000 bytes, evenly at first and then in bursts of no
/// distance. In order of time; all notes end. The same seed gives the same performance. The rate is the highest.
std::vector<Played> randomPerformance(std::uint32_t seed, Nanos length, unsigned messagesPerSecond);

} // namespace tessaro::test
