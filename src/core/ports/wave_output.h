// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

namespace tessaro {

/// The audio side of a wave track: it follows the track's switch, channel and volume. Tracks go by
/// number, 0 to 100. Main thread only, also while the song plays.
class TESSARO_API WaveOutput {
public:
    virtual ~WaveOutput();
    virtual void setMute(int track, bool mute) = 0;
    virtual void setPortAndChannel(int track, int port, int channel) = 0;
};

class TESSARO_API NullWaveOutput final : public WaveOutput {
public:
    void setMute(int, bool) override {}
    void setPortAndChannel(int, int, int) override {}
};

} // namespace tessaro
