// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"
#include "core/tools/grid_lines.h"

namespace tessaro {

struct GateSettings {
    enum class Mode { add, scale, set, legato };

    Mode mode = Mode::scale;
    int ticks = 0;     ///< that are added
    int percent = 100; ///< of the length that was, or of the one that is set
    GridLength length; ///< that is set
    int gap = 0;       ///< of legato: ticks of silence before the next note; negative to overlap it
};

/// New lengths of notes, of 1 tick at least. Legato reaches to the next of the selected notes on the track that begins
/// later; the last ones keep their lengths.
[[nodiscard]] TESSARO_API EditPlan changeGate(const CEditor& editor, std::span<const EvntRef> selection,
                                              const GateSettings& settings);

} // namespace tessaro
