// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdio>

namespace tessaro {
class CEditor;
}

namespace tessaro::cli {

/// Prints the whole song, one JSON object a line: the song, the tempo map, the measure map, the tracks in
/// use with their blocks, and the events of each real block.
void dumpSong(CEditor& editor, std::uint8_t kind, std::FILE* out);

} // namespace tessaro::cli
