// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"

#include <span>
#include <vector>

namespace tessaro {

class CEditor;

/// The events of blocks in the order of the song: a block's events once, however often it is named, and those of a
/// ghost through its source, where they can change.
[[nodiscard]] std::vector<EvntRef> evntsOf(const CEditor& editor, std::span<const BlkRef> blks);

} // namespace tessaro
