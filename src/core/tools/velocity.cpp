// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/velocity.h"

#include <algorithm>

namespace tessaro {
namespace {

using Mode = VelocitySettings::Mode;

/// `n / d`, to the nearest.
std::int64_t divided(std::int64_t n, std::int64_t d) { return (n + (n < 0 ? -d : d) / 2) / d; }

struct Span {
    std::uint32_t first;
    std::uint32_t last;
};

std::int64_t velocityOf(const EvntState& note, const VelocitySettings& s, Span span)
{
    switch (s.mode) {
    case Mode::add: return note.value + s.amount;
    case Mode::scale: return divided(std::int64_t{note.value} * s.percent, 100);
    case Mode::compress: return s.centre + divided(std::int64_t{note.value - s.centre} * s.percent, 100);
    case Mode::ramp:
        if (span.first == span.last) return s.from;
        return s.from + divided(std::int64_t{s.to - s.from} * (note.time - span.first), span.last - span.first);
    default: return s.amount;
    }
}

} // namespace

EditPlan changeVelocity(std::span<const EvntRef> selection, const VelocitySettings& settings)
{
    EditPlan plan;
    std::vector<EvntState> notes = plan.take(selection, isNoteEvnt);
    if (notes.empty()) return plan;
    const Span span{notes.front().time, notes.back().time};
    for (EvntState& note : notes)
        note.value = static_cast<std::uint8_t>(std::clamp<std::int64_t>(velocityOf(note, settings, span), 1, 127));
    plan.change(std::move(notes));
    return plan;
}

} // namespace tessaro
