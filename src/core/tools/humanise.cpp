// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/humanise.h"

#include "core/model/blk.h"
#include "core/model/tick.h"

#include <algorithm>
#include <random>

namespace tessaro {

EditPlan humanise(std::span<const EvntRef> selection, const HumaniseSettings& settings)
{
    EditPlan plan;
    std::vector<EvntState> notes = plan.take(selection, isNoteEvnt);
    std::mt19937 dice(settings.seed);
    const auto stray = [&dice](int range) {
        return static_cast<int>(dice() % static_cast<std::uint32_t>(2 * range + 1)) - range;
    };
    for (EvntState& note : notes) {
        const std::uint32_t top = List<CBlk>::get(note.ref.blk)->GetTimeTop();
        note.time = std::max(tick::shifted(note.time, stray(settings.time)), top);
        note.value = static_cast<std::uint8_t>(std::clamp(note.value + stray(settings.velocity), 1, 127));
        note.gate = std::max(tick::shifted(note.gate, stray(settings.gate)), 1U);
    }
    plan.change(std::move(notes));
    return plan;
}

} // namespace tessaro
