// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/edit/editor.h"
#include "files/song_formats.h"

#include <cstdint>
#include <vector>

namespace tessaro::bench {

/// Turns the bytes of a file into a full song, as opening it does, with nobody to look on.
class SongLoader {
public:
    /// `buffer` holds a file and 16 more bytes.
    bool load(std::vector<std::uint8_t>& buffer)
    {
        const auto length = static_cast<std::uint32_t>(buffer.size() - 16);
        const _EDT_FILE file = m_reader.recognise(buffer, length);
        if (file.kind == 0 || m_editor.Load(file) == LoadResult::failed) return false;
        m_editor.InitTimeInfo();
        m_editor.BlkSize(file.kind);
        m_editor.PackSysex();
        return true;
    }

    /// The song as a file of this kind.
    bool save(std::uint8_t kind, ByteSink& out) { return m_reader.save(kind, m_editor, out); }

    [[nodiscard]] const CEditor& editor() const { return m_editor; }
    [[nodiscard]] std::uint32_t notes() const
    {
        std::uint32_t count = 0;
        for (const CRealBlk* real = m_editor.song().realBlks().head(); real; real = List<CRealBlk>::next(real))
            count += real->GetCount(status::note);
        return count;
    }

private:
    struct Document final : DocumentPort {
        void SetModifiedFlag(bool) override {}
        [[nodiscard]] bool IsModified() const override { return false; }
    };

    Document m_document;
    QuietPorts m_quiet;
    Strings m_strings{Language::english};
    SongFormats m_reader{m_strings};
    CEditor m_editor{m_quiet.with(m_document, m_reader)};
};

} // namespace tessaro::bench
