// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/take_merge.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"

#include <algorithm>

namespace tessaro {

namespace {

bool isSource(POSITION blk) noexcept { return List<CBlk>::get(blk)->GetType() == blktype::real; }

/// Where the block ends when it grows to hold its events `delta` ticks later.
std::uint32_t endWith(const CBlk& blk, std::uint32_t delta) noexcept
{
    std::uint32_t end = blk.GetTimeEnd();
    const std::uint32_t top = tick::later(blk.GetTimeTop(), delta);
    for (const CEvnt* e = blk.GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
        end = std::max(end, tick::later(tick::later(top, e->GetTime()), e->GetGateTime()));
    return end;
}

POSITION nearest(POSITION blk) noexcept
{
    for (POSITION at = blk->prev; at; at = at->prev)
        if (isSource(at)) return at;
    for (POSITION at = blk->next; at; at = at->next)
        if (isSource(at)) return at;
    return nullptr;
}

/// Moves a block to an earlier top while its events stay at their times; its new position, null on a refusal.
POSITION moveTop(CEditor& editor, POSITION trk, POSITION blk, std::uint32_t top)
{
    const std::uint32_t delta = editor.GetBlkTimeTop(trk, blk) - top;
    POSITION moved = nullptr;
    if (!editor.BlkMove(trk, blk, trk, top, &moved)) return nullptr;
    // By itself the growth, and that of its ghosts, would not be undone.
    const std::uint32_t end = endWith(*List<CBlk>::get(moved), delta);
    if (end > editor.GetBlkTimeEnd(trk, moved)) editor.BlkSize(trk, moved, end);
    editor.BlkOfst(trk, moved, delta);
    return moved;
}

/// The block that holds both then; the take's own when the other one does not take it.
POSITION mergeInto(CEditor& editor, POSITION trk, POSITION blk, POSITION into)
{
    const std::uint32_t top = editor.GetBlkTimeTop(trk, blk);
    if (editor.GetBlkTimeTop(trk, into) > top) into = moveTop(editor, trk, into, top);
    if (!into) return blk;
    return editor.BlkApp(trk, blk, trk, into) ? into : blk;
}

} // namespace

POSITION mergeTake(CEditor& editor, POSITION trk, POSITION blk, const std::vector<POSITION>& selected)
{
    bool merged = false;
    for (const POSITION at : selected) {
        const bool stands = List<CTrk>::get(trk)->blocks().find(List<CBlk>::get(at));
        if (!stands || !isSource(at) || at == blk) continue;
        blk = mergeInto(editor, trk, blk, at);
        merged = true;
    }
    const POSITION other = merged ? nullptr : nearest(blk);
    return other ? mergeInto(editor, trk, blk, other) : blk;
}

} // namespace tessaro
