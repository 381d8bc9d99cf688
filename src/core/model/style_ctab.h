// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "base/export.h"
#include "core/model/records.h"

namespace tessaro {

/// Bytes that a `_STYLE_CTAB` takes in the song file and on the clipboard.
inline constexpr std::size_t styleCtabSize = 77;

/// Appends the image: all fields in their order, flag by flag.
TESSARO_API void writeStyleCtab(ByteWriter& out, const _STYLE_CTAB& table);
/// Reads an image; a reader that runs out of bytes says so itself.
[[nodiscard]] TESSARO_API _STYLE_CTAB readStyleCtab(ByteReader& in);

} // namespace tessaro
