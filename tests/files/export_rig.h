// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"
#include "files/plain_song.h"
#include "files/song_formats.h"

#include <string>
#include <vector>

namespace tessaro {
class ScorePlayout;
}

namespace tessaro::test {

/// A song that a test fills by hand, without any event at first, and the writer behind it.
class ExportRig final : UserPort, DocumentPort {
public:
    explicit ExportRig(ScoreLinks* links = nullptr);

    CEditor& editor() { return m_editor; }
    CTrk& trk(int number) { return *m_editor.song().trk(number); }
    CRealBlk& master() { return *m_editor.song().masterReal(); }
    /// A new block on a track.
    CRealBlk& blk(int number, std::uint32_t top = 0);
    /// The file of this kind; empty when the writer refuses.
    Bytes save(std::uint8_t kind);
    Bytes save(std::uint8_t kind, ScorePlayout& score);

    std::vector<std::string> sentences;

private:
    void message(int, MessageKind) override {}
    void sentence(std::string_view text, MessageKind) override { sentences.emplace_back(text); }
    bool ask(int) override { return false; }
    bool ask(std::string_view) override { return false; }
    void status(std::string_view) override {}
    void SetModifiedFlag(bool) override {}
    [[nodiscard]] bool IsModified() const override { return false; }

    QuietPorts m_quiet;
    Strings m_strings{Language::english};
    SongFormats m_formats{m_strings};
    CEditor m_editor;
};

/// Appends an event to a real block.
void addShort(CRealBlk& real, std::uint32_t time, std::uint8_t status, const std::vector<std::uint8_t>& posts,
              std::uint32_t gate = 0);
void addMeta(CRealBlk& real, std::uint32_t time, std::uint8_t type, const Bytes& body);
void addMeta(CRealBlk& real, std::uint32_t time, std::uint8_t type, std::string_view body);
/// A system exclusive, or a note that carries one.
void addBody(CRealBlk& real, std::uint32_t time, std::uint8_t status, const std::vector<std::uint8_t>& posts,
             std::uint32_t gate, const Bytes& body);

} // namespace tessaro::test
