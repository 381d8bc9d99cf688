// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/devices.h"

#include "realtime/loom/loom.h"
#include "realtime/loom/midi_system.h"
#include "realtime/play/smc.h"

#include <algorithm>

namespace tessaro {

namespace {
constexpr unsigned openFailedBits = 0x0F;

std::vector<std::string> named(std::vector<std::string> names)
{
    std::replace(names.begin(), names.end(), std::string{}, std::string{"---"});
    return names;
}
} // namespace

Devices::Devices(Smc& smc, MidiSystem& midi) : m_smc(smc), m_midi(midi) {}

void Devices::enumerate()
{
    m_midi.refresh();
    m_outs = named(m_midi.outputs());
    m_ins = named(m_midi.inputs());
}

bool Devices::sounds(int driver) const { return m_midi.sounds(static_cast<std::size_t>(driver)); }

EngineStart Devices::startEngine() { return m_smc.startEngine(); }

void Devices::stopEngine() { m_smc.stopEngine(); }

bool Devices::setOutPorts(std::span<const std::int32_t> drivers, std::uint32_t bufferSize, std::uint32_t intervalMs)
{
    return (m_smc.setOutPorts(drivers, bufferSize, intervalMs) & openFailedBits) == 0;
}

void Devices::setOutFilter(std::uint32_t mask, bool realTime) { m_smc.setOutFilter(mask, realTime); }

bool Devices::setInPort(int driver, std::uint32_t bufferSize)
{
    return m_smc.setInPort(static_cast<std::size_t>(driver), bufferSize);
}

void Devices::setInFilter(std::uint32_t mask, const std::array<std::uint8_t, 128>& dropController)
{
    m_smc.setInFilter(mask, dropController);
}

void Devices::setThruFlag() { m_smc.loom().setLoomThruFlag(1); }

bool Devices::setThruPort(int port) { return m_smc.loom().setLoomThruPort(port); }

void Devices::setThruFilter(std::uint32_t mask) { m_smc.loom().setLoomThruFilt(mask); }

void Devices::setThruCh(int channel) { m_smc.smcSetThruCh(channel); }

void Devices::setThruTrans(int semitones) { m_smc.smcSetThruTrns(semitones); }

void Devices::setSyncMode(int mode) { m_smc.loom().setLoomSyncMode(mode); }

void Devices::setMetronome(const MetronomeSettings& metronome)
{
    m_smc.loom().setLoomMetronome(metronome.port, metronome.channel, metronome.note1, metronome.note2,
                                  metronome.velocity1, metronome.velocity2);
}

unsigned Devices::sendShort(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
{
    return m_smc.smcSendShortMsg(port, status, data1, data2);
}

unsigned Devices::sendLong(int port, std::span<const std::uint8_t> bytes) { return m_smc.smcSendLongMsg(port, bytes); }

int Devices::setPlayOwner(MessageTarget* owner, std::uint8_t mask) { return m_smc.smcSetMultiPlayOwner(owner, mask); }

void Devices::releasePlayOwner(int slot) { m_smc.smcReleaseMultiPlayOwner(slot); }

} // namespace tessaro
