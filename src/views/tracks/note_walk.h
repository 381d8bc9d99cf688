// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/trk.h"

#include <cstdint>

namespace tessaro {

/// Calls `visit(absolute time, event)` for every note of the block.
template <class Visit>
void forEachNote(const CBlk& blk, Visit&& visit)
{
    if (!blk.GetRealBlk()) return;
    const List<CEvnt>& events = blk.GetRealBlk()->events();
    for (const CEvnt* e = events.head(); e; e = List<CEvnt>::next(e))
        if (status::kind(e->GetStatus()) == status::note) visit(blk.GetTimeTop() + e->GetTime(), *e);
}

/// The same for every note that the track plays, block by block.
template <class Visit>
void forEachNote(const CTrk& track, Visit&& visit)
{
    for (const CBlk* blk = track.blocks().head(); blk; blk = List<CBlk>::next(blk)) forEachNote(*blk, visit);
}

} // namespace tessaro
