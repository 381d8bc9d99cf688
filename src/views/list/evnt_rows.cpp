// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/evnt_rows.h"

#include "core/edit/editor.h"
#include "views/list/evnt_kind.h"

#include <algorithm>

namespace tessaro {
namespace {

bool isShown(const CEvnt& event, const RowFilter& filter)
{
    if (filter == RowFilter{}) return true;
    const EvntKindInfo& info = infoOf(kindOf(event));
    if (filter.hiddenGroups >> static_cast<unsigned>(info.group) & 1U) return false;
    return filter.channel < 0 || !info.hasChannel || status::channel(event.GetStatus()) == filter.channel;
}

} // namespace

void EvntRows::clear() { *this = {}; }

void EvntRows::build(const CEditor& editor, int track, const RowFilter& filter)
{
    m_blks.clear();
    m_rows.clear();
    m_reals.clear();
    m_total = 0;
    m_trk = editor.GetTrkPos(track);
    if (!m_trk) return;
    const auto earlier = [this](const Row& a, const Row& b) {
        return m_blks[a.blk].top + a.evnt->GetTime() < m_blks[b.blk].top + b.evnt->GetTime();
    };
    const List<CBlk>& blks = List<CTrk>::get(m_trk)->blocks();
    for (CBlk* blk = blks.head(); blk; blk = List<CBlk>::next(blk)) {
        const CRealBlk* real = blk->GetRealBlk();
        if (!real) continue;
        const auto index = static_cast<std::uint32_t>(m_blks.size());
        const auto middle = static_cast<std::ptrdiff_t>(m_rows.size());
        m_blks.push_back({blk, blk->GetTimeTop()});
        m_reals.insert(real);
        m_total += real->GetNum();
        for (CEvnt* e = real->events().head(); e; e = List<CEvnt>::next(e))
            if (isShown(*e, filter)) m_rows.push_back({e, index});
        const auto joint = m_rows.begin() + middle;
        if (joint != m_rows.begin() && joint != m_rows.end() && earlier(*joint, joint[-1]))
            std::inplace_merge(m_rows.begin(), joint, m_rows.end(), earlier);
    }
}

std::size_t EvntRows::firstFrom(std::uint32_t time) const
{
    const auto at = std::partition_point(
        m_rows.begin(), m_rows.end(), [&](const Row& row) { return m_blks[row.blk].top + row.evnt->GetTime() < time; });
    return static_cast<std::size_t>(at - m_rows.begin());
}

std::optional<std::size_t> EvntRows::find(const EvntRef& ref) const
{
    if (ref.trk != m_trk || !ref.blk || !ref.evnt) return std::nullopt;
    const std::uint32_t at = List<CBlk>::get(ref.blk)->GetTimeTop() + List<CEvnt>::get(ref.evnt)->GetTime();
    for (std::size_t row = firstFrom(at); row < count() && time(row) == at; ++row)
        if (m_rows[row].evnt == ref.evnt && m_blks[m_rows[row].blk].pos == ref.blk) return row;
    return std::nullopt;
}

} // namespace tessaro
