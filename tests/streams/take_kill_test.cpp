// SPDX-License-Identifier: GPL-3.0-or-later
// A program that records takes is killed at random moments. All takes that had ended, and what it had on the disk of
// the one under way, must come back, each thing once.
#include "base/real_clock.h"
#include "core/doc/autosave.h"
#include "core/doc/recovery.h"
#include "core/doc/scratch_folder.h"
#include "core/doc/tr9doc.h"
#include "files/song_formats.h"
#include "realtime/play/play_bench.h"
#include "realtime/rec/take_records.h"
#include "support/killed_program.h"
#include "support/random.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr std::uint8_t native = 4;
constexpr int mostSent = 10'000; // as two data bytes tell

/// What the program says now and then. What it sends are controllers, numbered from 1.
struct Report {
    int sent = 0;
    int kept = 0; ///< of them stand on the disk
    int takes = 0;
};

/// The program without a window.
template <class SomeClock>
struct Studio : PlayBenchOn<SomeClock> {
    using Bench = PlayBenchOn<SomeClock>;
    using Bench::clock, Bench::panel, Bench::quiet;

    explicit Studio(const std::string& folder)
        : recovery(folder)
        , autosave(clock, songs, disk, folder, 20ms)
        , doc({songs, this->user, quiet.progress, this->transport, quiet.waveLengths, quiet.waveOutput, quiet.score,
               windows, this->strings, &disk, &autosave})
    {
        panel.recorder().setKeeper(&doc);
    }

    /// Take after take, until it is killed.
    [[noreturn]] void run(const std::string& song, int reports, std::uint32_t seed)
    {
        Dice dice(seed);
        Report report;
        const auto say = [&] {
            if (::write(reports, &report, sizeof report) != sizeof report) ::_exit(1);
        };
        if (!doc.Load(song)) ::_exit(2);
        doc.GetEditor().SetTrkRec(1, true);
        while (report.sent < mostSent) {
            panel.ShortCutRECClicked();
            panel.SpaceKey();
            if (panel.recorder().state() != RecState::recording) ::_exit(3);
            for (std::uint32_t left = dice.between(1, 300); left != 0; --left) {
                ++report.sent;
                this->receive(
                    {0xB0, static_cast<std::uint8_t>(report.sent / 128), static_cast<std::uint8_t>(report.sent % 128)});
                pass(std::chrono::microseconds(dice.below(4000)));
                if (dice.oneIn(10)) report.kept = std::max(report.kept, lastInJournal());
                say();
            }
            pass(30ms); // nothing is on its way any more
            panel.Stop();
            if (++report.takes % 5 == 0 && !doc.Save(song, native)) ::_exit(4);
            while (doc.IsModified() && autosave.keptChanges() != doc.GetChangeCount()) {
                say(); // here it may be killed, too
                pass(1ms);
            }
            report.kept = report.sent;
            say();
        }
        ::_exit(5);
    }
    void pass(Nanos span)
    {
        clock.sleepFor(span);
        this->main.pump();
        panel.timer();
        doc.KeepCopy();
    }
    /// What the journal has of the take, once the copy beside it stands.
    [[nodiscard]] int lastInJournal() const
    {
        int last = 0;
        std::error_code error;
        for (const auto& file : fs::directory_iterator(recovery, error)) {
            if (file.path().extension() != ".take") continue;
            if (!fs::exists(fs::path(file.path()).replace_extension(copyExtension))) continue;
            TakeReplay replay = readTakeJournal(file.path().string());
            for (TakeItem item; replay.isTake() && replay.next(item);)
                if (item.entry) last = item.entry->data1 * 128 + item.entry->data2;
        }
        return last;
    }
    /// How many controllers the song holds, from the first on and each once; below 0 when that is not so.
    [[nodiscard]] int count()
    {
        std::vector<bool> found(1);
        const CTrk& trk = *doc.GetEditor().song().trk(1);
        for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk))
            for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
                if (e->GetStatus() != 0xB0) continue;
                const std::size_t number = e->GetPost1() * 128U + e->GetPost2();
                found.resize(std::max(found.size(), number + 1));
                if (found[number]) return -1;
                found[number] = true;
            }
        const bool whole = std::count(found.begin(), found.end(), false) == 1;
        return whole && doc.GetEditor().song().trk(2)->GetCount() == 1 ? static_cast<int>(found.size()) - 1 : -1;
    }

    const std::string recovery;
    SongFormats songs{this->strings};
    SystemFiles disk;
    NullAppWindows windows;
    Autosave autosave;
    CTR9Doc doc;
};

/// What comes back: from the recovery list, else from the song's file.
int recovered(const ScratchFolder& folder, const std::string& song, bool& hadTake)
{
    Studio<ManualClock> next(folder / "recovery-of-the-next");
    RecoveryList list(folder / "recovery");
    EXPECT_LE(list.songs().size(), 1U);
    if (list.songs().empty()) {
        EXPECT_TRUE(next.doc.Load(song));
        return next.count();
    }
    const RecoverableSong copy = list.songs()[0];
    EXPECT_TRUE(next.doc.Recover(copy));
    const int before = next.count();
    hadTake = !copy.take.empty();
    if (hadTake && readTakeJournal(copy.take).isTake()) {
        EXPECT_TRUE(next.panel.recorder().restore(copy.take));
        EXPECT_TRUE(next.doc.GetEditor().UndoNode());
        EXPECT_EQ(next.count(), before) << "the take is one step";
        EXPECT_TRUE(next.doc.GetEditor().RedoNode());
    }
    list.decline(0);
    return next.count();
}

template <class SomeClock>
Report killed(const ScratchFolder& folder, const std::string& song, Dice& dice)
{
    const std::uint32_t seed = dice.below(1'000'000);
    const auto program = [&](int pipe) { Studio<SomeClock>(folder / "recovery").run(song, pipe, seed); };
    const std::uint32_t reports = dice.between(1, 1000);
    return lastOfKilled<Report>(program, reports, dice.below(2000));
}

template <class SomeClock>
class TakeKill : public testing::Test {
};
using Clocks = testing::Types<ManualClock, RealClock>;
TYPED_TEST_SUITE(TakeKill, Clocks);

TYPED_TEST(TakeKill, BringsBackAllTakesAndWhatTheJournalHolds)
{
    const bool simulated = std::is_same_v<TypeParam, ManualClock>;
    Dice dice(4711);
    int withTake = 0;
    int takes = 0;
    for (int round = simulated ? 30 : 8; round != 0 && !testing::Test::HasFailure(); --round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const ScratchFolder folder;
        const std::string song = folder / "song.tqm";
        {
            Studio<ManualClock> first(folder / "recovery");
            first.doc.OnNewDocument();
            first.doc.GetEditor().SetTrkTypePrivate(1, trktype::midi);
            first.doc.GetEditor().SetTrkTypePrivate(2, trktype::midi);
            first.doc.GetEditor().NewBlk(2, 0);
            ASSERT_TRUE(first.doc.Save(song, native));
        }
        const Report last = killed<TypeParam>(folder, song, dice);
        takes += last.takes;
        bool hadTake = false;
        const int back = recovered(folder, song, hadTake);
        if (hadTake) ++withTake;
        EXPECT_GE(back, last.kept);
        EXPECT_LE(back, last.sent + 1) << "what it had not yet said";
        EXPECT_TRUE(!simulated || back + 250 >= last.sent) << "half a second";
        EXPECT_TRUE(fs::is_empty(folder / "recovery"));
    }
    EXPECT_GT(withTake, 2);
    EXPECT_GT(takes, 5);
}

} // namespace
} // namespace tessaro::test
