// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_command.h"
#include "views/master/master_evnts.h"
#include "views/master/tempo_scale.h"
#include "views/roll/strip_path.h"

#include <QPoint>
#include <QRect>

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_set>
#include <vector>

namespace tessaro {

class CEditor;
class EvntSelection;
class Grid;
class ListEdits;
class MasterEdits;

/// What the mouse does in the picture of the master track, from press to release; the song changes at the end, in one
/// step. Tools:
/// - select: a click selects a tempo or a flag, with Ctrl one more; a band on empty ground selects tempos. Dragging a
///   tempo changes all that are selected in time, to the grid but with Alt, and in speed; Shift keeps one of both.
///   Dragging a flag moves the selected flags.
/// - pencil draws freely, line straight; curve too, and after the release the mouse bends it up and down until the next
///   press. A tempo comes to each step of the grid.
/// - eraser takes the tempos that it passes. Other tools work as select; in the lanes of flags all do.
/// Pixels as in the scale, which may go on to another time while the mouse is down. Borrows all.
class MasterGesture {
public:
    struct Parts {
        const CEditor& editor;
        const MasterEvnts& evnts;
        const Grid& grid;
        const TempoScale& scale;
        const EvntSelection& selection;
        MasterEdits& edits;
        ListEdits& listEdits;
        std::function<void(std::span<const EvntRef>)> select;
        /// Pixels that a flag takes.
        std::function<int(const MasterFlag&)> flagWidth;
    };
    enum class Mode { none, waiting, band, drag, draw, bend, erase };
    struct Hit {
        POSITION evnt = nullptr;
        std::uint32_t time = 0;
        bool isTempo = false;
        double beats = 0;
    };

    static constexpr int dragDistance = 4;
    static constexpr int near = 6; ///< pixels to a tempo that is hit

    explicit MasterGesture(Parts parts) : m_parts(std::move(parts)) {}

    /// The tempo or flag at a point; nothing for empty ground.
    [[nodiscard]] std::optional<Hit> hit(QPoint at) const;
    /// A tick to the grid.
    [[nodiscard]] std::uint32_t snapped(std::uint32_t time, Qt::KeyboardModifiers keys) const;

    void press(EditTool tool, QPoint at, Qt::KeyboardModifiers keys);
    /// Also while no button is down.
    void move(QPoint at, Qt::KeyboardModifiers keys);
    void release(QPoint at, Qt::KeyboardModifiers keys);
    /// Nothing has happened.
    void cancel();

    [[nodiscard]] Mode mode() const { return m_mode; }
    [[nodiscard]] std::optional<QRect> band() const;
    /// The mouse holds something that goes along with it.
    [[nodiscard]] bool isUnderWay() const { return m_mode != Mode::none && m_mode != Mode::waiting; }
    /// The tempos that a line will make.
    [[nodiscard]] std::vector<TempoPoint> drawn() const;
    /// Where a tempo is to be shown; nothing for one that will be gone.
    [[nodiscard]] std::optional<TempoPoint> shown(const TempoPoint& point) const;
    /// By how much flags that are selected are shown elsewhere.
    [[nodiscard]] std::int64_t flagTicks() const { return m_hit && !m_hit->isTempo ? m_ticks : 0; }

private:
    /// A point that stays where it is in time when the scale changes.
    struct Place {
        std::uint32_t time = 0;
        int y = 0;
    };

    [[nodiscard]] Place placeOf(QPoint at) const { return {m_parts.scale.time(at.x()), at.y()}; }
    [[nodiscard]] QPoint pointOf(const Place& place) const { return {m_parts.scale.x(place.time), place.y}; }
    [[nodiscard]] std::vector<EvntRef> selected(bool tempos) const;
    [[nodiscard]] bool isSelected(POSITION evnt) const;
    [[nodiscard]] StripPoint pathPoint(QPoint at) const;
    void drag(QPoint at, Qt::KeyboardModifiers keys);
    void erase(QPoint from, QPoint to);
    void selectBand(Qt::KeyboardModifiers keys);
    void click(Qt::KeyboardModifiers keys);
    void commitPath();

    Parts m_parts;
    Mode m_mode = Mode::none;
    EditTool m_tool = EditTool::select;
    Place m_from;
    Place m_now;
    std::optional<Hit> m_hit;
    bool m_wasSelected = false;
    StripPath m_path;
    StripPoint m_pathStart;
    std::int64_t m_ticks = 0;
    double m_beats = 0;
    std::unordered_set<POSITION> m_erased;
};

} // namespace tessaro
