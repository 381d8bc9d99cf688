// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/lights.h"

#include "core/model/trk.h"

#include <algorithm>

namespace tessaro {

int loudestStart(const CTrk& track, std::uint32_t from, std::uint32_t to)
{
    int loudest = 0;
    for (const CBlk* blk = track.blocks().head(); blk && blk->GetTimeTop() <= to; blk = List<CBlk>::next(blk)) {
        const std::uint32_t top = blk->GetTimeTop();
        const std::uint32_t first = top > from ? 0 : from + 1 - top;
        if (top + first > blk->GetTimeEnd() || !blk->GetRealBlk()) continue;
        CEvnt* e = nullptr;
        for (POSITION pos = blk->GetRealBlk()->GetTimePos(first); blk->GetNext(pos, &e) && e->GetTime() <= to - top;)
            if (status::kind(e->GetStatus()) == status::note) loudest = std::max<int>(loudest, e->GetPost2());
    }
    return loudest;
}

void Lights::strike(int track, int velocity)
{
    auto& left = m_left.at(static_cast<std::size_t>(track));
    left = std::max(left, fadeTime / 2 + fadeTime * std::clamp(velocity, 0, 127) / 254);
}

void Lights::fade(int milliseconds)
{
    for (int& left : m_left) left = std::max(0, left - milliseconds);
}

void Lights::clear() { m_left.fill(0); }

int Lights::level(int track) const
{
    return (m_left.at(static_cast<std::size_t>(track)) * brightest + fadeTime - 1) / fadeTime;
}

} // namespace tessaro
