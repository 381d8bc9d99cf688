// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/load_steps.h"

#include "core/edit/song.h"
#include "core/maps/meas_map.h"
#include "core/model/meta.h"

namespace tessaro::load_steps {

namespace {

/// `measuresOn` bar lines behind the start of the measure that holds `time`.
std::uint32_t barLine(const MeasMap& meas, std::uint32_t time, std::uint32_t measuresOn)
{
    const std::uint32_t number = meas.TimeToMeas(time).meas - 1; // MeasToTime counts from 0
    return meas.MeasToTime({number + measuresOn, 0, 0});
}

void snapBlk(CBlk& blk, const MeasMap& meas)
{
    CRealBlk* real = blk.GetRealBlk();
    if (!real || real->events().empty()) return;
    const std::uint32_t oldTop = blk.GetTimeTop();
    const std::uint32_t top = barLine(meas, oldTop + real->GetTopEvntTime(), 0);
    const std::uint32_t end = barLine(meas, blk.GetTimeEnd(), 1);
    blk.SetTimeTop(top);
    blk.SetTimeEnd(end);
    if (top > oldTop) real->Move(-std::int64_t{top - oldTop});
}

void packBlk(CRealBlk& real)
{
    CEvnt* start = nullptr;
    for (CEvnt *next = nullptr, *e = real.events().head(); e; e = next) {
        next = List<CEvnt>::next(e);
        if (e->GetStatus() == status::sysex) start = e;
        if (e->GetStatus() != status::sysexPart) continue;
        if (start) start->PackSysex(e->payload().data(), e->GetSzData());
        real.Del(e);
    }
}

} // namespace

void snapFirstBlks(Song& song, const MeasMap& meas)
{
    for (int n = 1; n < trackCount; ++n)
        if (CBlk* first = song.trk(n)->blocks().head()) snapBlk(*first, meas);
}

void trimMaster(Song& song)
{
    CBlk* blk = song.masterBlk();
    if (!blk || !blk->GetRealBlk()) return;
    if (const CEvnt* last = blk->GetRealBlk()->events().tail()) blk->SetTimeEnd(blk->GetTimeTop() + last->GetTime());
}

void packSysex(Song& song)
{
    for (int n = 1; n < trackCount; ++n) {
        const CTrk* trk = song.trk(n);
        if (trk->GetType() != trktype::midi) continue;
        for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk))
            if (blk->GetType() == blktype::real && blk->GetRealBlk()) packBlk(*blk->GetRealBlk());
    }
}

void deleteScoreLinks(CRealBlk& real)
{
    for (CEvnt *next = nullptr, *e = real.events().head(); e; e = next) {
        next = List<CEvnt>::next(e);
        if (e->isMeta(meta::sequencer) && isScoreLinkBody(e->payload())) real.Del(e);
    }
}

void deleteScoreLinks(Song& song)
{
    for (CRealBlk* real = song.realBlks().head(); real; real = List<CRealBlk>::next(real)) deleteScoreLinks(*real);
}

} // namespace tessaro::load_steps
