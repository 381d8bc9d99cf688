// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <string>
#include <string_view>

namespace tessaro {

/// True for UTF-8 in the strict sense: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] TESSARO_API bool isUtf8(std::string_view bytes) noexcept;

/// The text that a string of a song or a file shows: its bytes as they are when they are UTF-8,
/// otherwise read as code page 932, otherwise as Latin-1. Always UTF-8. Any thread.
[[nodiscard]] TESSARO_API std::string toUtf8(std::string_view bytes);

/// The bytes to store for typed text: code page 932 where it can hold the text and toUtf8 gives the
/// same text back, otherwise UTF-8. Any thread.
[[nodiscard]] TESSARO_API std::string fromUtf8(std::string_view utf8);

} // namespace tessaro
