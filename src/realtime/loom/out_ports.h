// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/midi_system.h"
#include "realtime/loom/que_rec.h"
#include "realtime/loom/send_observer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tessaro {

/// The open drivers of one port map, and a buffer for putting a system exclusive together. Made and destroyed on the
/// user interface thread.
struct PortSet {
    std::array<std::unique_ptr<MidiOut>, loomPorts> outs;
    std::vector<std::uint8_t> buffer;
    bool failed = false; ///< a driver of the map failed to open

    /// Opens the drivers; a number outside the list of drivers leaves its port empty. `size` is that of the buffer.
    static std::unique_ptr<PortSet> open(MidiSystem& midi, std::span<const std::int32_t> drivers, std::size_t size);
};

/// When a message is due, and of which song tick it is; none for what does not come from the queue.
struct Stamp {
    Nanos due{};
    std::optional<std::uint32_t> songTick = {};
};

/// Who sends a system exclusive: a continuation is taken only from the one who began the message. Tracks of the queue
/// are their number.
using SysexSource = std::uint8_t;
inline constexpr SysexSource sysexImmediate = 0xFE;
inline constexpr SysexSource sysexThru = 0xFD;

/// The way out: keeps the stream of every port valid and hands messages to its driver. Engine thread.
class OutPorts {
public:
    explicit OutPorts(const Clock& clock) : m_clock(clock) {}

    void setObserver(SendObserver* observer) { m_observer = observer; }

    /// Takes another set; null for none. Messages left open on the old one have been closed before.
    void adopt(PortSet* set);
    [[nodiscard]] const PortSet* current() const { return m_set; }
    [[nodiscard]] bool isOpen(int port) const { return port >= 0 && port < loomPorts && out(port) != nullptr; }

    /// Sends a valid message that is no system exclusive. False when it is lost.
    bool send(int port, std::span<const std::uint8_t> message, Stamp stamp);
    /// To every open port.
    void sendToAll(std::span<const std::uint8_t> message, Stamp stamp);
    /// Begins a system exclusive with the bytes behind its 0xF0.
    bool beginSysex(int port, SysexSource source, std::span<const std::uint8_t> data, Stamp stamp);
    /// A slice that begins with 0xF0, or goes on with what this source has begun.
    bool sendSysex(int port, SysexSource source, std::span<const std::uint8_t> bytes, Stamp stamp);
    /// Closes what this source has left open.
    void endSysex(int port, SysexSource source, Stamp stamp);
    void endAllSysex(Stamp stamp);

    /// True while a driver is busy with a system exclusive sent before.
    [[nodiscard]] bool sysexUnderWay();

private:
    struct Port {
        std::optional<SysexSource> open; // an unfinished system exclusive
        bool busy = false;               // one was sent; the driver may not be done with it
    };

    [[nodiscard]] MidiOut* out(int port) const
    {
        return m_set ? m_set->outs[static_cast<std::size_t>(port)].get() : nullptr;
    }
    Port& at(int port) { return m_ports[static_cast<std::size_t>(port)]; }
    bool closeSysex(int port, Stamp stamp);
    bool emit(int port, std::span<const std::uint8_t> bytes, Stamp stamp);
    bool emitSysex(int port, SysexSource source, std::span<const std::uint8_t> bytes, Stamp stamp);

    const Clock& m_clock;
    SendObserver* m_observer = nullptr;
    PortSet* m_set = nullptr;
    std::array<Port, loomPorts> m_ports{};
    int m_busyPorts = 0;
};

} // namespace tessaro
