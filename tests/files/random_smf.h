// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/plain_song.h"
#include "support/random.h"

namespace tessaro::test {

/// A random file of format 0, 1 or with the ZP extension, small, and full of what is rare: notes of pitch 0, overlaps,
/// running status behind metas, split system exclusives, events that reach into the next chunk, more tracks
/// than a song has, junk in front.
Bytes randomSmf(Dice& dice);
/// Changes a few bytes behind the header.
void damage(Bytes& file, Dice& dice);

} // namespace tessaro::test
