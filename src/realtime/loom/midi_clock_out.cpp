// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/midi_clock_out.h"

#include "realtime/loom/midi_bytes.h"

namespace tessaro {

void MidiClockOut::start(OutPorts& ports, std::int64_t tick, std::uint32_t songTick, Stamp stamp)
{
    const std::uint8_t status = songTick == 0 ? midi::start : midi::continuePlay;
    ports.sendToAll({&status, 1}, stamp);
    m_running = true;
    realign(tick, songTick);
}

void MidiClockOut::stop(OutPorts& ports, Stamp stamp)
{
    if (!m_running) return;
    m_running = false;
    ports.sendToAll({&midi::stop, 1}, stamp);
}

void MidiClockOut::realign(std::int64_t tick, std::uint32_t songTick)
{
    const std::int64_t behind = songTick % midi::ticksPerClock;
    m_next = tick + (behind == 0 ? 0 : midi::ticksPerClock - behind);
}

void MidiClockOut::sendClock(OutPorts& ports, Stamp stamp)
{
    ports.sendToAll({&midi::clock, 1}, stamp);
    m_next += midi::ticksPerClock;
}

void MidiClockOut::skipTo(std::int64_t tick)
{
    if (m_next < tick) m_next += (tick - m_next + midi::ticksPerClock - 1) / midi::ticksPerClock * midi::ticksPerClock;
}

} // namespace tessaro
