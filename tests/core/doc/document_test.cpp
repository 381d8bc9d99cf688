// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/scratch_folder.h"
#include "core/doc/tr9doc.h"
#include "core/fakes.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessaro::test {
namespace {

struct Bench {
    ScratchFolder folder;
    QuietPorts quiet;
    FakeUser user;
    FakeTransport transport;
    FakeFiles files;
    NullAppWindows windows;
    Strings strings{Language::english};
    CTR9Doc doc{
        {files, user, quiet.progress, transport, quiet.waveLengths, quiet.waveOutput, quiet.score, windows, strings}};

    [[nodiscard]] bool isNewSong()
    {
        CEditor& editor = doc.GetEditor();
        return editor.GetTimeEndTrk() == 0 && editor.GetHeadEvntPos(0, 0) && !editor.GetHeadBlkPos(1)
            && doc.GetFileKind() == 0 && doc.GetPathName().empty() && !doc.IsModified() && transport.bound == &editor;
    }
    /// A first song with a note, as a file that opens.
    void open()
    {
        files.kind = 2;
        files.fill = [](CEditor& editor) {
            const std::uint8_t tempo[] = {0x03, 0xD0, 0x90};
            editor.AddTempo(0, tempo);
            editor.NewBlk(1, 0);
            editor.NewAddTailEvnt(1, 0, noteRec(2000, 10));
            return LoadResult::complete;
        };
        ASSERT_TRUE(doc.Load(folder.write("song.mid", "bytes")));
    }
};

TEST(Document, ALoadedSongIsReadyToPlay)
{
    Bench b;
    b.transport.playing = true;
    b.open();
    EXPECT_EQ(b.transport.calls, (std::vector<std::string>{"halt", "unbind", "bind"}));
    CEditor& editor = b.doc.GetEditor();
    EXPECT_EQ(editor.GetBlkTimeTop(1, 0), 1920U) << "blocks are snapped";
    EXPECT_EQ(editor.TimeToMsecond(480), 250U) << "the tempo map stands";
    EXPECT_EQ(b.doc.GetFileKind(), 2);
    EXPECT_EQ(b.doc.GetPathName(), b.folder / "song.mid");
    editor.SetModify();
    EXPECT_TRUE(b.doc.IsModified());
    b.open();
    EXPECT_FALSE(b.doc.IsModified());
    EXPECT_FALSE(editor.GetModifyLock());
    EXPECT_TRUE(b.user.messages.empty());
    EXPECT_TRUE(b.doc.OnNewDocument());
    EXPECT_TRUE(b.isNewSong());
}

TEST(Document, AFailedLoadLeavesANewSongAndSaysWhy)
{
    const auto failsWith = [](TextId id, auto&& prepare) {
        Bench b;
        b.open();
        b.doc.GetEditor().SetModify();
        const std::string path = prepare(b);
        EXPECT_FALSE(b.doc.Load(path));
        EXPECT_EQ(b.user.messages, (std::vector{static_cast<int>(id)}));
        EXPECT_TRUE(b.isNewSong());
    };
    failsWith(TextId::formatNotSupported, [](Bench& b) {
        b.files.kind = 0;
        return b.folder.write("text", "not a song");
    });
    failsWith(TextId::formatNotSupported, [](Bench& b) {
        b.files.fill = [](CEditor& editor) {
            editor.NewBlk(3, 0); // what was read so far goes away too
            return LoadResult::failed;
        };
        return b.folder.write("broken", "MThd");
    });
    failsWith(TextId::fileNotFound, [](Bench& b) { return b.folder / "missing"; });
    failsWith(TextId::fileIsDirectory, [](Bench& b) { return b.folder.path(); });
    failsWith(TextId::fileTooLarge, [](Bench& b) {
        std::filesystem::resize_file(b.folder.write("huge", ""), 3'000'000'000U);
        return b.folder / "huge";
    });
    failsWith(TextId::fileTooLarge, [](Bench& b) {
        b.files.fill = [](CEditor&) -> LoadResult { return LoadResult::complete; };
        std::filesystem::resize_file(b.folder.write("one more", ""), CTR9Doc::largestFile + 1);
        return b.folder / "one more";
    });
}

TEST(Document, PartsLeftOutAreMentionedInTheStatusLine)
{
    Bench b;
    b.files.fill = [](CEditor&) { return LoadResult::partial; };
    EXPECT_TRUE(b.doc.Load(b.folder.write("wide.mid", "x")));
    EXPECT_EQ(b.user.statuses, (std::vector<std::string>{std::string(b.strings(TextId::songPartsLeftOut))}));
    EXPECT_TRUE(b.user.messages.empty());
}

TEST(Document, TheReaderMayLookSixteenBytesBehindTheFile)
{
    Bench b;
    b.doc.Load(b.folder.write("empty", ""));
    EXPECT_EQ(b.files.behind, std::vector<std::uint8_t>(16, 0));
}

} // namespace
} // namespace tessaro::test
