// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/saving_bench.h"
#include "support/memory_disk.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

using Sentences = std::vector<std::string>;

TEST(Saving, WritesTheKindOfTheFileWithoutAsking)
{
    const ScratchFolder folder;
    SavingBench b(folder);
    b.open("2AB");
    Sentences used;
    b.doc.OnSaved([&](const std::string& path) { used.push_back(path); });
    b.add('C');
    b.doc.GetEditor().SetModify();
    b.wait(1);
    b.transport.playing = true;
    EXPECT_TRUE(b.doc.Save());
    EXPECT_FALSE(b.transport.playing);
    EXPECT_EQ(contents(folder / "song.mid"), "2ABC");
    EXPECT_FALSE(b.doc.IsModified());
    EXPECT_FALSE(b.doc.GetEditor().GetModifyLock());
    EXPECT_EQ(b.doc.GetEditor().GetUndoRedoCount(), 0);
    EXPECT_EQ(used, Sentences{folder / "song.mid"});
    EXPECT_EQ(b.windows.titles, 2) << "modified, saved";
    EXPECT_TRUE(b.windows.proposed.empty());
    b.wait(1);
    EXPECT_TRUE(b.copies().empty());
}

TEST(Saving, WithoutAFileItAsksForNameAndKind)
{
    const ScratchFolder folder;
    SavingBench b(folder);
    b.doc.OnNewDocument();
    b.add('A');
    EXPECT_FALSE(b.doc.Save()) << "the user gives up";
    EXPECT_TRUE(b.doc.IsModified());
    EXPECT_EQ(b.windows.proposed[0].kind, 4);
    for (const auto& [kind, file] : {std::pair(4, "new.TQM"), {5, "wav.TQM"}, {1, "one.MID"}, {6, "six.MID"}}) {
        b.windows.choices = {{(folder / file).substr(0, (folder / file).size() - 4), static_cast<std::uint8_t>(kind)}};
        EXPECT_TRUE(b.doc.SaveAs());
        EXPECT_EQ(b.doc.GetPathName(), folder / file);
        EXPECT_EQ(contents(folder / file), static_cast<char>('0' + kind) + std::string("A"));
    }
    EXPECT_EQ(b.doc.GetFileKind(), 6);
    b.windows.choices = {{folder / "dotted.name", 2}};
    EXPECT_TRUE(b.doc.SaveAs());
    EXPECT_EQ(b.doc.GetPathName(), folder / "dotted.name");
}

TEST(Saving, TheExtensionOfTheRowDoesNotReplaceAFileUnasked)
{
    const ScratchFolder folder;
    SavingBench b(folder);
    folder.write("other.TQM", "other");
    b.windows.choices = {{folder / "other", 4}, {folder / "third", 4}};
    EXPECT_TRUE(b.doc.SaveAs());
    EXPECT_EQ(contents(folder / "other.TQM"), "other");
    EXPECT_EQ(b.doc.GetPathName(), folder / "third.TQM");
    b.user.answer = true;
    b.windows.choices = {{folder / "other", 4}};
    EXPECT_TRUE(b.doc.SaveAs());
    EXPECT_EQ(contents(folder / "other.TQM"), "4");
}

TEST(Saving, AFailureNamesTheCauseAndWhereTheOldSongIs)
{
    const ScratchFolder folder;
    for (const auto& [code, cause] : {std::pair(ENOSPC, "Disk full"),
                                      {EACCES, "Access to the file denied"},
                                      {EIO, "Hardware error"},
                                      {EMFILE, "Too many open files"},
                                      {EBUSY, "Undefined error"}}) {
        MemoryDisk disk;
        SavingBench b(folder, &disk);
        b.open();
        disk.put(b.doc.GetPathName(), "old");
        b.add('C');
        disk.failingCall = disk.calls + 3; // making the new file
        disk.failure = code;
        EXPECT_FALSE(b.doc.Save());
        EXPECT_EQ(b.user.sentences,
                  Sentences{std::string("song.mid: ") + cause + "\nThe song as last saved still stands in "
                            + folder / "song.mid" + "."});
        EXPECT_EQ(b.user.messages, std::vector{911});
        EXPECT_EQ(disk.seen[folder / "song.mid"]->seen, "old");
        EXPECT_EQ(b.doc.GetEditor().GetUndoRedoCount(), 0) << "undo is gone even so";

        b.add('D');
        EXPECT_TRUE(b.doc.GetEditor().UndoNode());
        EXPECT_TRUE(b.doc.IsModified()) << "the note before is still not saved";
    }
}

TEST(Saving, WhenTheOldSongIsGoneTooACopyIsMadeAtOnce)
{
    const ScratchFolder folder;
    SavingBench b(folder);
    std::filesystem::create_directory(folder / "usb");
    ASSERT_TRUE(b.doc.Load(folder.write("usb/song.mid", "2A")));
    b.add('B');
    std::filesystem::remove_all(folder / "usb");
    EXPECT_FALSE(b.doc.Save());
    EXPECT_EQ(b.copies(), Sentences{"4AB"});
    const std::string told = "song.mid: Bad path\nA copy of your work is kept in " + folder / "recovery";
    EXPECT_TRUE(b.user.sentences[0].starts_with(told)) << b.user.sentences[0];
    EXPECT_TRUE(b.doc.IsModified());

    b.files.writes = false; // not even a copy
    EXPECT_FALSE(b.doc.Save());
    EXPECT_EQ(b.user.sentences.back(),
              "song.mid: Bad path\nThe song is not saved anywhere yet. Save it to another place.");
    EXPECT_EQ(b.copies(), Sentences{"4AB"}) << "the last copy stays";
}

TEST(Saving, AsksOnlyAboutAModifiedSong)
{
    const ScratchFolder folder;
    SavingBench b(folder);
    b.open();
    EXPECT_TRUE(b.doc.SaveModified());
    EXPECT_TRUE(b.windows.asked.empty());
    b.add('C');
    EXPECT_FALSE(b.doc.SaveModified()) << "cancel";
    b.windows.answer = SaveAnswer::discard;
    EXPECT_TRUE(b.doc.SaveModified());
    EXPECT_TRUE(b.doc.IsModified());
    b.windows.answer = SaveAnswer::save;
    EXPECT_FALSE(b.doc.SaveModified()) << "the dialog was left";
    b.windows.choices = {{folder / "song.mid", 2}};
    EXPECT_TRUE(b.doc.SaveModified());
    EXPECT_EQ(b.windows.proposed.back().path, folder / "song.mid");
    EXPECT_EQ(contents(folder / "song.mid"), "2ABC");
    EXPECT_EQ(b.windows.asked, (Sentences{"song.mid", "song.mid", "song.mid", "song.mid"}));
    b.doc.OnNewDocument();
    b.add('A');
    b.doc.SaveModified();
    EXPECT_EQ(b.windows.asked.back(), "Untitled");
}

TEST(Loading, ReadsTheSongAloneAndThenTheWavesBehindIt)
{
    const ScratchFolder folder;
    SavingBench b(folder);
    b.files.length = 3;
    b.open("4AB and waves");
    EXPECT_EQ(b.doc.GetFileKind(), 5);
    EXPECT_EQ(b.files.wavesAt, 3U);
    b.files.waves = false;
    EXPECT_FALSE(b.doc.Load(folder / "song.mid"));
    EXPECT_EQ(b.user.messages, std::vector{904});
    EXPECT_FALSE(b.doc.GetEditor().GetHeadBlkPos(1));
    b.files.wavesAt.reset();
    b.files.length = 100;
    b.open("4AB");
    EXPECT_EQ(b.doc.GetFileKind(), 4);
    EXPECT_FALSE(b.files.wavesAt);
}

} // namespace
} // namespace tessaro::test
