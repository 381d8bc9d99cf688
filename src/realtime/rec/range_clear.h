// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <cstdint>

namespace tessaro {

class CEditor;

/// Deletes what begins from tick `in` to before `out` in the blocks of a track, other than `kept`. Ghosts are left to
/// their sources. An editing step is open; the transport stops. A score entry goes with the last event that refers
/// to it.
void clearRange(CEditor& editor, POSITION trk, POSITION kept, std::uint32_t in, std::uint32_t out);

} // namespace tessaro
