// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/edit/editor_ports.h"

namespace tessaro {

class CTrk;
class Song;

/// How solo and mute make the on/off switch of each track in the engine; on a wave track the audio side
/// follows. The engine is told of differences only. Main thread, also while the song plays.
class TESSARO_API SoloMute {
public:
    SoloMute(const Song& song, Transport& transport, WaveOutput& waves, StyleLinks& styles)
        : m_song(song)
        , m_transport(transport)
        , m_waves(waves)
        , m_styles(styles)
    {
    }

    /// Whether a track from number 1 on has solo.
    [[nodiscard]] bool isSoloExist() const;
    /// Sets every track's switch, and those of the style channels, from the flags. With a solo anywhere only
    /// what has solo sounds, muted or not; without one, all but the muted.
    void setOnOff();
    void set(int number, bool on);

private:
    const Song& m_song;
    Transport& m_transport;
    WaveOutput& m_waves;
    StyleLinks& m_styles;
};

} // namespace tessaro
