// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <cstddef>

namespace tessaro {

/// Turns the uneven times at which a device calls for its blocks into the even times at which the blocks follow
/// each other, by a delay-locked loop. One thread.
class BlockTime {
public:
    /// The time of the block that is asked for at `now`, `frames` long. Starts over when a call is far off.
    Nanos next(Nanos now, std::size_t frames, unsigned rate) noexcept;
    void reset() noexcept { m_running = false; }

private:
    bool m_running = false;
    double m_next = 0; ///< expected time of the next block, in s
    double m_secondsPerFrame = 0;
};

} // namespace tessaro
