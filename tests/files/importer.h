// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"
#include "files/plain_song.h"
#include "files/song_formats.h"

#include <string>
#include <vector>

namespace tessaro::test {

/// Loads files through the reader into an editor, as the document does, and keeps what the user was told.
class Importer final : UserPort, ProgressPort, DocumentPort {
public:
    Importer();
    PlainSong load(const Bytes& file);

    CEditor& editor() { return m_editor; }
    std::vector<int> messages;
    std::vector<std::uint32_t> positions; ///< of the progress bar
    std::vector<std::string> texts;

private:
    void message(int stringId, MessageKind) override { messages.push_back(stringId); }
    void sentence(std::string_view, MessageKind) override {}
    bool ask(int) override { return false; }
    bool ask(std::string_view) override { return false; }
    void status(std::string_view) override {}

    void begin() override {}
    void range(std::uint32_t, std::uint32_t) override {}
    void pos(std::uint32_t position) override { positions.push_back(position); }
    void text(std::string_view line) override { texts.emplace_back(line); }
    void end() override {}

    void SetModifiedFlag(bool) override {}
    [[nodiscard]] bool IsModified() const override { return false; }

    EditorPorts ports();

    QuietPorts m_quiet;
    Strings m_strings{Language::japanese};
    SongFormats m_reader{m_strings};
    CEditor m_editor;
};

} // namespace tessaro::test
