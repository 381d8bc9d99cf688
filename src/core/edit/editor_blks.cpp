// SPDX-License-Identifier: GPL-3.0-or-later
// The song editor's operations on blocks.
#include "core/edit/blk_edit.h"
#include "core/edit/blk_events.h"
#include "core/edit/editor.h"
#include "core/edit/wave_size.h"

namespace tessaro {

using blk_edit::Maker;

bool CEditor::BlkNew(POSITION trk, std::uint32_t top, std::uint32_t end)
{
    return blk_edit::create(*this, trk, top, end, Maker::edit);
}

POSITION CEditor::BlkRec(POSITION trk, std::uint32_t top, std::uint32_t end)
{
    return blk_edit::create(*this, trk, top, end, Maker::recording);
}

POSITION CEditor::BlkRealRec(POSITION trk, std::uint32_t top, std::uint32_t end)
{
    return blk_edit::create(*this, trk, top, end, Maker::take);
}

bool CEditor::BlkCopy(POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time)
{
    return blk_edit::copy(*this, trk, blk, trk2, time);
}

bool CEditor::BlkGhost(POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time)
{
    return blk_edit::ghost(*this, trk, blk, trk2, time);
}

bool CEditor::BlkMove(POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time, POSITION* moved)
{
    const POSITION made = blk_edit::move(*this, trk, blk, trk2, time);
    if (made && moved) *moved = made;
    return made;
}

POSITION CEditor::BlkMoveCore(POSITION trk, POSITION blk, POSITION trk2, std::uint32_t time)
{
    return blk_edit::makeMoved(*this, trk, blk, trk2, time);
}

bool CEditor::BlkDel(POSITION trk, POSITION blk) { return blk_edit::remove(*this, trk, blk); }

void CEditor::BlkDelGhost(POSITION, POSITION blk)
{
    StopSeq();
    if (blk) blk_edit::removeGhosts(*this, *List<CBlk>::get(blk));
}

bool CEditor::BlkApp(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2)
{
    return blk_events::join(*this, trk, blk, trk2, blk2);
}

bool CEditor::BlkDiv(POSITION trk, POSITION blk, std::uint32_t time)
{
    return blk_events::divide(*this, trk, blk, time);
}

bool CEditor::BlkMerge(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2, std::uint32_t time)
{
    return blk_events::merge(*this, trk, blk, trk2, blk2, time);
}

bool CEditor::BlkRealize(POSITION trk, POSITION blk) { return blk_events::realize(*this, trk, blk); }

bool CEditor::BlkSize(POSITION trk, POSITION blk, std::uint32_t end)
{
    return blk_events::resize(*this, trk, blk, end);
}

bool CEditor::BlkRecSize(POSITION trk, POSITION blk, std::uint32_t end)
{
    return blk_events::resizeRecorded(*this, trk, blk, end);
}

bool CEditor::BlkName(POSITION trk, POSITION blk, const std::string& name)
{
    if (!trk || !blk) return false;
    List<CBlk>::get(blk)->SetName(name);
    HintBlkName(trk, blk);
    return true;
}

bool CEditor::BlkOfst(POSITION trk, POSITION blk, std::int64_t delta)
{
    return blk_events::offset(*this, trk, blk, delta);
}

POSITION CEditor::BlkPaste(POSITION trk, std::uint32_t top, std::uint32_t end, CRealBlk* real)
{
    const POSITION made = BlkPasteNoHint(trk, top, end, real);
    if (made) HintBlkNew(trk, made);
    return made;
}

POSITION CEditor::BlkPasteNoHint(POSITION trk, std::uint32_t top, std::uint32_t end, CRealBlk* real)
{
    return blk_edit::paste(*this, trk, top, end, real);
}

bool CEditor::SrchSrcBlk(POSITION, POSITION blk, POSITION& srcTrk, POSITION& srcBlk) const noexcept
{
    return blk && blk_edit::findSource(*this, *List<CBlk>::get(blk), srcTrk, srcBlk);
}

bool CEditor::IsGhostExist(POSITION, POSITION blk) const noexcept
{
    return blk && blk_edit::hasGhost(*this, *List<CBlk>::get(blk));
}

void CEditor::ChkBlkReSize(POSITION trk, POSITION blk, POSITION evnt) { blk_events::grow(*this, trk, blk, evnt); }

void CEditor::ChkGhostBlkReSize(const CBlk* blk)
{
    if (blk) blk_events::fitGhosts(*this, *blk);
}

void CEditor::BlkSizeWave() { wave_size::fitAll(*this, m_ports.waveLengths); }

bool CEditor::BlkSizeWave(POSITION trk, POSITION blk) { return wave_size::fit(*this, m_ports.waveLengths, trk, blk); }

} // namespace tessaro
