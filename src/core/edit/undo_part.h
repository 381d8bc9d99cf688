// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/undo_scope.h"

#include <optional>

namespace tessaro {

/// A part of the editing step that is open, or a step of its own where none is.
class UndoPart {
public:
    UndoPart(CEditor& editor, const std::string& title)
    {
        if (!editor.IsUndoOpen()) m_own.emplace(editor, title);
    }

    /// False when the user chose not to go on.
    [[nodiscard]] explicit operator bool() const noexcept { return !m_own || *m_own; }

private:
    std::optional<UndoScope> m_own;
};

} // namespace tessaro
