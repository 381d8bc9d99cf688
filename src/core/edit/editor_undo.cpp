// SPDX-License-Identifier: GPL-3.0-or-later
// The song editor's editing steps, and their undo and redo.
#include "core/edit/editor.h"
#include "core/edit/undo_apply.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <unordered_set>

namespace tessaro {

bool CEditor::OpenUndoNode(const std::string& title)
{
    if (m_history.isOpen()) return false;
    m_flags = {};
    try {
        return m_history.open(title);
    } catch (const std::bad_alloc&) {
        if (!m_ports.user.ask(static_cast<int>(TextId::askDropUndo))) return false;
        SetModify(); // what the step changes cannot be taken back
        InitUndoNode();
        return true;
    }
}

void CEditor::CloseUndoNode()
{
    if (!m_history.isOpen()) return;
    if (m_history.close()) m_ports.document.SetModifiedFlag(true);
    if (m_flags.keyChanged) HintKeyChng();
    HintDispReq();
    PlaySeq();
}

bool CEditor::ErrCloseUndoNode()
{
    m_ports.user.message(TextId::undoRecordFailed, MessageKind::error);
    SetModify();
    m_flags.playWasRunning = false; // the operation goes on changing the song: the transport must not run
    CloseUndoNode();
    InitUndoNode();
    return true;
}

bool CEditor::IsEnableUndo(std::string& title) const
{
    const CUndoNode* node = m_history.node(m_history.index());
    if (node) title = node->title;
    return node;
}

bool CEditor::IsEnableRedo(std::string& title) const
{
    const CUndoNode* node = m_history.node(m_history.index() + 1);
    if (node) title = node->title;
    return node;
}

bool CEditor::UndoNode() { return UndoNode(1); }

bool CEditor::RedoNode() { return RedoNode(1); }

bool CEditor::UndoNode(int count)
{
    if (m_history.isOpen()) return false;
    StopSeq();
    bool done = true;
    for (; done && count > 0; --count) done = undoCore();
    PlaySeq();
    return done;
}

bool CEditor::RedoNode(int count)
{
    if (m_history.isOpen()) return false;
    StopSeq();
    bool done = true;
    for (; done && count > 0; --count) done = redoCore();
    PlaySeq();
    return done;
}

bool CEditor::undoCore()
{
    clearMapFlags();
    CUndoNode* node = m_history.node(m_history.index());
    if (!node) return false;
    if (m_history.isStale() || !Undo(node)) {
        m_ports.user.message(TextId::undoFailed, MessageKind::error);
        m_modifyLock = true; // the song is not that of the beginning any more
        InitUndoNode();
        HintDispReq();
        return false;
    }
    m_history.setIndex(m_history.index() - 1);
    hintMaps();
    if (!m_modifyLock && m_history.index() < 0) m_ports.document.SetModifiedFlag(false);
    HintDispReq();
    return true;
}

bool CEditor::redoCore()
{
    clearMapFlags();
    CUndoNode* node = m_history.node(m_history.index() + 1);
    if (!node) return false;
    const bool usable = !m_history.isStale();
    if (usable) m_history.setIndex(m_history.index() + 1);
    if (!usable || !Redo(node)) {
        m_history.setStale(); // a step half done cannot be undone either
        m_ports.user.message(TextId::redoFailed, MessageKind::error);
        HintDispReq();
        return false;
    }
    hintMaps();
    m_ports.document.SetModifiedFlag(true);
    HintDispReq();
    return true;
}

void CEditor::clearMapFlags() noexcept
{
    m_flags.measChanged = m_flags.tempoChanged = m_flags.keyChanged = m_flags.trkTypeChanged = false;
}

// The tempo map follows with the end of each step anyway.
void CEditor::hintMaps()
{
    if (m_flags.measChanged) HintMeasChng();
    if (m_flags.keyChanged) HintKeyChng();
}

template <class At, class Apply>
bool CEditor::applyAll(At first, At end, Apply&& apply)
{
    const auto count = static_cast<std::uint32_t>(std::distance(first, end));
    const std::uint32_t stride = count / 100 + 1;
    SetPrgDlg(0, count, TextId::progressUndo);
    std::uint32_t done = 0;
    const bool all = std::all_of(first, end, [&](CUndo& change) {
        if (++done % stride == 0) SetPrgDlgPos(done);
        return apply(*this, change);
    });
    EndPrgDlg();
    return all;
}

bool CEditor::Undo(CUndoNode* node) { return applyAll(node->changes.rbegin(), node->changes.rend(), undo_apply::undo); }

bool CEditor::Redo(CUndoNode* node) { return applyAll(node->changes.begin(), node->changes.end(), undo_apply::redo); }

bool CEditor::Undo(CUndo* change) { return undo_apply::undo(*this, *change); }

bool CEditor::Redo(CUndo* change) { return undo_apply::redo(*this, *change); }

bool CEditor::GetUndoNode(int index, CUndoNode** node) const noexcept
{
    *node = m_history.node(index);
    return *node;
}

bool CEditor::ClearUndoRedo()
{
    if (m_history.count() == 0 || m_history.isOpen()) return false;
    if (m_history.index() >= 0) m_modifyLock = true;
    InitUndoNode();
    return true;
}

void CEditor::InitUndoNode()
{
    m_history.clear();
    m_flags = {};
}

void CEditor::RemoveScratch()
{
    std::unordered_set<const CRealBlk*> used;
    try {
        used.reserve(m_song.realBlks().count());
        for (const CTrk* trk = m_song.trks().head(); trk; trk = List<CTrk>::next(trk))
            for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk))
                used.insert(blk->GetRealBlk());
        for (const CStyleBlk* style = m_styles.blks().head(); style; style = List<CStyleBlk>::next(style)) {
            for (int slot = 0; slot < stylePartCount; ++slot) {
                used.insert(style->GetSetup(slot));
                CPhraseBlk* phrase = nullptr;
                for (POSITION pos = style->GetHeadPos(slot); style->GetNext(pos, &phrase);)
                    used.insert(phrase->GetRealBlk());
            }
        }
    } catch (const std::bad_alloc&) {
        return; // they wait for the next time
    }
    for (CRealBlk *next = nullptr, *real = m_song.realBlks().head(); real; real = next) {
        next = List<CRealBlk>::next(real);
        if (!used.contains(real)) m_song.deleteRealBlk(real);
    }
}

} // namespace tessaro
