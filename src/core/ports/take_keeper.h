// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <string>

namespace tessaro {

/// Keeps what a take needs to survive the program's sudden end: a copy of the song as it was before, beside which the
/// take writes its journal. Main thread only; neither call waits for the disk.
class TESSARO_API TakeKeeper {
public:
    virtual ~TakeKeeper();
    /// A take is about to begin, and no editing step is open. The path of the journal to write; empty when no copies
    /// are kept.
    virtual std::string beginTake() = 0;
    /// The take has ended, its step is closed. A copy of the song with the take is made; then the journal goes.
    virtual void endTake() = 0;
};

} // namespace tessaro
