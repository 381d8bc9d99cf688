// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/sound_status.h"

namespace tessaro {

std::string sentenceOf(const SoundStatus& status)
{
    switch (status.state) {
    case SoundState::unused: return "Sound: not in use yet";
    case SoundState::starting: return "Sound is being started";
    case SoundState::playing: return "Sound: " + status.device + ", " + std::to_string(status.rate) + " Hz";
    case SoundState::silent: return "No sound card was found: playing silently";
    case SoundState::lost: return "Sound was lost and is being restarted";
    case SoundState::none: break;
    }
    return "No sound: " + (status.trouble.empty() ? "no device can be opened" : status.trouble);
}

} // namespace tessaro
