// SPDX-License-Identifier: GPL-3.0-or-later
// The song editor's editing steps, and their undo and redo.
#include "core/edit/editor.h"

namespace tessaro {

bool CEditor::OpenUndoNode(const std::string& title) { return m_history.open(title); }

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
    CloseUndoNode();
    InitUndoNode();
    return true;
}

bool CEditor::GetUndoNode(int index, CUndoNode** node) const noexcept
{
    *node = m_history.node(index);
    return *node;
}

void CEditor::InitUndoNode()
{
    m_history.clear();
    m_flags = {};
}

} // namespace tessaro
