// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "files/smf_out/record.h"
#include "files/smf_out/score_playout.h"

#include <span>

namespace tessaro {

// The stages that a list goes through between merging and writing, in this order. Each takes a list sorted by time
// and leaves it so, in linear time, notes apart, which cost the logarithm of how many sound at once. They raise what
// the allocator raises.

/// Plays out the jumps from the source's start to the destination's end. Notes that reach over a jump keep their
/// length.
TESSARO_API void Repeat(const RecordList& source, std::span<const RepeatJump> jumps, RecordList& destination);

/// Moves each note that carries a system exclusive 5 ticks ahead, to tick 0 at the least, behind what stands there.
TESSARO_API void FwdSyng(RecordList& list);

/// Adds the plain note 5 ticks behind each note that carries a system exclusive, behind what stands there.
TESSARO_API void UnpackSyng(RecordList& list);

/// Adds the end of each note with a gate: a note-on of velocity 0 in front of what stands there. Of ends at one tick
/// the later note's stands first.
TESSARO_API void UnpackNote(RecordList& list);

/// Adds the bank's low byte 5 ticks and the program 10 ticks behind each packed voice, behind what stands there.
TESSARO_API void UnpackVce(RecordList& list);

} // namespace tessaro
