// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/byte_sink.h"
#include "base/export.h"

#include <cstdint>
#include <span>
#include <string>

namespace tessaro {

class CEditor;
struct _EDT_FILE;

enum class LoadResult {
    failed, ///< the song is to be thrown away
    complete,
    partial, ///< the song stands, but parts of the file found no free track
};

/// The readers and writers of song files. Main thread only.
class TESSARO_API SongFiles {
public:
    virtual ~SongFiles();
    /// Tells the kind of the `length` bytes of a file at the start of `buffer` (which holds 16 more) and where
    /// its chunks stand. The kind is 0 when the file is of no known kind.
    [[nodiscard]] virtual _EDT_FILE recognise(std::span<std::uint8_t> buffer, std::uint32_t length) = 0;
    /// How many bytes at the start of a file are the song; behind it a native file may have waves, which are too much
    /// to hold in memory. At least the file's length
    /// when all of it is song.
    [[nodiscard]] virtual std::uint64_t songLength(const std::string& path);
    /// Unpacks the waves that stand behind the first `offset` bytes of a file and points the song's events at them.
    virtual bool loadWaves(const std::string& path, std::uint64_t offset, CEditor& editor);
    /// Fills the editor's fresh tracks from the file. May change the bytes of the buffer.
    virtual LoadResult load(const _EDT_FILE& file, CEditor& editor) = 0;
    /// Writes the song as a file of this kind, 1 to 6 as the document numbers them, and leaves the song as it is.
    /// Progress goes to the editor's bar if that is open. False when the sink takes no more, or the kind is unknown.
    virtual bool save(std::uint8_t kind, CEditor& editor, ByteSink& out) = 0;
};

} // namespace tessaro
