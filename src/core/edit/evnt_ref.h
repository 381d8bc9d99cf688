// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/blk.h"
#include "core/model/tick.h"

#include <cstdint>

namespace tessaro {

/// An event as a person points at it: in a block of a track. Borrowed positions; the same event stands in every block
/// that is linked to its own.
struct EvntRef {
    POSITION trk = nullptr;
    POSITION blk = nullptr;
    POSITION evnt = nullptr;
    bool operator==(const EvntRef&) const = default;
};

/// A block of a track. Borrowed positions.
struct BlkRef {
    POSITION trk = nullptr;
    POSITION blk = nullptr;
    bool operator==(const BlkRef&) const = default;
};

[[nodiscard]] inline const CEvnt& evntOf(const EvntRef& ref) noexcept { return *List<CEvnt>::get(ref.evnt); }
[[nodiscard]] inline const CBlk& blkOf(const EvntRef& ref) noexcept { return *List<CBlk>::get(ref.blk); }
/// Where the event stands in the song, in absolute ticks.
[[nodiscard]] inline std::uint32_t timeOf(const EvntRef& ref) noexcept
{
    return tick::later(blkOf(ref).GetTimeTop(), evntOf(ref).GetTime());
}

} // namespace tessaro
