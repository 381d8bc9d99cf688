// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/real_clock.h"
#include "core/doc/saving_bench.h"
#include "support/memory_disk.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace tessaro::test {
namespace {

using Texts = std::vector<std::string>;

/// A program that ends without saving, and what it leaves.
void leaveWork(const ScratchFolder& folder, char pitch)
{
    SavingBench b(folder);
    b.open();
    b.add(pitch);
    b.wait(1);
}

TEST(Autosave, CopiesWhatHasChangedOnceAnInterval)
{
    const ScratchFolder folder;
    SavingBench b(folder);
    b.doc.OnNewDocument();
    b.wait(100);
    EXPECT_FALSE(std::filesystem::exists(folder / "recovery")) << "nothing to keep";

    b.transport.playing = true;
    b.add('A');
    b.transport.playing = true;
    b.transport.calls.clear();
    b.wait(1);
    EXPECT_EQ(b.copies(), Texts{"4A"});
    EXPECT_EQ(b.autosave.keptChanges(), b.doc.GetChangeCount());
    EXPECT_TRUE(b.transport.calls.empty());
    EXPECT_TRUE(b.doc.IsModified());
    EXPECT_EQ(b.doc.GetEditor().GetUndoRedoCount(), 1);

    b.add('B');
    b.wait(40);
    EXPECT_EQ(b.copies(), Texts{"4A"}) << "not due yet";
    b.wait(10);
    EXPECT_EQ(b.copies(), Texts{"4AB"});
    const std::size_t encoded = b.files.saved.size();
    b.wait(200);
    EXPECT_EQ(b.files.saved.size(), encoded) << "nothing new to write";

    b.doc.GetEditor().UndoNode();
    b.wait(1);
    EXPECT_EQ(b.copies(), Texts{"4A"}) << "undo is a change as well";
    b.doc.GetEditor().UndoNode();
    EXPECT_FALSE(b.doc.IsModified());
    b.wait(1);
    EXPECT_TRUE(b.copies().empty());
}

TEST(Autosave, KeepsOutOfStepsAndLongWork)
{
    const ScratchFolder folder;
    SavingBench b(folder);
    b.doc.OnNewDocument();
    b.doc.GetEditor().SetModify();
    b.doc.GetEditor().OpenUndoNode("step");
    b.wait(60);
    EXPECT_TRUE(b.files.saved.empty());
    b.doc.GetEditor().CloseUndoNode();
    b.doc.GetEditor().SetPrgDlg();
    b.wait(60);
    EXPECT_TRUE(b.files.saved.empty());
    b.doc.GetEditor().EndPrgDlg();
    b.wait(1);
    EXPECT_EQ(b.copies().size(), 1U);
}

TEST(Autosave, ACopyGoesWhenTheSongIsSavedOrGivenUpAndOnlyThen)
{
    const ScratchFolder folder;
    {
        SavingBench b(folder);
        b.open("2");
        b.add('A');
        b.wait(1);
        b.add('Z');
        b.doc.OnNewDocument(); // nobody was asked
        b.wait(1);
        b.add('B');
        b.wait(1);
        EXPECT_EQ(b.copies(), (Texts{"4AZ", "4B"}));
        b.windows.answer = SaveAnswer::discard;
        EXPECT_TRUE(b.doc.SaveModified());
        b.add('C'); // the user thought better of it
        b.wait(60);
        EXPECT_EQ(b.copies(), (Texts{"4AZ", "4BC"}));
        EXPECT_TRUE(b.doc.SaveModified());
    }
    SavingBench next(folder);
    EXPECT_EQ(next.copies(), Texts{"4AZ"});
}

TEST(Autosave, AFailedCopyLeavesTheOneBeforeAndIsTriedAgain)
{
    const ScratchFolder folder;
    MemoryDisk disk;
    SavingBench b(folder, &disk);
    const auto kept = [&] {
        Texts texts;
        for (const auto& [name, file] : disk.kept)
            if (name.ends_with(copyExtension)) texts.push_back(file->kept);
        return texts;
    };
    b.doc.OnNewDocument();
    b.add('A');
    b.wait(1);
    EXPECT_EQ(kept(), Texts{"4A"});
    b.add('B');
    disk.mostWritten = 0;
    b.wait(51);
    EXPECT_EQ(kept(), Texts{"4A"});
    b.wait(1);
    EXPECT_EQ(b.user.statuses, Texts{"No copy of your work can be kept: The disk is full."});
    disk.mostWritten = 100;
    b.wait(50);
    EXPECT_EQ(kept(), Texts{"4AB"});
}

TEST(Autosave, WritesOnAThreadOfItsOwn)
{
    const ScratchFolder folder;
    RealClock clock;
    TinyFiles files;
    SystemFiles disk;
    EditorBench song;
    song.editor.NewBlk(1, 0);
    {
        Autosave autosave(clock, files, disk, folder / "recovery", Nanos::zero());
        for (std::uint64_t i = 1; i <= 60; ++i) {
            song.editor.NewAddTailEvnt(1, 0, noteRec(480, 10, 'a'));
            autosave.tick(song.editor, {}, i);
            if (i % 16 == 0) autosave.drop();
            if (i % 20 == 0) {
                EXPECT_EQ(contents(autosave.keepNow(song.editor, {}, i)).size(), i + 1);
            }
            if (i == 30) autosave.nextSong();
        }
    }
    const RecoveryList list(folder / "recovery");
    ASSERT_EQ(list.songs().size(), 2U);
    EXPECT_EQ(contents(list.songs()[0].copy).size(), 61U) << "the last one is on the disk in the end";
}

TEST(Recovery, ListsWhatDeadProgramsLeftAndOpensIt)
{
    const ScratchFolder folder;
    leaveWork(folder, 'C');
    SavingBench b(folder);
    b.doc.OnNewDocument();
    b.add('X');
    b.wait(1); // the living have copies too
    RecoveryList list(folder / "recovery");
    ASSERT_EQ(list.songs().size(), 1U);
    const RecoverableSong song = list.songs()[0];
    EXPECT_EQ(song.name(), "song.mid");
    EXPECT_TRUE(song.hasRecord);
    EXPECT_EQ(song.record.ticks, b.doc.GetEditor().GetTimeEnd());
    EXPECT_EQ(song.record.milliseconds, b.doc.GetEditor().TimeToMsecond(song.record.ticks));
    EXPECT_LT(std::chrono::abs(std::chrono::system_clock::now() - song.record.time), std::chrono::hours(1));
    EXPECT_TRUE(RecoveryList(folder / "recovery").songs().empty()) << "it stands in the first list";

    ASSERT_TRUE(b.doc.Recover(song));
    list.opened(0);
    EXPECT_TRUE(list.songs().empty());
    EXPECT_EQ(b.doc.GetPathName(), folder / "song.mid");
    EXPECT_EQ(b.doc.GetFileKind(), 2);
    EXPECT_TRUE(b.doc.IsModified());
    b.add('D');
    b.doc.GetEditor().UndoNode();
    EXPECT_TRUE(b.doc.IsModified());
    EXPECT_EQ(contents(song.copy), "4ABC");
    EXPECT_TRUE(b.doc.Save());
    EXPECT_EQ(contents(folder / "song.mid"), "2ABC");
    EXPECT_FALSE(std::filesystem::exists(song.copy));
}

TEST(Recovery, DeletesOnlyWhatTheUserDeclines)
{
    const ScratchFolder folder;
    leaveWork(folder, 'C');
    leaveWork(folder, 'D');
    {
        SavingBench b(folder);
        RecoveryList list(folder / "recovery");
        ASSERT_EQ(list.songs().size(), 2U);
        EXPECT_GE(list.songs()[0].record.time, list.songs()[1].record.time);
        ASSERT_TRUE(b.doc.Recover(list.songs()[1]));
        list.opened(1);
        b.wait(1);
        b.windows.answer = SaveAnswer::discard; // not saved, so the copy it came from is offered again
        EXPECT_TRUE(b.doc.SaveModified());
    }
    {
        RecoveryList list(folder / "recovery");
        ASSERT_EQ(list.songs().size(), 2U);
        list.decline(0);
        EXPECT_EQ(list.songs().size(), 1U);
    }
    EXPECT_EQ(RecoveryList(folder / "recovery").songs().size(), 1U) << "left for later";
    RecoveryList(folder / "recovery").decline(0);
    EXPECT_TRUE(std::filesystem::is_empty(folder / "recovery"));
}

TEST(Recovery, OffersACopyWhoseRecordIsMissingOrDamaged)
{
    const ScratchFolder folder;
    leaveWork(folder, 'C');
    const std::string copy = RecoveryList(folder / "recovery").songs().at(0).copy;
    const std::string recordPath = recordPathOf(copy);
    const std::string record = contents(recordPath);
    for (std::size_t length = 0; length < record.size(); ++length) {
        std::ofstream(recordPath, std::ios::binary) << record.substr(0, length);
        const RecoveryList list(folder / "recovery");
        ASSERT_EQ(list.songs().size(), 1U);
        EXPECT_FALSE(list.songs()[0].hasRecord) << length;
        EXPECT_EQ(list.songs()[0].name(), "");
        EXPECT_LT(std::chrono::abs(std::chrono::system_clock::now() - list.songs()[0].record.time),
                  std::chrono::hours(1));
    }
    std::filesystem::remove(recordPath);
    SavingBench b(folder);
    ASSERT_TRUE(b.doc.Recover(RecoveryList(folder / "recovery").songs().at(0)));
    EXPECT_EQ(b.doc.GetPathName(), "");
    EXPECT_EQ(b.doc.GetFileKind(), 0);
    EXPECT_EQ(contents(copy), "4ABC");
}

TEST(Recovery, KeepsEveryByteOfAPath)
{
    SongRecord record;
    record.path = "/songs/\x83\x5C = [x]\n; \"y\".tqm";
    record.title = "\x93\xFA";
    record.kind = 5;
    record.ticks = 0xFFFFFFFF;
    SongRecord back;
    ASSERT_TRUE(back.decode(record.encode()));
    EXPECT_EQ(back.path, record.path);
    EXPECT_EQ(back.title, record.title);
    EXPECT_EQ(back.kind, 5);
    EXPECT_EQ(back.ticks, record.ticks);
    EXPECT_EQ(recoveryFolder(), stateFolder() + "/tessaro/recovery");
}

} // namespace
} // namespace tessaro::test
