// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaro {

class ManualClock;
class Program;

/// Lets the song of a started program play a few seconds in simulated time, and writes a picture of the window. False
/// when the file cannot be written.
[[nodiscard]] bool writeScreenshot(Program& program, ManualClock& clock, const QString& file);

} // namespace tessaro
