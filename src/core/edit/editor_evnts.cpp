// SPDX-License-Identifier: GPL-3.0-or-later
// The song editor's edits of single events.
#include "core/edit/editor.h"
#include "core/edit/evnt_edit.h"

namespace tessaro {

bool CEditor::IsInsEnable(int trk, std::uint8_t type, const _EDT_EVNT& rec) noexcept
{
    return evnt_edit::isInsEnable(trk, type, rec);
}

bool CEditor::InsEvnt(POSITION trk, POSITION blk, const _EDT_EVNT& rec)
{
    return evnt_edit::insertRecorded(*this, trk, blk, rec);
}

bool CEditor::InsEvnt(POSITION trk, POSITION blk, const _EDT_EVNT& rec, POSITION& evnt)
{
    evnt = evnt_edit::insert(*this, trk, blk, rec);
    return evnt;
}

bool CEditor::RecEvnt(POSITION trk, POSITION blk, const _EDT_EVNT& rec)
{
    return evnt_edit::recordRecorded(*this, trk, blk, rec);
}

bool CEditor::RecEvnt(POSITION trk, POSITION blk, const _EDT_EVNT& rec, POSITION& evnt)
{
    evnt = evnt_edit::record(*this, trk, blk, rec);
    return evnt;
}

bool CEditor::RecSetEvnt(POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec)
{
    return evnt_edit::recordOver(*this, trk, blk, evnt, rec);
}

POSITION CEditor::RealRecEvnt(CBlk* blk, const _EDT_EVNT& rec) { return evnt_edit::recordQuietly(blk, rec); }

void CEditor::RealRecGate(POSITION note, std::uint32_t gate) noexcept { evnt_edit::setGateQuietly(note, gate); }

bool CEditor::InsRest(POSITION trk, POSITION blk, const _EDT_EVNT& rec)
{
    return evnt_edit::insertRest(*this, trk, blk, rec);
}

bool CEditor::DelRest(POSITION trk, POSITION blk, POSITION evnt)
{
    return evnt_edit::removeRest(*this, trk, blk, evnt);
}

bool CEditor::SetEvnt(POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec)
{
    return evnt_edit::overwrite(*this, trk, blk, evnt, rec);
}

bool CEditor::SetLocation(POSITION trk, POSITION blk, POSITION evnt, std::uint32_t time)
{
    return evnt_edit::move(*this, trk, blk, evnt, time);
}

void CEditor::DeleteEvnt(POSITION trk, POSITION blk, POSITION evnt)
{
    evnt_edit::removeRecorded(*this, trk, blk, evnt);
}

void CEditor::DelEvnt(POSITION trk, POSITION blk, POSITION evnt) { evnt_edit::remove(*this, trk, blk, evnt); }

bool CEditor::NoteApp(POSITION trk, POSITION blk, POSITION note, POSITION note2)
{
    return evnt_edit::joinNotes(*this, trk, blk, note, note2);
}

bool CEditor::NoteDiv(POSITION trk, POSITION blk, POSITION note, std::uint32_t time)
{
    return evnt_edit::divideNote(*this, trk, blk, note, time);
}

} // namespace tessaro
