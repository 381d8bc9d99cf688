// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/edit/editor.h"
#include "files/song_formats.h"
#include "support/random.h"

#include <string>
#include <vector>

namespace tessaro::test {

/// An editor without a window whose user answers questions as the dice fall.
struct EditBench {
    struct Document final : DocumentPort {
        bool modified = false;
        void SetModifiedFlag(bool flag) override { modified = flag; }
        bool IsModified() const override { return modified; }
    };
    struct User final : UserPort {
        explicit User(Dice& d) : dice(d) {}
        Dice& dice;
        int failures = 0;
        void message(int id, MessageKind) override
        {
            const auto text = static_cast<TextId>(id);
            if (text == TextId::undoFailed || text == TextId::redoFailed || text == TextId::undoRecordFailed)
                ++failures;
        }
        void sentence(std::string_view, MessageKind) override {}
        bool ask(int) override { return !dice.oneIn(4); }
        bool ask(std::string_view) override { return true; }
        void status(std::string_view) override {}
    };

    explicit EditBench(std::uint32_t seed) : dice(seed), user(dice) {}

    Dice dice;
    Strings strings{Language::english};
    SongFormats files{strings};
    QuietPorts quiet;
    Document document;
    User user;
    CEditor editor{
        {document, files, user, quiet.progress, quiet.transport, quiet.waveLengths, quiet.waveOutput, quiet.score}};

    /// The song as the command prints it, but for real blocks that nothing shows any more: they are no part of the song
    /// and go at the next save.
    [[nodiscard]] std::string dump();
    /// What undo leaves alone by rule is left out too: ends of blocks that grew to hold an event, types that empty
    /// tracks took, rests.
    [[nodiscard]] std::string looseDump();
    /// What a native file keeps of the song: all but rests, and the master block ends with its last event.
    [[nodiscard]] std::string savedDump();
    /// As the document saves and loads a native song.
    [[nodiscard]] std::vector<std::uint8_t> save();
    bool load(std::vector<std::uint8_t> file);
    /// Broken invariants of the song's lists, empty when all is well.
    [[nodiscard]] std::string faults();
};

} // namespace tessaro::test
