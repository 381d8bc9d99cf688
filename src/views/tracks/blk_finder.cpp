// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_finder.h"

#include "core/edit/editor.h"
#include "views/tracks/trk_blks.h"
#include "views/tracks/trk_geometry.h"
#include "views/tracks/trk_selection.h"

namespace tessaro {
namespace {
constexpr int handle = 4; ///< pixels above and below a selected block that belong to it
}

QRect BlkFinder::rect(const BlkRef& ref) const
{
    const CBlk& blk = *List<CBlk>::get(ref.blk);
    return m_geometry.blkRect(Song::numberOf(ref.trk), blk.GetTimeTop(), blk.GetTimeEnd());
}

std::vector<BlkRef> BlkFinder::inRow(int track, const QRect& area) const
{
    std::vector<BlkRef> found;
    CTrk* trk = m_editor.song().trk(track);
    if (!trk) return found;
    const std::uint32_t from = m_geometry.time(area.left() - TrkGeometry::leastBlkWidth);
    for (CBlk* blk : m_blks.meeting(*trk, from, m_geometry.time(area.right() + 1)))
        if (rect({trk, blk}).intersects(area)) found.push_back({trk, blk});
    return found;
}

std::optional<BlkRef> BlkFinder::hit(QPoint at) const
{
    const QRect around(at.x(), at.y() - handle, 1, 2 * handle + 1);
    const SelItem* last = nullptr;
    for (const BlkRef& ref : inside(around)) {
        const SelItem* item = m_selection.find(ref.blk);
        if (item && (!last || item->order > last->order)) last = item;
    }
    if (last) return last->ref();
    const std::vector<BlkRef> under = inRow(m_geometry.track(at.y()), {at, QSize(1, 1)});
    return under.empty() ? std::nullopt : std::optional(under.back());
}

std::vector<BlkRef> BlkFinder::inside(const QRect& area) const
{
    std::vector<BlkRef> found = inRow(m_geometry.track(area.top()), area);
    for (int track = m_geometry.track(area.top()) + 1; track <= m_geometry.track(area.bottom()); ++track) {
        const std::vector<BlkRef> row = inRow(track, area);
        found.insert(found.end(), row.begin(), row.end());
    }
    return found;
}

std::vector<BlkRef> BlkFinder::between(const BlkRef& one, const BlkRef& other) const
{
    return inside(rect(one).united(rect(other)));
}

} // namespace tessaro
