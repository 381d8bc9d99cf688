// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/ring.h"
#include "core/model/records.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaro {

/// What a take has recorded so far, on its way to the feeder: in a loop the passes before are heard, though the
/// feeder never reads the block that is being recorded. Notes come with their gate, so when they have ended.
///
/// An event is played whenever the feeder comes to its tick, once it has been taken over; the feeder is ahead of the
/// engine, so that is in a later pass. Song ticks. The user interface thread adds, the feeder does the rest; neither
/// waits nor allocates. What finds no room, here or on its way, is not heard.
class TakeEcho {
public:
    static constexpr std::size_t room = 32'768;

    /// A note or another message of a channel, without its channel.
    struct Event {
        std::uint32_t time = 0;
        std::uint32_t gate = 0;
        std::uint8_t track = 0;
        std::uint8_t status = 0;
        std::uint8_t data1 = 0;
        std::uint8_t data2 = 0;
    };

    /// A new take, or none; only while nothing plays.
    void clear() noexcept;
    /// User interface thread. `rec` is a note or another channel event with its absolute time; others are ignored.
    void add(int track, const _EDT_EVNT& rec) noexcept;

    // Feeder, or the user interface thread while none works

    /// Takes over what was added.
    void takeOver() noexcept;
    /// The tick to be played next.
    void locate(std::uint32_t tick) noexcept;
    /// The next event not later than `tick`, which is being played; null when there is none left.
    [[nodiscard]] const Event* next(std::uint32_t tick) noexcept;

private:
    SpscRing<Event, 2048> m_added;
    std::vector<Event> m_events; ///< by time; those of one tick in the order in which they came
    std::size_t m_next = 0;
    std::uint32_t m_from = 0; ///< ticks before it have been played
};

} // namespace tessaro
