// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/step_palette.h"

#include "realtime/rec/blk_selection.h"

#include <array>

namespace tessaro {

namespace {
constexpr std::array<std::uint16_t, stepEntries> table = {
    1920, 960,  480, 240, 120, 60, // plain
    2880, 1440, 720, 360, 180, 90, // dotted
    1280, 640,  320, 160, 80,  40, // triplets
    1920, 960,  480, 240, 120, 60, // plain
    1536, 768,  384, 192, 96,  48, // quintuplets
    1280, 640,  320, 160, 80,  40, // triplets
};
} // namespace

BlkSelection::~BlkSelection() = default;
StepPalette::~StepPalette() = default;

std::uint32_t stepTicks(int entry) noexcept
{
    return table[static_cast<std::size_t>(entry >= 0 && entry < stepEntries ? entry : usualStepEntry)];
}

} // namespace tessaro
