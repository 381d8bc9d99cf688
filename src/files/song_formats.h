// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/strings.h"
#include "core/ports/song_files.h"

namespace tessaro {

/// The readers and writers of all song files that the program knows. Between calls it keeps nothing. It borrows the
/// texts that the progress bar shows. Main thread only.
class TESSARO_API SongFormats final : public SongFiles {
public:
    explicit SongFormats(const Strings& strings) : m_strings(strings) {}
    [[nodiscard]] _EDT_FILE recognise(std::span<std::uint8_t> buffer, std::uint32_t length) override;
    LoadResult load(const _EDT_FILE& file, CEditor& editor) override;
    bool save(std::uint8_t kind, CEditor& editor, ByteSink& out) override;

private:
    const Strings& m_strings;
};

} // namespace tessaro
