// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/manual_clock.h"
#include "cli/player.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tessaro::cli {

/// What part of a song is played, in ticks.
struct PlayRange {
    std::uint32_t from = 0;
    std::optional<std::uint32_t> to; ///< none: the song's end, as the engine takes it

    /// None, behind a sentence on standard error, when a text is no place of the song.
    [[nodiscard]] static std::optional<PlayRange> of(const std::string& from, const std::string& to,
                                                     const CEditor& editor);
};

/// Advances a run that has started until it ends by itself or `ticks` of it have been played, and stops it there.
/// `advanced` is called behind each step in time; false ends the run too, with a false result.
bool runOffline(Player& player, ManualClock& clock, std::optional<std::int64_t> ticks,
                const std::function<bool()>& advanced = {});

} // namespace tessaro::cli
