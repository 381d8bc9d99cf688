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

EvntSelection::Refs::const_iterator EvntSelection::find(const EvntRef& ref) const
{
    auto [at, end] = m_refs.equal_range(ref.evnt);
    while (at != end && at->second.blk != ref.blk) ++at;
    return at == end ? m_refs.end() : at;
}

EvntSelection::Refs::const_iterator EvntSelection::erase(Refs::const_iterator at)
{
    const auto count = m_counts.find(at->second.blk);
    if (--count->second == 0) m_counts.erase(count);
    return m_refs.erase(at);
}

bool EvntSelection::contains(const EvntRef& ref) const { return find(ref) != m_refs.end(); }

void EvntSelection::add(const EvntRef& ref)
{
    if (contains(ref)) return;
    m_refs.emplace(ref.evnt, BlkRef{ref.trk, ref.blk});
    ++m_counts[ref.blk];
}

void EvntSelection::remove(const EvntRef& ref)
{
    if (const auto at = find(ref); at != m_refs.end()) erase(at);
}

void EvntSelection::toggle(const EvntRef& ref)
{
    if (const auto at = find(ref); at != m_refs.end())
        erase(at);
    else
        add(ref);
}

void EvntSelection::set(std::span<const EvntRef> refs)
{
    clear();
    m_refs.reserve(refs.size());
    for (const EvntRef& ref : refs) add(ref);
}

void EvntSelection::clear()
{
    m_refs.clear();
    m_counts.clear();
}

std::vector<EvntRef> EvntSelection::inOrder() const
{
    std::unordered_map<POSITION, int> numbers;
    std::vector<Placed> placed;
    placed.reserve(m_refs.size());
    for (const auto& [evnt, at] : m_refs) {
        const auto [number, isNew] = numbers.try_emplace(at.trk, 0);
        if (isNew) number->second = Song::numberOf(at.trk);
        const EvntRef ref{at.trk, at.blk, evnt};
        placed.push_back({timeOf(ref), number->second, at.blk, ref});
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
    if (m_refs.empty()) return false;
    BlkRef blk;
    BlkRef other;
    POSITION evnt = nullptr;
    switch (code) {
    case hint::delEvnt: editor.GetHint(blk.trk, blk.blk, evnt); return dropEvnt(evnt);
    case hint::blkMove: editor.GetHintBlkMove(blk.trk, blk.blk, other.trk, other.blk); return moveBlk(blk.blk, other);
    case hint::blkDel:
    case hint::blkApp:
    case hint::blkReal: editor.GetHint(blk.trk, blk.blk); return dropBlk(blk.blk);
    case hint::blkDiv:
    case hint::blkUpdate: editor.GetHint(blk.trk, blk.blk); return dropLinked(blk.blk);
    default: return false;
    }
}

bool EvntSelection::dropEvnt(POSITION evnt)
{
    auto [at, end] = m_refs.equal_range(evnt);
    if (at == end) return false;
    for (Refs::const_iterator each = at; each != Refs::const_iterator(end);) each = erase(each);
    return true;
}

bool EvntSelection::dropBlk(POSITION blk)
{
    if (!m_counts.erase(blk)) return false;
    std::erase_if(m_refs, [&](const auto& ref) { return ref.second.blk == blk; });
    return true;
}

/// Events have left the block, and so those that are linked to it.
bool EvntSelection::dropLinked(POSITION blk)
{
    const auto realOf = [](POSITION pos) { return List<CBlk>::get(pos)->GetRealBlk(); };
    std::vector<POSITION> linked;
    for (const auto& [other, count] : m_counts)
        if (realOf(other) == realOf(blk)) linked.push_back(other);
    for (const POSITION other : linked) dropBlk(other);
    return !linked.empty();
}

bool EvntSelection::moveBlk(POSITION blk, const BlkRef& to)
{
    auto counts = m_counts.extract(blk);
    if (counts.empty()) return false;
    counts.key() = to.blk;
    m_counts.insert(std::move(counts));
    for (auto& ref : m_refs)
        if (ref.second.blk == blk) ref.second = to;
    return true;
}

} // namespace tessaro
