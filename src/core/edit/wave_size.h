// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

namespace tessaro {

class CEditor;
class WaveLengths;

/// The ends of wave blocks, which follow from the lengths of their sound files and the tempo. Not recorded: another
/// tempo brings other ends. Main thread only.
namespace wave_size {

/// One block of type 1, and its ghosts; false when no length is known.
bool fit(CEditor& editor, WaveLengths& lengths, POSITION trk, POSITION blk);
/// All blocks of all wave tracks.
void fitAll(CEditor& editor, WaveLengths& lengths);

} // namespace wave_size
} // namespace tessaro
