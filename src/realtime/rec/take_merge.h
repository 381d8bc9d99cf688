// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <vector>

namespace tessaro {

class CEditor;

/// Merges the block of a take into those of `selected` that still stand on its track, one after the other, or without
/// any into the nearest block, an earlier one before a later one. Ghosts do not count. A block that begins later moves
/// to the take's top first, while its events stay at their times. The result is the block that holds the take now. An
/// editing step is open; the transport stops.
[[nodiscard]] POSITION mergeTake(CEditor& editor, POSITION trk, POSITION blk, const std::vector<POSITION>& selected);

} // namespace tessaro
