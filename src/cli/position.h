// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tessaro {
class CEditor;
}

namespace tessaro::cli {

/// True for a tick number or `measure:beat:tick`.
[[nodiscard]] bool isPosition(std::string_view text);

/// The tick of a position; measure and beat count from 1. None for another form, or a place below the first.
[[nodiscard]] std::optional<std::uint32_t> tickOf(std::string_view text, const CEditor& editor);

} // namespace tessaro::cli
