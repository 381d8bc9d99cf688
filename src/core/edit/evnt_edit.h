// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"
#include "core/model/records.h"

#include <cstdint>

namespace tessaro {

class CBlk;
class CEditor;

/// The edits of single events, and the rules for what may stand where. Times in records are absolute; one before
/// the block's top is raised to it. Only blocks of type 1 take edits. Rests never enter the history. Each edit costs
/// logarithmic time, apart from what a time signature does to those behind it. A refusal changes nothing.
/// Main thread only.
namespace evnt_edit {

[[nodiscard]] bool isInsEnable(int trk, std::uint8_t type, const _EDT_EVNT& rec) noexcept;

/// Links and tells; recording the event comes after, and growing the block. Null on a refusal: also for a time
/// signature behind the last bar line that a tick can name.
POSITION insert(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec);
bool insertRecorded(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec);
/// Overwrites, and moves an event that may move when the record's time is another one. A time signature or a Rest
/// does not become another kind, nor another kind one of them.
bool overwrite(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec);
bool move(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, std::uint32_t time);
void removeRecorded(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt);
/// Recording the deletion comes before.
void remove(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt);

bool insertRest(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec);
bool removeRest(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt);

// While the transport runs. No track rules apply.

POSITION record(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec);
bool recordRecorded(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec);
/// A note over a note; it keeps its time.
bool recordOver(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec);
/// Links only.
POSITION recordQuietly(CBlk* blk, const _EDT_EVNT& rec);
void setGateQuietly(POSITION note, std::uint32_t gate) noexcept;

bool joinNotes(CEditor& editor, POSITION trk, POSITION blk, POSITION note, POSITION note2);
bool divideNote(CEditor& editor, POSITION trk, POSITION blk, POSITION note, std::uint32_t time);

} // namespace evnt_edit
} // namespace tessaro
