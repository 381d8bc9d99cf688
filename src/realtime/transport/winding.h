// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>

namespace tessaro {

class CEditor;

/// How far one repetition of the rewind or forward button goes.
enum class WindStep {
    beat,
    bar,   ///< with Shift
    faster ///< with Ctrl: further with every repetition
};

/// The rewind or forward button while it is held: where each repetition leads, and where letting go does. Bars and
/// beats are those of the song at the place; positions are song ticks, none before 0.
class TESSARO_API Winding {
public:
    [[nodiscard]] bool held() const noexcept { return m_repeats > 0; }
    /// One repetition from `tick`, back (below 0) or forward.
    [[nodiscard]] std::uint32_t repeat(const CEditor& song, std::uint32_t tick, int direction, WindStep step);
    /// The button is let go at `tick`. Held for long, it ends at the nearest bar.
    [[nodiscard]] std::uint32_t release(const CEditor& song, std::uint32_t tick);
    void forget() noexcept { m_repeats = 0; }

private:
    std::uint32_t m_repeats = 0;
};

} // namespace tessaro
