// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/input.h"

#include "base/messages.h"
#include "realtime/loom/midi_bytes.h"

#include <algorithm>

namespace tessaro {

namespace {

// Codes of message 0x433.
constexpr std::uint64_t codeStop = 2;
constexpr std::uint64_t codeStart = 3;
constexpr std::uint64_t codeContinue = 4;
constexpr std::uint64_t codeSongPosition = 6;

constexpr int midiSync = 1;

} // namespace

Input::Input(InputGate& gate, LoomState& state, Run& run, OutPorts& ports, Thru& thru, MessageRing& recorded,
             std::atomic<bool>& lost)
    : m_gate(gate)
    , m_state(state)
    , m_run(run)
    , m_ports(ports)
    , m_thru(thru)
    , m_recorded(recorded)
    , m_lost(lost)
    , m_sysex(longestSysex)
{
}

void Input::drain(Nanos now)
{
    const bool wanted = m_recordingWanted.load(std::memory_order_acquire);
    if (wanted) setRecordingNow(true);
    while (const InputPacket* packet = m_gate.front()) {
        take(*packet, now);
        m_gate.pop();
    }
    if (!wanted) setRecordingNow(false);
}

void Input::setRecordingNow(bool on)
{
    m_recordsSysex = m_recordsSysex && on;
    m_recording.store(on, std::memory_order_release);
}

void Input::take(const InputPacket& packet, Nanos now)
{
    const std::span bytes(packet.bytes.data(), packet.size);
    if (packet.gap) breakSysex(now);
    if (isRealtime(bytes[0])) {
        realtime(bytes, packet.when, now);
        return;
    }
    if (bytes[0] == midi::sysex) {
        breakSysex(now);
        m_inSysex = true;
        m_recordsSysex = recording();
        m_sysexSize = 0;
        m_sysexTick = m_run.songTickAt(packet.when);
        takeSysex(bytes, packet.when, now);
    } else if (isData(bytes[0]) || bytes[0] == midi::sysexEnd) {
        if (m_inSysex) takeSysex(bytes, packet.when, now);
    } else {
        breakSysex(now);
        if (!isShortMessage(bytes)) return;
        if (isChannelStatus(bytes[0])) {
            m_thru.channelMessage(m_ports, bytes, {.due = now});
            record(bytes, packet.when);
        } else {
            realtime(bytes, packet.when, now);
        }
    }
}

void Input::takeSysex(std::span<const std::uint8_t> bytes, Nanos, Nanos now)
{
    const bool ends = bytes.back() == midi::sysexEnd;
    const std::size_t skip = m_sysexSize == 0 && bytes[0] == midi::sysex ? 1 : 0;
    const auto data = bytes.subspan(skip, bytes.size() - skip - (ends ? 1 : 0));
    if (!std::ranges::all_of(data, isData)) {
        breakSysex(now);
        return;
    }
    m_thru.sysex(m_ports, bytes, {.due = now});
    if (m_recordsSysex) {
        if (m_sysex.size() - m_sysexSize < bytes.size()) {
            m_lost = true;
            m_recordsSysex = false;
        } else {
            std::ranges::copy(bytes, m_sysex.begin() + static_cast<std::ptrdiff_t>(m_sysexSize));
        }
    }
    m_sysexSize += bytes.size();
    if (ends) finishSysex();
}

void Input::finishSysex()
{
    m_inSysex = false;
    if (m_recordsSysex && !m_recorded.putSysex(m_sysexTick, std::span(m_sysex).first(m_sysexSize))) m_lost = true;
}

/// What came of an unfinished message is worth nothing.
void Input::breakSysex(Nanos now)
{
    if (!m_inSysex) return;
    m_inSysex = false;
    if (m_recordsSysex) m_lost = true;
    m_thru.breakSysex(m_ports, {.due = now});
}

void Input::record(std::span<const std::uint8_t> message, Nanos when)
{
    if (!recording()) return;
    const std::uint8_t data2 = message.size() > 2 ? message[2] : std::uint8_t{0};
    if (!m_recorded.putShort(m_run.songTickAt(when), message[0], message[1], data2)) m_lost = true;
}

void Input::realtime(std::span<const std::uint8_t> message, Nanos when, Nanos now)
{
    const bool follow = m_state.syncMode.load(std::memory_order_relaxed) == midiSync;
    const std::intptr_t position = m_state.position.load(std::memory_order_relaxed);
    switch (message[0]) {
    case midi::clock:
        if (follow) m_run.clockArrived(when, now);
        break;
    case midi::start:
        if (follow) m_run.startArrived();
        tell(codeStart, position);
        break;
    case midi::continuePlay:
        if (follow) m_run.startArrived();
        tell(codeContinue, position);
        break;
    case midi::stop:
        if (follow) m_run.stopArrived(now);
        tell(codeStop, position);
        break;
    case midi::songPosition:
        if (follow) m_run.songPositionArrived();
        tell(codeSongPosition, message[0] | std::intptr_t{message[1]} << 8 | std::intptr_t{message[2]} << 16);
        break;
    default: break;
    }
}

void Input::tell(std::uint64_t code, std::intptr_t value)
{
    if (MessageTarget* window = m_state.mainWindow)
        window->post({.id = msg::realtime, .wParam = code, .lParam = value});
}

} // namespace tessaro
