// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdio>

namespace tessaro {
class CEditor;
}

namespace tessaro::cli {

/// Prints what a song is: a line each for kind, tracks in use, blocks, events, notes, tempo, signature, length.
void printInfo(CEditor& editor, std::uint8_t kind, std::FILE* out);

} // namespace tessaro::cli
