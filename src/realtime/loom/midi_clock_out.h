// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/out_ports.h"

#include <cstdint>
#include <limits>

namespace tessaro {

/// Leads other machines: Start or Continue, then 24 clocks a quarter note of the run, then Stop, to every open port.
/// The first clock stands at the first multiple of 20 ticks of the song at or behind the place of the start. Ticks are
/// those of the run. Engine thread.
class MidiClockOut {
public:
    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    [[nodiscard]] bool running() const { return m_running; }
    /// The tick of the next clock.
    [[nodiscard]] std::int64_t nextTick() const { return m_running ? m_next : never; }

    void start(OutPorts& ports, std::int64_t tick, std::uint32_t songTick, Stamp stamp);
    void stop(OutPorts& ports, Stamp stamp);
    /// Stops without a word.
    void cancel() { m_running = false; }
    /// The slaves were told to go on from another place of the song.
    void realign(std::int64_t tick, std::uint32_t songTick);
    void sendClock(OutPorts& ports, Stamp stamp);
    /// Leaves out the clocks before `tick`.
    void skipTo(std::int64_t tick);

private:
    bool m_running = false;
    std::int64_t m_next = 0;
};

} // namespace tessaro
