// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/audio/sound_status.h"

#include <QString>

#include <string>
#include <vector>

namespace tessaro {

class UiText;

/// What the status line says of the devices: where sound goes, which MIDI services there are, and whether the
/// engine went without real-time priority.
[[nodiscard]] QString deviceSentence(const UiText& text, const SoundStatus& sound,
                                     const std::vector<std::string>& midiServices, bool realtimeGranted);

} // namespace tessaro
