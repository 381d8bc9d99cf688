// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/out_ports.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tessaro {

/// Passes incoming messages on to a port, moved to a channel and transposed. The end of a note goes where its start
/// went, with the key of then, whatever has been set since.
class Thru {
public:
    // Any thread.
    void setPort(int port) { m_port = port >= 0 && port < loomPorts ? port : off; }
    void setChannel(int channel) { m_channel = channel >= 0 && channel < 16 ? channel : unchanged; }
    void setTransposition(int semitones) { m_transposition = semitones; }
    void setEnabled(bool enabled) { m_enabled = enabled; }
    void setFilter(std::uint32_t mask) { m_filter = mask; }

    // Engine thread.
    void channelMessage(OutPorts& ports, std::span<const std::uint8_t> message, Stamp stamp);
    /// A system exclusive, or a slice of one.
    void sysex(OutPorts& ports, std::span<const std::uint8_t> bytes, Stamp stamp);
    /// The rest of a system exclusive was lost.
    void breakSysex(OutPorts& ports, Stamp stamp);
    /// Ends every note that was passed on.
    void releaseAll(OutPorts& ports, Stamp stamp);

private:
    static constexpr int off = -1;
    static constexpr int unchanged = -1;

    struct Held {
        std::uint8_t port = 0;
        std::uint8_t channel = 0;
        std::uint8_t key = 0;
        std::uint8_t count = 0; // note-ons sent and not ended

        bool goesWhere(const Held& other) const
        {
            return port == other.port && channel == other.channel && key == other.key;
        }
    };

    [[nodiscard]] bool passes(std::uint32_t filterBit) const;
    void noteOn(OutPorts& ports, std::span<const std::uint8_t> message, Stamp stamp);
    void noteOff(OutPorts& ports, std::span<const std::uint8_t> message, Stamp stamp);
    void release(OutPorts& ports, Held& held, Stamp stamp);
    [[nodiscard]] std::uint8_t channelFor(std::uint8_t status) const;
    [[nodiscard]] Held& heldFor(std::span<const std::uint8_t> message);

    std::atomic<int> m_port = off;
    std::atomic<int> m_channel = unchanged;
    std::atomic<int> m_transposition = 0;
    std::atomic<bool> m_enabled = false;
    std::atomic<std::uint32_t> m_filter = 0;

    std::array<Held, std::size_t{16} * 128> m_held{}; // by incoming channel and key
    int m_sysexPort = off;
};

} // namespace tessaro
