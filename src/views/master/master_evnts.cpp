// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/master_evnts.h"

#include "core/edit/editor.h"
#include "core/maps/tempo_map.h"
#include "views/list/cell_parse.h"

#include <algorithm>

namespace tessaro {
namespace {

constexpr double usualBeats = 120;

template <class Item>
std::span<const Item> inSpan(const std::vector<Item>& items, std::uint32_t from, std::uint32_t to)
{
    const auto before = [](const Item& item, std::uint32_t time) { return item.time < time; };
    const auto first = std::lower_bound(items.begin(), items.end(), from, before);
    const auto last = std::lower_bound(first, items.end(), to, before);
    return {first, last};
}

bool isSlower(const TempoPoint& a, const TempoPoint& b) { return a.beats < b.beats; }

} // namespace

void MasterEvnts::build(const CEditor& editor)
{
    m_tempos.clear();
    m_flags.clear();
    m_trk = editor.GetTrkPos(0);
    CBlk* blk = editor.song().masterBlk();
    m_blk = blk;
    if (!blk || !blk->GetRealBlk()) return;
    for (CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
        const KindGroup group = groupOf(*e);
        const std::uint32_t time = blk->GetTimeTop() + e->GetTime();
        if (group == KindGroup::tempos && e->GetSzData() == 3)
            m_tempos.push_back({time, beatsOf(ReadTempo(e->payload().data())), e});
        else if (const auto lane = laneOf(group))
            m_flags.push_back({time, static_cast<int>(*lane), e});
    }
}

std::span<const TempoPoint> MasterEvnts::tempos(std::uint32_t from, std::uint32_t to) const
{
    return inSpan(m_tempos, from, to);
}

std::span<const MasterFlag> MasterEvnts::flags(std::uint32_t from, std::uint32_t to) const
{
    return inSpan(m_flags, from, to);
}

double MasterEvnts::beatsAt(std::uint32_t time) const
{
    const auto behind = std::upper_bound(m_tempos.begin(), m_tempos.end(), time,
                                         [](std::uint32_t t, const TempoPoint& point) { return t < point.time; });
    return behind == m_tempos.begin() ? usualBeats : behind[-1].beats;
}

double MasterEvnts::slowest() const
{
    return m_tempos.empty() ? usualBeats : std::min_element(m_tempos.begin(), m_tempos.end(), isSlower)->beats;
}

double MasterEvnts::fastest() const
{
    return m_tempos.empty() ? usualBeats : std::max_element(m_tempos.begin(), m_tempos.end(), isSlower)->beats;
}

EvntKind MasterEvnts::kindOfLane(FlagLane lane)
{
    switch (lane) {
    case FlagLane::signatures: return EvntKind::signature;
    case FlagLane::keys: return EvntKind::key;
    case FlagLane::markers: return EvntKind::marker;
    case FlagLane::texts: break;
    }
    return EvntKind::text;
}

std::optional<FlagLane> MasterEvnts::laneOf(KindGroup group)
{
    switch (group) {
    case KindGroup::signatures: return FlagLane::signatures;
    case KindGroup::keys: return FlagLane::keys;
    case KindGroup::markers: return FlagLane::markers;
    case KindGroup::texts: return FlagLane::texts;
    default: return std::nullopt;
    }
}

} // namespace tessaro
