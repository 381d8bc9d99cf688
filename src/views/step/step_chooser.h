// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/rec/step_palette.h"

#include <functional>

namespace tessaro {

/// How a note length of step input is divided.
enum class StepKind { plain, dotted, triplet, quintuplet };

/// The choice of the next note's length, as a note and how it is divided, with velocity and duration.
class StepChooser final : public StepPalette {
public:
    static constexpr int lengths = 6; ///< from the whole note to the 32nd
    static constexpr int mostDuration = 200;

    /// Step input has begun, or ended.
    std::function<void(bool on)> onInput;

    void setLength(int length);
    void setKind(StepKind kind);
    void setVelocity(int velocity);
    void setDuration(int hundredths);
    [[nodiscard]] int length() const { return m_length; }
    [[nodiscard]] StepKind kind() const { return m_kind; }

    [[nodiscard]] std::uint32_t step() const override { return m_choice.step(); }
    [[nodiscard]] int GetVolocity() const override { return m_choice.GetVolocity(); }
    [[nodiscard]] int GetDuration() const override { return m_choice.GetDuration(); }
    void showForInput(bool on) override
    {
        if (onInput) onInput(on);
    }

private:
    void choose();

    StepChoice m_choice;
    int m_length = usualStepEntry;
    StepKind m_kind = StepKind::plain;
};

} // namespace tessaro
