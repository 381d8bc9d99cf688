// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/roll/note_status.h"
#include "views/roll/roll_gesture.h"

#include <optional>

namespace tessaro {

/// What a roll tells of the place under the mouse.
namespace roll_pointer {

/// The cursor of a tool over a note, or over empty ground.
[[nodiscard]] Qt::CursorShape cursorOver(EditTool tool, const std::optional<RollGesture::Hit>& hit);
/// Of the note, or of the time alone; without the key.
[[nodiscard]] NoteStatus::Values valuesAt(const CEditor& editor, std::uint32_t time,
                                          const std::optional<NoteInView>& note);

} // namespace roll_pointer
} // namespace tessaro
