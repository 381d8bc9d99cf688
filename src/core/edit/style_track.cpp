// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/style_track.h"

#include <algorithm>

namespace tessaro {

void StyleTrack::clear() noexcept
{
    while (CStyleBlk* blk = m_blks.takeHead()) delete blk;
    m_info = {};
}

void StyleTrack::add(std::uint32_t time, CStyleBlk* blk) noexcept
{
    CStyleBlk* before = m_blks.tail();
    while (before && before->GetTimeTop() > time) before = List<CStyleBlk>::prev(before);
    insertAfter(before, blk);
}

void StyleTrack::insertAfter(CStyleBlk* after, CStyleBlk* blk) noexcept
{
    if (after)
        m_blks.insertAfter(after, blk);
    else
        m_blks.addHead(blk);
}

std::uint32_t StyleTrack::timeEnd() const noexcept
{
    std::uint32_t end = 0;
    for (const CStyleBlk* blk = m_blks.head(); blk; blk = List<CStyleBlk>::next(blk))
        end = std::max(end, blk->GetTimeEnd());
    return end;
}

} // namespace tessaro
