// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/note_commands.h"

#include "core/edit/editor.h"
#include "core/edit/undo_scope.h"
#include "core/model/tick.h"
#include "views/editors/evnt_kinds.h"
#include "views/roll/grid.h"
#include "views/roll/note_table.h"
#include "views/roll/roll_scale.h"

#include <algorithm>
#include <unordered_map>

namespace tessaro {
namespace {

constexpr std::int64_t oneTick = 1;

std::uint8_t held(int value, int least) { return static_cast<std::uint8_t>(std::clamp(value, least, 127)); }

/// Where a note of these ends stands after the change.
TickRange changed(const NoteChange& change, std::uint32_t start, std::uint32_t end)
{
    const std::uint32_t at = tick::shifted(start, change.ticks);
    const std::int64_t last = std::max(std::int64_t{at} + (end - start) + change.endBy, at + oneTick);
    const std::int64_t first = std::clamp(at + change.startBy, std::int64_t{0}, last - oneTick);
    return {tick::clamped(first), tick::clamped(last)};
}

bool isSame(const _EDT_EVNT& a, const _EDT_EVNT& b)
{
    return a.time == b.time && a.gateTime == b.gateTime && a.status == b.status && a.post1 == b.post1
        && a.post2 == b.post2 && a.post3 == b.post3 && a.post4 == b.post4;
}

bool isMovedOnly(const _EDT_EVNT& old, _EDT_EVNT fresh)
{
    fresh.time = old.time;
    return isSame(old, fresh);
}

} // namespace

_EDT_EVNT NoteChange::operator()(_EDT_EVNT rec) const
{
    if (!isNote(rec.status)) {
        rec.time = tick::shifted(rec.time, ticks);
        return rec;
    }
    if (startBy == 0 && endBy == 0) {
        rec.time = tick::shifted(rec.time, ticks);
    } else {
        const TickRange at = changed(*this, rec.time, tick::later(rec.time, rec.gateTime));
        rec.time = at.from;
        rec.gateTime = at.to - at.from;
    }
    rec.post1 = held(rec.post1 + keys, 0);
    if (velocityBy != 0) rec.post2 = held(rec.post2 + velocityBy, 1);
    return rec;
}

NoteInView NoteChange::operator()(NoteInView note) const
{
    const TickRange at = changed(*this, note.start, note.end);
    note.start = at.from;
    note.end = at.to;
    note.key = held(note.key + keys, 0);
    if (velocityBy != 0) note.velocity = held(note.velocity + velocityBy, 1);
    return note;
}

NoteExtent NoteExtent::of(std::span<const EvntRef> refs)
{
    NoteExtent extent;
    for (const EvntRef& ref : refs) {
        const CEvnt& event = evntOf(ref);
        const std::uint32_t start = timeOf(ref);
        extent.room = std::min(extent.room, event.GetTime());
        extent.start = std::min(extent.start, start);
        extent.end = std::max(extent.end, tick::later(start, event.GetGateTime()));
        if (!isNote(evntOf(ref))) continue;
        extent.lowest = std::min(extent.lowest, event.GetPost1());
        extent.highest = std::max(extent.highest, event.GetPost1());
    }
    return extent;
}

NoteChange NoteExtent::limit(NoteChange change) const
{
    const std::int64_t left = -std::int64_t{room};
    change.ticks = std::max(std::min(change.ticks, std::int64_t{tick::latest} - end), left);
    change.startBy = std::max(change.startBy, left);
    if (lowest <= highest) change.keys = std::clamp(change.keys, -lowest, 127 - highest);
    return change;
}

_EDT_EVNT NoteCommands::record(const EvntRef& ref)
{
    _EDT_EVNT rec;
    evntOf(ref).Get(rec);
    rec.time = timeOf(ref);
    return rec;
}

_EDT_EVNT NoteCommands::record(const NoteInView& note, std::uint8_t channel)
{
    _EDT_EVNT rec;
    rec.status = static_cast<std::uint8_t>(status::note | status::channel(channel));
    rec.time = note.start;
    rec.gateTime = note.end - note.start;
    rec.post1 = note.key;
    rec.post2 = note.velocity;
    return rec;
}

void NoteCommands::sayLinked() { m_editor.user().message(TextId::linkedBlockNotEditable, MessageKind::warning); }

bool NoteCommands::refuses(std::span<const EvntRef> refs)
{
    const auto isLinked = [](const EvntRef& ref) { return blkOf(ref).GetType() != blktype::real; };
    if (std::ranges::none_of(refs, isLinked)) return false;
    sayLinked();
    return true;
}

bool NoteCommands::join(std::span<const EvntRef> refs)
{
    if (refuses(refs)) return false;
    struct Pair {
        EvntRef stays;
        EvntRef gone;
    };
    std::vector<Pair> pairs;
    for (const EvntRef& ref : refs)
        if (const EvntRef next = m_notes.nextOfKey(ref); next.evnt) pairs.push_back({ref, next});
    if (pairs.empty()) return false;
    const UndoScope step(m_editor, title(TextId::undoNoteJoin));
    if (!step) return false;
    for (auto at = pairs.rbegin(); at != pairs.rend(); ++at) // what goes has been joined itself by then
        m_editor.NoteApp(at->stays.trk, at->stays.blk, at->gone.evnt, at->stays.evnt);
    return true;
}

bool NoteCommands::split(std::span<const EvntRef> refs, std::uint32_t time)
{
    if (refuses(refs)) return false;
    std::vector<EvntRef> inside;
    std::ranges::copy_if(refs, std::back_inserter(inside), [time](const EvntRef& ref) {
        const std::uint32_t start = timeOf(ref);
        return isNote(evntOf(ref)) && start < time && time < tick::later(start, evntOf(ref).GetGateTime());
    });
    if (inside.empty()) return false;
    const UndoScope step(m_editor, title(TextId::undoNoteSplit));
    if (!step) return false;
    for (const EvntRef& ref : inside) m_editor.NoteDiv(ref.trk, ref.blk, ref.evnt, time);
    return true;
}

bool NoteCommands::remove(std::span<const EvntRef> refs, TextId titleId)
{
    if (refs.empty() || refuses(refs)) return false;
    const UndoScope step(m_editor, title(titleId));
    if (!step) return false;
    for (std::size_t i = refs.size(); i-- > 0;) m_editor.DeleteEvnt(refs[i].trk, refs[i].blk, refs[i].evnt);
    return true;
}

bool NoteCommands::change(std::span<const EvntRef> refs, const NoteChange& change, TextId titleId)
{
    const NoteChange limited = NoteExtent::of(refs).limit(change);
    return limited != NoteChange{} && edit(refs, limited, titleId);
}

// Later times first, so that a block that grows does it once; those of one time in their order, which stays so.
bool NoteCommands::edit(std::span<const EvntRef> refs, const Become& become, TextId titleId)
{
    if (refs.empty() || refuses(refs)) return false;
    const UndoScope step(m_editor, title(titleId));
    if (!step) return false;
    while (!refs.empty()) {
        const std::uint32_t time = timeOf(refs.back());
        std::size_t first = refs.size() - 1;
        while (first > 0 && timeOf(refs[first - 1]) == time) --first;
        for (const EvntRef& ref : refs.subspan(first)) write(ref, become);
        refs = refs.first(first);
    }
    return true;
}

void NoteCommands::write(const EvntRef& ref, const Become& become)
{
    const _EDT_EVNT old = record(ref);
    const _EDT_EVNT fresh = become(old);
    if (isSame(old, fresh)) return;
    if (isMovedOnly(old, fresh))
        m_editor.SetLocation(ref.trk, ref.blk, ref.evnt, fresh.time);
    else
        m_editor.SetEvnt(ref.trk, ref.blk, ref.evnt, fresh);
}

std::vector<EvntRef> NoteCommands::copy(std::span<const EvntRef> refs, std::int64_t ticks, int keys, TextId titleId)
{
    if (refs.empty() || refuses(refs)) return {};
    const NoteChange change = NoteExtent::of(refs).limit({.ticks = ticks, .keys = keys});
    struct Copy {
        BlkRef blk;
        _EDT_EVNT rec;
    };
    std::vector<Copy> wanted; // read before anything comes in, which may replace what is to be copied
    for (const EvntRef& ref : refs) wanted.push_back({{ref.trk, ref.blk}, change(record(ref))});
    const UndoScope step(m_editor, title(titleId));
    if (!step) return {};
    std::vector<EvntRef> copies;
    for (const auto& [blk, rec] : wanted) {
        const EvntRef made{blk.trk, blk.blk, insertInto(blk, rec)};
        if (!made.evnt) continue;
        dropReplaced(copies, evntOf(made));
        copies.push_back(made);
    }
    growFor(copies);
    return copies;
}

/// Each block once, for the event that reaches farthest.
void NoteCommands::growFor(std::span<const EvntRef> made)
{
    const auto endOf = [](const EvntRef& ref) { return tick::later(timeOf(ref), evntOf(ref).GetGateTime()); };
    std::unordered_map<POSITION, EvntRef> lasts; // by block
    for (const EvntRef& ref : made) {
        EvntRef& last = lasts.try_emplace(ref.blk, ref).first->second;
        if (endOf(last) < endOf(ref)) last = ref;
    }
    for (const auto& [blk, last] : lasts) m_editor.ChkBlkReSize(last.trk, blk, last.evnt);
}

std::vector<EvntRef> NoteCommands::duplicate(std::span<const EvntRef> refs, const Grid& grid)
{
    if (refs.empty()) return {};
    const NoteExtent extent = NoteExtent::of(refs);
    const std::uint32_t step = grid.step(m_editor, extent.start);
    const std::int64_t steps = (std::int64_t{extent.end} - extent.start + step - 1) / step;
    return copy(refs, std::max(steps, oneTick) * step, 0, TextId::undoEventInsert);
}

EvntRef NoteCommands::insert(int track, const _EDT_EVNT& rec)
{
    CTrk* trk = m_editor.song().trk(track);
    if (!trk) return {};
    const bool isUnused = trk->GetType() == trktype::unused;
    if (!CEditor::IsInsEnable(track, isUnused ? trktype::midi : trk->GetType(), rec)) return {};
    const UndoScope step(m_editor, title(TextId::undoEventInsert));
    const BlkRef blk = step ? blkFor(track, rec.time) : BlkRef{};
    if (!blk.blk) return {};
    const POSITION evnt = insertInto(blk, rec);
    if (!evnt) return {};
    m_editor.ChkBlkReSize(blk.trk, blk.blk, evnt);
    return {blk.trk, blk.blk, evnt};
}

bool NoteCommands::isLinkedAt(int track, std::uint32_t time) const
{
    const BlkRef at = m_notes.blkAt(track, time);
    return at.blk && List<CBlk>::get(at.blk)->GetType() != blktype::real;
}

BlkRef NoteCommands::blkFor(int track, std::uint32_t time)
{
    const BlkRef found = m_notes.blkAt(track, time);
    if (found.blk) {
        if (List<CBlk>::get(found.blk)->GetType() == blktype::real) return found;
        sayLinked();
        return {};
    }
    _EDT_MEAS at;
    m_editor.TimeToMeas(time, at);
    const std::uint32_t top = m_editor.MeasToTime({at.meas - 1, 0, 0});
    const std::uint32_t end = m_editor.MeasToTime({at.meas, 0, 0});
    if (!m_editor.BlkNew(m_editor.GetTrkPos(track), top, end > top ? end : tick::latest)) return {};
    return m_notes.blkAt(track, time);
}

POSITION NoteCommands::insertInto(const BlkRef& blk, const _EDT_EVNT& rec)
{
    POSITION evnt = nullptr;
    if (!m_editor.InsEvnt(blk.trk, blk.blk, rec, evnt)) return nullptr;
    m_editor.history().SetUndoEvntIns(blk.trk, blk.blk, evnt);
    return evnt;
}

} // namespace tessaro
