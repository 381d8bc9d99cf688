// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/records.h"

namespace tessaro {

/// What a take has recorded so far, on its way to the feeder: in a loop the passes before are heard, though the
/// feeder never reads the block that is being recorded. Notes come with their gate, so when they have ended.
class TakeEcho {
public:
    /// A new take; only while nothing plays.
    void clear() {}
    /// User interface thread. `rec` is a note or another channel event with its absolute time.
    void add([[maybe_unused]] int track, [[maybe_unused]] const _EDT_EVNT& rec) {}
};

} // namespace tessaro
