// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/strings.h"
#include "core/ports/song_files.h"

#include <string>
#include <utility>

namespace tessaro {

/// The readers and writers of all song files that the program knows. Between calls it keeps nothing. It borrows the
/// texts that the progress bar shows. Waves that come with a song are unpacked below the application's directory;
/// without one they stay where they are. Main thread only.
class TESSARO_API SongFormats final : public SongFiles {
public:
    explicit SongFormats(const Strings& strings, std::string appDirectory = {})
        : m_strings(strings)
        , m_appDirectory(std::move(appDirectory))
    {
    }
    [[nodiscard]] _EDT_FILE recognise(std::span<std::uint8_t> buffer, std::uint32_t length) override;
    [[nodiscard]] std::uint64_t songLength(const std::string& path) override;
    bool loadWaves(const std::string& path, std::uint64_t offset, CEditor& editor) override;
    LoadResult load(const _EDT_FILE& file, CEditor& editor) override;
    bool save(std::uint8_t kind, CEditor& editor, ByteSink& out) override;

private:
    const Strings& m_strings;
    std::string m_appDirectory;
};

} // namespace tessaro
