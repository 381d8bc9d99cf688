// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"

namespace tessaro {

struct TransposeSettings {
    enum class By { semitones, major, minor };

    By by = By::semitones;
    int steps = 12; ///< semitones, or steps of the scale
    int tonic = 0;  ///< of the scale: 0 is C, 11 is B
};

/// Notes, and the pressure of single keys, go up or down. Along a scale, a key between two of its steps stays as far
/// above the lower one. When one of them would leave the keys 0 to 127, none moves.
[[nodiscard]] TESSARO_API EditPlan transpose(std::span<const EvntRef> selection, const TransposeSettings& settings);

} // namespace tessaro
