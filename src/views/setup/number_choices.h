// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace tessaro {

class SettingsStore;

/// The choices that a section offers under the keys 0 to 127, in the order of the keys; a missing one and 0 are none.
[[nodiscard]] std::vector<int> numberChoices(const SettingsStore& store, std::string_view section);

/// The first choice that is at least the value.
[[nodiscard]] std::optional<std::size_t> choiceFor(const std::vector<int>& choices, int value);

} // namespace tessaro
