// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/range_clear.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"

#include <algorithm>

namespace tessaro {

namespace {

void clearBlk(CEditor& editor, POSITION trk, CBlk& blk, std::uint32_t in, std::uint32_t out)
{
    const std::uint32_t top = blk.GetTimeTop();
    POSITION evnt = blk.GetRealBlk()->GetTimePos(std::max(in, top) - top);
    while (evnt && tick::later(top, List<CEvnt>::get(evnt)->GetTime()) < out) {
        const POSITION next = evnt->next;
        editor.DeleteEvnt(trk, &blk, evnt);
        evnt = next;
    }
}

} // namespace

void clearRange(CEditor& editor, POSITION trk, POSITION kept, std::uint32_t in, std::uint32_t out)
{
    for (CBlk* blk = List<CTrk>::get(trk)->blocks().head(); blk; blk = List<CBlk>::next(blk))
        if (blk != kept && blk->GetType() == blktype::real && blk->GetRealBlk()) clearBlk(editor, trk, *blk, in, out);
}

} // namespace tessaro
