// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/realtime_messages.h"

#include "realtime/loom/loom.h"
#include "realtime/play/output_filter.h"
#include "realtime/transport/cnp_window.h"

namespace tessaro {

namespace {
constexpr long ticksPerSixteenth = 120;

// The two data bytes of a song position stand in the second and third byte of the parameter.
long positionOf(std::intptr_t parameter) noexcept
{
    const auto value = static_cast<std::uint32_t>(parameter);
    return static_cast<long>(((value >> 16U) & 0x7FU) * 128 + ((value >> 8U) & 0x7FU)) * ticksPerSixteenth;
}
} // namespace

bool RealtimeMessages::handle(const Message& message)
{
    switch (message.id) {
    case msg::realtime:
        if (m_smc.loom().getLoomSyncMode() == 0)
            internalSync(message);
        else if (m_panel.GetPlayBtn() && m_smc.running()) // which it does not in step input
            midiSync(message);
        return true;
    case msg::data:
        if (message.wParam != 0) return false; // what was played goes to its owners
        m_panel.received(*reinterpret_cast<const LoomRingEntry*>(message.lParam));
        return true;
    case msg::recordError: m_panel.recordError(); return true;
    case msg::mciCommand: m_media.mciSendString(reinterpret_cast<const char*>(message.lParam)); return true;
    case msg::allSoundOff: m_smc.sendAllSoundOff(); return true;
    default: return false;
    }
}

void RealtimeMessages::internalSync(const Message& message)
{
    if (message.lParam == ownRequest) {
        m_panel.Resume();
        return;
    }
    const bool playing = m_panel.GetPlayBtn() || m_smc.running();
    // The filter is for what comes from outside, not for the engine's own news.
    if ((m_smc.inFilter() & filter::realTime) && message.wParam != songEnd) return;
    switch (message.wParam) {
    case stop:
    case songEnd:
        if (playing) m_panel.Stop();
        break;
    case start:
        if (playing) break;
        m_panel.SetLocation(0);
        reapplyLoop();
        m_panel.Start();
        break;
    case continuePlay:
        if (!playing) m_panel.Start();
        break;
    case songPosition:
        if (!playing) m_panel.SetLocation(positionOf(message.lParam));
        break;
    default: break;
    }
}

void RealtimeMessages::midiSync(const Message& message)
{
    switch (message.wParam) {
    case stop:
    case songEnd:
        if (m_panel.recorder().state() == RecState::recording)
            m_panel.RecStop();
        else
            m_smc.stopWaves();
        break;
    case start:
    case continuePlay: m_smc.startWaves(); break;
    case songPosition:
        m_smc.smcPlayStop();
        m_panel.Spp(positionOf(message.lParam));
        reapplyLoop();
        m_smc.smcPlayStart();
        break;
    default: break;
    }
}

void RealtimeMessages::reapplyLoop()
{
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    m_panel.GetLoop(begin, end);
    m_panel.SetLoop(begin, end);
}

} // namespace tessaro
