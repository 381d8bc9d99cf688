// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/editors/evnt_selection.h"

#include "core/edit/editor.h"

#include <algorithm>
#include <tuple>

namespace tessaro {
namespace {

struct Placed {
    std::uint32_t time; ///< absolute
    int track;
    POSITION blk;
    EvntRef ref;
};

/// Events of one block and one time, put as they stand in it.
void sortRun(std::span<Placed> run)
{
    if (run.size() < 2) return;
    std::unordered_map<POSITION, Placed> waiting;
    for (const Placed& placed : run) waiting.emplace(placed.ref.evnt, placed);
    const std::uint32_t time = evntOf(run.front().ref).GetTime();
    const CEvnt* event = &evntOf(run.front().ref);
    for (const CEvnt* before = event; before && before->GetTime() == time; before = List<CEvnt>::prev(before))
        event = before;
    auto out = run.begin();
    for (; event && out != run.end(); event = List<CEvnt>::next(event)) {
        const auto found = waiting.find(const_cast<CEvnt*>(event));
        if (found != waiting.end()) *out++ = found->second;
    }
}

} // namespace

bool EvntSelection::contains(const EvntRef& ref) const
{
    const auto part = m_parts.find(ref.blk);
    return part != m_parts.end() && part->second.evnts.contains(ref.evnt);
}

void EvntSelection::add(const EvntRef& ref)
{
    Part& part = m_parts[ref.blk];
    part.trk = ref.trk;
    if (part.evnts.insert(ref.evnt).second) m_blks.emplace(ref.evnt, ref.blk);
}

void EvntSelection::remove(const EvntRef& ref)
{
    if (!contains(ref)) return;
    leavePart(ref.blk, ref.evnt);
    m_blks.erase(find(ref.evnt, ref.blk));
}

void EvntSelection::toggle(const EvntRef& ref)
{
    if (contains(ref))
        remove(ref);
    else
        add(ref);
}

void EvntSelection::set(std::span<const EvntRef> refs)
{
    clear();
    m_blks.reserve(refs.size());
    for (const EvntRef& ref : refs) add(ref);
}

void EvntSelection::clear()
{
    m_blks.clear();
    m_parts.clear();
}

std::vector<EvntRef> EvntSelection::inOrder() const
{
    std::unordered_map<POSITION, int> numbers;
    std::vector<Placed> placed;
    placed.reserve(count());
    for (const auto& [blk, part] : m_parts) {
        const auto [number, isNew] = numbers.try_emplace(part.trk, 0);
        if (isNew) number->second = Song::numberOf(part.trk);
        for (const POSITION evnt : part.evnts) {
            const EvntRef ref{part.trk, blk, evnt};
            placed.push_back({timeOf(ref), number->second, blk, ref});
        }
    }
    const auto key = [](const Placed& p) { return std::tuple(p.time, p.track, p.blk); };
    std::ranges::sort(placed, {}, key);
    for (auto first = placed.begin(); first != placed.end();) {
        const auto end = std::find_if(first, placed.end(), [&](const Placed& p) { return key(p) != key(*first); });
        sortRun({first, end});
        first = end;
    }
    std::vector<EvntRef> refs;
    refs.reserve(placed.size());
    for (const Placed& p : placed) refs.push_back(p.ref);
    return refs;
}

bool EvntSelection::follow(int code, const CEditor& editor)
{
    if (empty()) return false;
    EvntRef at;
    BlkRef to;
    switch (code) {
    case hint::delEvnt: editor.GetHint(at.trk, at.blk, at.evnt); return dropEvnt(at.evnt);
    case hint::tsChng: editor.GetHint(at.trk, at.blk); return dropGone(at.blk);
    case hint::blkMove: editor.GetHintBlkMove(at.trk, at.blk, to.trk, to.blk); return moveBlk(at.blk, to);
    case hint::blkDel:
    case hint::blkApp:
    case hint::blkReal: editor.GetHint(at.trk, at.blk); return dropBlk(at.blk);
    case hint::blkDiv:
    case hint::blkUpdate: editor.GetHint(at.trk, at.blk); return dropLinked(at.blk);
    default: return false;
    }
}

EvntSelection::Blks::iterator EvntSelection::find(POSITION evnt, POSITION blk)
{
    auto at = m_blks.equal_range(evnt).first;
    while (at->second != blk) ++at;
    return at;
}

void EvntSelection::leavePart(POSITION blk, POSITION evnt)
{
    const auto part = m_parts.find(blk);
    part->second.evnts.erase(evnt);
    if (part->second.evnts.empty()) m_parts.erase(part);
}

bool EvntSelection::dropEvnt(POSITION evnt)
{
    const auto [first, end] = m_blks.equal_range(evnt);
    for (auto at = first; at != end; ++at) leavePart(at->second, evnt);
    return m_blks.erase(evnt) != 0;
}

/// Signatures have given way to copies at other times; they are parked, or freed.
bool EvntSelection::dropGone(POSITION blk)
{
    const auto part = m_parts.find(blk);
    if (part == m_parts.end()) return false;
    std::unordered_set<POSITION> gone = part->second.evnts;
    for (CEvnt* e = List<CBlk>::get(blk)->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) gone.erase(e);
    for (const POSITION evnt : gone) dropEvnt(evnt);
    return !gone.empty();
}

bool EvntSelection::dropBlk(POSITION blk)
{
    const auto part = m_parts.extract(blk);
    if (!part) return false;
    for (const POSITION evnt : part.mapped().evnts) m_blks.erase(find(evnt, blk));
    return true;
}

/// Events have left the block, and so those that are linked to it.
bool EvntSelection::dropLinked(POSITION blk)
{
    const auto realOf = [](POSITION pos) { return List<CBlk>::get(pos)->GetRealBlk(); };
    std::vector<POSITION> linked;
    for (const auto& [other, part] : m_parts)
        if (realOf(other) == realOf(blk)) linked.push_back(other);
    for (const POSITION other : linked) dropBlk(other);
    return !linked.empty();
}

bool EvntSelection::moveBlk(POSITION blk, const BlkRef& to)
{
    auto part = m_parts.extract(blk);
    if (!part) return false;
    part.mapped().trk = to.trk;
    for (const POSITION evnt : part.mapped().evnts) find(evnt, blk)->second = to.blk;
    part.key() = to.blk;
    m_parts.insert(std::move(part));
    return true;
}

} // namespace tessaro
