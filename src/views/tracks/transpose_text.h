// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaro {

/// Semitones with their sign; a plain 0.
[[nodiscard]] inline QString transposeText(int semitones)
{
    return semitones > 0 ? QStringLiteral("+%1").arg(semitones) : QString::number(semitones);
}

} // namespace tessaro
