// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

class Song;

/// The sound files that were unpacked for a song: copies that last as long as the song is open. Main thread only.
class TESSARO_API TempWaves {
public:
    TempWaves() = default;
    TempWaves(const TempWaves&) = delete;
    TempWaves& operator=(const TempWaves&) = delete;
    ~TempWaves() { removeFiles(); }

    void add(std::string path) { m_paths.push_back(std::move(path)); }
    /// Forgets the files without touching them.
    void forget() noexcept { m_paths.clear(); }
    /// Deletes those that exist.
    void removeFiles() const noexcept;

private:
    std::vector<std::string> m_paths;
};

/// The order of two names of sound files, which does not tell capitals from small letters: below 0, 0 or above.
[[nodiscard]] TESSARO_API int compareWaves(std::string_view one, std::string_view other) noexcept;

/// Gives the wave events of the song that name `from` the name `to`; true when there was one. Linear in the wave
/// tracks.
TESSARO_API bool renameWave(Song& song, std::string_view from, const std::string& to);

} // namespace tessaro
