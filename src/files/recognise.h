// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/records.h"

#include <cstdint>

namespace tessaro {

/// Kinds of song file, as the first field of `_EDT_FILE` has them.
namespace filekind {
inline constexpr std::uint8_t unknown = 0;
inline constexpr std::uint8_t smf0 = 1;
inline constexpr std::uint8_t smf1 = 2;
inline constexpr std::uint8_t zp = 3;
inline constexpr std::uint8_t native = 4;
inline constexpr std::uint8_t nativeWave = 5;
inline constexpr std::uint8_t vb = 6; ///< a chunk for each port; reads back as smf1
} // namespace filekind

/// Tells what kind of song file a buffer of `length` bytes holds, and where its chunks stand. Takes time in
/// proportion to the length. A file with a division of 0, or with a chunk that reaches past the file's
/// end, is of no known kind.
[[nodiscard]] _EDT_FILE recogniseFile(std::uint8_t* buffer, std::uint32_t length);

} // namespace tessaro
