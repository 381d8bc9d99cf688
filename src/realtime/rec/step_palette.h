// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>

namespace tessaro {

/// What the next note of step input is to be. User interface thread.
class TESSARO_API StepPalette {
public:
    virtual ~StepPalette();
    /// Ticks from a note to the next one.
    [[nodiscard]] virtual std::uint32_t step() const = 0;
    /// 1 to 127.
    [[nodiscard]] virtual int GetVolocity() const = 0;
    /// How long a note sounds, in hundredths of the step.
    [[nodiscard]] virtual int GetDuration() const = 0;
    /// Step input begins, or has ended: the palette shows itself, or hides unless the person had opened it.
    virtual void showForInput(bool on) = 0;
};

/// The steps there are: six rows (plain, dotted, triplet, plain, quintuplet, triplet) of six lengths from the whole
/// note to the 32nd.
inline constexpr int stepEntries = 36;
inline constexpr int usualStepEntry = 2;
inline constexpr int graceStepEntry = 5;
/// Ticks of an entry; those of the usual one for a number outside of the table.
[[nodiscard]] TESSARO_API std::uint32_t stepTicks(int entry) noexcept;

/// A plain choice of step, velocity and duration.
class TESSARO_API StepChoice final : public StepPalette {
public:
    [[nodiscard]] std::uint32_t step() const override { return stepTicks(entry); }
    [[nodiscard]] int GetVolocity() const override { return velocity; }
    [[nodiscard]] int GetDuration() const override { return duration; }
    void showForInput(bool) override {}

    int entry = usualStepEntry;
    int velocity = 100;
    int duration = 100;
};

} // namespace tessaro
