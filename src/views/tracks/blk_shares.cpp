// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_shares.h"

#include "core/edit/editor.h"

#include <utility>

namespace tessaro {

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
