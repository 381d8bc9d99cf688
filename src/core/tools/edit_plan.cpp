// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/edit_plan.h"

#include "core/edit/blk_edit.h"
#include "core/edit/editor.h"
#include "core/model/tick.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

namespace tessaro {
namespace {

EvntState stateOf(const EvntRef& ref) noexcept
{
    const CEvnt& e = evntOf(ref);
    return {ref, timeOf(ref), e.GetGateTime(), e.GetPost1(), e.GetPost2()};
}

/// Before the events change, so that each block grows once and gets its length back with the step.
void growBlks(CEditor& editor, std::span<const EvntState> changes)
{
    std::unordered_map<POSITION, std::pair<POSITION, std::uint32_t>> ends; // track and end by block
    for (const EvntState& to : changes) {
        auto& [trk, end] = ends[to.ref.blk];
        trk = to.ref.trk;
        end = std::max(end, to.end());
    }
    for (const auto& [blk, place] : ends)
        if (place.second > List<CBlk>::get(blk)->GetTimeEnd()) editor.BlkSize(place.first, blk, place.second);
}

void change(CEditor& editor, const EvntState& to)
{
    const CEvnt& e = evntOf(to.ref);
    const auto [trk, blk, evnt] = to.ref;
    if (e.GetGateTime() == to.gate && e.GetPost1() == to.key && e.GetPost2() == to.value) {
        editor.SetLocation(trk, blk, evnt, to.time);
        return;
    }
    _EDT_EVNT rec;
    e.Get(rec);
    rec.time = to.time;
    rec.gateTime = to.gate;
    rec.post1 = to.key;
    rec.post2 = to.value;
    editor.SetEvnt(trk, blk, evnt, rec);
}

/// Null on a refusal.
POSITION copyTo(CEditor& editor, POSITION trk, POSITION blk, const EvntRef& from)
{
    _EDT_EVNT rec;
    evntOf(from).Get(rec);
    rec.time = tick::later(blkOf(from).GetTimeTop(), rec.time);
    POSITION made = nullptr;
    if (!editor.InsEvnt(trk, blk, rec, made)) return nullptr;
    editor.history().SetUndoEvntIns(trk, blk, made);
    editor.ChkBlkReSize(trk, blk, made);
    return made;
}

/// Each block of the source gets one of its own on the other track, over the same span.
std::vector<EvntRef> transfer(CEditor& editor, std::span<const EvntTransfer> transfers)
{
    std::map<std::pair<POSITION, int>, POSITION> blks;
    std::vector<EvntRef> made;
    for (const auto& [from, track] : transfers) {
        const POSITION trk = editor.GetTrkPos(track);
        const auto [at, isNew] = blks.try_emplace({from.blk, track}, nullptr);
        if (isNew) {
            const CBlk& blk = blkOf(from);
            at->second = blk_edit::create(editor, trk, blk.GetTimeTop(), blk.GetTimeEnd(), blk_edit::Maker::edit);
        }
        const POSITION evnt = at->second ? copyTo(editor, trk, at->second, from) : nullptr;
        if (!evnt) continue;
        made.push_back({trk, at->second, evnt});
        editor.DeleteEvnt(from.trk, from.blk, from.evnt);
    }
    return made;
}

} // namespace

std::uint32_t EvntState::end() const noexcept { return tick::later(time, gate); }

bool isNoteEvnt(const CEvnt& event) noexcept { return status::kind(event.GetStatus()) == status::note; }

std::vector<EvntState> EditPlan::take(std::span<const EvntRef> selection, Filter isMeant)
{
    std::vector<EvntState> taken;
    taken.reserve(selection.size());
    for (const EvntRef& ref : selection) {
        if (blkOf(ref).GetType() != blktype::real)
            hasLinked = true;
        else if (isMeant(evntOf(ref)))
            taken.push_back(stateOf(ref));
    }
    if (!std::ranges::is_sorted(taken, {}, &EvntState::time)) std::ranges::stable_sort(taken, {}, &EvntState::time);
    considered = taken.size();
    return taken;
}

void EditPlan::change(std::vector<EvntState> wanted)
{
    std::erase_if(wanted, [](const EvntState& state) { return state == stateOf(state.ref); });
    changes = std::move(wanted);
}

std::vector<EvntRef> apply(CEditor& editor, const EditPlan& plan)
{
    if (plan.hasLinked) editor.user().message(TextId::linkedBlockNotEditable, MessageKind::warning);
    if (plan.fault != PlanFault::none) return {};
    growBlks(editor, plan.changes);
    for (const EvntState& to : plan.changes) change(editor, to);
    for (const EvntRef& ref : plan.removals) editor.DeleteEvnt(ref.trk, ref.blk, ref.evnt);
    for (const TrackSetup& setup : plan.setups) {
        editor.SetTrkPort(setup.track, setup.port);
        editor.SetTrkCh(setup.track, setup.ch);
    }
    return transfer(editor, plan.transfers);
}

} // namespace tessaro
