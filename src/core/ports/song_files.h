// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <span>

namespace tessaro {

class CEditor;
struct _EDT_FILE;

enum class LoadResult {
    failed, ///< the song is to be thrown away
    complete,
    partial, ///< the song stands, but parts of the file found no free track
};

/// The readers of song files. Main thread only.
class TESSARO_API SongFiles {
public:
    virtual ~SongFiles();
    /// Tells the kind of the `length` bytes of a file at the start of `buffer` (which holds 16 more) and where
    /// its chunks stand. The kind is 0 when the file is of no known kind.
    [[nodiscard]] virtual _EDT_FILE recognise(std::span<std::uint8_t> buffer, std::uint32_t length) = 0;
    /// Fills the editor's fresh tracks from the file. May change the bytes of the buffer.
    virtual LoadResult load(const _EDT_FILE& file, CEditor& editor) = 0;
};

} // namespace tessaro
