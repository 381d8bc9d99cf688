// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/song_maps.h"

#include "core/edit/song.h"
#include "core/model/meta.h"

#include <algorithm>
#include <vector>

namespace tessaro {

namespace {

void collectMasterTempos(const CTrk& master, std::vector<ScoreTempo>& out)
{
    for (const CBlk* blk = master.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
        if (!blk->GetRealBlk()) continue;
        for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
            if (e->isMeta(meta::tempo)) out.push_back({blk->GetTimeTop() + e->GetTime(), e});
    }
}

void collectScoreTempos(const CTrk& trk, const ScoreLinks& score, std::vector<ScoreTempo>& out)
{
    for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
        if (!blk->GetRealBlk()) continue;
        for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
            if (score.isScoreLink(*e)) score.appendTempos(*e, blk->GetTimeTop() + e->GetTime(), out);
    }
}

} // namespace

bool SongMaps::buildMeas()
{
    const CRealBlk* master = m_song.masterReal();
    if (!master) return false;
    const SignatureFault fault = m_meas.build(*master);
    if (fault == SignatureFault::none) return true;
    m_user.message(fault == SignatureFault::numerator ? TextId::badNumerator : TextId::badDenominator,
                   MessageKind::error);
    return false;
}

bool SongMaps::buildTempo()
{
    m_tempo.begin();
    const CTrk* master = m_song.trk(0);
    if (!master) return false;
    std::vector<ScoreTempo> found;
    collectMasterTempos(*master, found);
    if (m_score.any())
        for (int n = 1; n < trackCount; ++n)
            if (m_song.trk(n)->GetType() == trktype::midi) collectScoreTempos(*m_song.trk(n), m_score, found);
    std::stable_sort(found.begin(), found.end(),
                     [](const ScoreTempo& a, const ScoreTempo& b) { return a.time < b.time; });
    for (const ScoreTempo& mark : found) {
        const auto body = mark.event->payload();
        if (body.size() == 3 && !m_tempo.add(mark.time, ReadTempo(body.data()))) return false;
    }
    return true;
}

} // namespace tessaro
