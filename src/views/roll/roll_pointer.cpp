// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_pointer.h"

#include "views/roll/note_text.h"

namespace tessaro::roll_pointer {

Qt::CursorShape cursorOver(EditTool tool, const std::optional<RollGesture::Hit>& hit)
{
    const bool grabs = tool == EditTool::select || tool == EditTool::pencil;
    if (grabs && hit) return hit->zone == RollGesture::Zone::body ? Qt::ArrowCursor : Qt::SizeHorCursor;
    if (tool == EditTool::velocity && hit) return Qt::SizeVerCursor;
    return tool == EditTool::select ? Qt::ArrowCursor : Qt::CrossCursor;
}

NoteStatus::Values valuesAt(const CEditor& editor, std::uint32_t time, const std::optional<NoteInView>& note)
{
    NoteStatus::Values values;
    values.place = placeText(editor, note ? note->start : time);
    if (!note) return values;
    values.length = lengthText(note->end - note->start, beatClockAt(editor, note->start));
    values.velocity = QString::number(note->velocity);
    return values;
}

} // namespace tessaro::roll_pointer
