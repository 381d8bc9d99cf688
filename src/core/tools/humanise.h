// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"

namespace tessaro {

/// How far a note may come to be off, at most, to either side.
struct HumaniseSettings {
    int time = 10;    ///< ticks
    int velocity = 8; ///< steps
    int gate = 0;     ///< ticks
    std::uint32_t seed = 1;
};

/// Notes stray by chance, the same way for the same seed. None gets before its block's top, silent or without length.
[[nodiscard]] TESSARO_API EditPlan humanise(std::span<const EvntRef> selection, const HumaniseSettings& settings);

} // namespace tessaro
