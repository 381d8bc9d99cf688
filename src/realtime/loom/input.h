// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/input_gate.h"
#include "realtime/loom/message_ring.h"
#include "realtime/loom/run.h"
#include "realtime/loom/thru.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessaro {

/// Deals with what arrives: passes it to thru, puts it into the record ring while recording, lets MIDI sync follow
/// clock and Start, and tells the main window of Start, Continue, Stop and Song Position. Engine thread.
class Input {
public:
    /// The longest system exclusive that is recorded.
    static constexpr std::size_t longestSysex = MessageRing::byteRoom / 4;

    Input(InputGate& gate, LoomState& state, Run& run, OutPorts& ports, Thru& thru, MessageRing& recorded,
          std::atomic<bool>& lost);

    // Any thread. What arrived before recording is switched off is still recorded.
    void setRecording(bool on) { m_recordingWanted.store(on, std::memory_order_release); }
    [[nodiscard]] bool recording() const { return m_recording.load(std::memory_order_acquire); }

    void drain(Nanos now);

private:
    void setRecordingNow(bool on);
    void take(const InputPacket& packet, Nanos now);
    void takeSysex(std::span<const std::uint8_t> bytes, Nanos when, Nanos now);
    void breakSysex(Nanos now);
    void record(std::span<const std::uint8_t> message, Nanos when);
    void finishSysex();
    void realtime(std::span<const std::uint8_t> message, Nanos when, Nanos now);
    void tell(std::uint64_t code, std::intptr_t value);

    InputGate& m_gate;
    LoomState& m_state;
    Run& m_run;
    OutPorts& m_ports;
    Thru& m_thru;
    MessageRing& m_recorded;
    std::atomic<bool>& m_lost;
    std::atomic<bool> m_recordingWanted = false;
    std::atomic<bool> m_recording = false; // as the engine has seen it

    bool m_inSysex = false;
    bool m_recordsSysex = false;
    std::vector<std::uint8_t> m_sysex; // the message under way, in its first m_sysexSize bytes
    std::size_t m_sysexSize = 0;
    std::uint32_t m_sysexTick = 0;
};

} // namespace tessaro
