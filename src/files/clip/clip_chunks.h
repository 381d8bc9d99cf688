// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string_view>

namespace tessaro {

/// What the events of an image on the clipboard are taken from.
enum class ClipKind { evnts = 0, mstrEvnts = 1, guitar = 2 };

/// The chunks of what is put on the clipboard: four bytes of identifier, four of length. What stands in them has the
/// form of the native song file; of that file's header there are but eight bytes, identifier and count of blocks.
namespace clipid {
inline constexpr std::string_view evnts = "TR9C";
inline constexpr std::string_view guitar = "TR9G";
inline constexpr std::string_view blks = "TR9I";
inline constexpr std::array<std::string_view, 3> score{"SCRS", "SCRA", "SCRD"};

[[nodiscard]] constexpr std::string_view of(ClipKind kind) noexcept
{
    return kind == ClipKind::guitar ? guitar : evnts;
}
} // namespace clipid

} // namespace tessaro
