// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>

#include <cstdint>
#include <optional>
#include <span>

namespace tessaro {

/// The font of the list from its record of 60 bytes: height in pixels at byte 0 (four bytes, the lowest first, negative
/// as a rule), weight at 16, whether it slants at 20, its name at 28, ended by a zero. Nothing for a record without a
/// name or with a height that cannot be.
[[nodiscard]] std::optional<QFont> listFont(std::span<const std::uint8_t> record);

} // namespace tessaro
