// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/edit/editor_ports.h"

namespace tessaro {

class CTrk;
class Song;
class StyleTrack;

/// How solo and mute make the on/off switch of each track in the engine; on a wave track the audio side
/// follows. The engine is told of differences only. Main thread, also while the song plays.
class TESSARO_API SoloMute {
public:
    SoloMute(const Song& song, const StyleTrack& styles, Transport& transport, WaveOutput& waves)
        : m_song(song)
        , m_styles(styles)
        , m_transport(transport)
        , m_waves(waves)
    {
    }

    /// Whether a track from number 1 on has solo.
    [[nodiscard]] bool isSoloExist() const;
    /// Whether a style part from 8 to 15 has solo.
    [[nodiscard]] bool isSoloExistStyle() const noexcept;
    /// Sets every track's switch, and those of the style channels, from the flags. With a solo anywhere only
    /// what has solo sounds, muted or not; without one, all but the muted.
    void setOnOff();
    void set(int number, bool on);
    /// The same as setOnOff for the style parts alone.
    void setStyleOnOff();

private:
    const Song& m_song;
    const StyleTrack& m_styles;
    Transport& m_transport;
    WaveOutput& m_waves;
};

} // namespace tessaro
