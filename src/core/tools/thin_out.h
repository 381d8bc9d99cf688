// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"

namespace tessaro {

/// How close an event must stand to the one before it that is kept, to go. Both distances count; 0 leaves one out.
struct ThinSettings {
    int ticks = 20; ///< less than so many behind it
    int value = 0;  ///< differs by less; of a pitch bend the upper seven bits count
};

/// Controllers, pitch bends and pressures get fewer, each controller, key and channel by itself. The last one before a
/// pause stays, so that no value is left hanging.
[[nodiscard]] TESSARO_API EditPlan thinOut(std::span<const EvntRef> selection, const ThinSettings& settings);

} // namespace tessaro
