// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/double_notes.h"

#include "core/model/evnt.h"

#include <algorithm>
#include <tuple>

namespace tessaro {
namespace {

auto identity(const EvntState& note)
{
    return std::tuple(note.time, note.ref.trk, note.key, List<CEvnt>::get(note.ref.evnt)->GetStatus());
}

} // namespace

EditPlan removeDoubles(std::span<const EvntRef> selection)
{
    EditPlan plan;
    std::vector<EvntState> notes = plan.take(selection, isNoteEvnt);
    std::ranges::stable_sort(
        notes, {}, [](const EvntState& n) { return std::tuple_cat(identity(n), std::tuple(-std::int64_t{n.gate})); });
    for (std::size_t i = 1; i < notes.size(); ++i)
        if (identity(notes[i]) == identity(notes[i - 1])) plan.removals.push_back(notes[i].ref);
    return plan;
}

} // namespace tessaro
