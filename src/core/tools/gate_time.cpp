// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/gate_time.h"

#include "core/model/tick.h"

#include <algorithm>
#include <unordered_map>

namespace tessaro {
namespace {

using Mode = GateSettings::Mode;

std::uint32_t atLeastOne(std::int64_t gate) { return std::max(tick::clamped(gate), 1U); }

std::uint32_t share(std::uint32_t gate, int percent) { return atLeastOne((std::int64_t{gate} * percent + 50) / 100); }

/// From the last note back: what begins next on each track, and what began at the time of the present chord.
void reachToNext(std::vector<EvntState>& notes, int gap)
{
    struct Starts {
        std::uint32_t chord = tick::latest;
        std::uint32_t next = tick::latest;
    };
    std::unordered_map<POSITION, Starts> tracks;
    for (auto note = notes.rbegin(); note != notes.rend(); ++note) {
        Starts& starts = tracks[note->ref.trk];
        if (note->time < starts.chord) starts = {note->time, starts.chord};
        if (starts.next != tick::latest) note->gate = atLeastOne(std::int64_t{starts.next} - note->time - gap);
    }
}

} // namespace

EditPlan changeGate(const CEditor& editor, std::span<const EvntRef> selection, const GateSettings& settings)
{
    EditPlan plan;
    std::vector<EvntState> notes = plan.take(selection, isNoteEvnt);
    GridLines lengths(editor, settings.length);
    switch (settings.mode) {
    case Mode::add:
        for (EvntState& note : notes) note.gate = atLeastOne(std::int64_t{note.gate} + settings.ticks);
        break;
    case Mode::scale:
        for (EvntState& note : notes) note.gate = share(note.gate, settings.percent);
        break;
    case Mode::set:
        for (EvntState& note : notes) note.gate = share(lengths.length(note.time), settings.percent);
        break;
    case Mode::legato: reachToNext(notes, settings.gap); break;
    }
    plan.change(std::move(notes));
    return plan;
}

} // namespace tessaro
