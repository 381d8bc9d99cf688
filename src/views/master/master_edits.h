// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/list/list_edits.h"
#include "views/master/master_evnts.h"
#include "views/roll/roll_scale.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

class Grid;
class StripPath;

/// A path of tempos holds them in hundredths of a beat a minute.
inline constexpr double pathUnits = 100;

/// The tempos that a line over time makes: one at its start, one at each step of the grid inside, and its last value at
/// its end; without a grid a beat is the step. A tempo that does not differ from the one before is left out.
[[nodiscard]] std::vector<TempoPoint> rampPoints(const StripPath& path, const CEditor& editor, const Grid& grid);

/// What the tempo curve does to the song, each as one step. User interface thread; borrows both.
class MasterEdits {
public:
    MasterEdits(CEditor& editor, ListEdits& edits) : m_editor(editor), m_edits(edits) {}

    /// Puts tempos in the place of all in the span, in which they lie; the last one goes on to the next that stands
    /// behind it. Nothing for no points.
    void drawTempos(std::span<const TempoPoint> points, TickRange over);
    /// Moves tempos in time and makes them faster by so many beats; one that meets another takes its place. The first
    /// tempo of the song keeps its time.
    void moveTempos(std::span<const EvntRef> refs, std::int64_t ticks, double beats);

private:
    void setTempo(POSITION evnt, std::uint32_t time, double beats);
    void eraseOthers(std::span<const EvntRef> refs);

    CEditor& m_editor;
    ListEdits& m_edits;
};

} // namespace tessaro
