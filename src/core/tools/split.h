// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/tools/edit_plan.h"

namespace tessaro {

// Parts of a selection go to other tracks: each block gets one of its own there, over the same span.

struct SplitSettings {
    int key = 60;  ///< the lowest that stays
    int track = 0; ///< where the notes below it go: a MIDI track or one without blocks; not their own
};

[[nodiscard]] TESSARO_API EditPlan splitByPitch(std::span<const EvntRef> selection, const SplitSettings& settings);
/// Channel events of another channel than their track's go to an empty track, which gets that channel, and the port of
/// their own.
[[nodiscard]] TESSARO_API EditPlan splitByChannel(const CEditor& editor, std::span<const EvntRef> selection);
/// Of notes that begin together on a track the highest stays; the second goes to one empty track, the third to another
/// and so on, which sound as their own.
[[nodiscard]] TESSARO_API EditPlan separateChords(const CEditor& editor, std::span<const EvntRef> selection);

} // namespace tessaro
