// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"
#include "base/real_clock.h"
#include "realtime/rec/take_journal.h"
#include "support/memory_disk.h"
#include "support/random.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

/// What a take was told, in words that compare.
using Told = std::vector<std::string>;

std::string said(const LoomRingEntry& e)
{
    std::string text = std::to_string(e.time) + ' ' + std::to_string(e.status) + ' ';
    if (e.status == 0xF0) return text + std::string(e.data, e.data + e.length);
    if (e.status == 0xF7) return text + std::string(e.data, e.data + e.size);
    return text + std::to_string(e.data1) + ' ' + std::to_string(e.data2);
}

Told toldBy(TakeReplay replay)
{
    Told told;
    TakeItem item;
    while (replay.isTake() && replay.next(item))
        told.push_back(item.entry ? said(*item.entry) : "at " + std::to_string(item.tick));
    return told;
}

/// A take that goes on as long as it is asked to.
class Performance {
public:
    explicit Performance(std::uint32_t seed, std::uint32_t longest = 60000) : m_dice(seed), m_longest(longest) {}

    template <class Taker>
    void next(Taker&& taker)
    {
        if (m_dice.oneIn(5)) {
            const std::uint32_t tick = m_dice.below(0xFFFFFFFF);
            told.push_back("at " + std::to_string(tick));
            taker.passed(tick);
            return;
        }
        LoomRingEntry e;
        e.time = m_dice.below(0xFFFFFFFF);
        Bytes bytes(m_dice.between(2, m_dice.oneIn(10) ? m_longest : 10), 0x11);
        if (m_dice.oneIn(3)) {
            const bool whole = m_dice.oneIn(2);
            if (whole) bytes.front() = 0xF0;
            bytes.back() = 0xF7;
            e.status = whole ? 0xF0 : 0xF7;
            e.size = static_cast<std::uint32_t>(bytes.size());
            e.length = static_cast<std::uint16_t>(bytes.size());
            e.data = bytes.data();
        } else {
            e.status = static_cast<std::uint8_t>(m_dice.between(0x80, 0xEF));
            e.data1 = static_cast<std::uint8_t>(m_dice.below(128));
            e.data2 = static_cast<std::uint8_t>(m_dice.below(128));
        }
        told.push_back(said(e));
        taker.entry(e);
    }

    Told told;

private:
    Dice m_dice;
    std::uint32_t m_longest; ///< system exclusive
};

TakeStart oddStart()
{
    TakeStart start;
    start.tracks = {1, 7, 100};
    start.topTick = 0xFFFFFFFE;
    start.settings.realMode = RealRecMode::punch;
    start.settings.newBlock = false;
    start.settings.punchIn = -1;
    start.settings.punchOut = 0x1'0000'0001;
    start.loop = {true, 3, 0x80000000};
    start.inFilter = 0x5A5A;
    start.dropController[0] = start.dropController[127] = 1;
    return start;
}

/// Takes a performance into memory.
struct Writing {
    Bytes bytes;
    TakeWriter writer;
    std::vector<std::size_t> ends; ///< of each record behind the start
    explicit Writing(const TakeStart& start) { writer.start(bytes, start); }
    void entry(const LoomRingEntry& e)
    {
        writer.entry(bytes, e);
        ends.push_back(bytes.size());
    }
    void passed(std::uint32_t tick)
    {
        writer.passed(bytes, tick);
        ends.push_back(bytes.size());
    }
};

TEST(TakeRecords, ComeBackAsFarAsTheyAreWhole)
{
    Performance music(1, 30);
    Writing file(oddStart());
    const std::size_t startEnd = file.bytes.size();
    while (file.bytes.size() < 1500) music.next(file);

    const TakeReplay replay(file.bytes);
    ASSERT_TRUE(replay.isTake());
    const TakeStart& start = replay.start();
    const TakeStart odd = oddStart();
    EXPECT_EQ(start.tracks, odd.tracks);
    EXPECT_EQ(start.topTick, odd.topTick);
    EXPECT_EQ(start.settings.realMode, RealRecMode::punch);
    EXPECT_FALSE(start.settings.newBlock);
    EXPECT_EQ(start.settings.punchIn, odd.settings.punchIn);
    EXPECT_EQ(start.settings.punchOut, odd.settings.punchOut);
    EXPECT_TRUE(start.loop.on && start.loop.start == 3 && start.loop.end == 0x80000000);
    EXPECT_EQ(start.inFilter, odd.inFilter);
    EXPECT_EQ(start.dropController, odd.dropController);

    const auto wholeUpTo = [&](std::size_t length) {
        return std::upper_bound(file.ends.begin(), file.ends.end(), length) - file.ends.begin();
    };
    for (std::size_t length = 0; length <= file.bytes.size(); ++length) {
        // Cut off, and with a byte changed that stands there.
        const Bytes cut(file.bytes.begin(), file.bytes.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(TakeReplay(cut).isTake(), length >= startEnd);
        const Told expected(music.told.begin(), music.told.begin() + wholeUpTo(length));
        ASSERT_EQ(toldBy(TakeReplay(cut)), length >= startEnd ? expected : Told{}) << length;
        if (length == file.bytes.size()) break;
        Bytes spoiled = file.bytes;
        spoiled[length] ^= static_cast<std::uint8_t>(1U << (length % 8));
        ASSERT_EQ(toldBy(TakeReplay(spoiled)), length >= startEnd ? expected : Told{}) << length;
    }
}

TEST(TakeRecords, OfAnotherFormAreLeftOut)
{
    const auto isTake = [](auto&& change) {
        TakeStart start = oddStart();
        change(start);
        return Writing(start).bytes.size() && TakeReplay(Writing(start).bytes).isTake();
    };
    EXPECT_FALSE(isTake([](TakeStart& s) { s.tracks.push_back(0); }));
    EXPECT_FALSE(isTake([](TakeStart& s) { s.tracks.push_back(101); }));
    EXPECT_FALSE(isTake([](TakeStart& s) { s.settings.realMode = static_cast<RealRecMode>(3); }));
    EXPECT_FALSE(readTakeJournal("/nowhere/at.all").isTake());

    const Bytes bytes{0xF0, 1, 0xF7};
    for (const auto& [status, from, to] :
         {std::tuple<int, int, int>{0xF0, 0, 2}, {0xF0, 1, 3}, {0xF0, 0, 0}, {0xF7, 0, 0}}) {
        Writing file(oddStart());
        LoomRingEntry e;
        e.status = static_cast<std::uint8_t>(status);
        e.size = static_cast<std::uint32_t>(to - from);
        e.length = static_cast<std::uint16_t>(to - from);
        e.data = bytes.data() + from;
        file.entry(e);
        file.passed(1);
        EXPECT_EQ(toldBy(TakeReplay(file.bytes)), Told{"at 1"}) << status << ' ' << from << ' ' << to;
    }
}

std::string textOf(const MemoryDisk& disk, const std::string& path, bool kept)
{
    const auto at = disk.seen.find(path);
    return at == disk.seen.end() ? std::string() : kept ? at->second->kept : at->second->seen;
}

Told toldIn(const std::string& text) { return toldBy(TakeReplay(Bytes(text.begin(), text.end()))); }

TEST(TakeJournal, WritesEveryTenthAndKeepsEverySecond)
{
    const std::string folder = std::filesystem::temp_directory_path().string();
    const std::string path = folder + "/a.take";
    ManualClock clock;
    MemoryDisk disk;
    TakeJournal journal(clock, disk);
    Performance music(2);
    music.next(journal); // nobody listens yet
    music.told.clear();
    journal.begin(path, oddStart());
    clock.sleepFor(0ms);
    for (int tenth = 0; tenth < 50; ++tenth) {
        for (int i = 0; i < 3; ++i) music.next(journal);
        const int calls = disk.calls;
        clock.sleepFor(99ms);
        EXPECT_EQ(disk.calls, calls) << "nothing between";
        clock.sleepFor(1ms);
        ASSERT_EQ(toldIn(textOf(disk, path, false)), music.told);
        ASSERT_GE(toldIn(textOf(disk, path, true)).size() + 30, music.told.size());
    }
    music.next(journal);
    journal.end();
    EXPECT_EQ(toldIn(textOf(disk, path, true)), music.told);
    music.next(journal);
    const int calls = disk.calls;
    clock.sleepFor(10s);
    EXPECT_EQ(disk.calls, calls) << "nothing once it has ended";

    Performance second(3);
    journal.begin(folder + "/b.take", oddStart());
    second.next(journal);
    journal.begin("", oddStart());
    second.next(journal);
    second.told.pop_back();
    EXPECT_EQ(toldIn(textOf(disk, folder + "/b.take", true)), second.told);
    EXPECT_EQ(disk.seen.size(), 2U);
    EXPECT_EQ(journal.takeError(), FileError::none);
}

TEST(TakeJournal, AFailingDiskIsToldOnceAndLosesNothingInTheEnd)
{
    const std::string path = std::filesystem::temp_directory_path().string() + "/a.take";
    ManualClock clock;
    MemoryDisk disk;
    TakeJournal journal(clock, disk);
    for (int call = 1; call <= 12; ++call) {
        SCOPED_TRACE(call);
        disk.seen.clear();
        disk.failingCall = disk.calls + call;
        Performance music(4);
        journal.begin(path, oddStart());
        for (int i = 0; i < 20; ++i) {
            music.next(journal);
            clock.sleepFor(100ms);
        }
        EXPECT_EQ(journal.takeError(), FileError::hardware);
        journal.end();
        EXPECT_EQ(toldIn(textOf(disk, path, true)), music.told);
    }
    disk.seen.clear();
    disk.mostWritten = 0;
    journal.begin(path, oddStart());
    Performance music(5);
    clock.sleepFor(1s);
    EXPECT_EQ(journal.takeError(), FileError::diskFull);
    music.next(journal);
    clock.sleepFor(1s);
    EXPECT_EQ(journal.takeError(), FileError::none) << "it was told";
    disk.mostWritten = 3;
    clock.sleepFor(1s);
    EXPECT_EQ(toldIn(textOf(disk, path, true)), music.told);
    disk.mostWritten = 0;
    music.next(journal);
    journal.end(); // given up
    journal.begin(path, oddStart());
    clock.sleepFor(1s);
    EXPECT_NE(journal.takeError(), FileError::none) << "and told of the next take";
}

TEST(TakeJournal, WritesOnAThreadOfItsOwn)
{
    std::string folder = (std::filesystem::temp_directory_path() / "tessaro-take-XXXXXX").string();
    ASSERT_TRUE(::mkdtemp(folder.data()));
    RealClock clock;
    SystemFiles disk;
    std::vector<Told> told;
    const auto path = [&](std::size_t i) { return folder + "/recovery/" + std::to_string(i) + ".take"; };
    {
        TakeJournal journal(clock, disk);
        for (std::size_t i = 0; i < 20; ++i) {
            Performance music(static_cast<std::uint32_t>(i));
            journal.begin(path(i), oddStart());
            for (int n = 0; n < 50; ++n) music.next(journal);
            if (i == 10) clock.sleepFor(250ms);
            if (i % 2 == 0) journal.end();
            told.push_back(music.told);
        }
        EXPECT_EQ(journal.takeError(), FileError::none);
    }
    for (std::size_t i = 0; i < told.size(); ++i) EXPECT_EQ(toldBy(readTakeJournal(path(i))), told[i]) << i;
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace tessaro::test
