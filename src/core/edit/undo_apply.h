// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/undo.h"

namespace tessaro {
class CEditor;
}

/// One recorded change, applied to the song it was made in: the views hear of it, the step flags note which maps it
/// touched, and the record is afterwards ready for the other direction. Changes are applied in strict order, so that
/// each finds the lists as it left them. The transport stands still. Costs do not depend on the song or the history.
namespace tessaro::undo_apply {

/// A kind that is not known counts as undone.
bool undo(CEditor& editor, CUndo& change);
/// A kind that is not known is a failure.
bool redo(CEditor& editor, CUndo& change);

} // namespace tessaro::undo_apply
