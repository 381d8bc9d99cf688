// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

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

} // namespace tessaro
