// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/thru.h"

#include "realtime/loom/midi_bytes.h"

#include <algorithm>
#include <limits>

namespace tessaro {

namespace {

constexpr std::uint32_t sysexBit = 0x80;

/// The bit of a filter mask that keeps a channel message out.
std::uint32_t filterBitOf(std::uint8_t status)
{
    switch (kindOf(status)) {
    case midi::noteOff:
    case midi::noteOn: return 0x01;
    case midi::polyTouch: return 0x04;
    case midi::control: return 0x08;
    case midi::program: return 0x10;
    case midi::channelTouch: return 0x20;
    case midi::pitchBend: return 0x40;
    default: return 0;
    }
}

} // namespace

bool Thru::passes(std::uint32_t filterBit) const { return m_enabled && m_port != off && !(m_filter & filterBit); }

std::uint8_t Thru::channelFor(std::uint8_t status) const
{
    const int channel = m_channel;
    return channel == unchanged ? channelOf(status) : static_cast<std::uint8_t>(channel);
}

Thru::Held& Thru::heldFor(std::span<const std::uint8_t> message)
{
    return m_held[std::size_t{channelOf(message[0])} * 128 + message[1]];
}

void Thru::channelMessage(OutPorts& ports, std::span<const std::uint8_t> message, Stamp stamp)
{
    const std::uint8_t status = message[0];
    const std::uint8_t data2 = message.size() > 2 ? message[2] : std::uint8_t{0};
    if (isNoteOff(status, data2)) {
        noteOff(ports, message, stamp);
    } else if (!passes(filterBitOf(status))) {
        return;
    } else if (isNoteOn(status, data2)) {
        noteOn(ports, message, stamp);
    } else {
        std::array<std::uint8_t, 3> bytes{};
        std::ranges::copy(message, bytes.begin());
        bytes[0] = static_cast<std::uint8_t>(kindOf(status) | channelFor(status));
        int port = m_port;
        if (kindOf(status) == midi::polyTouch) {
            const Held& held = heldFor(message);
            const int key = held.count ? held.key : message[1] + m_transposition;
            if (key < 0 || key > 127) return;
            bytes[1] = static_cast<std::uint8_t>(key);
            if (held.count) {
                bytes[0] = static_cast<std::uint8_t>(midi::polyTouch | held.channel);
                port = held.port;
            }
        }
        ports.send(port, std::span(bytes).first(message.size()), stamp);
    }
}

void Thru::noteOn(OutPorts& ports, std::span<const std::uint8_t> message, Stamp stamp)
{
    const int key = message[1] + m_transposition;
    if (key < 0 || key > 127) return;
    Held fresh{.port = static_cast<std::uint8_t>(m_port.load()),
               .channel = channelFor(message[0]),
               .key = static_cast<std::uint8_t>(key)};
    Held& held = heldFor(message);
    if (held.count && !held.goesWhere(fresh)) release(ports, held, stamp);
    if (held.count == std::numeric_limits<std::uint8_t>::max()) return;
    fresh.count = held.count;
    const std::array<std::uint8_t, 3> bytes{static_cast<std::uint8_t>(midi::noteOn | fresh.channel), fresh.key,
                                            message[2]};
    if (!ports.send(fresh.port, bytes, stamp)) return;
    ++fresh.count;
    held = fresh;
}

void Thru::noteOff(OutPorts& ports, std::span<const std::uint8_t> message, Stamp stamp)
{
    Held& held = heldFor(message);
    if (held.count == 0) return;
    --held.count;
    const std::array<std::uint8_t, 3> bytes{static_cast<std::uint8_t>(kindOf(message[0]) | held.channel), held.key,
                                            message[2]};
    ports.send(held.port, bytes, stamp);
}

void Thru::release(OutPorts& ports, Held& held, Stamp stamp)
{
    const std::array<std::uint8_t, 3> bytes{static_cast<std::uint8_t>(midi::noteOn | held.channel), held.key, 0};
    for (; held.count; --held.count) ports.send(held.port, bytes, stamp);
}

void Thru::releaseAll(OutPorts& ports, Stamp stamp)
{
    for (Held& held : m_held) release(ports, held, stamp);
}

void Thru::sysex(OutPorts& ports, std::span<const std::uint8_t> bytes, Stamp stamp)
{
    if (bytes[0] == midi::sysex) m_sysexPort = passes(sysexBit) ? m_port.load() : off;
    ports.sendSysex(m_sysexPort, sysexThru, bytes, stamp);
}

void Thru::breakSysex(OutPorts& ports, Stamp stamp)
{
    ports.endSysex(m_sysexPort, sysexThru, stamp);
    m_sysexPort = off;
}

} // namespace tessaro
