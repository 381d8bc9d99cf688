// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/take_merge.h"

#include "core/edit/editor.h"

namespace tessaro {

namespace {

bool isSource(POSITION blk) noexcept { return List<CBlk>::get(blk)->GetType() == blktype::real; }

POSITION nearest(POSITION blk) noexcept
{
    for (POSITION at = blk->prev; at; at = at->prev)
        if (isSource(at)) return at;
    for (POSITION at = blk->next; at; at = at->next)
        if (isSource(at)) return at;
    return nullptr;
}

/// The block that holds both then; the take's own when the other one does not take it.
POSITION mergeInto(CEditor& editor, POSITION trk, POSITION blk, POSITION into)
{
    const std::uint32_t top = editor.GetBlkTimeTop(trk, blk);
    const std::uint32_t intoTop = editor.GetBlkTimeTop(trk, into);
    if (intoTop > top) {
        if (!editor.BlkMove(trk, into, trk, top, &into)) return blk;
        editor.BlkOfst(trk, into, std::int64_t{intoTop} - top);
    }
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
