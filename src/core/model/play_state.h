// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <cstdint>

namespace tessaro {

class CBlk;
class CEvnt;

/// The play cursor that a block carries. The feeder owns it while a song plays; the user interface
/// thread resets it, while the song stands still, whenever the block is created, moved, divided or
/// realised. Times are absolute ticks, waits are ticks from now.
struct PlayState {
    static constexpr std::uint8_t notSetUp = 0;
    static constexpr std::uint8_t playing = 1;
    static constexpr std::uint8_t finished = 3;

    POSITION playEvntPos = nullptr; ///< next event in the real block
    const CEvnt* pending = nullptr; ///< the event that falls due next
    CBlk* playNext = nullptr;       ///< next block in the track's playing chain
    CBlk* playPrev = nullptr;       ///< previous block in the chain
    std::int64_t playWait = 0;      ///< ticks until the pending event
    std::int64_t playTime = 0;      ///< tick of the pending event
    std::uint8_t playState = notSetUp;

    POSITION loopEvntPos = nullptr; ///< the cursor as it was at the loop's start
    const CEvnt* loopPending = nullptr;
    std::int64_t loopWait = 0;

    std::int32_t repArtIndex = -1; ///< source of a repeat block; below 0 for a plain one
    std::int32_t repBlkId = 0;
    std::uint8_t repKeep = 0;
};

} // namespace tessaro
