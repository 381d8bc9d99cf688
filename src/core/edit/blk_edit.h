// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <cstdint>

namespace tessaro {

class CBlk;
class CEditor;
class CRealBlk;
class CTrk;

/// Blocks come, move and go. Each operation records undo and tells the views; a refusal, or memory running out, leaves
/// song and history as they are. The master track takes part in none. A track of another type than the block's must
/// be empty and takes its type then. Ends beyond the last tick stop there. Main thread only.
namespace blk_edit {

/// Who makes a new block: all but `edit` leave the transport running, `take` is for MIDI tracks only and begins with
/// two empty text events.
enum class Maker { edit, recording, take };

/// Null on a refusal.
POSITION create(CEditor& editor, POSITION trk, std::uint32_t top, std::uint32_t end, Maker maker);
/// On a real block of the song, which stays the caller's on a refusal.
POSITION paste(CEditor& editor, POSITION trk, std::uint32_t top, std::uint32_t end, CRealBlk* real);
/// An independent copy; that of a ghost is a ghost.
bool copy(CEditor& editor, POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time);
bool ghost(CEditor& editor, POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time);
/// The new block's position, null on a refusal.
POSITION move(CEditor& editor, POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time);
/// A move as far as the new block, without undo and hint.
POSITION makeMoved(CEditor& editor, POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time);

/// False when the ghosts that would go with the block are to stay; the question comes once a step.
bool mayRemove(CEditor& editor, const CBlk& blk);
bool remove(CEditor& editor, POSITION trk, POSITION blk);
/// All ghosts of the block's real block.
void removeGhosts(CEditor& editor, const CBlk& blk);
[[nodiscard]] bool hasGhost(const CEditor& editor, const CBlk& blk) noexcept;
/// The source of a ghost and its track; false without one.
bool findSource(const CEditor& editor, const CBlk& blk, POSITION& srcTrk, POSITION& srcBlk) noexcept;

/// True for every track but the master.
[[nodiscard]] bool isOrdinary(POSITION trk) noexcept;

} // namespace blk_edit
} // namespace tessaro
