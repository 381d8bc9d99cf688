// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/roll/note_commands.h"
#include "views/roll/roll_scale.h"
#include "views/roll/strip_kind.h"
#include "views/roll/strip_path.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace tessaro {

class CEditor;
class EvntSelection;
class NoteTables;

/// The changes that a controller strip makes, each one step with its title. Linked blocks are refused after saying so.
/// False when nothing was done. User interface thread; borrows all.
class StripCommands {
public:
    StripCommands(CEditor& editor, NoteTables& notes, NoteCommands& commands)
        : m_editor(editor)
        , m_notes(notes)
        , m_commands(commands)
    {
    }

    /// Puts these points, in order of time, in the place of what the kind has in the span. Of points in a row with one
    /// value the first stays. Not for velocities.
    bool draw(int track, const StripKind& kind, std::span<const StripPoint> points, TickRange over);
    /// Gives the notes that start in the span the value of their time: all, or those that are selected.
    bool drawVelocities(int track, TickRange over, const EvntSelection* onlyOf,
                        const std::function<int(std::uint32_t time)>& value);
    bool erase(int track, const StripKind& kind, TickRange over);
    /// Moves those events that are of the kind by ticks and a value, velocities by the value alone.
    bool shift(std::span<const EvntRef> refs, const StripKind& kind, std::int64_t ticks, int by);

private:
    /// What of the kind in the span stands in blocks that take edits.
    [[nodiscard]] std::vector<EvntRef> editable(int track, const StripKind& kind, TickRange over,
                                                bool& hasLinked) const;

    CEditor& m_editor;
    NoteTables& m_notes;
    NoteCommands& m_commands;
};

} // namespace tessaro
