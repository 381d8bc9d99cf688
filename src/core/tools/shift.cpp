// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/shift.h"

#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "core/model/tick.h"

#include <algorithm>

namespace tessaro {
namespace {

bool canMove(const CEvnt& e) noexcept { return !e.isMeta(meta::timeSignature) && !e.isMeta(meta::copyright); }

std::int64_t ticksOf(const CEditor& editor, const ShiftSettings& settings, std::uint32_t from)
{
    _EDT_MEAS at;
    editor.TimeToMeas(from, at);
    _EDT_MEASINFO meas;
    editor.GetMeasInfo(at.meas, meas);
    return std::int64_t{settings.bars} * meas.measClock + std::int64_t{settings.beats} * meas.beatClock
         + settings.ticks;
}

} // namespace

EditPlan shift(const CEditor& editor, std::span<const EvntRef> selection, const ShiftSettings& settings)
{
    EditPlan plan;
    std::vector<EvntState> evnts = plan.take(selection, canMove);
    if (evnts.empty()) return plan;
    std::int64_t least = -std::int64_t{tick::latest};
    std::int64_t most = tick::latest;
    for (const EvntState& evnt : evnts) {
        least = std::max(least, std::int64_t{List<CBlk>::get(evnt.ref.blk)->GetTimeTop()} - evnt.time);
        most = std::min(most, std::int64_t{tick::latest} - evnt.end());
    }
    const std::int64_t way = std::clamp(ticksOf(editor, settings, evnts.front().time), least, most);
    for (EvntState& evnt : evnts) evnt.time = tick::shifted(evnt.time, way);
    plan.change(std::move(evnts));
    return plan;
}

} // namespace tessaro
