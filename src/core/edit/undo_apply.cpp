// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_apply.h"

#include "core/edit/editor.h"
#include "core/model/meta.h"

#include <utility>

namespace tessaro::undo_apply {

namespace {

CEvnt* evntAt(POSITION pos) noexcept { return List<CEvnt>::get(pos); }
CBlk* blkAt(POSITION pos) noexcept { return List<CBlk>::get(pos); }
CTrk* trkAt(POSITION pos) noexcept { return List<CTrk>::get(pos); }
CStyleBlk* styleAt(POSITION pos) noexcept { return List<CStyleBlk>::get(pos); }
CRealBlk& realOf(POSITION blk) noexcept { return *blkAt(blk)->GetRealBlk(); }

void noteMaps(CEditor& editor, const CEvnt& e) noexcept
{
    StepFlags& flags = editor.flags();
    flags.tempoChanged = flags.tempoChanged || e.isMeta(meta::tempo);
    flags.measChanged = flags.measChanged || e.isMeta(meta::timeSignature);
    flags.keyChanged = flags.keyChanged || e.isMeta(meta::keySignature);
}

// Out of the song and back: what leaves is parked, and the record keeps what stood before it.

void takeEvnt(CEditor& editor, CRealBlk& real, POSITION evnt, POSITION& before)
{
    before = CRealBlk::placeOf(evnt);
    real.RemoveAt(evnt);
    editor.history().AddTailUndoEvnt(evntAt(evnt));
}

void putEvnt(CEditor& editor, CRealBlk& real, POSITION evnt, POSITION before)
{
    editor.history().RemoveUndoEvnt(evnt);
    real.Restore(evntAt(evnt), before);
}

void takeBlk(CEditor& editor, POSITION trk, POSITION blk, POSITION& before)
{
    before = blk->prev;
    trkAt(trk)->RemoveAt(blk);
    editor.history().AddTailUndoBlk(blkAt(blk));
}

void putBlk(CEditor& editor, POSITION trk, POSITION blk, POSITION before)
{
    editor.history().RemoveUndoBlk(blk);
    if (before)
        trkAt(trk)->InsertAfter(before, blkAt(blk));
    else
        trkAt(trk)->AddHead(blkAt(blk));
}

void putBlk(CEditor& editor, POSITION trk, POSITION blk, POSITION before, std::uint8_t trkType)
{
    if (trkAt(trk)->GetType() != trkType && trkAt(trk)->SetType(trkType)) editor.flags().trkTypeChanged = true;
    putBlk(editor, trk, blk, before);
}

void takeStyle(CEditor& editor, POSITION style, POSITION& before)
{
    before = style->prev;
    editor.styles().unlink(styleAt(style));
    editor.history().AddTailUndoStyle(styleAt(style));
}

void putStyle(CEditor& editor, POSITION style, POSITION before)
{
    editor.history().RemoveUndoStyle(style);
    editor.styles().insertAfter(styleAt(before), styleAt(style));
}

// Events

bool removeEvnt(CEditor& editor, CUndo& c)
{
    noteMaps(editor, *evntAt(c.evnt));
    takeEvnt(editor, realOf(c.blk), c.evnt, c.before);
    editor.HintDelEvnt(c.trk, c.blk, c.evnt);
    return true;
}

bool insertEvnt(CEditor& editor, CUndo& c)
{
    putEvnt(editor, realOf(c.blk), c.evnt, c.before);
    noteMaps(editor, *evntAt(c.evnt));
    editor.HintInsEvnt(c.trk, c.blk, c.evnt);
    return true;
}

bool swapEvnt(CEditor& editor, CUndo& c)
{
    noteMaps(editor, *c.snapshot);
    noteMaps(editor, *evntAt(c.evnt));
    evntAt(c.evnt)->swapWith(*c.snapshot);
    editor.HintEvntChng(c.trk, c.blk, c.evnt);
    return true;
}

bool moveEvnt(CEditor& editor, CUndo& c)
{
    CEvnt* e = evntAt(c.evnt);
    const std::uint32_t time = std::exchange(c.time, e->GetTime());
    const POSITION before = std::exchange(c.before, CRealBlk::placeOf(c.evnt));
    CRealBlk& real = realOf(c.blk);
    real.RemoveAt(c.evnt);
    e->SetTime(time);
    real.Restore(e, before);
    noteMaps(editor, *e);
    editor.HintLocationChng(c.trk, c.blk, c.evnt, c.evnt);
    return true;
}

// Blocks

bool removeBlk(CEditor& editor, CUndo& c)
{
    takeBlk(editor, c.trk, c.blk, c.before);
    editor.HintBlkDel(c.trk, c.blk);
    return true;
}

bool insertBlk(CEditor& editor, CUndo& c)
{
    putBlk(editor, c.trk, c.blk, c.before, c.trkType);
    editor.HintBlkNew(c.trk, c.blk);
    return true;
}

// Both blocks stand on their tracks for a moment, as they did when the change was recorded.
bool moveBlkBack(CEditor& editor, CUndo& c)
{
    CUndo::More& old = *c.more;
    putBlk(editor, old.oldTrk, old.oldBlk, old.oldBefore, c.trkType);
    takeBlk(editor, c.trk, c.blk, c.before);
    editor.HintBlkMove(c.trk, c.blk, old.oldTrk, old.oldBlk);
    return true;
}

bool moveBlkOn(CEditor& editor, CUndo& c)
{
    CUndo::More& old = *c.more;
    putBlk(editor, c.trk, c.blk, c.before, c.trkType);
    takeBlk(editor, old.oldTrk, old.oldBlk, old.oldBefore);
    editor.HintBlkMove(old.oldTrk, old.oldBlk, c.trk, c.blk);
    return true;
}

void swapEnd(CEditor& editor, CUndo& c)
{
    CBlk* blk = blkAt(c.blk);
    if (c.time == blk->GetTimeEnd()) return;
    const std::uint32_t end = std::exchange(c.time, blk->GetTimeEnd());
    blk->SetTimeEnd(end);
    editor.ChkGhostBlkReSize(blk);
}

bool resizeBlk(CEditor& editor, CUndo& c)
{
    swapEnd(editor, c);
    editor.HintBlkReSize(c.trk, c.blk);
    return true;
}

bool unmergeBlk(CEditor& editor, CUndo& c)
{
    CRealBlk& real = realOf(c.blk);
    auto& evnts = c.more->evnts;
    for (auto last = evnts.rbegin(); last != evnts.rend(); ++last) takeEvnt(editor, real, last->first, last->second);
    swapEnd(editor, c);
    editor.HintBlkUpdate(c.trk, c.blk);
    return true;
}

bool mergeBlk(CEditor& editor, CUndo& c)
{
    CRealBlk& real = realOf(c.blk);
    for (const auto& [evnt, before] : c.more->evnts) putEvnt(editor, real, evnt, before);
    swapEnd(editor, c);
    editor.HintBlkUpdate(c.trk, c.blk);
    return true;
}

/// Moves the events from `from` on to another real block, their times shifted.
void moveEvnts(CRealBlk& source, POSITION from, CRealBlk& target, std::int64_t shift)
{
    while (from) {
        CEvnt* e = evntAt(from);
        from = from->next;
        source.RemoveAt(e);
        e->SetTime(static_cast<std::uint32_t>(e->GetTime() + shift));
        target.Add(e->GetTime(), e);
    }
}

bool undivideBlk(CEditor& editor, CUndo& c)
{
    CBlk* first = blkAt(c.more->oldBlk);
    CRealBlk& second = realOf(c.blk);
    moveEvnts(second, second.GetHeadPos(), *first->GetRealBlk(), std::int64_t{c.time} - first->GetTimeTop());
    first->SetTimeEnd(blkAt(c.blk)->GetTimeEnd());
    takeBlk(editor, c.trk, c.blk, c.before);
    editor.HintBlkDel(c.trk, c.blk);
    editor.ChkGhostBlkReSize(first);
    editor.HintBlkUpdate(c.trk, first);
    return true;
}

bool divideBlk(CEditor& editor, CUndo& c)
{
    CBlk* first = blkAt(c.more->oldBlk);
    CRealBlk& source = *first->GetRealBlk();
    const std::uint32_t length = c.time - first->GetTimeTop();
    putBlk(editor, c.trk, c.blk, c.before);
    first->SetTimeEnd(c.time);
    moveEvnts(source, source.GetTimePos(length), realOf(c.blk), -std::int64_t{length});
    editor.HintBlkNew(c.trk, c.blk);
    editor.ChkGhostBlkReSize(first);
    editor.HintBlkUpdate(c.trk, first);
    return true;
}

bool swapReal(CEditor& editor, CUndo& c, std::uint8_t type)
{
    CBlk* blk = blkAt(c.blk);
    CRealBlk* real = std::exchange(c.more->real, blk->GetRealBlk());
    blk->SetRealBlk(real);
    blk->SetType(type);
    editor.HintBlkReal(c.trk, c.blk);
    return true;
}

// Tracks and style blocks

bool moveTrk(CEditor& editor, CUndo& c)
{
    const int number = c.more->trkNumber;
    const int from = Song::numberOf(c.trk);
    if (number < 1 || number >= trackCount) return false;
    // The track itself does not count among those before the place.
    const POSITION after = editor.GetTrkPos(from < number ? number : number - 1);
    if (number != from) editor.song().moveTrk(c.trk, after);
    c.more->trkNumber = from;
    editor.HintTrkArrange(c.trk, c.trk);
    return true;
}

bool removeStyle(CEditor& editor, CUndo& c)
{
    takeStyle(editor, c.blk, c.before);
    editor.HintStyleDel(c.blk);
    return true;
}

bool insertStyle(CEditor& editor, CUndo& c)
{
    putStyle(editor, c.blk, c.before);
    editor.HintStyleNew(c.blk);
    return true;
}

bool moveStyleBack(CEditor& editor, CUndo& c)
{
    putStyle(editor, c.more->oldBlk, c.more->oldBefore);
    takeStyle(editor, c.blk, c.before);
    editor.HintStyleMove(c.blk, c.more->oldBlk);
    return true;
}

bool moveStyleOn(CEditor& editor, CUndo& c)
{
    putStyle(editor, c.blk, c.before);
    takeStyle(editor, c.more->oldBlk, c.more->oldBefore);
    editor.HintStyleMove(c.more->oldBlk, c.blk);
    return true;
}

bool resizeStyle(CEditor& editor, CUndo& c)
{
    CStyleBlk* style = styleAt(c.blk);
    const std::uint32_t end = std::exchange(c.time, style->GetTimeEnd());
    style->SetTime(style->GetTimeTop(), end);
    editor.HintStyleSize(c.blk);
    return true;
}

} // namespace

bool undo(CEditor& editor, CUndo& change)
{
    switch (change.kind) {
    case UndoKind::evntIns: return removeEvnt(editor, change);
    case UndoKind::evntDel: return insertEvnt(editor, change);
    case UndoKind::evntChng: return swapEvnt(editor, change);
    case UndoKind::evntMove: return moveEvnt(editor, change);
    case UndoKind::blkNew:
    case UndoKind::blkPaste: return removeBlk(editor, change);
    case UndoKind::blkDel: return insertBlk(editor, change);
    case UndoKind::blkMove: return moveBlkBack(editor, change);
    case UndoKind::blkMerge: return unmergeBlk(editor, change);
    case UndoKind::blkDiv: return undivideBlk(editor, change);
    case UndoKind::blkReal: return swapReal(editor, change, blktype::ghost);
    case UndoKind::blkSize: return resizeBlk(editor, change);
    case UndoKind::trkMove: return moveTrk(editor, change);
    case UndoKind::styleNew: return removeStyle(editor, change);
    case UndoKind::styleDel: return insertStyle(editor, change);
    case UndoKind::styleMove: return moveStyleBack(editor, change);
    case UndoKind::styleSize: return resizeStyle(editor, change);
    default: return true;
    }
}

bool redo(CEditor& editor, CUndo& change)
{
    switch (change.kind) {
    case UndoKind::evntIns: return insertEvnt(editor, change);
    case UndoKind::evntDel: return removeEvnt(editor, change);
    case UndoKind::evntChng: return swapEvnt(editor, change);
    case UndoKind::evntMove: return moveEvnt(editor, change);
    case UndoKind::blkNew:
    case UndoKind::blkPaste: return insertBlk(editor, change);
    case UndoKind::blkDel: return removeBlk(editor, change);
    case UndoKind::blkMove: return moveBlkOn(editor, change);
    case UndoKind::blkMerge: return mergeBlk(editor, change);
    case UndoKind::blkDiv: return divideBlk(editor, change);
    case UndoKind::blkReal: return swapReal(editor, change, blktype::real);
    case UndoKind::blkSize: return resizeBlk(editor, change);
    case UndoKind::trkMove: return moveTrk(editor, change);
    case UndoKind::styleNew: return insertStyle(editor, change);
    case UndoKind::styleDel: return removeStyle(editor, change);
    case UndoKind::styleMove: return moveStyleOn(editor, change);
    case UndoKind::styleSize: return resizeStyle(editor, change);
    default: return false;
    }
}

} // namespace tessaro::undo_apply
