// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessaro {
class Clock;
class PlatformMidi;
} // namespace tessaro

namespace tessaro::cli {

class Player;

/// The index of a driver given by number or by name; the first one for an empty text. None, behind a sentence that
/// calls it a driver of this `kind`, when there is no such driver.
[[nodiscard]] std::optional<std::int32_t> driverOf(const std::string& wanted, const std::vector<std::string>& names,
                                                   const char* kind);

/// From now on Ctrl-C and SIGTERM end the run instead of the program.
void catchInterrupts();
[[nodiscard]] bool interrupted() noexcept;

/// Handles what was posted, once something was or a tenth of a second has passed.
void handleMessages(Player& player);

/// The devices and services in use, and whether the engine does without real-time priority.
[[nodiscard]] std::string servicesInUse(const PlatformMidi& midi, const Clock& clock);

} // namespace tessaro::cli
