// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_command.h"
#include "views/roll/note_table.h"
#include "views/roll/roll_scale.h"
#include "views/roll/strip_commands.h"
#include "views/roll/strip_path.h"
#include "views/roll/strip_scale.h"

#include <QPoint>

#include <cstdint>
#include <optional>
#include <vector>

namespace tessaro {

class CEditor;
class EvntSelection;
class Grid;

/// What the mouse does in a controller strip, from press to release; the song changes at the end in one step. Tools:
/// - pencil, and velocity, draw freely; line draws straight; curve too, and after the release the mouse bends it up and
///   down until the next press. One event a step of the grid, every ten ticks with Alt or without a grid. Notes under
///   the line get its velocity: the selected ones only when there are any.
/// - eraser takes what it passes. Select: a click or a band selects, with Ctrl or Shift in addition; dragging an event
///   changes all that are selected in value, those that are no notes in time too, to the grid but with Alt.
/// Pixels as in the scales. Borrows all.
class StripGesture {
public:
    struct Parts {
        const CEditor& editor;
        NoteTables& notes;
        StripCommands& commands;
        const Grid& grid;
        const RollScale& scale;
        EvntSelection& selection;
    };
    enum class Mode { none, waiting, draw, bend, erase, band, drag };

    static constexpr int near = 4;                ///< pixels to an event that is hit
    static constexpr std::uint32_t fineStep = 10; ///< ticks

    explicit StripGesture(const Parts& parts) : m_parts(parts) {}

    /// Ends what is under way.
    void setTrack(int track);
    void setScale(const StripScale& scale);
    [[nodiscard]] const StripScale& scale() const { return m_scale; }
    [[nodiscard]] const StripKind& kind() const { return m_scale.kind(); }

    /// The event whose head or stem the point is on; the topmost one.
    [[nodiscard]] std::optional<ValueInView> hit(QPoint at) const;

    void press(EditTool tool, QPoint at, Qt::KeyboardModifiers keys);
    /// Also while no button is down.
    void move(QPoint at, Qt::KeyboardModifiers keys);
    void release(QPoint at, Qt::KeyboardModifiers keys);
    void cancel();

    [[nodiscard]] Mode mode() const { return m_drag.mode; }
    /// The line being drawn; empty for none.
    [[nodiscard]] const StripPath& path() const { return m_drag.path; }
    /// The ticks under the line, the eraser or the band.
    [[nodiscard]] std::optional<TickRange> span() const;
    /// The values of the band, low and high; both are inside.
    [[nodiscard]] std::pair<int, int> bandValues() const;
    /// The events that the line will make; none of velocities.
    [[nodiscard]] std::vector<StripPoint> points() const;
    /// How an event of the song is to be drawn; nothing for one that will be gone.
    [[nodiscard]] std::optional<ValueInView> shown(ValueInView value) const;

private:
    struct Drag {
        Mode mode = Mode::none;
        EditTool tool = EditTool::select;
        Qt::KeyboardModifiers keys; ///< those held now
        QPoint from;
        std::int64_t grabTime = 0; ///< the tick pressed, wherever the view scrolls
        QPoint now;
        StripPath path;
        std::optional<ValueInView> hit; ///< under the press
        bool wasSelected = false;
        bool onlySelected = false; ///< a line over velocities changes the selected notes alone
        TickRange passed;          ///< by the eraser
        NoteExtent extent;         ///< of the selection
        std::int64_t ticks = 0;
        int by = 0;
    };

    void pressEvent(Qt::KeyboardModifiers keys);
    void draw();
    void bend();
    void erase();
    void beginDrag();
    void drag();
    void finish();
    void click(const Drag& drag);
    void selectBand();
    [[nodiscard]] StripPoint pointAt(QPoint at) const;
    [[nodiscard]] TickRange around(const StripPath& path) const;
    [[nodiscard]] bool isFine() const;
    [[nodiscard]] std::uint32_t stepAt(std::uint32_t time) const;
    [[nodiscard]] std::uint32_t cellAt(std::uint32_t time) const;
    [[nodiscard]] bool hasSelected(TickRange over) const;
    [[nodiscard]] int valueAt(const StripPath& path, std::uint32_t time) const;

    Parts m_parts;
    StripScale m_scale;
    int m_track = -1;
    Drag m_drag;
};

} // namespace tessaro
