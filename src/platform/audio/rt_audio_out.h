// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/audio/audio_out.h"

#include <memory>
#include <string>
#include <vector>

namespace tessaro {

/// The sound services that RtAudio reaches for us.
enum class SoundService { pulse, alsa };

/// The default device of a sound service. A device that hangs while it is being closed is left to itself after
/// two seconds.
class RtAudioOut : public AudioOut {
public:
    /// Null when the service or its device is not there.
    [[nodiscard]] static std::unique_ptr<AudioOut> open(SoundService service, const Clock& clock);
    ~RtAudioOut() override;

private:
    struct Stream;
    explicit RtAudioOut(std::shared_ptr<Stream> stream);
    std::shared_ptr<Stream> m_stream;
};

/// Names of the devices that the sound services offer, PulseAudio's first.
struct SoundDevices {
    std::vector<std::string> outputs;
    std::vector<std::string> inputs;
};
[[nodiscard]] SoundDevices listSoundDevices();

} // namespace tessaro
