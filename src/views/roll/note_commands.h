// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/edit/evnt_ref.h"
#include "core/model/records.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

class CEditor;
class Grid;
class NoteTables;
struct NoteInView;

/// A change of notes, the same for all that it is made to: ticks, semitones, steps of velocity. A note keeps a length
/// of at least one tick and a velocity of 1 to 127.
struct NoteChange {
    std::int64_t ticks = 0;
    int keys = 0;
    std::int64_t startBy = 0; ///< moves the start alone
    std::int64_t endBy = 0;   ///< moves the end alone
    int velocityBy = 0;

    /// What becomes of an event; of others than notes only the time changes.
    [[nodiscard]] _EDT_EVNT operator()(_EDT_EVNT rec) const;
    [[nodiscard]] NoteInView operator()(NoteInView note) const;
    bool operator==(const NoteChange&) const = default;
};

/// How far events reach, so that a change can keep their distances: none is to leave its block at the top, none the
/// keys.
struct NoteExtent {
    std::uint32_t room = UINT32_MAX; ///< ticks that all can go to the left
    std::uint32_t start = UINT32_MAX;
    std::uint32_t end = 0;
    std::uint8_t lowest = 127; ///< key; above `highest` without a note
    std::uint8_t highest = 0;

    [[nodiscard]] static NoteExtent of(std::span<const EvntRef> refs);
    /// The change with ticks and keys held to what all can follow.
    [[nodiscard]] NoteChange limit(NoteChange change) const;
};

/// The commands of the windows that show notes, each one step with its title. Events may be of any track; all
/// of a step are refused after saying so when one of them stands in a linked block. False, or nothing, when nothing was
/// done. Time grows with the events, not with the song. User interface thread; borrows all.
class NoteCommands {
public:
    NoteCommands(CEditor& editor, NoteTables& notes, const Strings& strings)
        : m_editor(editor)
        , m_notes(notes)
        , m_strings(strings)
    {
    }

    /// Joins each note with the next of its key in its block, from the tail to the head.
    bool join(std::span<const EvntRef> refs);
    /// Divides those notes that sound at the tick.
    bool split(std::span<const EvntRef> refs, std::uint32_t time);
    /// From the tail to the head.
    bool remove(std::span<const EvntRef> refs, TextId title = TextId::undoEventDelete);
    /// Refs in the order of the song; a change that all can follow is made, as far as it goes.
    bool change(std::span<const EvntRef> refs, const NoteChange& change, TextId title);
    /// Writes each event anew as `become` makes it, its time absolute; those that come out as they were stay untouched.
    using Become = std::function<_EDT_EVNT(_EDT_EVNT)>;
    bool edit(std::span<const EvntRef> refs, const Become& become, TextId title);

    bool move(std::span<const EvntRef> refs, std::int64_t ticks, int keys = 0)
    {
        return change(refs, {.ticks = ticks, .keys = keys}, TextId::undoEventMove);
    }
    bool transpose(std::span<const EvntRef> refs, int keys)
    {
        return change(refs, {.keys = keys}, TextId::undoTranspose);
    }
    bool stretch(std::span<const EvntRef> refs, std::int64_t endBy)
    {
        return change(refs, {.endBy = endBy}, TextId::undoGateTime);
    }

    /// Copies into the same blocks; those that have come in, in order.
    std::vector<EvntRef> copy(std::span<const EvntRef> refs, std::int64_t ticks, int keys,
                              TextId title = TextId::undoDragDrop);
    /// Copies right behind themselves: the distance is their length, in whole steps of the grid.
    std::vector<EvntRef> duplicate(std::span<const EvntRef> refs, const Grid& grid);

    /// A new event at an absolute time: into the block that is drawn last there, or a new one from bar line to bar
    /// line. Empty on a refusal.
    EvntRef insert(int track, const _EDT_EVNT& rec);

    // For those that hold a step of their own open.

    /// The block that takes an event; makes one where none is. Null for a linked one, and on a refusal.
    BlkRef blkFor(int track, std::uint32_t time);
    /// Says that linked blocks cannot be edited if one of these stands in one.
    bool refuses(std::span<const EvntRef> refs);
    /// Whether an event at this time would go into a linked block.
    [[nodiscard]] bool isLinkedAt(int track, std::uint32_t time) const;
    void sayLinked();
    /// Inserts and records; growing the block is the caller's. Null on a refusal.
    POSITION insertInto(const BlkRef& blk, const _EDT_EVNT& rec);
    [[nodiscard]] std::string title(TextId id) const { return std::string(m_strings(id)); }
    /// The record of an event, its time absolute.
    [[nodiscard]] static _EDT_EVNT record(const EvntRef& ref);
    /// The record of a new note.
    [[nodiscard]] static _EDT_EVNT record(const NoteInView& note, std::uint8_t channel);

private:
    void write(const EvntRef& ref, const Become& become);
    void growFor(std::span<const EvntRef> made);

    CEditor& m_editor;
    NoteTables& m_notes;
    const Strings& m_strings;
};

} // namespace tessaro
