// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/saving_bench.h"

#include <gtest/gtest.h>

#include <map>

namespace tessaro::test {
namespace {

namespace fs = std::filesystem;

/// What a list offers: the copies' bytes, and those of the journals beside them.
using Offers = std::map<std::string, std::string>;

Offers offersIn(const std::string& folder)
{
    Offers offers;
    const RecoveryList list(folder);
    for (const RecoverableSong& song : list.songs())
        offers[contents(song.copy)] = song.take.empty() ? "" : contents(song.take);
    return offers;
}

/// A program that records, and what would be offered had it ended suddenly.
struct TakeBench : SavingBench {
    using SavingBench::SavingBench;

    Offers afterSuddenEnd()
    {
        clock.sleepFor(Nanos::zero());
        const ScratchFolder other;
        std::error_code error;
        for (const auto& file : fs::directory_iterator(folder / "recovery", error))
            if (file.path().extension() != ".lock")
                fs::copy(file.path(), fs::path(other.path()) / file.path().filename());
        return offersIn(other.path());
    }
    void begin(const std::string& journalText)
    {
        const std::string journal = doc.beginTake();
        clock.sleepFor(Nanos::zero());
        std::ofstream(journal, std::ios::binary) << journalText;
    }
    [[nodiscard]] bool keepsNothing() const
    {
        return std::distance(fs::directory_iterator(folder / "recovery"), {}) == 1; // the lock
    }
};

TEST(TakeKeeper, AtEveryMomentTheNewestCopyAndItsJournalAreTheWork)
{
    const ScratchFolder folder;
    TakeBench b(folder);
    b.open("2AB");
    b.begin("one");
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4AB", "one"}})) << "an unmodified song, too";
    b.add('C'); // what the take brings
    b.doc.endTake();
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABC", ""}}));
    b.add('D');
    b.begin("two");
    b.doc.GetEditor().OpenUndoNode("take");
    b.wait(100);
    EXPECT_EQ(b.doc.beginTake(), "") << "one take at a time";
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABCD", "two"}})) << "no copy while it runs";
    b.doc.GetEditor().CloseUndoNode();
    b.doc.endTake(); // it brought nothing
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABCD", ""}}));
    b.doc.GetEditor().UndoNode(2);
    b.wait(1);
    EXPECT_TRUE(b.keepsNothing()) << "not modified any more";
    b.begin("three");
    b.doc.endTake(); // it could not begin
    b.clock.sleepFor(Nanos::zero());
    EXPECT_TRUE(b.keepsNothing());
    b.begin("four");
    b.add('E');
    b.doc.endTake();
    b.doc.OnNewDocument();
    b.begin("five");
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4", "five"}, {"4ABE", ""}})) << "the song before counts its own takes";
}

TEST(TakeKeeper, TheJournalStaysUntilACopyHoldsTheTake)
{
    const ScratchFolder folder;
    TakeBench b(folder);
    b.open("2AB");
    b.begin("one");
    b.add('C');
    b.files.writes = false;
    b.doc.endTake();
    EXPECT_EQ(b.doc.beginTake(), "") << "a journal would have nothing to begin with";
    b.doc.endTake();
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4AB", "one"}}));
    b.wait(1);
    EXPECT_EQ(b.user.statuses.size(), 1U);
    b.files.writes = true;
    b.wait(60);
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABC", ""}}));
    b.begin("two");
    b.transport.calls.clear();
    b.transport.recording = true;
    EXPECT_TRUE(b.doc.Save());
    EXPECT_EQ(b.transport.calls, std::vector<std::string>{"halt"}) << "a take ends though nothing plays";
    b.clock.sleepFor(Nanos::zero());
    EXPECT_TRUE(b.keepsNothing());
}

TEST(TakeKeeper, TheListOffersOfEachSongWhatCountsAndTidiesUp)
{
    const ScratchFolder folder;
    fs::create_directory(folder / "recovery");
    const auto put = [&](const std::string& end) { return folder.write("recovery/999999999-1-" + end, "4" + end); };
    for (const char* name : {"0.2.tqm", "0.2.ini", "0.2.take", "0.10.tqm", "1.0.tqm", "2.take", "3.tqm"}) put(name);
    folder.write("recovery/999999999-1-1.0.take", ""); // nothing had come in
    const std::string coming =
        folder.write("recovery/" + std::to_string(::getpid()) + "-1-0.0.take", "before its copy");
    EXPECT_EQ(offersIn(folder / "recovery"), (Offers{{"40.10.tqm", ""}, {"41.0.tqm", ""}, {"43.tqm", ""}}));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "recovery"), {}), 5);
    fs::remove(coming);

    put("3.take");
    TakeBench b(folder);
    RecoveryList list(folder / "recovery");
    while (list.songs().back().take.empty()) list.decline(list.songs().size() - 1);
    ASSERT_TRUE(b.doc.Recover(list.songs().back()));
    EXPECT_EQ(contents(list.songs().back().take), "43.take") << "kept until the song is saved";
    ASSERT_TRUE(b.doc.Save(folder / "saved.tqm", 4));
    while (list.songs().size() > 1) list.decline(0);
    EXPECT_LE(std::distance(fs::directory_iterator(folder / "recovery"), {}), 1);
}

} // namespace
} // namespace tessaro::test
