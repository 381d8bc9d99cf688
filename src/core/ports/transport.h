// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>

namespace tessaro {

class CEditor;

/// The real-time layer as the song editor sees it: the transport, and the per-track tables of the engine.
/// Tracks go by number, 0 to 100, the style parts from 101 on. All calls come from the main thread; the track switches
/// may come while the song plays and take effect at once.
class TESSARO_API Transport {
public:
    virtual ~Transport();

    [[nodiscard]] virtual bool isPlaying() const = 0;
    /// Stops play and returns when neither feeder nor engine reads the song any more.
    virtual void stop() = 0;
    /// Plays on from the present position: locates there quietly with the panel's chase setting,
    /// sets the panel's loop again and starts.
    virtual void resume() = 0;
    /// As the stop button: play and a take end for good.
    virtual void halt() { stop(); }
    /// Whether a take or step input runs.
    [[nodiscard]] virtual bool isRecording() const { return false; }
    /// The song position in ticks.
    [[nodiscard]] virtual std::uint32_t playCount() const = 0;
    /// Binds a song, or none with null. The song stays bound until the next call.
    virtual void bindSong(CEditor* editor) = 0;

    [[nodiscard]] virtual bool getTrkSw(int track) const = 0;
    virtual void setTrkSw(int track, bool on) = 0;
    virtual void setTrkPort(int track, std::uint8_t port) = 0;
    virtual void setTrkCh(int track, std::uint8_t channel) = 0;
    virtual void setTrkTrans(int track, int semitones) = 0;
    virtual void setTrkTransEnable(int track, bool on) = 0;
    /// Reads port, channel, transposition and type of every track anew from the bound song, at the present
    /// position and without chase. Play cursors stay as they are.
    virtual void reloadTracks() = 0;
};

/// Remembers the track switches and never plays.
class TESSARO_API NullTransport final : public Transport {
public:
    NullTransport();
    bool isPlaying() const override { return false; }
    void stop() override {}
    void resume() override {}
    std::uint32_t playCount() const override { return 0; }
    void bindSong(CEditor*) override {}
    bool getTrkSw(int track) const override { return m_switch[track]; }
    void setTrkSw(int track, bool on) override { m_switch[track] = on; }
    void setTrkPort(int, std::uint8_t) override {}
    void setTrkCh(int, std::uint8_t) override {}
    void setTrkTrans(int, int) override {}
    void setTrkTransEnable(int, bool) override {}
    void reloadTracks() override {}

private:
    bool m_switch[117];
};

} // namespace tessaro
