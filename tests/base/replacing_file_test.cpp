// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/replacing_file.h"
#include "support/memory_disk.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

const std::string name = "/songs/song.tqm";
const std::string oldBytes = "the old song";
/// More than a buffer, and no whole number of them.
const std::string newBytes = [] {
    std::string text(150'001, ' ');
    for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>(i * 31 + i / 1000);
    return text;
}();

MemoryDisk withOldSong()
{
    MemoryDisk disk;
    disk.put(name, oldBytes);
    return disk;
}

FileError replace(FileOps& disk, const std::string& text = newBytes)
{
    ReplacingFile file(name, disk);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const std::size_t half = text.size() / 2;
    if (!file.write({bytes, half}) || !file.write({bytes + half, text.size() - half})) return file.error();
    return file.commit();
}

TEST(ReplacingFile, WhenAnyCallFailsTheFileIsWholeAndNothingElseIsLeft)
{
    for (const int failure : {EIO, ENOSPC, EACCES, EINTR, EROFS, EMFILE}) {
        for (int call = 1;; ++call) {
            MemoryDisk disk = withOldSong();
            disk.failingCall = call;
            disk.failure = failure;
            const FileError error = replace(disk);
            if (disk.calls < call) break;
            EXPECT_EQ(disk.seen.size(), 1U) << failure << " at call " << call;
            EXPECT_EQ(disk.seen[name]->seen, error == FileError::none ? newBytes : oldBytes)
                << failure << " at call " << call;
        }
    }
}

TEST(ReplacingFile, APowerCutLeavesTheOldBytesOrAllOfTheNewOnes)
{
    bool finished = false;
    for (int calls = 0; !finished; ++calls) {
        MemoryDisk disk = withOldSong();
        disk.lastCall = calls;
        finished = replace(disk) == FileError::none && disk.calls <= calls;
        // A change of names that was not synced may be on the disk or not.
        for (const MemoryDisk::Names* names : {&disk.kept, &disk.seen}) {
            const std::string& bytes = names->at(name)->kept;
            EXPECT_TRUE(bytes == oldBytes || bytes == newBytes) << "after " << calls << " calls";
        }
        if (finished) {
            EXPECT_EQ(disk.kept.at(name)->kept, newBytes);
        }
    }
}

TEST(ReplacingFile, NamesTheReason)
{
    const auto errorWith = [](auto&& prepare) {
        MemoryDisk disk = withOldSong();
        prepare(disk);
        const FileError error = replace(disk);
        EXPECT_EQ(disk.seen[name]->seen, oldBytes);
        EXPECT_EQ(disk.seen.size(), 1U);
        return error;
    };
    EXPECT_EQ(errorWith([](MemoryDisk& d) { d.readOnly = true; }), FileError::noPermission);
    EXPECT_EQ(errorWith([](MemoryDisk& d) { d.mostWritten = 0; }), FileError::diskFull);
    EXPECT_EQ(errorWith([](MemoryDisk& d) { d.spoilRead = [](std::string& s) { s[140'000] ^= 1; }; }),
              FileError::hardware);
    EXPECT_EQ(errorWith([](MemoryDisk& d) { d.spoilRead = [](std::string& s) { std::swap(s[0], s[9]); }; }),
              FileError::hardware);
    EXPECT_EQ(errorWith([](MemoryDisk& d) { d.spoilRead = [](std::string& s) { s.push_back('\0'); }; }),
              FileError::hardware);
    EXPECT_EQ(errorWith([](MemoryDisk& d) { d.spoilRead = [](std::string& s) { s.pop_back(); }; }),
              FileError::endsEarly);
    EXPECT_EQ(fileErrorOf(EFBIG), FileError::tooLarge);
    EXPECT_EQ(causeOf(FileError::hardware), TextId::fileCauseHardware);
    EXPECT_EQ(causeOf(fileErrorOf(ENOSPC)), TextId::fileCauseDiskFull);
    EXPECT_EQ(causeOf(fileErrorOf(EMFILE)), TextId::fileCauseTooManyOpen);
}

TEST(ReplacingFile, TakesWhatTheDiskTakesAndKeepsRights)
{
    MemoryDisk disk = withOldSong();
    disk.mostWritten = 1000;
    disk.seen[name]->mode = 0660;
    disk.seen[name]->group = 7;
    EXPECT_EQ(replace(disk), FileError::none);
    EXPECT_EQ(disk.seen[name]->seen, newBytes);
    EXPECT_EQ(disk.seen[name]->mode, 0660U);
    EXPECT_EQ(disk.seen[name]->group, 7U);

    disk.mayChown = false;
    EXPECT_EQ(replace(disk, ""), FileError::none);
    EXPECT_EQ(disk.seen[name]->seen, "");
    EXPECT_EQ(disk.seen[name]->mode, 0600U) << "another group gets no more than everybody";
}

TEST(ReplacingFile, WithoutCommitNothingHappened)
{
    MemoryDisk disk = withOldSong();
    {
        ReplacingFile file(name, disk);
        const std::vector<std::uint8_t> bytes(100'000);
        EXPECT_TRUE(file.write(bytes));
        EXPECT_EQ(disk.seen.size(), 2U);
    }
    EXPECT_EQ(disk.seen.size(), 1U);
    EXPECT_EQ(disk.seen[name]->seen, oldBytes);
}

} // namespace
} // namespace tessaro::test
