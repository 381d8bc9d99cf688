// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/blk.h"
#include "core/model/realblk.h"
#include "core/model/trk.h"

#include <cstdint>

namespace tessaro {

/// Where the events of one channel go while a chunk is read: a block of a track, and its real block. All
/// are borrowed, and null until the channel's first event.
struct SmfTarget {
    CTrk* trk = nullptr;
    CBlk* blk = nullptr;
    CRealBlk* real = nullptr;
    std::uint32_t endsSet = 0; ///< how often the block's end was set, up or down

    void setEnd(std::uint32_t time) noexcept
    {
        blk->SetTimeEnd(time);
        ++endsSet;
    }
    void raiseEnd(std::uint32_t time) noexcept { blk->SetTimeEndCmp(time); }
};

} // namespace tessaro
