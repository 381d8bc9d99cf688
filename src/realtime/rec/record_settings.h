// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>

namespace tessaro {

class SettingsStore;

enum class RecMode { realTime = 0, step = 1 };
/// What becomes of what stands where a take is recorded.
enum class RealRecMode { overdub = 0, replace = 1, punch = 2 };

/// What a take goes by, as it stood when the record button went on. Times are song ticks.
struct TESSARO_API RecordSettings {
    RecMode mode = RecMode::realTime;
    RealRecMode realMode = RealRecMode::overdub;
    bool newBlock = true; ///< the take stays a block of its own; otherwise it is merged into its neighbour
    std::int64_t punchIn = 0;
    std::int64_t punchOut = 0;

    /// From section System; a value that none of the modes has is the first one.
    [[nodiscard]] static RecordSettings read(const SettingsStore& profile);
};

} // namespace tessaro
