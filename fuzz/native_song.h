// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/byte_sink.h"
#include "base/strings.h"
#include "core/edit/carried_score.h"
#include "core/edit/editor.h"
#include "files/recognise.h"
#include "files/song_formats.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

namespace tessaro::fuzz {

inline void demand(bool holds)
{
    if (!holds) std::abort();
}

/// An editor that opens and saves native song files held in memory.
class NativeSong final : DocumentPort {
public:
    /// Whether the bytes are such a file and make a song.
    bool load(std::span<const std::uint8_t> bytes)
    {
        // Exactly as long as a document's buffer, so that a read too far is seen.
        const auto buffer = std::make_unique<std::uint8_t[]>(bytes.size() + 16);
        std::copy(bytes.begin(), bytes.end(), buffer.get());
        const auto length = static_cast<std::uint32_t>(bytes.size());
        const _EDT_FILE file = m_files.recognise({buffer.get(), bytes.size() + 16}, length);
        if (file.kind != filekind::native) return false;
        demand(m_editor.InitEditor());
        if (m_editor.Load(file) == LoadResult::failed) {
            demand(m_editor.InitEditor());
            return false;
        }
        m_editor.InitTimeInfo();
        m_editor.BlkSize(file.kind);
        m_editor.PackSysex();
        return true;
    }

    std::vector<std::uint8_t> save()
    {
        std::vector<std::uint8_t> bytes;
        VectorSink sink(bytes);
        demand(m_files.save(filekind::native, m_editor, sink));
        return bytes;
    }

    [[nodiscard]] const CEditor& editor() const noexcept { return m_editor; }

private:
    void SetModifiedFlag(bool) override {}
    [[nodiscard]] bool IsModified() const override { return false; }
    EditorPorts ports()
    {
        EditorPorts all = m_quiet.with(*this, m_files);
        return {all.document,    all.files,      all.user, all.progress, all.transport,
                all.waveLengths, all.waveOutput, m_score,  nullptr};
    }

    Strings m_strings{Language::english};
    SongFormats m_files{m_strings};
    QuietPorts m_quiet;
    CarriedScore m_score;
    CEditor m_editor{ports()};
};

} // namespace tessaro::fuzz
