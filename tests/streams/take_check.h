// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "streams/random_stream.h"
#include "streams/studio.h"

#include <array>
#include <span>
#include <vector>

namespace tessaro::test {

/// An event of a take, as the message it came from.
struct Taken {
    std::uint32_t tick = 0;
    std::uint32_t end = 0; ///< of a note
    Bytes bytes;

    [[nodiscard]] bool isNote() const { return (bytes[0] & 0xF0U) == 0x90; }
};

/// By channel, in the order of the song; system exclusives with the first.
using TakenByChannel = std::array<std::vector<Taken>, 16>;

/// What tracks 1 to 16 hold, meta events left out.
TakenByChannel takenOf(const CEditor& editor);

/// How far recorded times are from those of sending, at most, in ms.
struct Deviation {
    double inFine = 0;   ///< where a tick lasts 2 ms at most
    double inCoarse = 0; ///< elsewhere, from the nearest tick's half length
};

/// Expects each message of the performance in the take once, byte by byte, in the order of sending, and at its time:
/// within `slack` of 1 ms, or of half a tick where that is longer.
Deviation expectRecorded(std::span<const Played> performance, std::span<const Nanos> sentAt,
                         const TakenByChannel& taken, const TickTimes& ticks, Nanos slack);

/// Expects the same stream again, channel by channel; at one tick the order is free.
void expectPlayedBack(const TakenByChannel& taken, std::span<const Played> heard);

/// Messages that playing the take sends.
std::size_t messagesOf(const TakenByChannel& taken);

} // namespace tessaro::test
