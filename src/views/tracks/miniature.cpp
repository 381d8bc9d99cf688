// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/miniature.h"

#include "views/tracks/note_walk.h"

#include <algorithm>

namespace tessaro {

Miniature::Miniature(const CTrk& track, std::uint32_t end)
{
    for (const CBlk* blk = track.blocks().head(); blk; blk = List<CBlk>::next(blk)) addBlock(*blk);
    addNotes(track, end);
}

Miniature::Miniature(const CBlk& blk, std::uint32_t end)
{
    addBlock(blk);
    addNotes(blk, end);
}

void Miniature::addBlock(const CBlk& blk)
{
    m_blocks.push_back({blk.GetTimeTop(), blk.GetTimeEnd(), blk.GetType() == blktype::ghost});
}

template <class Source>
void Miniature::addNotes(const Source& source, std::uint32_t end)
{
    int low = 127;
    int high = 0;
    forEachNote(source, [&](std::uint32_t, const CEvnt& e) {
        low = std::min<int>(low, e.GetPost1());
        high = std::max<int>(high, e.GetPost1());
    });
    if (low > high || end == 0) return;

    const int range = std::max(high - low + 1, bands);
    low -= (range - (high - low + 1)) / 2; // a narrow range stands in the middle
    const auto part = [end](std::uint64_t tick) {
        return static_cast<std::uint32_t>(std::min<std::uint64_t>(tick * parts / end, parts - 1));
    };
    forEachNote(source, [&](std::uint32_t time, const CEvnt& e) {
        const std::uint32_t bit = 1U << ((e.GetPost1() - low) * bands / range);
        const std::uint32_t last = part(std::uint64_t{time} + std::max(e.GetGateTime(), 1U) - 1);
        for (std::uint32_t p = part(time); p <= last; ++p) m_parts[p] |= bit;
    });
}

std::uint32_t Miniature::bandsIn(std::uint32_t first, std::uint32_t last) const
{
    std::uint32_t all = 0;
    for (std::uint32_t p = first; p < std::min(last, parts); ++p) all |= m_parts[p];
    return all;
}

} // namespace tessaro
