// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_shares.h"

#include "core/edit/editor.h"
#include "core/edit/evnt_ref.h"

#include <utility>

namespace tessaro {

bool BlkShares::follow(int code, const CEditor& editor)
{
    switch (code) {
    case hint::blkNew:
    case hint::blkMove:
    case hint::blkDel:
    case hint::blkApp:
    case hint::blkDiv:
    case hint::blkMerge:
    case hint::addBlk:
    case hint::blkReal:
    case hint::blkUpdate: break;
    case hint::trkArrange: setAllStale(); return true;
    default: return false;
    }
    BlkRef from;
    BlkRef to;
    editor.GetHintBlkMove(from.trk, from.blk, to.trk, to.blk);
    setStale(from.trk);
    if (to.trk) setStale(to.trk);
    return true;
}

void BlkShares::setStale(POSITION trk)
{
    if (!trk) {
        setAllStale();
        return;
    }
    m_stale.at(static_cast<std::size_t>(Song::numberOf(trk))) = true;
    m_anyStale = true;
}

void BlkShares::refresh()
{
    if (!std::exchange(m_anyStale, false)) return;
    for (std::size_t track = 1; track < m_stale.size(); ++track)
        if (std::exchange(m_stale[track], false)) count(track);
}

void BlkShares::count(std::size_t track)
{
    for (const CRealBlk* real : m_counted[track])
        if (const auto at = m_counts.find(real); --at->second == 0) m_counts.erase(at);
    m_counted[track].clear();
    const CTrk* trk = m_editor.song().trk(static_cast<int>(track));
    for (const CBlk* blk = trk ? trk->blocks().head() : nullptr; blk; blk = List<CBlk>::next(blk)) {
        m_counted[track].push_back(blk->GetRealBlk());
        ++m_counts[blk->GetRealBlk()];
    }
}

} // namespace tessaro
