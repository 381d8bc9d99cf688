// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/master_edits.h"

#include "core/edit/undo_scope.h"
#include "core/model/meta.h"
#include "core/model/tick.h"
#include "views/list/cell_parse.h"
#include "views/roll/grid.h"
#include "views/roll/note_text.h"
#include "views/roll/strip_path.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace tessaro {
namespace {

double held(double beats) { return std::clamp(beats, slowestBeats, fastestBeats); }

std::uint32_t stepAt(const CEditor& editor, const Grid& grid, std::uint32_t time)
{
    return grid.isFree() ? beatClockAt(editor, time) : grid.step(editor, time);
}

/// The step behind a time; the next bar line when that is nearer.
std::uint32_t nextStep(const CEditor& editor, const Grid& grid, std::uint32_t time)
{
    const std::uint32_t line = grid.isFree() ? time : grid.cell(editor, time);
    const std::uint32_t next = tick::later(line, stepAt(editor, grid, time));
    _EDT_MEAS at;
    editor.TimeToMeas(time, at);
    const std::uint32_t bar = editor.MeasToTime({at.meas, 0, 0});
    return bar > time ? std::min(next, bar) : next;
}

EvntDraft tempoDraft(std::uint32_t time, double beats)
{
    EvntDraft draft = newEvnt(EvntKind::tempo, time, 0);
    draft.data = tempoBytes(microsecondsOf(held(beats)));
    return draft;
}

bool isFirst(const CEvnt& event) { return event.GetTime() == 0; }

} // namespace

std::vector<TempoPoint> rampPoints(const StripPath& path, const CEditor& editor, const Grid& grid)
{
    std::vector<TempoPoint> points;
    if (path.empty()) return points;
    const auto add = [&](std::uint32_t time) {
        const double beats = held(path.valueAt(time) / pathUnits);
        const bool isNew = points.empty() || microsecondsOf(points.back().beats) != microsecondsOf(beats);
        if (isNew) points.push_back({time, beats, nullptr});
    };
    for (std::uint32_t time = path.first(); time < path.last();) {
        add(time);
        const std::uint32_t next = nextStep(editor, grid, time);
        if (next <= time) break; // the end of time
        time = next;
    }
    add(path.last());
    return points;
}

void MasterEdits::drawTempos(std::span<const TempoPoint> points, TickRange over)
{
    if (points.empty()) return;
    const UndoScope step(m_editor, m_edits.notes().title(TextId::undoEventInsert));
    if (!step) return;
    const BlkRef blk = m_edits.blkFor(0, 0);
    MasterEvnts before;
    before.build(m_editor);
    const auto old = before.tempos(over.from, over.to);
    auto stays = old.begin();
    for (const TempoPoint& point : points) {
        for (; stays != old.end() && stays->time < point.time; ++stays)
            m_editor.DeleteEvnt(blk.trk, blk.blk, stays->evnt);
        if (stays != old.end() && stays->time == point.time) {
            setTempo(stays->evnt, point.time, point.beats);
            ++stays;
        } else {
            EvntDraft draft = tempoDraft(point.time, point.beats);
            m_edits.insertInto(blk, draft);
        }
    }
    for (; stays != old.end(); ++stays) m_editor.DeleteEvnt(blk.trk, blk.blk, stays->evnt);
}

void MasterEdits::setTempo(POSITION evnt, std::uint32_t time, double beats)
{
    const BlkRef blk = m_edits.blkFor(0, 0);
    EvntDraft draft = tempoDraft(time, beats);
    m_editor.SetEvnt(blk.trk, blk.blk, evnt, draft.record());
}

void MasterEdits::moveTempos(std::span<const EvntRef> refs, std::int64_t ticks, double beats)
{
    for (const EvntRef& ref : refs)
        if (const std::uint32_t time = timeOf(ref); time != 0) ticks = std::max(ticks, 1 - std::int64_t{time});
    const UndoScope step(m_editor, m_edits.notes().title(ticks == 0 ? TextId::undoEventChange : TextId::undoEventMove));
    if (!step) return;
    for (const EvntRef& ref : refs) {
        const CEvnt& event = *List<CEvnt>::get(ref.evnt);
        if (!event.isMeta(meta::tempo) || event.GetSzData() != 3) continue;
        const std::uint32_t time = timeOf(ref);
        const double old = beatsOf(ReadTempo(event.payload().data()));
        setTempo(ref.evnt, isFirst(event) ? time : tick::shifted(time, ticks), old + beats);
    }
    if (ticks != 0) eraseOthers(refs);
}

/// Tempos that stand where one of these has come to.
void MasterEdits::eraseOthers(std::span<const EvntRef> refs)
{
    std::unordered_set<POSITION> moved;
    std::unordered_set<std::uint32_t> times;
    for (const EvntRef& ref : refs) {
        moved.insert(ref.evnt);
        times.insert(timeOf(ref));
    }
    MasterEvnts now;
    now.build(m_editor);
    for (const TempoPoint& point : now.tempos()) {
        const EvntRef ref = now.ref(point.evnt);
        if (times.contains(point.time) && !moved.contains(point.evnt)) m_editor.DeleteEvnt(ref.trk, ref.blk, ref.evnt);
    }
}

} // namespace tessaro
