// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/ports/transport.h"

namespace tessaro {

class CCnpWindow;
class Smc;

/// The transport that the song editor stops and resumes: the real-time layer, with the panel's settings.
class TESSARO_API SongTransport final : public Transport {
public:
    explicit SongTransport(Smc& smc) : m_smc(smc) {}
    /// Where chase and loop are taken from; null for no chase and no loop.
    void setPanel(CCnpWindow* panel) noexcept { m_panel = panel; }

    /// Also while a feeder works on though the song has ended.
    [[nodiscard]] bool isPlaying() const override;
    void stop() override;
    /// Nothing when the song had ended by itself, or the panel has stopped since.
    void resume() override;
    void halt() override;
    [[nodiscard]] bool isRecording() const override;
    [[nodiscard]] std::uint32_t playCount() const override;
    void bindSong(CEditor* editor) override;

    [[nodiscard]] bool getTrkSw(int track) const override;
    void setTrkSw(int track, bool on) override;
    void setTrkPort(int track, std::uint8_t port) override;
    void setTrkCh(int track, std::uint8_t channel) override;
    void setTrkTrans(int track, int semitones) override;
    void setTrkTransEnable(int track, bool on) override;
    void reloadTracks() override;

private:
    Smc& m_smc;
    CCnpWindow* m_panel = nullptr;
    bool m_wasUnderWay = false; ///< at the last stop
};

} // namespace tessaro
