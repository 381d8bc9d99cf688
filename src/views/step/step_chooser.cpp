// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/step/step_chooser.h"

#include <algorithm>

namespace tessaro {

void StepChooser::setLength(int length)
{
    m_length = std::clamp(length, 0, lengths - 1);
    choose();
}

void StepChooser::setKind(StepKind kind)
{
    m_kind = kind;
    choose();
}

void StepChooser::setVelocity(int velocity) { m_choice.velocity = std::clamp(velocity, 1, 127); }
void StepChooser::setDuration(int hundredths) { m_choice.duration = std::clamp(hundredths, 1, mostDuration); }

void StepChooser::choose()
{
    // The table's fourth row is plain once more.
    const int row = m_kind == StepKind::quintuplet ? 4 : static_cast<int>(m_kind);
    m_choice.entry = row * lengths + m_length;
}

} // namespace tessaro
