// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/engine.h"

#include <algorithm>
#include <chrono>
#include <exception>

namespace tessaro {

Engine::Engine(Clock& clock, MidiSystem& midi)
    : m_clock(clock)
    , m_midi(midi)
    , m_ports(clock)
    , m_player(state, tracks, notes, m_ports, metronome, played)
    , m_run(state, queue, tempo, m_ports, m_player)
    , m_gate(m_waker, inputLost)
    , m_input(m_gate, state, m_run, m_ports, thru, recorded, inputLost)
{
}

Engine::~Engine()
{
    stop();
    handOver(nullptr);
}

bool Engine::start(Nanos interval)
{
    if (m_task) return false;
    m_interval = interval;
    try {
        m_task = m_clock.start(Urgency::engine, [this](Nanos now) { return step(now); });
    } catch (const std::exception&) {
        return false;
    }
    m_waker.set(m_task.get());
    return true;
}

void Engine::stop()
{
    closeInput();
    if (!m_task) return;
    m_waker.set(nullptr);
    m_task.reset();
    state.playing = false;
    m_run.advance(m_clock.now(), false);
    endAll(m_clock.now());
}

Nanos Engine::step(Nanos now)
{
    const RtSection section(m_hook);
    immediate.drain(m_ports, now);
    takePorts(now);
    // The switch is read before the orders: what was ordered before it was set is carried out before it acts.
    const bool playing = state.playing.load(std::memory_order_acquire);
    carryOutOrders(now);
    m_run.advance(now, playing);
    // Behind the run, so that what arrived finds tempo and place of its time.
    m_input.drain(now);
    return std::min(now + m_interval, m_run.nextDue());
}

void Engine::carryOutOrders(Nanos now)
{
    const Stamp stamp{.due = now};
    if (m_releaseThru.exchange(false, std::memory_order_acquire)) thru.releaseAll(m_ports, stamp);
    if (tracks.takeSwitchedOff()) m_player.releaseSwitchedOff(stamp);
    if (m_release.exchange(false, std::memory_order_acquire)) m_player.releaseAll(stamp);
    if (m_allOff.load(std::memory_order_acquire)) {
        queue.clear();
        m_player.releaseAll(stamp);
        m_allOff.store(false, std::memory_order_release);
    }
    if (m_clearNotes.exchange(false, std::memory_order_acquire)) notes.clear();
}

void Engine::takePorts(Nanos now)
{
    PortSet* wanted = m_wantedPorts.load(std::memory_order_acquire);
    if (wanted == m_takenPorts.load(std::memory_order_relaxed)) return;
    endAll(now);
    m_ports.adopt(wanted);
    m_takenPorts.store(wanted, std::memory_order_release);
}

/// Ends everything that sounds or is half sent.
void Engine::endAll(Nanos now)
{
    const Stamp stamp{.due = now};
    m_player.releaseAll(stamp);
    thru.releaseAll(m_ports, stamp);
    m_ports.endAllSysex(stamp);
}

/// Gives the engine another set of drivers and returns when the one before is out of use.
void Engine::handOver(PortSet* set)
{
    m_wantedPorts.store(set, std::memory_order_release);
    if (!m_task) {
        takePorts(m_clock.now());
        return;
    }
    wake();
    while (m_takenPorts.load(std::memory_order_acquire) != set) m_clock.sleepFor(std::chrono::milliseconds(1));
}

bool Engine::replacePorts(std::span<const std::int32_t> drivers, std::size_t bufferSize)
{
    for (auto& open : m_open) open = false;
    handOver(nullptr);
    m_portSet.reset();
    m_portSet = PortSet::open(m_midi, drivers, bufferSize);
    handOver(m_portSet.get());
    for (std::size_t i = 0; i < m_open.size(); ++i) m_open[i] = m_portSet->outs[i] != nullptr;
    return !m_portSet->failed;
}

bool Engine::replaceInput(std::size_t driver, std::size_t bufferSize)
{
    closeInput();
    if (driver >= m_midi.inputs().size()) return true;
    m_midiIn = m_midi.openInput(driver, m_gate, bufferSize);
    return m_midiIn != nullptr;
}

void Engine::closeInput()
{
    if (!m_midiIn) return;
    m_midiIn.reset();
    m_gate.restart();
    m_releaseThru.store(true, std::memory_order_release);
    wake();
}

bool Engine::accepts(int port) const
{
    return m_waker.hasTask() && port >= 0 && port < loomPorts && m_open[static_cast<std::size_t>(port)];
}

} // namespace tessaro
