// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"

namespace tessaro {

/// An editing step for as long as the scope lives: it ends on every way out.
class UndoScope {
public:
    UndoScope(CEditor& editor, const std::string& title) : m_editor(editor), m_opened(editor.OpenUndoNode(title)) {}
    ~UndoScope()
    {
        if (m_opened) m_editor.CloseUndoNode();
    }
    UndoScope(const UndoScope&) = delete;
    UndoScope& operator=(const UndoScope&) = delete;

    /// False when another step is open or the user chose not to go on: then the step is not to be done.
    [[nodiscard]] explicit operator bool() const noexcept { return m_opened; }

private:
    CEditor& m_editor;
    const bool m_opened;
};

} // namespace tessaro
