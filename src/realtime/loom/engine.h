// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/immediate_sender.h"
#include "realtime/loom/input.h"
#include "realtime/loom/rt_section.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

namespace tessaro {

/// The task behind Loom: owns the collaborators, runs them in order once a step, and hands drivers over between the
/// user interface thread and the step. The public members are the parts that other threads may speak to, in
/// the terms of their classes.
class Engine {
public:
    Engine(Clock& clock, MidiSystem& midi);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    // User interface thread.
    bool start(Nanos interval); ///< false when it runs already or no thread is to be had
    void stop();
    [[nodiscard]] bool running() const { return m_task != nullptr; }
    /// Closes all outputs and opens these; false when one failed to open.
    bool replacePorts(std::span<const std::int32_t> drivers, std::size_t bufferSize);
    /// Closes the input and opens another; a number outside the list of drivers leaves it closed.
    bool replaceInput(std::size_t driver, std::size_t bufferSize);
    void closeInput();
    void setObserver(SendObserver* observer) { m_ports.setObserver(observer); }
    void setRtHook(RtHook hook) { m_hook = hook; }

    // Any thread.
    void wake() const { m_waker.wake(); }
    [[nodiscard]] bool accepts(int port) const; ///< the engine runs and the port has a driver
    void clearNotes() { m_clearNotes.store(true, std::memory_order_release); }
    void release() { m_release.store(true, std::memory_order_release); }
    void setAllOff(bool request) { m_allOff.store(request, std::memory_order_release); }
    [[nodiscard]] bool allOff() const { return m_allOff.load(std::memory_order_acquire); }
    void setRecording(bool on) { m_input.setRecording(on); }
    /// True until what arrived before recording was switched off has been taken in. User interface thread.
    [[nodiscard]] bool recording() const { return running() && m_input.recording(); }
    /// Engine thread, or between steps.
    [[nodiscard]] Nanos dueOf(std::int64_t tick) const { return m_run.dueOf(tick); }

    LoomState state;
    PlayQueue queue;
    TempoControl tempo;
    TrackSwitches tracks;
    Metronome metronome;
    Thru thru;
    ImmediateSender immediate;
    MessageRing recorded;
    MessageRing played;
    std::atomic<bool> inputLost = false;
    NoteTable notes; ///< create and destroy while the engine does not run

private:
    Nanos step(Nanos now);
    void carryOutOrders(Nanos now);
    void takePorts(Nanos now);
    void endAll(Nanos now);
    void handOver(PortSet* set);

    Clock& m_clock;
    MidiSystem& m_midi;
    RtHook m_hook = nullptr;
    Nanos m_interval{};
    Waker m_waker;

    std::atomic<bool> m_clearNotes = false;
    std::atomic<bool> m_release = false; // end all notes
    std::atomic<bool> m_allOff = false;  // the same, and drop the queue
    std::atomic<bool> m_releaseThru = false;

    std::unique_ptr<PortSet> m_portSet;
    std::atomic<PortSet*> m_wantedPorts = nullptr;
    std::atomic<PortSet*> m_takenPorts = nullptr;
    std::array<std::atomic<bool>, loomPorts> m_open{};

    // The engine thread's.
    OutPorts m_ports;
    RecordPlayer m_player;
    Run m_run;
    InputGate m_gate;
    Input m_input;

    // Ended first, in this order: the input, then the task.
    std::unique_ptr<TimedTask> m_task;
    std::unique_ptr<MidiIn> m_midiIn;
};

} // namespace tessaro
