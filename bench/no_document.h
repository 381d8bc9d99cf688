// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/document.h"
#include "core/ports/song_files.h"

namespace tessaro::bench {

/// What a song editor without a file asks for.
struct NoDocument final : DocumentPort {
    void SetModifiedFlag(bool) override {}
    [[nodiscard]] bool IsModified() const override { return false; }
};

struct NoFiles final : SongFiles {
    [[nodiscard]] _EDT_FILE recognise(std::span<std::uint8_t>, std::uint32_t) override { return {}; }
    LoadResult load(const _EDT_FILE&, CEditor&) override { return LoadResult::failed; }
    bool save(std::uint8_t, CEditor&, ByteSink&) override { return false; }
};

} // namespace tessaro::bench
