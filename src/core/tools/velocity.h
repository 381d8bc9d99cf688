// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"

namespace tessaro {

struct VelocitySettings {
    enum class Mode { add, scale, set, compress, ramp };

    Mode mode = Mode::add;
    int amount = 10;   ///< what is added, or the value that is set
    int percent = 100; ///< of the value when scaling; of the distance from the centre when compressing
    int centre = 80;
    int from = 40; ///< of a ramp: at the first note, and at the last
    int to = 100;
};

/// New velocities, within 1 to 127. A ramp runs evenly in time from the first note to the last.
[[nodiscard]] TESSARO_API EditPlan changeVelocity(std::span<const EvntRef> selection, const VelocitySettings& settings);

} // namespace tessaro
