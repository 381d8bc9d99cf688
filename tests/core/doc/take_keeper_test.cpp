// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/saving_bench.h"

#include <gtest/gtest.h>

#include <utility>

namespace tessaro::test {
namespace {

namespace fs = std::filesystem;

/// What a song list offers: the copy's bytes and those of the journal beside it.
using Offers = std::vector<std::pair<std::string, std::string>>;

Offers offersIn(const std::string& folder)
{
    Offers offers;
    const RecoveryList list(folder);
    for (const RecoverableSong& song : list.songs())
        offers.emplace_back(contents(song.copy), song.take.empty() ? std::string() : contents(song.take));
    std::sort(offers.begin(), offers.end());
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
        ASSERT_FALSE(journal.empty());
        clock.sleepFor(Nanos::zero());
        std::ofstream(journal, std::ios::binary) << journalText;
    }
    [[nodiscard]] std::size_t fileCount() const
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder / "recovery"), {}));
    }
};

TEST(TakeKeeper, AtEveryMomentTheNewestCopyAndItsJournalAreTheWork)
{
    const ScratchFolder folder;
    TakeBench b(folder);
    b.open("2AB");
    EXPECT_EQ(b.afterSuddenEnd(), Offers{});
    b.begin("one");
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4AB", "one"}})) << "an unmodified song, too";
    b.add('C'); // what the take brings
    b.doc.endTake();
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABC", ""}}));
    b.add('D');
    b.begin("two");
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABCD", "two"}}));
    b.doc.GetEditor().OpenUndoNode("take");
    b.wait(100);
    EXPECT_EQ(b.doc.beginTake(), "") << "one take at a time";
    b.doc.GetEditor().CloseUndoNode();
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABCD", "two"}})) << "no copy while it runs";
    b.doc.endTake(); // it brought nothing
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABCD", ""}}));

    b.doc.GetEditor().UndoNode(2);
    EXPECT_FALSE(b.doc.IsModified());
    b.wait(1);
    EXPECT_EQ(b.afterSuddenEnd(), Offers{});
    b.begin("three");
    b.doc.endTake(); // it could not begin
    b.clock.sleepFor(Nanos::zero());
    EXPECT_EQ(b.fileCount(), 1U) << "the lock alone";

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
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4AB", "one"}}));
    EXPECT_EQ(b.doc.beginTake(), "") << "a journal would have nothing to begin with";
    b.doc.endTake();
    b.wait(1);
    EXPECT_EQ(b.user.statuses.size(), 1U);
    b.files.writes = true;
    b.wait(60);
    EXPECT_EQ(b.afterSuddenEnd(), (Offers{{"4ABC", ""}}));
    b.begin("two");
    EXPECT_TRUE(b.doc.Save());
    b.clock.sleepFor(Nanos::zero());
    EXPECT_EQ(b.fileCount(), 1U);
}

TEST(TakeKeeper, ARecoveredSongAndItsJournalGoTogether)
{
    const ScratchFolder folder;
    const std::string recovery = folder / "recovery";
    fs::create_directory(recovery);
    const std::string copy = folder.write("recovery/999999999-1-0.0.tqm", "4AB");
    const std::string journal = folder.write("recovery/999999999-1-0.0.take", "notes");
    TakeBench b(folder);
    {
        RecoveryList list(recovery);
        ASSERT_EQ(list.songs().size(), 1U);
        EXPECT_EQ(list.songs()[0].take, journal);
        ASSERT_TRUE(b.doc.Recover(list.songs()[0]));
        list.opened(0);
    }
    b.add('C');
    b.wait(1);
    EXPECT_EQ(offersIn(recovery), (Offers{{"4AB", "notes"}})) << "until the song is saved";
    b.doc.GetEditor().SetModify();
    ASSERT_TRUE(b.doc.Save(folder / "saved.tqm", 4));
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_FALSE(fs::exists(journal));
}

TEST(TakeKeeper, TheListOffersOfEachSongWhatCountsAndTidiesUp)
{
    const ScratchFolder folder;
    const auto name = [&](const std::string& end) { return folder.write("999999999-1-" + end, "4" + end); };
    name("0.2.tqm");
    name("0.2.ini");
    name("0.2.take");
    name("0.10.tqm"); // what the program was about to delete all else for
    name("1.0.tqm");
    folder.write("999999999-1-1.0.take", ""); // nothing had come in
    name("2.take");
    const std::string old = name("3.tqm"); // as copies were once called
    const std::string ofTheLiving = folder.write(std::to_string(::getpid()) + "-1-0.0.take", "its copy is on the way");
    EXPECT_EQ(offersIn(folder.path()), (Offers{{"40.10.tqm", ""}, {"41.0.tqm", ""}, {"43.tqm", ""}}));
    EXPECT_TRUE(fs::exists(ofTheLiving));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 5);

    const std::string journal = name("3.take");
    RecoveryList list(folder.path());
    const auto at =
        std::find_if(list.songs().begin(), list.songs().end(), [&](const auto& s) { return s.copy == old; });
    ASSERT_NE(at, list.songs().end());
    EXPECT_EQ(at->take, journal);
    list.decline(static_cast<std::size_t>(at - list.songs().begin()));
    EXPECT_FALSE(fs::exists(old));
    EXPECT_FALSE(fs::exists(journal));
}

TEST(TakeKeeper, WhatStopsTheTransportEndsATakeToo)
{
    const ScratchFolder folder;
    for (const bool playing : {false, true}) {
        TakeBench b(folder);
        b.open();
        b.transport.playing = playing;
        b.transport.recording = true;
        EXPECT_TRUE(b.doc.Save());
        EXPECT_EQ(b.transport.calls, std::vector<std::string>{"halt"});
    }
}

} // namespace
} // namespace tessaro::test
