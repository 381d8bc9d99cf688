// SPDX-License-Identifier: GPL-3.0-or-later
// A program that edits, saves and keeps copies is killed at random moments. What it had told to be on the disk must be
// there, and its song file must always be whole.
#include "base/real_clock.h"
#include "core/doc/autosave.h"
#include "core/doc/recovery.h"
#include "core/doc/tr9doc.h"
#include "files/song_formats.h"
#include "support/killed_program.h"
#include "support/random.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>

namespace tessaro::test {
namespace {

constexpr Nanos interval = std::chrono::milliseconds(20); // stands for the minute
constexpr std::uint8_t native = 4;

/// What the program says after each edit, and around each save.
struct Report {
    std::uint32_t edits = 0;
    std::uint32_t saved = 0;  ///< edits that are in the song's file
    std::uint32_t kept = 0;   ///< edits that are in the copy
    std::uint32_t saving = 0; ///< edits that a save under way writes
};

struct Quiet {
    QuietPorts ports;
    NullAppWindows windows;
    Strings strings{Language::english};
    SongFormats files{strings};
};

struct Program {
    explicit Program(const std::string& recovery)
        : autosave(clock, quiet.files, disk, recovery, interval)
        , doc({quiet.files, quiet.ports.user, quiet.ports.progress, quiet.ports.transport, quiet.ports.waveLengths,
               quiet.ports.waveOutput, quiet.ports.score, quiet.windows, quiet.strings, &disk, &autosave})
    {
    }

    /// Edits for ever, the numbers of the notes rising.
    [[noreturn]] void run(const std::string& song, std::uint32_t edits, int reports, std::uint32_t seed)
    {
        Dice dice(seed);
        Report report;
        const auto say = [&] {
            if (::write(reports, &report, sizeof report) != sizeof report) ::_exit(1);
        };
        if (!doc.Load(song)) ::_exit(2);
        report.saved = edits;
        std::vector<std::uint64_t> changesAt(edits, 0); // after each edit
        for (;;) {
            report.edits = ++edits;
            if (!edit(edits)) ::_exit(3);
            changesAt.push_back(doc.GetChangeCount());
            doc.KeepCopy();
            const auto known = std::upper_bound(changesAt.begin(), changesAt.end(), autosave.keptChanges());
            report.kept = static_cast<std::uint32_t>(known - changesAt.begin());
            say();
            if (dice.oneIn(20)) {
                report.saving = edits;
                say();
                if (!doc.Save(song, native)) ::_exit(4);
                report.saved = edits;
                say();
            }
            clock.sleepFor(std::chrono::microseconds(dice.below(1000)));
        }
    }
    bool edit(std::uint32_t number)
    {
        CEditor& editor = doc.GetEditor();
        _EDT_EVNT note;
        note.status = 0x90;
        note.post1 = static_cast<std::uint8_t>(number % 128);
        note.post2 = 100;
        note.time = number * 10;
        note.gateTime = 5;
        if (!editor.OpenUndoNode("edit")) return false;
        const bool done = editor.InsEvnt(editor.GetTrkPos(1), editor.GetBlkPos(1, 0), note);
        editor.CloseUndoNode();
        return done;
    }

    Quiet quiet;
    RealClock clock;
    SystemFiles disk;
    Autosave autosave;
    CTR9Doc doc;
};

/// How many edits a file holds; nothing unless it is a whole song with all of them from the first on.
std::optional<std::uint32_t> editsIn(const std::string& path)
{
    Quiet quiet;
    CTR9Doc doc({quiet.files, quiet.ports.user, quiet.ports.progress, quiet.ports.transport, quiet.ports.waveLengths,
                 quiet.ports.waveOutput, quiet.ports.score, quiet.windows, quiet.strings});
    if (!doc.Load(path)) return std::nullopt;
    CEditor& editor = doc.GetEditor();
    std::uint32_t count = 0;
    _EDT_EVNT event;
    for (POSITION at = editor.GetHeadEvntPos(1, 0); at && editor.GetNextEvnt(1, 0, at, event);) {
        if (event.status >> 4U != 9) continue;
        if (event.time != ++count * 10) return std::nullopt;
    }
    return count;
}

void makeSong(const std::string& path, const std::string& recovery)
{
    Program program(recovery);
    program.doc.OnNewDocument();
    program.doc.GetEditor().NewBlk(1, 0);
    ASSERT_TRUE(program.doc.Save(path, native));
}

Report killed(const std::string& song, const std::string& recovery, std::uint32_t edits, Dice& dice)
{
    const std::uint32_t seed = dice.below(1'000'000);
    const auto program = [&](int pipe) { Program(recovery).run(song, edits, pipe, seed); };
    const std::uint32_t reports = dice.between(1, 80);
    return lastOfKilled<Report>(program, reports, dice.below(4000));
}

TEST(Kill, NeitherTheFileNorMoreThanTheLastWorkIsLost)
{
    std::string folder = (std::filesystem::temp_directory_path() / "tessaro-kill-XXXXXX").string();
    ASSERT_TRUE(::mkdtemp(folder.data()));
    const std::string song = folder + "/song.tqm";
    const std::string recovery = folder + "/recovery";
    Dice dice(20'201);
    std::uint32_t inFile = 0;
    int copies = 0;
    int duringSaves = 0;
    for (int round = 0; round < 100 && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        if (round % 10 == 0) {
            makeSong(song, recovery);
            inFile = 0;
        }
        const Report last = killed(song, recovery, inFile, dice);
        if (last.saving > last.saved) ++duringSaves;

        const auto held = editsIn(song);
        ASSERT_TRUE(held) << "the song is broken";
        EXPECT_TRUE(*held == std::max(last.saved, inFile) || *held == last.saving)
            << *held << " edits, said to be " << last.saved << ", writing " << last.saving;
        inFile = *held;

        RecoveryList list(recovery);
        ASSERT_LE(list.songs().size(), 1U);
        std::uint32_t inCopy = 0;
        if (!list.songs().empty()) {
            const auto recovered = editsIn(list.songs()[0].copy);
            ASSERT_TRUE(recovered) << "the copy is broken";
            inCopy = *recovered;
            ++copies;
            if (list.songs()[0].hasRecord) {
                EXPECT_EQ(list.songs()[0].record.path, song);
            }
            list.decline(0);
        }
        EXPECT_GE(std::max(inFile, inCopy), last.kept) << "the program had a copy of it";
    }
    EXPECT_GT(copies, 10);
    EXPECT_GT(duringSaves, 3);
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace tessaro::test
