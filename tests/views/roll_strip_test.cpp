// SPDX-License-Identifier: GPL-3.0-or-later
#include "roll_song.h"
#include "views/roll/strip_gesture.h"

namespace tessaro {
namespace {

constexpr Qt::KeyboardModifiers noKeys;
constexpr StripKind volume{StripKind::What::control, 7};

/// A strip with a pixel for each value of 0 to 127; 4 ticks a pixel.
class StripGestureTest : public testing::Test {
protected:
    RollSong song;
    StripCommands commands{song.editor, song.notes, song.commands};
    StripGesture gesture{{song.editor, song.notes, commands, song.grid, song.scale, song.selection}};
    BlkRef blk = song.addBlk(1, 0, 3840);

    StripGestureTest()
    {
        song.grid.setIndex(2);
        gesture.setTrack(1);
        show(volume);
    }
    void show(StripKind kind) { gesture.setScale(StripScale(kind, 10, 128 + 2 * StripScale::margin)); }
    [[nodiscard]] QPoint at(std::uint32_t time, int value) const
    {
        return {song.scale.x(time), gesture.scale().y(value)};
    }
    void drag(EditTool tool, QPoint from, QPoint to, Qt::KeyboardModifiers keys = noKeys)
    {
        gesture.press(tool, from, keys);
        gesture.move((from + to) / 2, keys);
        gesture.release(to, keys);
    }
    EvntRef addVolume(std::uint32_t time, int value) { return song.add(blk, volume.record(time, value, 0)); }
};

TEST_F(StripGestureTest, LinesMakeAnEventAStep)
{
    drag(EditTool::line, at(0, 0), at(1440, 90));
    song.expectStep(TextId::undoEventInsert, "", "0+0 7/0, 480+0 7/30, 960+0 7/60, 1440+0 7/90");
    drag(EditTool::line, at(1440, 90), at(0, 0)); // from the right as well
    song.expectStep(TextId::undoEventInsert, "", "0+0 7/0, 480+0 7/30, 960+0 7/60, 1440+0 7/90");
    drag(EditTool::line, at(100, 50), at(140, 52), Qt::AltModifier);
    song.expectStep(TextId::undoEventInsert, "", "100+0 7/50, 110+0 7/51, 130+0 7/52"); // no value twice in a row
    drag(EditTool::line, at(100, 64), at(2000, 64));
    song.expectStep(TextId::undoEventInsert, "", "0+0 7/64");
}

TEST_F(StripGestureTest, LinesEndWhereTimeDoes)
{
    song.scale.setStart(tick::latest - 1000);
    for (const Qt::KeyboardModifiers keys : {noKeys, Qt::KeyboardModifiers(Qt::AltModifier)}) {
        gesture.press(EditTool::line, at(tick::latest - 900, 10), keys);
        gesture.move(at(tick::latest, 90) + QPoint(200, 0), keys);
        ASSERT_FALSE(gesture.points().empty());
        EXPECT_GT(gesture.points().back().value, 50);
        gesture.cancel();
    }
}

TEST_F(StripGestureTest, TheCurveIsBentAfterTheRelease)
{
    drag(EditTool::curve, at(0, 0), at(1920, 80));
    EXPECT_EQ(gesture.mode(), StripGesture::Mode::bend);
    EXPECT_EQ(song.track(1), "");
    gesture.move(at(960, 70), noKeys);
    EXPECT_EQ(gesture.points()[2], (StripPoint{960, 70}));
    gesture.press(EditTool::curve, at(960, 70), noKeys);
    song.expectStep(TextId::undoEventInsert, "", "0+0 7/0, 480+0 7/43, 960+0 7/70, 1440+0 7/83, 1920+0 7/80");
    drag(EditTool::curve, at(0, 0), at(1920, 80));
    gesture.cancel();
    EXPECT_EQ(song.editor.GetUndoRedoIndex(), -1);
}

TEST_F(StripGestureTest, ThePencilReplacesWhatItPasses)
{
    addVolume(100, 1);
    addVolume(960, 2);
    addVolume(1400, 3);
    addVolume(1440, 4);
    song.add(blk, StripKind{StripKind::What::control, 10}.record(960, 5, 0));
    const std::string before = song.track(1);
    gesture.press(EditTool::pencil, at(500, 100), noKeys);
    gesture.move(at(1000, 50), noKeys);
    int shown = 0;
    song.notes.forEachValue(1, volume, 0, 3840, [&](const ValueInView& v) { shown += gesture.shown(v).has_value(); });
    EXPECT_EQ(shown, 2);
    gesture.release(at(1000, 50), noKeys);
    song.expectStep(TextId::undoEventChange, before, "100+0 7/1, 480+0 7/100, 960+0 10/5, 960+0 7/54, 1440+0 7/4");
}

TEST_F(StripGestureTest, NewEventsTakeTheChannelAndMakeBlocks)
{
    song.editor.SetTrkCh(1, 9);
    drag(EditTool::line, at(3360, 10), at(3999, 99));
    const CBlk& made = *song.editor.song().trk(1)->blocks().tail();
    EXPECT_EQ(made.GetTimeTop(), 3840U);
    EXPECT_EQ(made.GetTimeEnd(), 5760U);
    EXPECT_EQ(List<CEvnt>::get(made.GetHeadPos())->GetStatus(), 0xB9);
    song.editor.UndoNode();

    song.addGhost(blk, 1, 3840);
    drag(EditTool::line, at(3360, 10), at(3999, 99));
    EXPECT_EQ(song.user.messages, std::vector{static_cast<int>(TextId::linkedBlockNotEditable)});
    EXPECT_EQ(song.track(1), " | ");
}

TEST_F(StripGestureTest, EventsAreDraggedAndErased)
{
    const EvntRef a = addVolume(480, 40);
    const EvntRef b = addVolume(960, 120);
    const EvntRef note = song.addNote(blk, 0, 100, 60);
    const std::string before = song.track(1);
    drag(EditTool::select, at(400, 127), at(1000, 30));
    EXPECT_EQ(song.selection.inOrder(), (std::vector{a, b}));
    song.selection.add(note); // which the strip of volumes leaves alone
    drag(EditTool::select, at(480, 40), at(1000, 50));
    song.expectStep(TextId::undoEventChange, before, "0+100 60/100, 960+0 7/50, 1440+0 7/127");
    drag(EditTool::select, at(481, 20), at(560, 20), Qt::AltModifier); // by its stem
    song.expectStep(TextId::undoEventMove, before, "0+100 60/100, 560+0 7/40, 1040+0 7/120");
    drag(EditTool::select, at(480, 40), at(480, 40));
    EXPECT_EQ(song.selection.inOrder(), std::vector{a});
    drag(EditTool::select, at(960, 120), at(960, 120), Qt::ControlModifier);
    drag(EditTool::select, at(480, 40), at(480, 40), Qt::ControlModifier);
    EXPECT_EQ(song.selection.inOrder(), std::vector{b});
    drag(EditTool::eraser, at(700, 0), at(1000, 0));
    song.expectStep(TextId::undoEventDelete, before, "0+100 60/100, 480+0 7/40");
}

TEST_F(StripGestureTest, VelocitiesGoUnderTheLine)
{
    show({});
    const EvntRef a = song.addNote(blk, 0, 100, 60, 10);
    song.addNote(blk, 480, 100, 62, 20);
    const EvntRef c = song.addNote(blk, 960, 100, 64, 30);
    const std::string before = song.track(1);
    drag(EditTool::line, at(0, 100), at(960, 50));
    song.expectStep(TextId::undoVelocity, before, "0+100 60/100, 480+100 62/75, 960+100 64/50");
    song.selection.set(std::vector{c});
    gesture.press(EditTool::velocity, at(0, 100), noKeys);
    gesture.move(at(960, 50), noKeys);
    std::string shown;
    song.notes.forEachValue(1, {}, 0, 3840,
                            [&](const ValueInView& v) { shown += std::to_string(gesture.shown(v)->value) + ' '; });
    EXPECT_EQ(shown, "10 20 50 ");
    gesture.release(at(960, 50), noKeys);
    song.expectStep(TextId::undoVelocity, before, "0+100 60/10, 480+100 62/20, 960+100 64/50");
    song.selection.clear();
    drag(EditTool::pencil, at(8, 77), at(8, 77)); // a click a little aside
    song.expectStep(TextId::undoVelocity, before, "0+100 60/77, 480+100 62/20, 960+100 64/30");
    song.selection.set(std::vector{a, c});
    drag(EditTool::select, at(960, 30), at(1200, 60)); // in value alone
    song.expectStep(TextId::undoVelocity, before, "0+100 60/40, 480+100 62/20, 960+100 64/60");
    drag(EditTool::eraser, at(0, 0), at(1000, 0));
    EXPECT_EQ(song.editor.GetUndoRedoIndex(), -1);
}

} // namespace
} // namespace tessaro
