// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/out_ports.h"

#include "realtime/loom/midi_bytes.h"

#include <algorithm>
#include <exception>

namespace tessaro {

namespace {

/// Data bytes alone, the last one may be the 0xF7 that ends the message.
bool isSysexData(std::span<const std::uint8_t> data)
{
    if (!data.empty() && data.back() == midi::sysexEnd) data = data.first(data.size() - 1);
    return std::ranges::all_of(data, isData);
}

} // namespace

std::unique_ptr<PortSet> PortSet::open(MidiSystem& midi, std::span<const std::int32_t> drivers, std::size_t size)
{
    constexpr std::size_t leastBuffer = 512;
    auto set = std::make_unique<PortSet>();
    set->buffer.resize(std::max(size, leastBuffer));
    const std::size_t known = drivers.empty() ? 0 : midi.outputs().size();
    for (std::size_t port = 0; port < std::min(drivers.size(), set->outs.size()); ++port) {
        if (drivers[port] < 0 || static_cast<std::size_t>(drivers[port]) >= known) continue;
        try {
            set->outs[port] = midi.openOutput(static_cast<std::size_t>(drivers[port]));
        } catch (const std::exception&) {
            set->outs[port] = nullptr;
        }
        if (!set->outs[port]) set->failed = true;
    }
    return set;
}

void OutPorts::adopt(PortSet* set)
{
    m_set = set;
    m_ports.fill({});
    m_busyPorts = 0;
}

bool OutPorts::emit(int port, std::span<const std::uint8_t> bytes, Stamp stamp)
{
    MidiOut* driver = out(port);
    if (!driver || !driver->send(bytes, stamp.due)) return false;
    if (m_observer) {
        m_observer->sent({.port = static_cast<std::uint8_t>(port),
                          .bytes = bytes,
                          .due = stamp.due,
                          .sent = m_clock.now(),
                          .songTick = stamp.songTick});
    }
    return true;
}

bool OutPorts::send(int port, std::span<const std::uint8_t> message, Stamp stamp)
{
    if (!isOpen(port)) return false;
    if (!isRealtime(message[0])) closeSysex(port, stamp);
    return emit(port, message, stamp);
}

void OutPorts::sendToAll(std::span<const std::uint8_t> message, Stamp stamp)
{
    for (int port = 0; port < loomPorts; ++port) send(port, message, stamp);
}

bool OutPorts::closeSysex(int port, Stamp stamp)
{
    if (!at(port).open) return false;
    at(port).open.reset();
    return emit(port, {&midi::sysexEnd, 1}, stamp);
}

bool OutPorts::emitSysex(int port, SysexSource source, std::span<const std::uint8_t> bytes, Stamp stamp)
{
    Port& state = at(port);
    if (bytes.back() == midi::sysexEnd) {
        state.open.reset();
    } else {
        state.open = source;
    }
    if (!state.busy) {
        state.busy = true;
        ++m_busyPorts;
    }
    return emit(port, bytes, stamp);
}

bool OutPorts::beginSysex(int port, SysexSource source, std::span<const std::uint8_t> data, Stamp stamp)
{
    if (!isOpen(port)) return false;
    closeSysex(port, stamp);
    if (data.empty() || !isSysexData(data)) return false;

    std::vector<std::uint8_t>& buffer = m_set->buffer;
    const std::size_t together = std::min(data.size(), buffer.size() - 1);
    buffer[0] = midi::sysex;
    std::copy_n(data.begin(), together, buffer.begin() + 1);
    const bool sent = emitSysex(port, source, {buffer.data(), together + 1}, stamp);
    if (together == data.size()) return sent;
    return emitSysex(port, source, data.subspan(together), stamp) && sent;
}

bool OutPorts::sendSysex(int port, SysexSource source, std::span<const std::uint8_t> bytes, Stamp stamp)
{
    if (!isOpen(port) || bytes.empty()) return false;
    if (bytes[0] == midi::sysex) {
        closeSysex(port, stamp);
        return isSysexData(bytes.subspan(1)) && emitSysex(port, source, bytes, stamp);
    }
    if (at(port).open != source) return false;
    if (isSysexData(bytes)) return emitSysex(port, source, bytes, stamp);
    closeSysex(port, stamp);
    return false;
}

void OutPorts::endSysex(int port, SysexSource source, Stamp stamp)
{
    if (isOpen(port) && at(port).open == source) closeSysex(port, stamp);
}

void OutPorts::endAllSysex(Stamp stamp)
{
    for (int port = 0; port < loomPorts; ++port) closeSysex(port, stamp);
}

bool OutPorts::sysexUnderWay()
{
    for (int port = 0; m_busyPorts > 0 && port < loomPorts; ++port) {
        if (!at(port).busy || (isOpen(port) && out(port)->busy())) continue;
        at(port).busy = false;
        --m_busyPorts;
    }
    return m_busyPorts > 0;
}

} // namespace tessaro
