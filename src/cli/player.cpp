// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/player.h"

#include <algorithm>

namespace tessaro::cli {

namespace {
constexpr std::uint32_t sysexSize = 8192;
constexpr std::uint32_t sysexIntervalMs = 2000;
constexpr std::size_t mostPorts = 128;
} // namespace

Player::Player(Clock& clock, MidiSystem& midi, UserPort& user, SendObserver* observer, const std::string& appDirectory)
    : m_strings(languageFromEnvironment())
    , m_reader(m_strings, appDirectory)
    , m_loom(clock, midi)
    , m_smc({m_loom, clock, m_settings, m_settings, user, m_strings})
    , m_panel({m_smc, clock, m_settings, user, m_strings})
    , m_transport(m_smc)
    , m_doc({m_reader, user, m_quiet.progress, m_transport, m_quiet.waveLengths, m_quiet.waveOutput, m_score, m_windows,
             m_strings})
    , m_realtime(m_smc, m_panel, m_media)
    , m_messages([this](const Message& message) { handle(message); })
{
    m_loom.setSendObserver(observer);
    m_transport.setPanel(&m_panel);
    m_panel.setMainFrame(&m_messages);
    m_smc.setMainWindow(&m_messages);
    m_smc.setTempoDisplay(&m_panel);
}

Player::~Player()
{
    m_panel.Stop();
    m_smc.stopEngine();
    m_smc.setMainWindow(nullptr);
}

bool Player::startEngine(std::span<const std::int32_t> drivers)
{
    if (m_smc.startEngine() != EngineStart::started) return false;
    return (m_smc.setOutPorts(drivers, sysexSize, sysexIntervalMs) & 0x0FU) == 0;
}

bool Player::openInput(std::int32_t driver) { return m_smc.setInPort(static_cast<std::size_t>(driver), sysexSize); }

bool Player::followClock(std::int32_t driver)
{
    constexpr int midiSync = 1;
    m_loom.setLoomSyncMode(midiSync);
    m_panel.SetSyncMode(midiSync);
    return openInput(driver);
}

void Player::handle(const Message& message)
{
    if (!m_realtime.handle(message) && message.id == msg::devicesChanged && m_devicesChanged) m_devicesChanged(message);
}

std::size_t Player::portCount()
{
    std::size_t highest = 0;
    for (int number = 1; number < trackCount; ++number) {
        const CTrk& trk = *editor().song().trk(number);
        if (!trk.IsEmpty()) highest = std::max<std::size_t>(highest, trk.GetPort());
    }
    return std::min(highest + 1, mostPorts);
}

} // namespace tessaro::cli
