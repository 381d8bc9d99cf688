// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace tessaro {

/// The computer's keys as two rows of piano keys: Z to / from the lowest C on, with their black keys one row above, and
/// Q to P an octave higher. Semitones count from that C.
inline constexpr int typedSemitones = 29;

/// By the place of the key where the system tells it, 0 for unknown, otherwise by what the key says. None for a key
/// that plays nothing.
[[nodiscard]] std::optional<int> semitoneOfKey(std::uint32_t scanCode, int key);
/// What stands on the keys that play this semitone; two of them in the middle, where the rows overlap.
[[nodiscard]] QString keysOfSemitone(int semitone);

} // namespace tessaro
