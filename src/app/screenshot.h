// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace tessaro {

class ManualClock;
class Program;

/// Whether all of these name windows that can be pictured.
[[nodiscard]] bool knowsPictured(const QStringList& windows);

/// Lets the song of a started program play a few seconds in simulated time, and writes a picture of the window with
/// these child windows; of the table of keys alone when it is among them. False when the file cannot be written.
[[nodiscard]] bool writeScreenshot(Program& program, ManualClock& clock, const QString& file,
                                   const QStringList& windows = {});

} // namespace tessaro
