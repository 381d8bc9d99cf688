// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_evnts.h"

#include "core/edit/editor.h"

#include <algorithm>
#include <unordered_set>

namespace tessaro {

std::vector<EvntRef> evntsOf(const CEditor& editor, std::span<const BlkRef> blks)
{
    struct Timed {
        std::uint32_t time;
        int track;
        EvntRef ref;
    };
    std::vector<Timed> found;
    std::unordered_set<const CRealBlk*> seen;
    for (BlkRef at : blks) {
        const CBlk* blk = List<CBlk>::get(at.blk);
        if (!seen.insert(blk->GetRealBlk()).second) continue;
        if (blk->GetType() == blktype::ghost && !editor.SrchSrcBlk(at.trk, at.blk, at.trk, at.blk)) continue;
        blk = List<CBlk>::get(at.blk);
        const int track = Song::numberOf(at.trk);
        for (POSITION evnt = blk->GetHeadPos(); evnt; evnt = evnt->next)
            found.push_back({blk->GetTimeTop() + List<CEvnt>::get(evnt)->GetTime(), track, {at.trk, at.blk, evnt}});
    }
    std::ranges::stable_sort(found, {}, [](const Timed& t) { return std::pair(t.time, t.track); });
    std::vector<EvntRef> refs;
    refs.reserve(found.size());
    for (const Timed& timed : found) refs.push_back(timed.ref);
    return refs;
}

} // namespace tessaro
