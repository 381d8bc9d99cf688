// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/song_transport.h"

#include "realtime/loom/loom.h"
#include "realtime/play/smc.h"
#include "realtime/transport/cnp_window.h"

namespace tessaro {

bool SongTransport::isPlaying() const { return m_smc.running(); }

void SongTransport::stop()
{
    m_wasUnderWay = m_smc.smcPlayStatus() || m_smc.loom().getLoomSyncMode() == 1;
    m_smc.smcPlayStop();
}

void SongTransport::resume()
{
    if (!m_wasUnderWay || m_smc.running()) return;
    if (m_panel) {
        if (m_panel->goesOn()) m_panel->playOn();
        return;
    }
    m_smc.smcLocateQuiet(m_smc.smcGetPlayCount(), false);
    m_smc.smcPlayStart();
}

void SongTransport::halt()
{
    m_wasUnderWay = false;
    if (m_panel)
        m_panel->Stop();
    else
        m_smc.smcPlayStop();
}

bool SongTransport::isRecording() const { return m_panel && m_panel->recorder().state() == RecState::recording; }

std::uint32_t SongTransport::playCount() const { return m_smc.smcGetPlayCount(); }

void SongTransport::bindSong(CEditor* editor) { m_smc.smcBindSong(editor); }

bool SongTransport::getTrkSw(int track) const { return m_smc.loom().getLoomTrkSw(track) != 0; }

void SongTransport::setTrkSw(int track, bool on) { m_smc.loom().setLoomTrkSw(on, track); }

void SongTransport::setTrkPort(int track, std::uint8_t port) { m_smc.setTrkPort(track, port); }

void SongTransport::setTrkCh(int track, std::uint8_t channel) { m_smc.setTrkCh(track, channel); }

void SongTransport::setTrkTrans(int track, int semitones) { m_smc.loom().setLoomTrkTrsp(semitones, track); }

void SongTransport::setTrkTransEnable(int track, bool on) { m_smc.loom().setLoomTrkTrspFlg(on, track); }

void SongTransport::reloadTracks() { m_smc.reloadTracks(); }

} // namespace tessaro
