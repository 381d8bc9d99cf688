// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/transpose.h"

#include "core/model/evnt.h"

#include <algorithm>
#include <array>

namespace tessaro {
namespace {

constexpr int octave = 12;
using Scale = std::array<int, 7>;
constexpr Scale major{0, 2, 4, 5, 7, 9, 11};
constexpr Scale minor{0, 2, 3, 5, 7, 8, 10};

bool hasKey(const CEvnt& e) noexcept { return isNoteEvnt(e) || status::kind(e.GetStatus()) == status::polyPressure; }

int alongScale(int key, const Scale& scale, const TransposeSettings& settings)
{
    constexpr int size = static_cast<int>(std::tuple_size_v<Scale>);
    const int above = key - settings.tonic + octave; // never negative
    const auto degree = static_cast<int>(std::ranges::upper_bound(scale, above % octave) - scale.begin()) - 1;
    const int offScale = above % octave - scale[static_cast<std::size_t>(degree)];
    constexpr int lift = 128; // octaves that keep the division from rounding towards zero
    const int step = (above / octave + lift) * size + degree + settings.steps;
    const int lower = (step / size - lift) * octave + scale[static_cast<std::size_t>(step % size)];
    return lower + offScale + settings.tonic - octave;
}

int moved(int key, const TransposeSettings& settings)
{
    switch (settings.by) {
    case TransposeSettings::By::major: return alongScale(key, major, settings);
    case TransposeSettings::By::minor: return alongScale(key, minor, settings);
    default: return key + settings.steps;
    }
}

} // namespace

EditPlan transpose(std::span<const EvntRef> selection, const TransposeSettings& settings)
{
    EditPlan plan;
    std::vector<EvntState> evnts = plan.take(selection, hasKey);
    for (EvntState& evnt : evnts) {
        const int key = moved(evnt.key, settings);
        if (key < 0 || key > 127)
            ++plan.faulty;
        else
            evnt.key = static_cast<std::uint8_t>(key);
    }
    if (plan.faulty)
        plan.fault = PlanFault::keyRange;
    else
        plan.change(std::move(evnts));
    return plan;
}

} // namespace tessaro
