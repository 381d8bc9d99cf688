// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/signature_edit.h"

#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "core/model/tick.h"

namespace tessaro::signature_edit {

namespace {

constexpr std::uint32_t commonTime = 1920;

std::uint32_t measClock(const CEvnt& signature) noexcept
{
    return GetMeasClock(signature.payload()[0], signature.payload()[1]);
}

CEvnt* nextSignature(const CEvnt* e) noexcept
{
    CEvnt* at = List<CEvnt>::next(e);
    while (at && !isSignature(*at)) at = List<CEvnt>::next(at);
    return at;
}

CEvnt* prevSignature(const CEvnt* e) noexcept
{
    CEvnt* at = List<CEvnt>::prev(e);
    while (at && !isSignature(*at)) at = List<CEvnt>::prev(at);
    return at;
}

/// How far a signature moves when the `span` ticks before it were counted in measures of `before` ticks and are
/// now counted in measures of `after`.
std::int64_t reTimed(std::uint32_t span, std::uint32_t before, std::uint32_t after) noexcept
{
    if (before == 0) return 0;
    return (std::int64_t{after} - before) * (span / before);
}

/// Copies of `first` and all signatures behind it, at their new times; none and false when memory is out.
bool copyMoved(CRealBlk& real, const CEvnt* first, std::int64_t delta, List<CEvnt>& copies)
{
    for (const CEvnt* e = first; e; e = nextSignature(e)) {
        CEvnt* copy = nullptr;
        real.New(&copy);
        if (copy) copies.addTail(copy);
        if (copy && copy->SetTs(tick::shifted(e->GetTime(), delta), e->payload().data())) continue;
        while (CEvnt* made = copies.takeHead()) real.Delete(made);
        return false;
    }
    return true;
}

} // namespace

bool isSignature(const CEvnt& e) noexcept { return e.isMeta(meta::timeSignature) && e.GetSzData() == 4; }

void changed(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, std::uint32_t top, std::uint8_t num,
             std::uint8_t den, const CEvnt& event)
{
    const auto body = event.payload();
    if (body[0] == num && body[1] == den) return;
    const std::uint32_t before = GetMeasClock(num, den);
    if (CEvnt* next = nextSignature(List<CEvnt>::get(evnt)); next && before != 0 && before != measClock(event)) {
        const std::uint32_t span = List<CBlk>::get(blk)->GetTimeTop() + next->GetTime() - top;
        if (span / before != 0) {
            shift(editor, trk, blk, next, reTimed(span, before, measClock(event)));
            editor.HintEvntChng(trk, blk, evnt);
            editor.HintTsChng(trk, blk, evnt);
            return;
        }
    }
    editor.HintEvntChng(trk, blk, evnt);
    editor.HintMeasChng();
    editor.flags().measChanged = true;
}

void inserted(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const _EDT_MEASINFO& prev)
{
    CEvnt* here = List<CEvnt>::get(evnt);
    CEvnt* next = nextSignature(here);
    const std::uint32_t clock = measClock(*here);
    if (next && clock != prev.measClock) {
        // The record of this insertion comes last: those of the shift must not know of it.
        CRealBlk& real = *List<CBlk>::get(blk)->GetRealBlk();
        CEvnt* front = List<CEvnt>::prev(here);
        const std::uint32_t span = next->GetTime() - here->GetTime();
        real.RemoveAt(here);
        shift(editor, trk, blk, next, reTimed(span, prev.measClock, clock));
        if (front)
            real.InsertAfter(front, here);
        else
            real.AddHead(here);
        editor.HintTsChng(trk, blk, evnt);
        return;
    }
    editor.HintInsEvnt(trk, blk, evnt);
    editor.HintMeasChng();
}

void remove(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec)
{
    CEvnt* gone = List<CEvnt>::get(evnt);
    CEvnt* next = nextSignature(gone);
    const CEvnt* prev = prevSignature(gone);
    const bool reTime = isSignature(*gone) && next && next->GetTime() != gone->GetTime();
    const std::uint32_t clock = prev ? measClock(*prev) : commonTime;
    // The deletion is recorded already: the records of the shift must find it done.
    List<CBlk>::get(blk)->RemoveAt(evnt);
    if (reTime) {
        const std::uint32_t deletedClock = GetMeasClock(rec.data[0], rec.data[1]);
        shift(editor, trk, blk, next, reTimed(next->GetTime() - gone->GetTime(), deletedClock, clock));
    }
    editor.HintDelEvnt(trk, blk, evnt);
    if (reTime)
        editor.HintTsChng(trk, blk, evnt);
    else
        editor.HintMeasChng();
    editor.history().retire(gone);
}

void shift(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt, std::int64_t delta)
{
    CRealBlk& real = *List<CBlk>::get(blk)->GetRealBlk();
    CEvnt* e = List<CEvnt>::get(evnt);
    if (!isSignature(*e)) e = nextSignature(e);
    List<CEvnt> copies;
    if (!copyMoved(real, e, delta, copies)) return;
    while (e) {
        CEvnt* old = e;
        e = nextSignature(e);
        editor.history().SetUndoEvntDel(trk, blk, old);
        real.RemoveAt(old);
        editor.history().retire(old);
    }
    while (CEvnt* copy = copies.takeHead()) {
        real.Add(copy->GetTime(), copy);
        editor.history().SetUndoEvntIns(trk, blk, copy);
    }
}

void removeDuplicates(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt)
{
    CRealBlk& real = *List<CBlk>::get(blk)->GetRealBlk();
    const std::uint32_t time = List<CEvnt>::get(evnt)->GetTime();
    CEvnt* e = List<CEvnt>::prev(List<CEvnt>::get(evnt));
    while (e && e->GetTime() == time) {
        CEvnt* other = e;
        e = List<CEvnt>::prev(e);
        if (!other->isMeta(meta::timeSignature)) continue;
        editor.history().SetUndoEvntDel(trk, blk, other);
        real.RemoveAt(other);
        editor.HintDelEvnt(trk, blk, other);
        editor.history().retire(other);
    }
}

} // namespace tessaro::signature_edit
