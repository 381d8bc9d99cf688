// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"
#include "core/tools/grid_lines.h"

namespace tessaro {

struct QuantiseSettings {
    enum class What { starts, ends, both };
    enum class Side { near, far };

    GridLength grid;
    What what = What::starts;
    int strength = 100;     ///< percent of the way to the line
    int swing = 0;          ///< percent: 100 puts every second line where the third triplet is
    int reach = 100;        ///< percent of half the grid: what is not farther from its line counts as near
    Side side = Side::near; ///< which of them are to move
};

/// Notes go to the grid. Starts take their lengths along; ends change the length, which never gets to nothing. A line
/// in front of the block's top gives way to the next one.
[[nodiscard]] TESSARO_API EditPlan quantise(const CEditor& editor, std::span<const EvntRef> selection,
                                            const QuantiseSettings& settings);

} // namespace tessaro
