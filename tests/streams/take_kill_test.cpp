// SPDX-License-Identifier: GPL-3.0-or-later
// A program that records takes is killed at random moments. What it had on the disk of the take under way, and all
// takes before it, must come back, each thing once.
#include "base/real_clock.h"
#include "core/doc/autosave.h"
#include "core/doc/recovery.h"
#include "core/doc/tr9doc.h"
#include "files/song_formats.h"
#include "realtime/play/play_bench.h"
#include "realtime/rec/take_records.h"
#include "support/random.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <numeric>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

constexpr std::uint8_t native = 4;
constexpr int recTrack = 1;
constexpr int baseTrack = 2;
constexpr std::uint32_t mostSent = 10'000; // numbers that two data bytes tell
constexpr std::uint32_t takesToSave = 5;

/// What the program says now and then. Controllers of a song and its takes are numbered from 1.
struct Report {
    std::uint32_t sent = 0;
    std::uint32_t kept = 0; ///< of them stand on the disk
    std::uint32_t takes = 0;
};

/// The number of the last thing in a journal; 0 when there is none.
std::uint32_t lastIn(const std::string& journal)
{
    TakeReplay replay = readTakeJournal(journal);
    std::uint32_t last = 0;
    for (TakeItem item; replay.isTake() && replay.next(item);)
        if (item.entry) last = item.entry->data1 * 128U + item.entry->data2;
    return last;
}

/// The program without a window.
template <class SomeClock>
struct Studio {
    explicit Studio(const std::string& folder)
        : recovery(folder)
        , autosave(clock, files, disk, folder, 20ms)
        , doc({files, user, quiet.progress, transport, quiet.waveLengths, quiet.waveOutput, quiet.score, windows,
               strings, &disk, &autosave})
    {
        main.table = &table;
        smc.setMainWindow(&main);
        panel.setMainFrame(&main);
        panel.recorder().setKeeper(&doc);
        transport.setPanel(&panel);
        smc.startEngine();
        smc.setInPort(0, 4096);
    }
    ~Studio()
    {
        doc.StopTransport();
        smc.smcBindSong(nullptr);
        smc.stopEngine();
        smc.setMainWindow(nullptr);
    }

    /// Take after take, until it is killed.
    [[noreturn]] void run(const std::string& song, int reports, std::uint32_t seed)
    {
        Dice dice(seed);
        Report report;
        if (!doc.Load(song)) ::_exit(2);
        CEditor& editor = doc.GetEditor();
        editor.SetTrkRec(recTrack, true);
        for (;;) {
            panel.ShortCutRECClicked();
            panel.SpaceKey();
            if (panel.recorder().state() != RecState::recording) ::_exit(3);
            for (std::uint32_t left = dice.between(1, 300); left != 0 && report.sent < mostSent; --left) {
                const std::uint32_t number = ++report.sent;
                const std::uint8_t bytes[] = {0xB0, static_cast<std::uint8_t>(number / 128),
                                              static_cast<std::uint8_t>(number % 128)};
                midi.sink->received(bytes, clock.now());
                clock.sleepFor(std::chrono::microseconds(dice.below(4000)));
                pass();
                if (dice.oneIn(10)) report.kept = std::max(report.kept, lastInJournal());
                say(reports, report);
            }
            clock.sleepFor(30ms); // nothing is on its way any more
            pass();
            panel.Stop();
            ++report.takes;
            if (report.takes % takesToSave == 0 && !doc.Save(song, native)) ::_exit(4);
            while (doc.IsModified() && autosave.keptChanges() != doc.GetChangeCount()) {
                say(reports, report); // here it may be killed, too
                clock.sleepFor(1ms);
                doc.KeepCopy();
            }
            report.kept = report.sent;
            say(reports, report);
            if (report.sent == mostSent) ::_exit(5);
        }
    }
    void pass()
    {
        main.pump();
        panel.timer();
        doc.KeepCopy();
    }
    /// What the journal has of the take, once the copy beside it stands.
    [[nodiscard]] std::uint32_t lastInJournal() const
    {
        std::uint32_t last = 0;
        std::error_code error;
        for (const auto& file : std::filesystem::directory_iterator(recovery, error))
            if (file.path().extension() == ".take"
                && std::filesystem::exists(std::filesystem::path(file.path()).replace_extension(copyExtension)))
                last = std::max(last, lastIn(file.path().string()));
        return last;
    }
    static void say(int reports, const Report& report)
    {
        if (::write(reports, &report, sizeof report) != sizeof report) ::_exit(1);
    }

    const std::string recovery;
    SomeClock clock;
    QuietMidi midi;
    MapSettings settings;
    AnsweringUser user;
    Strings strings{Language::english};
    NoMciPlayer media;
    MainLoop main;
    SystemFiles disk;
    Loom loom{clock, midi};
    Smc smc{{loom, clock, settings, settings, user, strings}};
    CCnpWindow panel{{smc, clock, settings, user, strings, &disk}};
    RealtimeMessages table{smc, panel, media};
    SongTransport transport{smc};
    QuietPorts quiet;
    NullAppWindows windows;
    SongFormats files{strings};
    Autosave autosave;
    CTR9Doc doc;
};

void makeSong(const std::string& path, const std::string& recovery)
{
    Studio<ManualClock> studio(recovery);
    CEditor& editor = studio.doc.GetEditor();
    studio.doc.OnNewDocument();
    editor.SetTrkTypePrivate(recTrack, trktype::midi);
    editor.SetTrkTypePrivate(baseTrack, trktype::midi);
    editor.NewBlk(baseTrack, 0);
    ASSERT_TRUE(studio.doc.Save(path, native));
}

/// How many controllers a song holds, from the first on and each once; below 0 when that is not so.
int countIn(CEditor& editor)
{
    std::vector<std::uint32_t> numbers;
    const CTrk& trk = *editor.song().trk(recTrack);
    for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk))
        for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
            if (e->GetStatus() == 0xB0) numbers.push_back(e->GetPost1() * 128U + e->GetPost2());
    std::sort(numbers.begin(), numbers.end());
    std::vector<std::uint32_t> expected(numbers.size());
    std::iota(expected.begin(), expected.end(), 1U);
    const bool whole = numbers == expected && editor.song().trk(baseTrack)->GetCount() == 1;
    return whole ? static_cast<int>(numbers.size()) : -1;
}

/// What comes back: from the recovery list, else from the song's file.
int recovered(const std::string& song, const std::string& recovery, int& withTake)
{
    Studio<ManualClock> studio(recovery + "-of-the-next");
    RecoveryList list(recovery);
    EXPECT_LE(list.songs().size(), 1U);
    if (list.songs().empty()) {
        EXPECT_TRUE(studio.doc.Load(song));
        return countIn(studio.doc.GetEditor());
    }
    const RecoverableSong copy = list.songs()[0];
    EXPECT_TRUE(studio.doc.Recover(copy));
    const int before = countIn(studio.doc.GetEditor());
    if (!copy.take.empty()) {
        ++withTake;
        EXPECT_EQ(studio.panel.recorder().restore(copy.take), readTakeJournal(copy.take).isTake());
        EXPECT_TRUE(std::filesystem::exists(copy.take));
    }
    const int count = countIn(studio.doc.GetEditor());
    if (count != before) {
        EXPECT_TRUE(studio.doc.GetEditor().UndoNode());
        EXPECT_EQ(countIn(studio.doc.GetEditor()), before) << "the take is one step";
    }
    list.decline(0);
    return count;
}

/// Runs the program, kills it after some reports, and gives what it said last.
template <class SomeClock>
Report killed(const std::string& song, const std::string& recovery, Dice& dice)
{
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const std::uint32_t seed = dice.below(1'000'000);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        Studio<SomeClock>(recovery).run(song, ends[1], seed);
    }
    ::close(ends[1]);
    Report last;
    Report report;
    const auto listen = [&] {
        if (::read(ends[0], &report, sizeof report) != sizeof report) return false;
        last = report;
        return true;
    };
    for (std::uint32_t i = dice.between(1, 1000); i != 0 && listen();) --i;
    ::usleep(dice.below(2000));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself: " << WEXITSTATUS(status);
    while (listen()) {}
    ::close(ends[0]);
    return last;
}

template <class SomeClock>
class TakeKill : public testing::Test {
};
using Clocks = testing::Types<ManualClock, RealClock>;
TYPED_TEST_SUITE(TakeKill, Clocks);

TYPED_TEST(TakeKill, BringsBackAllTakesAndWhatTheJournalHolds)
{
    std::string folder = (std::filesystem::temp_directory_path() / "tessaro-take-kill-XXXXXX").string();
    ASSERT_TRUE(::mkdtemp(folder.data()));
    const std::string song = folder + "/song.tqm";
    const std::string recovery = folder + "/recovery";
    const bool inSteps = std::is_same_v<TypeParam, ManualClock>;
    Dice dice(4711);
    int withTake = 0;
    std::uint32_t takes = 0;
    for (int round = inSteps ? 30 : 8; round != 0 && !testing::Test::HasFailure(); --round) {
        SCOPED_TRACE("round " + std::to_string(round));
        makeSong(song, recovery);
        const Report last = killed<TypeParam>(song, recovery, dice);
        takes += last.takes;
        const int back = recovered(song, recovery, withTake);
        EXPECT_GE(back, static_cast<int>(last.kept));
        EXPECT_LE(back, static_cast<int>(last.sent + 5)) << "more than was sent until it said so";
        // Half a second of simulated time.
        if (inSteps) {
            EXPECT_GE(back + 250, static_cast<int>(last.sent));
        }
        EXPECT_TRUE(std::filesystem::is_empty(recovery));
    }
    EXPECT_GT(withTake, 2);
    EXPECT_GT(takes, 5U);
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace tessaro::test
