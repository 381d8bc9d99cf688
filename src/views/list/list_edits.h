// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/list/evnt_cells.h"
#include "views/roll/note_commands.h"

#include <cstdint>
#include <optional>
#include <span>

namespace tessaro {

class CEditor;
class NoteTables;
class UiText;

/// What the event list and the master track do to events of any kind, each as one step. A step is refused after saying
/// so when one of its events stands in a linked block. Times are absolute ticks. User interface thread; borrows all.
class ListEdits {
public:
    ListEdits(CEditor& editor, NoteTables& notes, const UiText& text);

    /// Changes a column of these events. Values and data change in the events of the kind `like` alone, channel and
    /// gate time in all that have one.
    void change(std::span<const EvntRef> refs, ListColumn column, const CellChange& change, EvntKind like);
    /// Moves all by the same distance, so that none gets before its block. What cannot move is left, which is said.
    void move(std::span<const EvntRef> refs, std::int64_t delta);
    /// What cannot go is left, which is said. The title of the step is that of a cut or of a deletion.
    void remove(std::span<const EvntRef> refs, TextId title = TextId::undoEventDelete);
    /// Puts an event on a track, into the block that lies at its time or a new one of a measure. Nothing when the track
    /// does not take it, which is said.
    std::optional<EvntRef> insert(int track, EvntDraft draft);

    // For those that hold a step of their own open.

    /// The block of a track that takes an event at a time; null, after saying so, for a linked one.
    [[nodiscard]] BlkRef blkFor(int track, std::uint32_t time);
    /// Null on a refusal.
    POSITION insertInto(const BlkRef& blk, EvntDraft& draft);

    /// What notes alone have.
    [[nodiscard]] NoteCommands& notes() { return m_notes; }

private:
    CEditor& m_editor;
    NoteCommands m_notes;
};

} // namespace tessaro
