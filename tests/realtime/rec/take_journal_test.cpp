// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"
#include "base/real_clock.h"
#include "realtime/rec/take_journal.h"
#include "support/memory_disk.h"
#include "support/random.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

TakeStart oddStart()
{
    TakeStart start;
    start.tracks = {1, 7, 100};
    start.topTick = 0xFFFFFFFE;
    start.settings = {RecMode::realTime, RealRecMode::punch, false, -1, 0x1'0000'0001};
    start.loop = {true, 3, 0x80000000};
    start.inFilter = 0x5A5A;
    start.dropController[0] = start.dropController[127] = 1;
    return start;
}

/// What a journal is to hold.
struct Writing {
    Bytes bytes;
    std::vector<std::size_t> ends{0}; ///< of the records; up to 0 there is none
    TakeWriter writer;
    explicit Writing(const TakeStart& start = oddStart()) { writer.start(bytes, start), ends.push_back(bytes.size()); }
    void entry(const LoomRingEntry& e) { writer.entry(bytes, e), ends.push_back(bytes.size()); }
    void passed(std::uint32_t tick) { writer.passed(bytes, tick), ends.push_back(bytes.size()); }
};

/// The records of a replay, written again.
Bytes readBack(Bytes bytes)
{
    TakeReplay replay(std::move(bytes));
    if (!replay.isTake()) return {};
    Writing again(replay.start());
    for (TakeItem item; replay.next(item);)
        if (item.entry)
            again.entry(*item.entry);
        else
            again.passed(item.tick);
    return again.bytes;
}

/// One thing that happens in a take.
template <class... Taker>
void happen(Dice& dice, Taker&... takers)
{
    LoomRingEntry e;
    e.time = dice.below(0xFFFFFFFF);
    if (dice.oneIn(5)) return (takers.passed(e.time), ...);
    Bytes bytes(dice.between(2, 30), 0x11);
    e.status = static_cast<std::uint8_t>(dice.between(0x80, 0xEF));
    e.data1 = dice.byteBelow(128);
    e.data2 = dice.byteBelow(128);
    if (dice.oneIn(3)) {
        e.status = bytes.front() = dice.oneIn(2) ? 0xF0 : 0xF7;
        bytes.back() = 0xF7;
        e.size = e.length = static_cast<std::uint16_t>(bytes.size());
        e.data = bytes.data();
    }
    (takers.entry(e), ...);
}

TEST(TakeReplay, GivesBackWhatIsWholeAndKnown)
{
    Dice dice(1);
    Writing file;
    while (file.bytes.size() < 1500) happen(dice, file);
    for (std::size_t length = 0; length <= file.bytes.size(); ++length) {
        const auto upTo = [&](std::size_t end) {
            return Bytes(file.bytes.begin(), file.bytes.begin() + std::ptrdiff_t(end));
        };
        const Bytes expected = upTo(*(std::upper_bound(file.ends.begin(), file.ends.end(), length) - 1));
        ASSERT_EQ(readBack(upTo(length)), expected) << "cut off at " << length;
        Bytes spoiled = file.bytes;
        if (length < spoiled.size()) spoiled[length] ^= static_cast<std::uint8_t>(1U << (length % 8));
        ASSERT_EQ(readBack(spoiled), expected) << "changed at " << length;
    }

    for (const int track : {0, 101}) {
        TakeStart start = oddStart();
        start.tracks.push_back(track);
        EXPECT_FALSE(TakeReplay(Writing(start).bytes).isTake());
    }
    const Bytes bytes{0xF0, 1, 0xF7};
    for (const auto& [status, from, to] : {std::array{0xF0, 0, 2}, {0xF0, 1, 3}, {0xF0, 0, 0}, {0xF7, 0, 0}}) {
        Writing odd;
        LoomRingEntry e;
        e.status = static_cast<std::uint8_t>(status);
        e.size = e.length = static_cast<std::uint16_t>(to - from);
        e.data = bytes.data() + from;
        odd.entry(e);
        odd.passed(1);
        Writing without;
        without.passed(1);
        EXPECT_EQ(readBack(odd.bytes), without.bytes) << status << ' ' << from << ' ' << to;
    }
}

/// A journal on a disk in memory.
struct JournalBench {
    const std::string path = std::filesystem::temp_directory_path().string() + "/a.take";
    ManualClock clock;
    MemoryDisk disk;
    TakeJournal journal{clock, disk};
    Dice dice{2};

    [[nodiscard]] Bytes onDisk(bool kept)
    {
        const auto file = disk.seen[path];
        const std::string text = !file ? "" : kept ? file->kept : file->seen;
        return {text.begin(), text.end()};
    }
};

TEST(TakeJournal, WritesEveryTenthAndKeepsEverySecond)
{
    JournalBench b;
    happen(b.dice, b.journal); // no take runs yet
    Writing music;
    b.journal.begin(b.path, oddStart());
    b.clock.sleepFor(0ms);
    std::size_t aSecondAgo = 0;
    for (int tenth = 0; tenth < 50; ++tenth) {
        if (tenth % 10 == 0) aSecondAgo = b.onDisk(false).size();
        for (int i = 0; i < 3; ++i) happen(b.dice, b.journal, music);
        const int calls = b.disk.calls;
        b.clock.sleepFor(99ms);
        EXPECT_EQ(b.disk.calls, calls) << "nothing between";
        b.clock.sleepFor(1ms);
        ASSERT_EQ(b.onDisk(false), music.bytes);
    }
    EXPECT_GE(b.onDisk(true).size(), aSecondAgo);
    happen(b.dice, b.journal, music);
    b.journal.end();
    EXPECT_EQ(b.onDisk(true), music.bytes);
    happen(b.dice, b.journal);
    b.journal.begin("", oddStart());
    happen(b.dice, b.journal);
    const int calls = b.disk.calls;
    b.clock.sleepFor(10s);
    EXPECT_EQ(b.disk.calls, calls) << "nothing once it has ended, or without a path";
    EXPECT_EQ(b.journal.takeError(), FileError::none);
}

TEST(TakeJournal, AFailingDiskIsToldOnceAndLosesNothingInTheEnd)
{
    JournalBench b;
    const auto record = [&](Writing& music, int tenths) {
        for (; tenths > 0; --tenths) {
            happen(b.dice, b.journal, music);
            b.clock.sleepFor(100ms);
        }
    };
    for (int call = 1; call <= 12; ++call) {
        b.disk.seen.clear();
        b.disk.failingCall = b.disk.calls + call;
        Writing music;
        b.journal.begin(b.path, oddStart());
        record(music, 20);
        EXPECT_EQ(b.journal.takeError(), FileError::hardware) << call;
        b.journal.end();
        EXPECT_EQ(b.onDisk(true), music.bytes) << call;
    }
    b.disk.seen.clear();
    for (const bool again : {false, true}) {
        Writing music;
        b.disk.mostWritten = 0;
        b.journal.begin(b.path, oddStart());
        record(music, 10);
        EXPECT_NE(b.journal.takeError(), FileError::none);
        record(music, 10);
        EXPECT_EQ(b.journal.takeError(), FileError::none) << "it was told";
        if (again) break; // the file cannot even be made
        b.disk.mostWritten = 3;
        record(music, 1);
        EXPECT_EQ(b.onDisk(false), music.bytes);
    }
}

TEST(TakeJournal, WritesOnAThreadOfItsOwn)
{
    std::string folder = (std::filesystem::temp_directory_path() / "tessaro-take-XXXXXX").string();
    ASSERT_TRUE(::mkdtemp(folder.data()));
    RealClock clock;
    SystemFiles disk;
    std::vector<Writing> takes(20);
    const auto path = [&](std::size_t i) { return folder + "/recovery/" + std::to_string(i); };
    {
        TakeJournal journal(clock, disk);
        Dice dice(3);
        for (std::size_t i = 0; i < takes.size(); ++i) {
            journal.begin(path(i), oddStart());
            for (int n = 0; n < 50; ++n) happen(dice, journal, takes[i]);
            if (i == 10) clock.sleepFor(250ms);
            if (i % 2 == 0) journal.end();
        }
    }
    for (std::size_t i = 0; i < takes.size(); ++i) EXPECT_EQ(readFile(path(i), 1 << 20).bytes, takes[i].bytes) << i;
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace tessaro::test
