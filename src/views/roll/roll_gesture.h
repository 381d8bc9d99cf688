// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "views/editors/view_command.h"
#include "views/roll/note_commands.h"
#include "views/roll/note_table.h"
#include "views/roll/roll_scale.h"

#include <QPoint>

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_set>
#include <vector>

namespace tessaro {

class CEditor;
class EvntSelection;
class Grid;

/// What the mouse does to the notes of a roll, from press to release. Meanwhile the song stays as it is and
/// `forEachNote` tells how it will look; the release makes the step. Tools:
/// - select: a click selects, Ctrl turns over, Shift goes on to here; on empty ground a band selects, with Ctrl or
/// Shift
///   in addition. Dragging a note moves what is selected, with Ctrl copies; an edge moves starts or ends. The grabbed
///   note goes to the grid, with Alt anywhere; Shift keeps time or key.
/// - pencil: a new note on empty ground, as long as it is dragged; on a note as select does.
/// - eraser: takes every note that it passes. Velocity: up and down. Divide, join: a click.
/// Pixels as in RollScale. Borrows all; nothing here looks at what is out of sight but the start of a drag.
class RollGesture {
public:
    struct Parts {
        const CEditor& editor;
        NoteTables& notes;
        NoteCommands& commands;
        const Grid& grid;
        const RollScale& scale;
        EvntSelection& selection;
    };
    enum class Mode { none, waiting, band, move, copy, start, end, draw, erase, velocity };
    enum class Zone { body, start, end };
    struct Hit {
        NoteInView note;
        Zone zone;
    };
    /// What a rubber band holds; the last row is inside.
    struct Band {
        TickRange span;
        int firstRow; ///< from the top
        int lastRow;
    };

    static constexpr int edge = 5; ///< pixels of a note at which its start or end is taken

    explicit RollGesture(const Parts& parts) : m_parts(parts) {}

    /// A note is to be heard, or no longer.
    std::function<void(std::uint8_t key, std::uint8_t velocity)> onHear;
    std::function<void()> onHush;

    void setTrack(int track);
    /// What the point is over; nothing for empty ground.
    [[nodiscard]] std::optional<Hit> hit(QPoint at) const;

    void press(EditTool tool, QPoint at, Qt::KeyboardModifiers keys);
    void move(QPoint at, Qt::KeyboardModifiers keys);
    void release(QPoint at, Qt::KeyboardModifiers keys);
    /// Nothing has happened.
    void cancel();

    [[nodiscard]] Mode mode() const { return m_drag.mode; }
    [[nodiscard]] std::optional<Band> band() const;
    /// What is being done to the selected notes.
    [[nodiscard]] const NoteChange& change() const { return m_drag.change; }
    /// The note that is being drawn.
    [[nodiscard]] const std::optional<NoteInView>& drawn() const { return m_drag.drawn; }
    /// The tick at which a click with the divide tool would divide the note under the point.
    [[nodiscard]] std::optional<std::uint32_t> cutAt(QPoint at) const;

    /// The notes of the track as they will look, in the span and from key `low` to `high`: `visit(note, isSelected)`.
    template <class Visit>
    void forEachNote(std::uint32_t from, std::uint32_t to, int low, int high, Visit&& visit) const;

private:
    /// What is known from the press on, and what came of it so far.
    struct Drag {
        Mode mode = Mode::none;
        EditTool tool = EditTool::select;
        QPoint from;
        std::int64_t grabTime = 0; ///< the tick pressed, wherever the view scrolls
        int grabRow = 0;
        QPoint now;
        std::optional<Hit> hit; ///< under the press
        bool wasSelected = false;
        NoteExtent extent; ///< of the selection
        NoteChange change;
        std::optional<NoteInView> drawn;
        std::vector<EvntRef> erased; ///< as they were passed
        std::unordered_set<POSITION> erasedEvnts;
    };

    [[nodiscard]] bool isSelected(const EvntRef& ref) const;
    /// Selected notes are elsewhere, or look otherwise.
    [[nodiscard]] bool isShifted() const;
    [[nodiscard]] bool keepsOld() const { return m_drag.mode == Mode::copy; }

    void pressNote(Qt::KeyboardModifiers keys);
    void beginDraw(Qt::KeyboardModifiers keys);
    void beginDrag(Qt::KeyboardModifiers keys);
    void drag(Qt::KeyboardModifiers keys);
    [[nodiscard]] NoteChange changeTo(QPoint at, Qt::KeyboardModifiers keys) const;
    void dragDraw(Qt::KeyboardModifiers keys);
    void erase(QPoint from, QPoint to);
    void click(const Drag& drag, Qt::KeyboardModifiers keys);
    void selectBand(const Band& band);
    void extendTo(const NoteInView& note);
    void finish(const Drag& drag, Qt::KeyboardModifiers keys);
    void copy(const NoteChange& change);
    void insert(const NoteInView& note);
    void hear(std::uint8_t key, std::uint8_t velocity);
    [[nodiscard]] std::uint32_t snapped(std::int64_t time, Qt::KeyboardModifiers keys) const;

    Parts m_parts;
    int m_track = -1;
    Drag m_drag;
    EvntRef m_anchor;              ///< the note last clicked; may be gone
    std::uint8_t m_velocity = 100; ///< of the next new note
    std::uint8_t m_heardKey = 0;
};

template <class Visit>
void RollGesture::forEachNote(std::uint32_t from, std::uint32_t to, int low, int high, Visit&& visit) const
{
    const bool shifted = isShifted();
    m_parts.notes.forEachNote(m_track, from, to, low, high, [&](const NoteInView& note) {
        const bool selected = isSelected(note.ref);
        if (m_drag.erasedEvnts.contains(note.ref.evnt) || (selected && shifted && !keepsOld())) return;
        visit(note, selected && !shifted);
    });
    if (shifted) { // from wherever they come into sight
        const NoteChange& by = m_drag.change;
        const std::uint32_t first = tick::shifted(from, -by.ticks - std::max<std::int64_t>(by.endBy, 0));
        const std::uint32_t last = tick::shifted(to, -by.ticks - std::min<std::int64_t>(by.startBy, 0));
        m_parts.notes.forEachNote(m_track, first, last, std::max(low - by.keys, 0), std::min(high - by.keys, 127),
                                  [&](const NoteInView& note) {
                                      if (!isSelected(note.ref)) return;
                                      const NoteInView moved = by(note);
                                      if (moved.start < to && moved.end > from) visit(moved, true);
                                  });
    }
    if (m_drag.drawn && m_drag.drawn->start < to && m_drag.drawn->end > from) visit(*m_drag.drawn, true);
}

} // namespace tessaro
