// SPDX-License-Identifier: GPL-3.0-or-later
// The engine's start, its ports and filters, immediate sending and owners.
#include "base/messages.h"
#include "base/strings.h"
#include "core/edit/editor.h"
#include "core/ports/user.h"
#include "realtime/loom/loom.h"
#include "realtime/play/sample_sysex.h"
#include "realtime/play/smc.h"

#include <algorithm>
#include <string>

namespace tessaro {

namespace {
constexpr int timerMs = 4;
constexpr unsigned periodic = 1;
constexpr std::size_t firstInSize = 8192;
constexpr std::size_t firstOutSize = 4096;
constexpr unsigned firstOutInterval = 2000;
constexpr std::size_t leastInSize = 512;
constexpr std::int32_t noDriver = 0x7F;
constexpr unsigned reopenPauseMs = 500; // for drivers that need time between close and open
} // namespace

EngineStart Smc::startEngine()
{
    if (m_timer != 0) return EngineStart::started;
    if (!m_loom.CreateNoteOnTbl()) return EngineStart::noMemory;
    m_loom.setLoomTicIntval(timerMs);
    m_timer = m_loom.CallTimeSetEvent(timerMs, timerMs, 0, periodic);
    if (m_timer == 0) return EngineStart::noTimer;
    m_loom.setLoomMidiPorts(0, firstInSize, {}, firstOutSize, firstOutInterval);
    m_recordThread.start();
    return EngineStart::started;
}

void Smc::stopEngine()
{
    if (m_timer == 0) return;
    m_recordThread.stop();
    m_loom.CallTimeKillEvent(m_timer);
    m_timer = 0;
    m_loom.setLoomMidiPortsReset();
    m_loom.TerminateNoteOnTbl();
}

unsigned Smc::setOutPorts(std::span<const std::int32_t> drivers, std::uint32_t size, std::uint32_t intervalMs)
{
    m_sender.setChunks(size, intervalMs);
    std::array<std::int32_t, loomPorts> map;
    map.fill(noDriver);
    m_ports = static_cast<unsigned>(std::min<std::size_t>(drivers.size(), map.size()));
    m_loom.setLoomOutPortMap(map, size, intervalMs, m_ports);
    m_sender.sleep(reopenPauseMs);
    std::copy_n(drivers.begin(), m_ports, map.begin());
    return m_loom.setLoomOutPortMap(map, size, intervalMs, m_ports);
}

bool Smc::setInPort(std::size_t driver, std::size_t size)
{
    return m_loom.setLoomInPort(driver, std::max(size, leastInSize));
}

void Smc::setOutFilter(std::uint32_t mask, bool realTimeMessages)
{
    m_tracks.setFilter(mask);
    m_realTimeMessages = realTimeMessages;
    m_loom.setLoomRealTimeMessagesSw(realTimeMessages);
}

void Smc::setInFilter(std::uint32_t mask, const std::array<std::uint8_t, 128>& dropController)
{
    m_inFilter = mask;
    m_dropController = dropController;
}

void Smc::smcSetThruPort(int port) { m_loom.setLoomThruPort(port); }

void Smc::smcSetThruCh(int channel) { m_loom.setLoomThruCh(channel); }

void Smc::smcSetThruTrns(int semitones) { m_loom.setLoomThruTrns(semitones); }

unsigned Smc::smcSendShortMsg(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
{
    return m_sender.shortMessage(port, status, data1, data2);
}

unsigned Smc::smcSendLongMsg(int port, std::span<const std::uint8_t> bytes)
{
    return m_sender.longMessage(port, bytes);
}

bool Smc::smcIsSampleSysex(std::span<const std::uint8_t> bytes) noexcept { return isSampleSysex(bytes); }

void Smc::smcSendSampleSysex()
{
    const SampleSysex samples{m_editor->song(), m_tracks};
    if (samples.empty()) return;
    std::string question{m_strings(TextId::askSampleSysexHead)};
    question += std::to_string(samples.byteCount() / 3000);
    question += m_strings(TextId::askSampleSysexTail);
    if (m_user.ask(question)) samples.send(m_sender);
}

void Smc::sendAllSoundOff()
{
    for (int port = 0; port < static_cast<int>(m_ports); ++port) {
        for (unsigned channel = 0; channel < 16; ++channel) {
            const auto status = static_cast<std::uint8_t>(0xB0U | channel);
            m_sender.shortMessage(port, status, 123, 0);
            m_sender.shortMessage(port, status, 64, 0);
        }
    }
}

void Smc::smcSetRecOwner(MessageTarget* owner)
{
    m_loom.setLoomRecOwner(owner);
    m_recordThread.setOwner(owner);
}

void Smc::smcRecStart() { m_loom.setLoomRecFlag(1); }

void Smc::smcRecStop()
{
    m_loom.setLoomRecFlag(0);
    for (int i = 0; i < 10 && m_loom.getLoomRecFlag(); ++i) m_sender.sleep(1);
}

void Smc::smcIncRrdpt() { m_loom.loomIncRrdpt(); }

} // namespace tessaro
