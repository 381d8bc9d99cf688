// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/blk_edit.h"

#include "core/edit/blk_events.h"
#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "core/model/tick.h"

#include <algorithm>
#include <new>
#include <string>

namespace tessaro::blk_edit {

namespace {

CTrk& trkAt(POSITION pos) noexcept { return *List<CTrk>::get(pos); }
CBlk& blkAt(POSITION pos) noexcept { return *List<CBlk>::get(pos); }

bool isPlaced(const CBlk& blk) noexcept { return blk.GetType() == blktype::real || blk.GetType() == blktype::ghost; }

bool mayEnter(const CTrk& trk, std::uint8_t type) noexcept { return trk.GetType() == type || trk.IsEmpty(); }

/// Both tracks and the block take part in a transfer, and the second track may take the block.
bool mayTransfer(POSITION trk, POSITION blk, POSITION trk2) noexcept
{
    return blk && isOrdinary(trk) && isOrdinary(trk2) && isPlaced(blkAt(blk)) && blkAt(blk).GetRealBlk()
        && mayEnter(trkAt(trk2), trkAt(trk).GetType());
}

struct NewBlk {
    std::uint32_t top;
    std::uint32_t end;
    CRealBlk* real;
    std::uint8_t type = blktype::real;
    const std::string* name = nullptr; ///< null for an automatic one
};

/// Puts a new block on a track that it may enter; null, and nothing changed, when memory is out.
POSITION place(CEditor& editor, CTrk& trk, std::uint8_t trkType, const NewBlk& what)
{
    const std::uint8_t oldType = trk.GetType();
    if (oldType != trkType) trk.SetType(trkType);
    try {
        const std::uint32_t end = std::max(what.top, what.end);
        const POSITION made = what.name ? trk.NewAdd(what.top, end, what.real, what.type, *what.name)
                                        : trk.NewAdd(what.top, end, what.real, what.type);
        if (oldType != trkType) editor.flags().trkTypeChanged = true;
        return made;
    } catch (const std::bad_alloc&) {
        trk.SetType(oldType);
        return nullptr;
    }
}

std::uint32_t endAt(std::uint32_t top, const CBlk& like) noexcept
{
    return tick::later(top, like.GetTimeEnd() - like.GetTimeTop());
}

bool addEmptyTexts(CRealBlk& real)
{
    _EDT_EVNT rec;
    rec.status = status::metaEvent;
    rec.metaType = meta::text;
    return real.InsEvnt(rec) && real.InsEvnt(rec);
}

/// The type that a track without a block to look at has, or is to get.
std::uint8_t typeForNew(const CTrk& trk, Maker maker) noexcept
{
    const bool takesWaves = maker != Maker::take && trk.GetType() == trktype::wave;
    return takesWaves ? trktype::wave : trktype::midi;
}

void finishNew(CEditor& editor, POSITION trk, POSITION blk)
{
    editor.HintBlkNew(trk, blk);
    editor.history().SetUndoBlkNew(trk, blk, trkAt(trk).GetType());
}

void takeOut(CEditor& editor, POSITION trk, POSITION blk)
{
    editor.history().SetUndoBlkDel(trk, blk, trkAt(trk).GetType());
    trkAt(trk).RemoveAt(blk);
    editor.HintBlkDel(trk, blk);
    editor.history().retire(&blkAt(blk));
}

} // namespace

bool isOrdinary(POSITION trk) noexcept { return trk && Song::numberOf(trk) != 0; }

POSITION create(CEditor& editor, POSITION trk, std::uint32_t top, std::uint32_t end, Maker maker)
{
    if (!isOrdinary(trk)) return nullptr;
    const std::uint8_t type = typeForNew(trkAt(trk), maker);
    if (!mayEnter(trkAt(trk), type)) return nullptr;
    if (maker == Maker::edit) editor.StopSeq();
    blk_events::NewReal real(editor);
    if (!real.get() || (maker == Maker::take && !addEmptyTexts(*real.get()))) return nullptr;
    const POSITION made = place(editor, trkAt(trk), type, {.top = top, .end = end, .real = real.get()});
    if (!made) return nullptr;
    real.keep();
    if (maker == Maker::take)
        editor.HintBlkRealRec(trk, made);
    else
        editor.HintBlkNew(trk, made);
    editor.history().SetUndoBlkNew(trk, made, type);
    return made;
}

POSITION paste(CEditor& editor, POSITION trk, std::uint32_t top, std::uint32_t end, CRealBlk* real)
{
    if (!isOrdinary(trk) || !real) return nullptr;
    const std::uint8_t type = typeForNew(trkAt(trk), Maker::edit);
    if (!mayEnter(trkAt(trk), type)) return nullptr;
    editor.StopSeq();
    const POSITION made = place(editor, trkAt(trk), type, {.top = top, .end = end, .real = real});
    if (made) editor.history().SetUndoBlkPaste(trk, made, type);
    return made;
}

bool copy(CEditor& editor, POSITION trk, POSITION pos, POSITION trk2, std::uint32_t time)
{
    if (!mayTransfer(trk, pos, trk2)) return false;
    const CBlk& blk = blkAt(pos);
    if (blk.GetType() == blktype::ghost) return ghost(editor, trk, pos, trk2, time);
    editor.StopSeq();
    blk_events::NewReal real(editor);
    if (!real.get() || !blk_events::copyAll(editor, *blk.GetRealBlk(), *real.get())) return false;
    const NewBlk what{time, endAt(time, blk), real.get(), blktype::real, &blk.GetName()};
    const POSITION made = place(editor, trkAt(trk2), trkAt(trk).GetType(), what);
    if (!made) return false;
    real.keep();
    finishNew(editor, trk2, made);
    if (trkAt(trk2).GetType() == trktype::wave) editor.BlkSizeWave(trk2, made);
    return true;
}

bool ghost(CEditor& editor, POSITION trk, POSITION pos, POSITION trk2, std::uint32_t time)
{
    if (!mayTransfer(trk, pos, trk2)) return false;
    editor.StopSeq();
    const CBlk& blk = blkAt(pos);
    const std::string name = "*" + blk.GetName();
    const NewBlk what{time, endAt(time, blk), blk.GetRealBlk(), blktype::ghost, &name};
    const POSITION made = place(editor, trkAt(trk2), trkAt(trk).GetType(), what);
    if (made) finishNew(editor, trk2, made);
    return made;
}

POSITION move(CEditor& editor, POSITION trk, POSITION pos, POSITION trk2, std::uint32_t time)
{
    editor.StopSeq();
    const POSITION made = makeMoved(editor, trk, pos, trk2, time);
    if (!made) return nullptr;
    const std::uint8_t type = trkAt(trk2).GetType();
    editor.history().SetUndoBlkMove(trk, pos, trk2, made, type);
    trkAt(trk).RemoveAt(pos);
    editor.HintBlkMove(trk, pos, trk2, made);
    editor.history().retire(&blkAt(pos));
    if (type == trktype::wave) editor.BlkSizeWave(trk2, made);
    return made;
}

POSITION makeMoved(CEditor& editor, POSITION trk, POSITION pos, POSITION trk2, std::uint32_t time)
{
    if (!mayTransfer(trk, pos, trk2)) return nullptr;
    const CBlk& blk = blkAt(pos);
    const NewBlk what{time, endAt(time, blk), blk.GetRealBlk(), blk.GetType(), &blk.GetName()};
    return place(editor, trkAt(trk2), trkAt(trk).GetType(), what);
}

bool mayRemove(CEditor& editor, const CBlk& blk)
{
    if (blk.GetType() != blktype::real || !hasGhost(editor, blk)) return true;
    StepFlags& flags = editor.flags();
    if (flags.keepGhosts && editor.IsUndoOpen()) return false;
    if (!flags.askGhostDelete) return true;
    flags.keepGhosts = !editor.user().ask(static_cast<int>(TextId::askDeleteLinks));
    flags.askGhostDelete = flags.keepGhosts;
    return !flags.keepGhosts;
}

bool remove(CEditor& editor, POSITION trk, POSITION blk)
{
    editor.StopSeq();
    if (!blk || !isOrdinary(trk) || !mayRemove(editor, blkAt(blk))) return false;
    if (blkAt(blk).GetType() == blktype::real) removeGhosts(editor, blkAt(blk));
    takeOut(editor, trk, blk);
    return true;
}

void removeGhosts(CEditor& editor, const CBlk& source)
{
    const CRealBlk* real = source.GetRealBlk();
    if (!real) return;
    for (CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk))
        for (CBlk *next = nullptr, *blk = trk->blocks().head(); blk; blk = next) {
            next = List<CBlk>::next(blk);
            if (blk->GetType() == blktype::ghost && blk->GetRealBlk() == real) takeOut(editor, trk, blk);
        }
}

bool hasGhost(const CEditor& editor, const CBlk& blk) noexcept
{
    if (!blk.GetRealBlk()) return false;
    for (const CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk))
        if (trk->IsGhostExist(blk.GetRealBlk())) return true;
    return false;
}

bool findSource(const CEditor& editor, const CBlk& link, POSITION& srcTrk, POSITION& srcBlk) noexcept
{
    if (link.GetType() != blktype::ghost || !link.GetRealBlk()) return false;
    for (CTrk* trk = editor.song().trks().head(); trk; trk = List<CTrk>::next(trk))
        for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            if (blk->GetType() != blktype::real || blk->GetRealBlk() != link.GetRealBlk()) continue;
            srcTrk = trk;
            srcBlk = blk;
            return true;
        }
    return false;
}

} // namespace tessaro::blk_edit
