// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_picture.h"

#include "core/model/realblk.h"

#include <algorithm>

namespace tessaro {

BlkPicture::BlkPicture(const CRealBlk& real) : m_next(real.events().head())
{
    const CEvnt* last = real.events().tail();
    const std::uint64_t length = last ? std::uint64_t{last->GetTime()} + last->GetGateTime() + 1 : 0;
    while (length > std::uint64_t{m_span} * mostSpans) m_span *= 2;
    m_spans.resize(static_cast<std::size_t>((length + m_span - 1) / m_span));
}

bool BlkPicture::build(std::size_t& budget)
{
    for (; m_next && budget > 0; --budget) {
        if (status::kind(m_next->GetStatus()) == status::note) add(*m_next);
        m_next = List<CEvnt>::next(m_next);
    }
    return !m_next;
}

/// Notes come in the order of their times, so that a span that is filled for a pitch is never looked at again.
void BlkPicture::add(const CEvnt& note)
{
    const std::size_t bit = std::min<std::size_t>(note.GetPost1() / 2U, m_filled.size() - 1);
    const std::uint64_t last = std::uint64_t{note.GetTime()} + std::max(note.GetGateTime(), 1U) - 1;
    const std::size_t end = static_cast<std::size_t>(std::min<std::uint64_t>(last / m_span + 1, mostSpans));
    m_pitches |= std::uint64_t{1} << bit;
    if (end > m_spans.size()) m_spans.resize(end); // it sounds on behind the last one
    for (std::size_t span = std::max(m_filled[bit], spanAt(note.GetTime())); span < end; ++span)
        m_spans[span] |= std::uint64_t{1} << bit;
    m_filled[bit] = std::max(m_filled[bit], end);
}

std::size_t BlkPicture::spanAt(std::uint32_t tick) const
{
    return std::min<std::size_t>(tick / m_span, m_spans.size());
}

std::uint64_t BlkPicture::pitches(std::uint32_t from, std::uint32_t to) const
{
    std::uint64_t all = 0;
    const std::size_t end = to > from ? spanAt(to - 1) + 1 : 0;
    for (std::size_t span = spanAt(from); span < std::min(end, m_spans.size()); ++span) all |= m_spans[span];
    return all;
}

} // namespace tessaro
