// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/edit_step.h"

#include "core/model/realblk.h"

namespace tessaro {

UndoRecorder::~UndoRecorder() = default;

bool EditStep::open(const std::string& title)
{
    if (m_open) return false;
    reset();
    if (m_recorder && !m_recorder->openStep(title)) return false;
    m_open = true;
    return true;
}

bool EditStep::close()
{
    if (m_recorder) m_recorder->closeStep();
    m_open = false;
    return m_changed;
}

void EditStep::reset() noexcept
{
    m_flags = Flags();
    m_open = false;
    m_changed = false;
}

bool EditStep::SetUndoEvntIns(POSITION trk, POSITION blk, POSITION evnt)
{
    m_changed = true;
    return !recording() || m_recorder->evntInserted(trk, blk, evnt);
}

bool EditStep::SetUndoEvntDel(POSITION trk, POSITION blk, POSITION evnt)
{
    m_changed = true;
    return !recording() || m_recorder->evntDeleted(trk, blk, evnt);
}

bool EditStep::SetUndoTrkMove(int oldNumber, POSITION trk)
{
    m_changed = true;
    return !recording() || m_recorder->trkMoved(oldNumber, trk);
}

void EditStep::retire(CRealBlk& from, CEvnt* event)
{
    if (!m_recorder || !m_recorder->keep(from, event)) from.Delete(event);
}

} // namespace tessaro
