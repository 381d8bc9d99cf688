// SPDX-License-Identifier: GPL-3.0-or-later
#include "track_song.h"

#include <gtest/gtest.h>

namespace tessaro {
namespace {

class BlkCommandsTest : public ::testing::Test {
protected:
    TrackSong song;
    BlkRef a = song.add(1, 0, 1920, 60);
    BlkRef b = song.add(1, 1920, 5760, 61);
    BlkRef c = song.add(2, 1920, 3840, 62);

    /// A command is one step with this title that leaves these blocks, and these selected; undo and redo bring back
    /// what was there.
    void expectDone(TextId title, const std::string& all, const std::string& selected,
                    const std::function<bool()>& command)
    {
        const std::string before = test::picture(song.editor);
        const int index = song.editor.GetUndoRedoIndex();
        EXPECT_TRUE(command());
        EXPECT_EQ(song.editor.GetUndoRedoIndex(), index + 1);
        EXPECT_EQ(song.undoTitle(), song.strings(title));
        EXPECT_EQ(song.all(), all);
        EXPECT_EQ(song.selected(), selected);
        const std::string after = test::picture(song.editor);
        song.editor.UndoNode();
        EXPECT_EQ(test::picture(song.editor), before);
        song.editor.RedoNode();
        EXPECT_EQ(test::picture(song.editor), after);
        song.editor.UndoNode();
    }
};

TEST_F(BlkCommandsTest, DropsKeepDistances)
{
    song.select({a, c});
    const auto dropped = [&](DropKind kind, std::int64_t ticks, int rows) {
        return [this, kind, ticks, rows] { return song.commands.drop(kind, {ticks, rows}); };
    };
    expectDone(TextId::undoBlockMove, "1:1920-5760 2:1920-3840 3:3840-5760", "2:1920-3840 3:3840-5760",
               dropped(DropKind::move, 1920, 1));
    EXPECT_EQ(song.selected(), "1:0-1920 2:1920-3840");
    expectDone(TextId::undoBlockMove, "1:0-1920 1:0-1920 1:1920-5760", "1:0-1920 1:0-1920",
               dropped(DropKind::move, -1920, -1)); // a is at both edges and stays
    expectDone(TextId::undoBlockCopy, "1:0-1920 1:1920-5760 2:1920-3840 100:3840-5760 100:5760-7680",
               "100:3840-5760 100:5760-7680", dropped(DropKind::copy, 3840, 99));
    song.select({a, c});
    expectDone(TextId::undoBlockLink, "1:0-1920 1:1920-5760 2:1920-3840 4:0-1920g 5:1920-3840g",
               "4:0-1920g 5:1920-3840g", dropped(DropKind::link, 0, 3));
    EXPECT_FALSE(song.commands.drop(DropKind::copy, {}));
}

TEST_F(BlkCommandsTest, CopyStopsAtATrackOfAnotherType)
{
    song.editor.SetTrkTypePrivate(3, trktype::wave);
    const BlkRef d = song.add(4, 0, 480);
    song.select({a, c, d}); // to tracks 2, 3 and 5
    expectDone(TextId::undoBlockCopy, "1:0-1920 1:1920-5760 2:0-1920 2:1920-3840 4:0-480", "2:0-1920", [&] {
        return song.commands.drop(DropKind::copy, {0, 1});
    });
    EXPECT_EQ(song.user.messages, std::vector{2903});
}

TEST_F(BlkCommandsTest, MergeDropGoesIntoASelectedBlockOrCopies)
{
    song.select({a});
    expectDone(TextId::undoBlockMerge, "1:0-1920 1:1920-5760 1:1920-3840 2:1920-3840", "1:1920-3840", [&] {
        return song.commands.drop(DropKind::merge, {1920, 0});
    });
    song.select({a, b}); // a meets b, b nothing
    expectDone(TextId::undoBlockMerge, "1:0-1920 1:1920-5760 1:3840-7680 2:1920-3840", "1:3840-7680 1:1920-5760", [&] {
        return song.commands.drop(DropKind::merge, {1920, 0});
    });
}

TEST_F(BlkCommandsTest, NudgeAndDuplicate)
{
    List<CTrk>::get(c.trk)->Move(c.blk, 2000);
    song.select({c});
    expectDone(TextId::undoBlockMove, "1:0-1920 1:1920-5760 2:3840-5760", "2:3840-5760",
               [&] { return song.commands.nudge(1, 0); });
    expectDone(TextId::undoBlockMove, "1:0-1920 1:1920-5760 3:2000-3920", "3:2000-3920",
               [&] { return song.commands.nudge(0, 1); });
    expectDone(TextId::undoBlockMove, "1:0-1920 1:1920-5760 2:1990-3910", "2:1990-3910",
               [&] { return song.commands.nudgeTicks(-10); });
    expectDone(TextId::undoBlockCopy, "1:0-1920 1:1920-5760 2:2000-3920 2:3920-5840", "2:3920-5840",
               [&] { return song.commands.duplicate(DropKind::copy); });
    const BlkRef d = song.add(3, 1920, 4000);
    song.select({d}); // begins at a bar line and ends inside a bar
    expectDone(TextId::undoBlockLink, "1:0-1920 1:1920-5760 2:2000-3920 3:1920-4000 3:5760-7840g 3:9600-11680g",
               "3:5760-7840g 3:9600-11680g", [&] { return song.commands.duplicate(DropKind::relink, 2); });
    song.select({a, d});
    EXPECT_FALSE(song.commands.nudge(0, -1)); // no room for a
    song.select({a});
    EXPECT_FALSE(song.commands.nudge(-1, 0));
}

TEST_F(BlkCommandsTest, NewGoneAndResized)
{
    expectDone(TextId::undoBlockNew, "1:0-1920 1:1920-5760 2:1920-3840 7:0-1920", "7:0-1920",
               [&] { return song.commands.create(7, 0, 1920); });
    song.select({b});
    expectDone(TextId::undoBlockResize, "1:0-1920 1:1920-7680 2:1920-3840", "1:1920-7680",
               [&] { return song.commands.lengthen(1); });
    expectDone(TextId::undoBlockResize, "1:0-1920 1:1920-1930 2:1920-3840", "1:1920-1930",
               [&] { return song.commands.resize(b, 1925); }); // not before the last sound
    expectDone(TextId::undoBlockMove, "1:0-1920 2:1920-3840 5:960-3840", "5:960-3840", [&] {
        return song.commands.change(b, {"b", 960, 3840, 5});
    });
    EXPECT_TRUE(song.commands.change(b, {"new", 1920, 5760, 1}));
    EXPECT_EQ(List<CBlk>::get(b.blk)->GetName(), "new");
    EXPECT_EQ(song.editor.GetUndoRedoIndex(), -1); // names have no undo
    EXPECT_EQ(song.editor.GetUndoRedoCount(), 1);  // and leave what can be redone

    const BlkRef ghost = song.addGhost(b, 3, 0);
    song.select({b, ghost, c});
    song.user.answer = true;
    expectDone(TextId::undoBlockDelete, "1:0-1920", "", [&] { return song.commands.remove(); });
    EXPECT_EQ(song.user.questions.size(), 1U);
    song.select({b, c});
    song.user.answer = false;
    EXPECT_TRUE(song.commands.remove());
    EXPECT_EQ(song.all(), "1:0-1920 1:1920-5760 3:0-3840g");
}

TEST_F(BlkCommandsTest, DivideAndUniteLeaveGhostsOut)
{
    const BlkRef ghost = song.addGhost(b, 3, 1920);
    song.select({a, b, c, ghost});
    expectDone(TextId::undoBlockSplit, "1:0-1920 1:1920-3840 1:3840-5760 2:1920-3840 3:1920-3840g",
               "1:0-1920 1:1920-3840 2:1920-3840 3:1920-3840g 1:3840-5760", [&] { return song.commands.divide(3900); });
    EXPECT_EQ(song.user.statuses.size(), 1U);
    EXPECT_FALSE(song.commands.divide(5800)); // at an end
    song.user.answer = true;
    expectDone(TextId::undoBlockJoin, "1:0-5760 2:1920-3840", "1:0-5760 2:1920-3840",
               [&] { return song.commands.link(); }); // the ghost goes with its source
    song.select({});
    expectDone(TextId::undoBlockJoin, "1:0-5760 2:1920-3840", "1:0-5760", [&] { return song.commands.linkNext(a); });
    EXPECT_FALSE(song.commands.linkNext(b));

    const BlkRef ofA = song.addGhost(a, 2, 5760);
    song.select({c, ofA});
    EXPECT_FALSE(song.commands.link());
    expectDone(TextId::undoBlockMerge, "1:0-1920 1:1920-5760 2:1920-7680 3:1920-5760g", "2:1920-7680",
               [&] { return song.commands.merge(); });
    song.select({ofA});
    expectDone(TextId::undoBlockRealize, "1:0-1920 1:1920-5760 2:1920-3840 2:5760-7680 3:1920-5760g", "2:5760-7680",
               [&] { return song.commands.realise(); });
}

TEST_F(BlkCommandsTest, LongRunsOfSeveralTracksBecomeABlockEach)
{
    const BlkRef overlapping = song.add(1, 1920, 2400, 70); // begins where b does; selected before it
    const BlkRef last = song.add(1, 9600, 11520, 71);
    const BlkRef other = song.add(2, 5760, 7680, 72);
    song.add(3, 0, 1920, 73);
    song.select({last, other, overlapping, b, c, a});
    expectDone(TextId::undoBlockJoin, "1:0-11520 2:1920-7680 3:0-1920", "2:1920-7680 1:0-11520",
               [&] { return song.commands.link(); });
    song.editor.RedoNode();
    std::string keys;
    for (const CEvnt* e = List<CBlk>::get(a.blk)->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
        keys += std::to_string(e->GetTime()) + ":" + std::to_string(e->GetPost1()) + " ";
    EXPECT_EQ(keys, "0:60 1920:70 1920:61 9600:71 ");
}

TEST_F(BlkCommandsTest, FindSourcesAndSiblings)
{
    const BlkRef one = song.addGhost(a, 3, 0);
    song.addGhost(a, 4, 480);
    song.select({one});
    EXPECT_TRUE(song.commands.selectSources());
    EXPECT_EQ(song.selected(), "1:0-1920");
    EXPECT_TRUE(song.commands.selectSiblings());
    EXPECT_EQ(song.selected(), "1:0-1920 3:0-1920g 4:480-2400g");
    EXPECT_EQ(song.commands.span()->to, 2400U);
    song.commands.invert();
    EXPECT_EQ(song.selected(), "1:1920-5760 2:1920-3840");
    EXPECT_FALSE(song.commands.selectSources());
}

TEST_F(BlkCommandsTest, WaitWhileTheSongIsLockedAndLetItPlayOn)
{
    song.selection.setBlks(std::vector{a, b, song.addGhost(a, 3, 0)});
    const std::string before = test::picture(song.editor);
    song.locked = true;
    const auto tryAll = [&] {
        return song.commands.drop(DropKind::copy, {1920, 0}) || song.commands.nudge(1, 0) || song.commands.remove()
            || song.commands.divide(3840) || song.commands.link() || song.commands.merge() || song.commands.realise()
            || song.commands.create(1, 0, 10) || song.commands.lengthen(1) || song.commands.resize(a, 5000)
            || song.commands.rename(a, "x") || song.commands.change(a, {}) || song.commands.duplicate(DropKind::relink);
    };
    EXPECT_FALSE(tryAll());
    EXPECT_EQ(test::picture(song.editor), before);
    song.locked = false;
    song.transport.playing = true;
    EXPECT_TRUE(song.commands.nudge(1, 0));
    EXPECT_TRUE(song.transport.playing);
    EXPECT_EQ(song.transport.calls, (std::vector<std::string>{"stop", "resume"}));
}

} // namespace
} // namespace tessaro
