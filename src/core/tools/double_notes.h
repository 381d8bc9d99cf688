// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"

namespace tessaro {

/// Of notes with the same start, key and channel on one track the longest stays, the first of those as long.
[[nodiscard]] TESSARO_API EditPlan removeDoubles(std::span<const EvntRef> selection);

} // namespace tessaro
