// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"

namespace tessaro {

/// Notes of one block that begin together come to stand, and are sent, from the lowest to the highest. The selection is
/// in the order of the song.
[[nodiscard]] TESSARO_API EditPlan sortChords(std::span<const EvntRef> selection);

} // namespace tessaro
