// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace tessaro::cli {

/// Track numbers from a list such as "1,3,5-8"; each 1 to 100. None for anything else.
[[nodiscard]] std::optional<std::vector<int>> tracksOf(std::string_view list);

} // namespace tessaro::cli
