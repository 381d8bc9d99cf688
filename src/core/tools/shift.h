// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"

namespace tessaro {

/// A distance in time, later where positive. Bars and beats are as long as where the selection begins.
struct ShiftSettings {
    int bars = 0;
    int beats = 0;
    int ticks = 0;
};

/// All events go the same way, so far that none gets before the top of its block. Signatures and copyright notices
/// stay.
[[nodiscard]] TESSARO_API EditPlan shift(const CEditor& editor, std::span<const EvntRef> selection,
                                         const ShiftSettings& settings);

} // namespace tessaro
