// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tessaro {

class CBlk;
class CEvnt;

/// The play cursor that a block carries. The feeder owns it while a song plays; the user interface
/// thread resets it, while the song stands still, whenever the block is created, moved, divided or
/// realised. Times are absolute ticks.
struct PlayState {
    static constexpr std::uint8_t notSetUp = 0;
    static constexpr std::uint8_t playing = 1;
    static constexpr std::uint8_t finished = 3;

    const CEvnt* pending = nullptr; ///< the event that falls due next
    CBlk* playNext = nullptr;       ///< next block in the track's playing chain
    std::int64_t playTime = 0;      ///< tick of the pending event
    std::uint8_t playState = notSetUp;
};

} // namespace tessaro
