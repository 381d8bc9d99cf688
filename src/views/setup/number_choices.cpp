// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/number_choices.h"

#include "core/ports/settings_store.h"

#include <algorithm>

namespace tessaro {

std::vector<int> numberChoices(const SettingsStore& store, std::string_view section)
{
    constexpr int keys = 128;
    std::vector<int> choices;
    for (int key = 0; key < keys; ++key)
        if (const int value = store.getInt(section, std::to_string(key), 0); value != 0) choices.push_back(value);
    return choices;
}

std::optional<std::size_t> choiceFor(const std::vector<int>& choices, int value)
{
    const auto found = std::ranges::find_if(choices, [value](int choice) { return choice >= value; });
    if (found == choices.end()) return std::nullopt;
    return static_cast<std::size_t>(found - choices.begin());
}

} // namespace tessaro
