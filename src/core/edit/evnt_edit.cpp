// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/evnt_edit.h"

#include "core/edit/editor.h"
#include "core/edit/signature_edit.h"
#include "core/model/meta.h"
#include "core/model/tick.h"

#include <algorithm>
#include <new>

namespace tessaro::evnt_edit {

namespace {

CEvnt& evntAt(POSITION pos) noexcept { return *List<CEvnt>::get(pos); }

/// The block when its events may be edited, else null.
CBlk* source(POSITION blk) noexcept
{
    CBlk* block = List<CBlk>::get(blk);
    return block && block->GetType() == blktype::real && block->GetRealBlk() ? block : nullptr;
}

bool isMeta(const _EDT_EVNT& rec, std::uint8_t type) noexcept
{
    return rec.status == status::metaEvent && rec.metaType == type;
}

bool isRest(const _EDT_EVNT& rec) noexcept { return status::kind(rec.status) == status::rest; }
bool isNote(std::uint8_t st) noexcept { return status::kind(st) == status::note; }

bool isImmovable(const CEvnt& e) noexcept { return e.isMeta(meta::timeSignature) || e.isMeta(meta::copyright); }

std::int64_t endOf(const CEvnt& e) noexcept { return std::int64_t{e.GetTime()} + e.GetGateTime(); }

POSITION link(CBlk& block, const _EDT_EVNT& rec) noexcept
{
    try {
        return block.InsEvnt(rec);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

POSITION linkRaised(CBlk& block, const _EDT_EVNT& rec) noexcept
{
    if (rec.time >= block.GetTimeTop()) return link(block, rec);
    try {
        _EDT_EVNT raised = rec;
        raised.time = block.GetTimeTop();
        return link(block, raised);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

/// Moves a time inside a measure to the next bar line; false when no tick names it.
bool toBarLine(const CEditor& editor, std::uint32_t& time) noexcept
{
    _EDT_MEAS at;
    editor.TimeToMeas(time, at);
    if (at.beat == 1 && at.tick == 0) return true;
    const std::uint32_t line = editor.MeasToTime({at.meas, 0, 0});
    if (line < time) return false;
    time = line;
    return true;
}

_EDT_MEASINFO measInForce(const CEditor& editor, std::uint32_t time) noexcept
{
    _EDT_MEAS at;
    editor.TimeToMeas(time, at);
    _EDT_MEASINFO info;
    editor.GetMeasInfo(at.meas, info);
    return info;
}

POSITION insertSignature(CEditor& editor, POSITION trk, POSITION blk, _EDT_EVNT rec)
{
    if (!toBarLine(editor, rec.time)) return nullptr;
    const _EDT_MEASINFO prev = measInForce(editor, rec.time);
    const POSITION evnt = link(*List<CBlk>::get(blk), rec);
    if (!evnt) return nullptr;
    editor.DelDuplicateTs(trk, blk, evnt);
    editor.InsTs(trk, blk, evnt, rec, prev);
    return evnt;
}

void recordInsertion(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt)
{
    if (isRest(evntAt(evnt))) return;
    if (!editor.history().SetUndoEvntIns(trk, blk, evnt))
        editor.user().message(TextId::notUndoable, MessageKind::warning);
}

/// What the event would be with the record written over it, at the time that it has; false when it is refused.
bool rewritten(const CEvnt& event, const _EDT_EVNT& rec, CEvnt& fresh) noexcept
{
    try {
        fresh.copyFrom(event);
        if (!fresh.Set(rec)) return false;
        fresh.SetTime(event.GetTime());
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void replace(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, CEvnt& fresh)
{
    if (!isRest(fresh)) editor.history().SetUndoEvntChng(trk, blk, evnt);
    evntAt(evnt).swapWith(fresh);
}

void setGate(CEditor& editor, POSITION trk, POSITION blk, POSITION note, std::uint32_t gate)
{
    editor.StopSeq();
    editor.history().SetUndoEvntChng(trk, blk, note);
    evntAt(note).SetGateTime(gate);
    editor.HintEvntChng(trk, blk, note);
}

void sortTo(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, std::uint32_t time)
{
    CBlk& block = *List<CBlk>::get(blk);
    if (!isRest(evntAt(evnt))) editor.history().SetUndoEvntMove(trk, blk, evnt);
    block.Sort(std::max(time, block.GetTimeTop()) - block.GetTimeTop(), evnt);
    editor.HintLocationChng(trk, blk, evnt, evnt);
    if (evntAt(evnt).isMeta(meta::keySignature)) editor.HintKeyChng();
}

/// `old` is what the signature was before it was overwritten.
void signatureOverwritten(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const CEvnt& old)
{
    if (signature_edit::isSignature(old)) {
        const std::uint32_t top = List<CBlk>::get(blk)->GetTimeTop() + old.GetTime();
        editor.ChngTs(trk, blk, evnt, top, old.payload()[0], old.payload()[1], List<CEvnt>::get(evnt));
        return;
    }
    editor.HintEvntChng(trk, blk, evnt);
    editor.HintMeasChng();
}

} // namespace

bool isInsEnable(int trk, std::uint8_t type, const _EDT_EVNT& rec) noexcept
{
    const bool isMidi = type == trktype::midi;
    if (rec.status == status::sysex || rec.status == status::sysexPart) return trk != 0 && isMidi;
    if (rec.status == status::metaEvent) {
        const bool isMasters =
            rec.metaType == meta::copyright || rec.metaType == meta::tempo || rec.metaType == meta::timeSignature;
        return isMasters ? trk == 0 : isMidi;
    }
    switch (status::kind(rec.status)) {
    case status::rest:
    case status::nrpn:
    case status::rpn:
    case status::voice:
    case status::mci:
    case status::syng:
    case status::note:
    case status::polyPressure:
    case status::control:
    case status::program:
    case status::pressure:
    case status::pitchBend: return trk != 0 && isMidi;
    case status::wave: return type == trktype::wave;
    default: return false;
    }
}

POSITION insert(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec)
{
    CBlk* block = source(blk);
    if (!trk || !block || !isInsEnable(Song::numberOf(trk), List<CTrk>::get(trk)->GetType(), rec)) return nullptr;
    editor.StopSeq();
    if (isMeta(rec, meta::timeSignature) || isMeta(rec, meta::copyright)) {
        _EDT_EVNT placed = rec;
        placed.time = std::max(rec.time, block->GetTimeTop());
        if (isMeta(rec, meta::timeSignature)) return insertSignature(editor, trk, blk, std::move(placed));
        placed.time = 0;
        const POSITION evnt = link(*block, placed);
        if (evnt) editor.HintInsEvnt(trk, blk, evnt);
        return evnt;
    }
    const POSITION evnt = linkRaised(*block, rec);
    if (!evnt) return nullptr;
    if (isRest(rec))
        editor.HintInsRest(trk, blk, evnt);
    else
        editor.HintInsEvnt(trk, blk, evnt);
    if (isMeta(rec, meta::keySignature)) editor.flags().keyChanged = true;
    return evnt;
}

bool insertRecorded(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec)
{
    const POSITION evnt = insert(editor, trk, blk, rec);
    if (!evnt) return false;
    recordInsertion(editor, trk, blk, evnt);
    editor.ChkBlkReSize(trk, blk, evnt);
    return true;
}

bool overwrite(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec)
{
    if (!source(blk) || !evnt) return false;
    editor.StopSeq();
    CEvnt& event = evntAt(evnt);
    CEvnt fresh; // afterwards what the event was
    if (isRest(rec) != isRest(event)) return false;
    if (isMeta(rec, meta::timeSignature) != event.isMeta(meta::timeSignature)) return false;
    if (!rewritten(event, rec, fresh)) return false;

    const CBlk& block = *List<CBlk>::get(blk);
    const std::uint32_t time = std::max(rec.time, block.GetTimeTop());
    const bool moves = time - block.GetTimeTop() != event.GetTime() && !isImmovable(event);
    replace(editor, trk, blk, evnt, fresh);
    if (event.isMeta(meta::timeSignature)) {
        signatureOverwritten(editor, trk, blk, evnt, fresh);
        return true;
    }
    editor.HintEvntChng(trk, blk, evnt);
    if (moves) sortTo(editor, trk, blk, evnt, time);
    if (event.isMeta(meta::keySignature)) editor.flags().keyChanged = true;
    if (!event.isMeta(meta::keySignature) && !event.isMeta(meta::tempo)) editor.ChkBlkReSize(trk, blk, evnt);
    return true;
}

bool move(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, std::uint32_t time)
{
    editor.StopSeq();
    if (!source(blk) || !evnt) return false;
    if (isImmovable(evntAt(evnt))) {
        if (editor.flags().warnImmovable) editor.user().message(TextId::eventNotMovable, MessageKind::warning);
        editor.flags().warnImmovable = false;
        return false;
    }
    sortTo(editor, trk, blk, evnt, time);
    editor.ChkBlkReSize(trk, blk, evnt);
    return true;
}

void removeRecorded(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt)
{
    editor.StopSeq();
    if (!source(blk) || !evnt) return;
    const CEvnt& event = evntAt(evnt);
    if (event.GetTime() == 0 && (event.isMeta(meta::timeSignature) || event.isMeta(meta::tempo))) return;
    if (!isRest(event)) editor.history().SetUndoEvntDel(trk, blk, evnt);
    remove(editor, trk, blk, evnt);
}

void remove(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt)
{
    CBlk* block = source(blk);
    if (!block || !evnt) return;
    CEvnt& event = evntAt(evnt);
    if (event.isMeta(meta::timeSignature)) {
        _EDT_EVNT rec;
        event.Get(rec);
        editor.DelTs(trk, blk, evnt, rec);
        return;
    }
    block->RemoveAt(evnt);
    editor.HintDelEvnt(trk, blk, evnt);
    if (event.isMeta(meta::keySignature)) editor.flags().keyChanged = true;
    editor.history().retire(&event);
}

bool insertRest(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec)
{
    return isRest(rec) && insertRecorded(editor, trk, blk, rec);
}

bool removeRest(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt)
{
    if (!source(blk) || !evnt || !isRest(evntAt(evnt))) return false;
    editor.StopSeq();
    remove(editor, trk, blk, evnt);
    List<CBlk>::get(blk)->resetPlayState();
    editor.PlaySeq();
    return true;
}

POSITION record(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec)
{
    CBlk* block = source(blk);
    const POSITION evnt = block ? linkRaised(*block, rec) : nullptr;
    if (!evnt) return nullptr;
    editor.HintInsEvnt(trk, blk, evnt);
    const std::uint32_t end = tick::clamped(block->GetTimeTop() + endOf(evntAt(evnt)));
    const bool grows = end > block->GetTimeEnd();
    block->SetTimeEndCmp(end);
    if (grows) editor.ChkGhostBlkReSize(block);
    editor.HintBlkReSize(trk, blk);
    return evnt;
}

bool recordRecorded(CEditor& editor, POSITION trk, POSITION blk, const _EDT_EVNT& rec)
{
    const POSITION evnt = record(editor, trk, blk, rec);
    if (!evnt) return false;
    recordInsertion(editor, trk, blk, evnt);
    editor.ChkBlkReSize(trk, blk, evnt);
    return true;
}

bool recordOver(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec)
{
    if (!source(blk) || !evnt || !isNote(rec.status) || !isNote(evntAt(evnt).GetStatus())) return false;
    CEvnt fresh;
    if (!rewritten(evntAt(evnt), rec, fresh)) return false;
    replace(editor, trk, blk, evnt, fresh);
    editor.HintEvntChng(trk, blk, evnt);
    return true;
}

POSITION recordQuietly(CBlk* blk, const _EDT_EVNT& rec) { return source(blk) ? linkRaised(*blk, rec) : nullptr; }

void setGateQuietly(POSITION note, std::uint32_t gate) noexcept
{
    if (note) evntAt(note).SetGateTime(gate);
}

bool joinNotes(CEditor& editor, POSITION trk, POSITION blk, POSITION note, POSITION note2)
{
    CBlk* block = source(blk);
    if (!block || !note || !note2 || note == note2) return false;
    CEvnt& gone = evntAt(note);
    const CEvnt& stays = evntAt(note2);
    if (gone.GetTime() < stays.GetTime() || !isNote(gone.GetStatus()) || !isNote(stays.GetStatus())) return false;
    if (gone.GetPost1() != stays.GetPost1()) return false;

    const std::int64_t gate = std::max(endOf(gone), endOf(stays)) - stays.GetTime();
    setGate(editor, trk, blk, note2, tick::clamped(gate));
    editor.history().SetUndoEvntDel(trk, blk, note);
    remove(editor, trk, blk, note);
    return true;
}

bool divideNote(CEditor& editor, POSITION trk, POSITION blk, POSITION note, std::uint32_t time)
{
    CBlk* block = source(blk);
    if (!trk || !block || !note || !isNote(evntAt(note).GetStatus())) return false;
    _EDT_EVNT rest;
    evntAt(note).Get(rest);
    const std::uint64_t start = std::uint64_t{block->GetTimeTop()} + rest.time;
    if (time <= start || time >= start + rest.gateTime) return false;
    if (!isInsEnable(Song::numberOf(trk), List<CTrk>::get(trk)->GetType(), rest)) return false;

    const auto gate = static_cast<std::uint32_t>(time - start);
    setGate(editor, trk, blk, note, gate);
    rest.time = time;
    rest.gateTime -= gate;
    return insertRecorded(editor, trk, blk, rest);
}

} // namespace tessaro::evnt_edit
