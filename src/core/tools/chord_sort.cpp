// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/chord_sort.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tessaro {

EditPlan sortChords(std::span<const EvntRef> selection)
{
    EditPlan plan;
    std::vector<EvntState> notes = plan.take(selection, isNoteEvnt);
    const auto chordOf = [](const EvntState& note) { return std::pair(note.time, note.ref.blk); };
    std::ranges::stable_sort(notes, {}, chordOf);
    for (auto first = notes.begin(); first != notes.end();) {
        const auto last =
            std::find_if(first, notes.end(), [&](const auto& n) { return chordOf(n) != chordOf(*first); });
        if (!std::is_sorted(first, last, [](const auto& a, const auto& b) { return a.key < b.key; })) {
            std::stable_sort(first, last, [](const auto& a, const auto& b) { return a.key < b.key; });
            plan.changes.insert(plan.changes.end(), first, last); // each goes behind those of its time
        }
        first = last;
    }
    return plan;
}

} // namespace tessaro
