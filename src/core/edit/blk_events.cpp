// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/blk_events.h"

#include "core/edit/blk_edit.h"
#include "core/edit/editor.h"
#include "core/edit/percent.h"
#include "core/model/tick.h"

#include <algorithm>
#include <new>
#include <vector>

namespace tessaro::blk_events {

namespace {

CTrk& trkAt(POSITION pos) noexcept { return *List<CTrk>::get(pos); }
CBlk& blkAt(POSITION pos) noexcept { return *List<CBlk>::get(pos); }

bool isSource(POSITION trk, POSITION blk) noexcept
{
    return trk && blk && blkAt(blk).GetType() == blktype::real && blkAt(blk).GetRealBlk();
}

void setEnd(CEditor& editor, CBlk& blk, std::uint32_t end)
{
    blk.SetTimeEnd(end);
    fitGhosts(editor, blk);
}

/// Block-relative end of the last sound.
std::uint32_t lastSound(const CRealBlk& real) noexcept
{
    std::uint32_t last = 0;
    for (const CEvnt* e = real.events().head(); e; e = List<CEvnt>::next(e))
        last = std::max(last, tick::later(e->GetTime(), e->GetGateTime()));
    return last;
}

/// Moves all events from the block-relative time `at` on to another real block, whose top lies there.
void moveTail(CEditor& editor, CRealBlk& from, CRealBlk& to, std::uint32_t at)
{
    Percent bar(editor, from.GetNum());
    CEvnt* e = List<CEvnt>::get(from.GetTimePos(at));
    while (e) {
        CEvnt* moved = e;
        e = List<CEvnt>::next(e);
        from.RemoveAt(moved);
        moved->SetTime(moved->GetTime() - at);
        to.AddTail(moved);
        bar.step();
    }
}

void cutNotes(CEditor& editor, POSITION trk, POSITION blk, std::uint32_t at)
{
    for (CEvnt* e = blkAt(blk).GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
        if (e->GetGateTime() <= at - e->GetTime()) continue;
        editor.history().SetUndoEvntChng(trk, blk, e);
        e->SetGateTime(at - e->GetTime());
        editor.HintEvntChng(trk, blk, e);
    }
}

bool mayMerge(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2, std::uint32_t time) noexcept
{
    return blk != blk2 && blk_edit::isOrdinary(trk) && blk_edit::isOrdinary(trk2)
        && trkAt(trk).GetType() == trkAt(trk2).GetType() && isSource(trk, blk) && isSource(trk2, blk2)
        && time >= blkAt(blk2).GetTimeTop();
}

} // namespace

NewReal::NewReal(CEditor& editor) : m_editor(editor), m_real(editor.NewAddTailRealBlk()) {}

NewReal::~NewReal()
{
    if (m_real && !m_kept) m_editor.song().deleteRealBlk(m_real);
}

bool copyAll(CEditor& editor, const CRealBlk& from, CRealBlk& to, std::uint32_t offset)
{
    ScoreLinks& score = editor.score();
    const bool hasScore = score.any();
    try {
        for (const CEvnt* e = from.events().head(); e; e = List<CEvnt>::next(e)) {
            CEvnt* made = nullptr;
            to.NewAddTail(&made);
            if (!made) return false;
            made->copyFrom(*e);
            made->SetTime(tick::later(e->GetTime(), offset));
            if (hasScore && score.isScoreLink(*e)) score.copyEntry(*e, *made);
        }
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool divide(CEditor& editor, POSITION trk, POSITION pos, std::uint32_t time)
{
    editor.StopSeq();
    if (!blk_edit::isOrdinary(trk) || !isSource(trk, pos)) return false;
    CBlk& blk = blkAt(pos);
    // Behind the end there is nothing to divide, and the second half would end before its top.
    if (time < blk.GetTimeTop() || time > blk.GetTimeEnd()) return false;
    NewReal real(editor);
    POSITION made = nullptr;
    try {
        if (real.get()) made = trkAt(trk).NewAdd(time, blk.GetTimeEnd(), real.get(), blktype::real);
    } catch (const std::bad_alloc&) {
    }
    if (!made) return false;
    real.keep();
    editor.history().SetUndoBlkDiv(trk, pos, made, time);
    const std::uint32_t at = time - blk.GetTimeTop();
    moveTail(editor, *blk.GetRealBlk(), *real.get(), at);
    setEnd(editor, blk, time);
    editor.HintBlkDiv(trk, pos, made);
    cutNotes(editor, trk, pos, at);
    return true;
}

bool merge(CEditor& editor, POSITION trk, POSITION blk, POSITION trk2, POSITION blk2, std::uint32_t time)
{
    if (!mayMerge(trk, blk, trk2, blk2, time)) return false;
    editor.StopSeq();
    CBlk& into = blkAt(blk2);
    const std::uint32_t offset = time - into.GetTimeTop();
    CRealBlk copies(editor.song().pool());
    if (!copyAll(editor, *blkAt(blk).GetRealBlk(), copies, offset)) return false;

    editor.history().SetUndoBlkMerge(trk2, blk2);
    Percent bar(editor, copies.GetNum());
    CRealBlk& real = *into.GetRealBlk();
    POSITION cursor = real.GetTimePos(copies.GetTopEvntTime());
    while (CEvnt* e = copies.events().head()) {
        copies.RemoveAt(e);
        real.Sort(cursor, e->GetTime(), e);
        editor.history().SetUndoBlkMerge(trk2, blk2, e);
        bar.step();
    }
    const std::uint32_t end = tick::later(time, blkAt(blk).GetTimeEnd() - blkAt(blk).GetTimeTop());
    if (end > into.GetTimeEnd()) setEnd(editor, into, end);
    editor.HintBlkMerge(trk, blk, trk2, blk2);
    return true;
}

bool join(CEditor& editor, POSITION trk, POSITION blk, POSITION trk2, POSITION blk2)
{
    if (!trk || !blk || !trk2 || !blk2) return false;
    const std::uint32_t top = blkAt(blk).GetTimeTop();
    // The question about its ghosts comes before anything has changed.
    if (!mayMerge(trk, blk, trk2, blk2, top) || !blk_edit::mayRemove(editor, blkAt(blk))) return false;
    return merge(editor, trk, blk, trk2, blk2, top) && blk_edit::remove(editor, trk, blk);
}

bool realize(CEditor& editor, POSITION trk, POSITION pos)
{
    if (!trk || !pos || blkAt(pos).GetType() != blktype::ghost || !blkAt(pos).GetRealBlk()) return false;
    editor.StopSeq();
    CBlk& blk = blkAt(pos);
    NewReal real(editor);
    if (!real.get() || !copyAll(editor, *blk.GetRealBlk(), *real.get())) return false;
    real.keep();
    editor.history().SetUndoBlkReal(trk, pos);
    blk.SetRealBlk(real.get());
    blk.SetType(blktype::real);
    editor.HintBlkReal(trk, pos);
    return true;
}

bool resize(CEditor& editor, POSITION trk, POSITION pos, std::uint32_t end)
{
    if (isSource(trk, pos)) editor.StopSeq();
    return resizeRecorded(editor, trk, pos, end);
}

bool resizeRecorded(CEditor& editor, POSITION trk, POSITION pos, std::uint32_t end)
{
    if (!isSource(trk, pos)) return false;
    CBlk& blk = blkAt(pos);
    if (end <= blk.GetTimeEnd()) end = std::max(end, tick::later(blk.GetTimeTop(), lastSound(*blk.GetRealBlk())));
    editor.history().SetUndoBlkSize(trk, pos);
    setEnd(editor, blk, end);
    editor.HintBlkReSize(trk, pos);
    return true;
}

bool offset(CEditor& editor, POSITION trk, POSITION pos, std::int64_t delta)
{
    editor.StopSeq();
    if (!isSource(trk, pos)) return false;
    if (delta == 0) return true;
    const CBlk& blk = blkAt(pos);
    // From the side that they go to, so that an event meets none that has yet to move; each once, also when it comes to
    // stand behind others that wait.
    std::vector<CEvnt*> events;
    for (CEvnt* e = blk.GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) events.push_back(e);
    if (delta > 0) std::reverse(events.begin(), events.end());
    for (CEvnt* e : events)
        editor.SetLocation(trk, pos, e, tick::shifted(tick::later(blk.GetTimeTop(), e->GetTime()), delta));
    return true;
}

void grow(CEditor& editor, POSITION trk, POSITION pos, POSITION evnt)
{
    if (!trk || !pos || !evnt) return;
    CBlk& blk = blkAt(pos);
    const CEvnt& e = *List<CEvnt>::get(evnt);
    if (status::kind(e.GetStatus()) == status::wave && editor.BlkSizeWave(trk, pos)) return;
    const std::uint32_t end = tick::later(tick::later(blk.GetTimeTop(), e.GetTime()), e.GetGateTime());
    if (end <= blk.GetTimeEnd()) return;
    setEnd(editor, blk, end);
    editor.HintBlkReSize(trk, pos);
}

void fitGhosts(CEditor& editor, const CBlk& source)
{
    if (!source.GetRealBlk()) return;
    const std::uint32_t length = source.GetTimeEnd() - source.GetTimeTop();
    for (CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk))
        for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            if (blk->GetType() != blktype::ghost || blk->GetRealBlk() != source.GetRealBlk()) continue;
            blk->SetTimeEnd(tick::later(blk->GetTimeTop(), length));
            editor.HintBlkReSize(trk, blk);
        }
}

} // namespace tessaro::blk_events
