// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/manual_clock.h"
#include "core/doc/autosave.h"
#include "core/doc/recovery.h"
#include "core/doc/scratch_folder.h"
#include "core/doc/tr9doc.h"
#include "core/fakes.h"

#include <gtest/gtest.h>

#include <deque>
#include <fstream>
#include <limits>
#include <optional>

namespace tessaro::test {

/// Songs as small as can be: the kind, then the pitch of each note of the first block.
struct TinyFiles final : SongFiles {
    std::vector<int> saved; ///< kinds
    bool writes = true;
    std::uint64_t length = std::numeric_limits<std::uint64_t>::max();
    bool waves = true;
    std::optional<std::uint64_t> wavesAt;

    _EDT_FILE recognise(std::span<std::uint8_t> buffer, std::uint32_t count) override
    {
        _EDT_FILE file;
        file.kind = count == 0 ? std::uint8_t{0} : static_cast<std::uint8_t>(buffer[0] - '0');
        file.fileLength = count;
        file.buffer = buffer.data();
        return file;
    }
    std::uint64_t songLength(const std::string&) override { return length; }
    bool loadWaves(const std::string&, std::uint64_t offset, CEditor&) override
    {
        wavesAt = offset;
        return waves;
    }
    LoadResult load(const _EDT_FILE& file, CEditor& editor) override
    {
        editor.NewBlk(1, 0);
        for (std::uint32_t i = 1; i < file.fileLength; ++i)
            editor.NewAddTailEvnt(1, 0, noteRec(480 * i, 10, file.buffer[i]));
        return LoadResult::complete;
    }
    bool save(std::uint8_t kind, CEditor& editor, ByteSink& out) override
    {
        saved.push_back(kind);
        std::vector<std::uint8_t> bytes{static_cast<std::uint8_t>('0' + kind)};
        _EDT_EVNT event;
        for (POSITION at = editor.GetHeadEvntPos(1, 0); at && editor.GetNextEvnt(1, 0, at, event);)
            bytes.push_back(event.post1);
        return writes && out.write(bytes);
    }
};

/// Answers what the test says, and keeps what it was asked.
struct SavingWindows final : NullAppWindows {
    SaveAnswer answer = SaveAnswer::cancel;
    std::deque<SaveChoice> choices;
    std::vector<std::string> asked;
    std::vector<SaveChoice> proposed;
    int titles = 0;

    SaveAnswer askSaveChanges(std::string_view name) override
    {
        asked.emplace_back(name);
        return answer;
    }
    std::optional<SaveChoice> askSaveName(const SaveChoice& choice) override
    {
        proposed.push_back(choice);
        if (choices.empty()) return std::nullopt;
        SaveChoice next = choices.front();
        choices.pop_front();
        return next;
    }
    void titleChanged() override { ++titles; }
};

/// A document with its copies of unsaved work, on folders that the test gives.
struct SavingBench {
    explicit SavingBench(const ScratchFolder& f, FileOps* disk = nullptr)
        : folder(f)
        , autosave(clock, files, disk ? *disk : systemFiles, folder / "recovery")
        , doc({files, user, quiet.progress, transport, quiet.waveLengths, quiet.waveOutput, quiet.score, windows,
               strings, disk, &autosave})
    {
    }

    /// A song of its own file.
    void open(const std::string& text = "2AB")
    {
        ASSERT_TRUE(doc.Load(folder.write("song.mid", text)));
        windows.titles = 0;
        transport.calls.clear();
    }
    /// An undoable edit: one more note.
    void add(char pitch)
    {
        CEditor& editor = doc.GetEditor();
        if (!editor.GetHeadBlkPos(1)) editor.NewBlk(1, 0);
        ASSERT_TRUE(editor.OpenUndoNode("insert"));
        _EDT_EVNT note = noteRec(480 * 20, 10, static_cast<std::uint8_t>(pitch));
        ASSERT_TRUE(editor.InsEvnt(editor.GetTrkPos(1), editor.GetBlkPos(1, 0), note));
        editor.CloseUndoNode();
    }
    /// Time passes as it does for the window, a second each.
    void wait(int seconds)
    {
        for (int i = 0; i < seconds; ++i) {
            clock.sleepFor(std::chrono::seconds(1));
            doc.KeepCopy();
        }
        clock.sleepFor(Nanos::zero());
    }
    [[nodiscard]] std::vector<std::string> copies() const
    {
        std::vector<std::string> found;
        std::error_code error;
        for (const auto& file : std::filesystem::directory_iterator(folder / "recovery", error))
            if (file.path().extension() == copyExtension) found.push_back(contents(file.path()));
        std::sort(found.begin(), found.end());
        return found;
    }

    const ScratchFolder& folder;
    SystemFiles systemFiles;
    ManualClock clock;
    QuietPorts quiet;
    FakeUser user;
    FakeTransport transport;
    TinyFiles files;
    SavingWindows windows;
    Strings strings{Language::english};
    Autosave autosave;
    CTR9Doc doc;
};

} // namespace tessaro::test
