// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/roll/roll_frame.h"

namespace tessaro {

/// The window of the piano roll: the notes of one track over a keyboard.
class CPianoFrame : public RollFrame {
public:
    CPianoFrame(const ViewParts& parts, int track);

    [[nodiscard]] WindowKind kind() const override { return WindowKind::piano; }

protected:
    [[nodiscard]] TextId windowName() const override { return TextId::pianoWindow; }
    [[nodiscard]] const char* settingsName() const override { return "Piano"; }
};

} // namespace tessaro
