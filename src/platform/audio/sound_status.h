// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <string>

namespace tessaro {

enum class SoundState {
    unused,   ///< nothing has asked for sound yet
    starting, ///< looking for a device
    playing,
    silent, ///< no sound card was found; time runs, nothing is heard
    lost,   ///< the device is gone, others are being tried
    none,   ///< nothing can be played
};

/// What sound comes out of, for a sentence on screen.
struct SoundStatus {
    SoundState state = SoundState::unused;
    std::string device{};  ///< as "JACK"; of playing
    unsigned rate = 0;     ///< frames a second; of playing and silent
    std::string trouble{}; ///< plain reason; of none
};

/// The English sentence, without a full stop, as "Sound: JACK, 48000 Hz".
[[nodiscard]] TESSARO_API std::string sentenceOf(const SoundStatus& status);

} // namespace tessaro
