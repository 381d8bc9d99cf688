// SPDX-License-Identifier: GPL-3.0-or-later
#include "roll_song.h"
#include "views/roll/roll_gesture.h"

#include <QPoint>

namespace tessaro {
namespace {

constexpr Qt::KeyboardModifiers noKeys;

/// Notes on a quarter grid, 4 ticks a pixel: x 240 is tick 480.
class RollGestureTest : public testing::Test {
protected:
    RollSong song;
    RollGesture gesture{{song.editor, song.notes, song.commands, song.grid, song.scale, song.selection}};
    BlkRef blk = song.addBlk(1, 0, 7680);
    EvntRef a = song.addNote(blk, 480, 480, 60, 100);
    EvntRef b = song.addNote(blk, 500, 480, 64, 80);
    EvntRef c = song.addNote(blk, 1920, 960, 60, 60);
    std::string before = song.track(1);
    std::string heard;

    RollGestureTest()
    {
        song.grid.setIndex(2);
        gesture.setTrack(1);
        gesture.onHear = [this](std::uint8_t key, std::uint8_t) { heard += std::to_string(key) + ' '; };
        gesture.onHush = [this] { heard += '.'; };
    }
    [[nodiscard]] QPoint at(std::uint32_t time, int key) const
    {
        return {song.scale.x(time), song.scale.y(static_cast<std::uint8_t>(key)) + 5};
    }
    [[nodiscard]] QPoint middleOf(const EvntRef& ref) const
    {
        const NoteInView note = *NoteTables::noteOf(ref);
        return at((note.start + note.end) / 2, note.key);
    }
    void drag(EditTool tool, QPoint from, QPoint by, Qt::KeyboardModifiers keys = noKeys)
    {
        gesture.press(tool, from, keys);
        gesture.move(from + by / 2, keys);
        gesture.release(from + by, keys);
    }
    void click(EditTool tool, QPoint where, Qt::KeyboardModifiers keys = noKeys) { drag(tool, where, {1, -1}, keys); }
    /// With a and b selected; `after` leaves c out. What is seen before the release is what comes.
    void expectDrag(EditTool tool, QPoint from, QPoint by, Qt::KeyboardModifiers keys, TextId title,
                    const std::string& after)
    {
        song.selection.set(std::vector{a, b});
        gesture.press(tool, from, keys);
        gesture.move(from + by, keys);
        const std::string preview = shown();
        gesture.release(from + by, keys);
        EXPECT_EQ(preview, shown());
        EXPECT_EQ(song.selection.count(), 2U);
        song.expectStep(title, before, after + ", 1920+960 60/60");
    }
    [[nodiscard]] std::string shown() const
    {
        std::vector<std::string> rows;
        gesture.forEachNote(0, 7680, 0, 127, [&](const NoteInView& n, bool selected) {
            rows.push_back(std::to_string(n.start) + '-' + std::to_string(n.end) + ' ' + std::to_string(n.key) + '/'
                           + std::to_string(n.velocity) + (selected ? "*" : ""));
        });
        std::ranges::sort(rows);
        std::string out;
        for (const std::string& row : rows) out += (out.empty() ? "" : ", ") + row;
        return out;
    }
};

TEST_F(RollGestureTest, ClicksSelect)
{
    click(EditTool::select, middleOf(b));
    EXPECT_EQ(song.selection.inOrder(), std::vector{b});
    EXPECT_EQ(heard, "64 .");
    click(EditTool::select, middleOf(a), Qt::ControlModifier);
    EXPECT_EQ(song.selection.inOrder(), (std::vector{a, b}));
    click(EditTool::select, middleOf(b), Qt::ControlModifier);
    EXPECT_EQ(song.selection.inOrder(), std::vector{a});
    click(EditTool::select, middleOf(a));
    click(EditTool::select, middleOf(c), Qt::ShiftModifier); // from a to here, on the keys between
    EXPECT_EQ(song.selection.inOrder(), (std::vector{a, c}));
    click(EditTool::select, middleOf(b), Qt::ShiftModifier);
    EXPECT_EQ(song.selection.count(), 3U);
    click(EditTool::select, middleOf(c)); // of several that are selected one alone
    EXPECT_EQ(song.selection.inOrder(), std::vector{c});
    click(EditTool::select, at(3840, 60));
    EXPECT_TRUE(song.selection.empty());
    EXPECT_EQ(song.editor.GetUndoRedoIndex(), -1);
}

TEST_F(RollGestureTest, BandsSelectWhatTheyTouch)
{
    drag(EditTool::select, at(960, 62), at(1930, 59) - at(960, 62));
    EXPECT_EQ(song.selection.inOrder(), std::vector{c}); // a ends where the band begins
    drag(EditTool::line, at(900, 66), at(600, 61) - at(900, 66), Qt::ControlModifier);
    EXPECT_EQ(song.selection.inOrder(), (std::vector{b, c}));
    gesture.press(EditTool::select, at(960, 62), noKeys);
    gesture.move(at(1930, 59), noKeys);
    ASSERT_TRUE(gesture.band());
    EXPECT_EQ(gesture.band()->span, (TickRange{960, 1928}));
    gesture.cancel();
    EXPECT_TRUE(song.selection.empty());
    // The press stays with its tick while the view scrolls.
    gesture.press(EditTool::select, at(960, 62), noKeys);
    song.scale.setStart(1920);
    gesture.release(at(2000, 59), noKeys);
    EXPECT_EQ(song.selection.inOrder(), std::vector{c});
}

TEST_F(RollGestureTest, DragsMakeOneStep)
{
    constexpr EditTool tool = EditTool::select;
    // The grabbed note goes to the grid, the other keeps its distance; one off the grid comes onto it.
    expectDrag(tool, at(700, 60), {100, 0}, noKeys, TextId::undoEventMove, "960+480 60/100, 980+480 64/80");
    expectDrag(tool, at(700, 64), {100, 0}, noKeys, TextId::undoEventMove, "940+480 60/100, 960+480 64/80");
    // Up and down it stays off the grid, with Alt always; nothing gets before its block.
    expectDrag(tool, at(700, 64), {2, -24}, noKeys, TextId::undoEventMove, "480+480 62/100, 500+480 66/80");
    expectDrag(tool, at(700, 60), {10, 12}, Qt::AltModifier, TextId::undoEventMove, "520+480 59/100, 540+480 63/80");
    expectDrag(tool, at(700, 60), {-400, 0}, noKeys, TextId::undoEventMove, "0+480 60/100, 20+480 64/80");
    // Shift keeps what changes less.
    expectDrag(tool, at(700, 60), {130, 60}, Qt::ShiftModifier, TextId::undoEventMove, "960+480 60/100, 980+480 64/80");
    expectDrag(tool, at(700, 60), {50, 60}, Qt::ShiftModifier, TextId::undoEventMove, "480+480 55/100, 500+480 59/80");
    expectDrag(tool, at(700, 60), {240, -12}, Qt::ControlModifier, TextId::undoDragDrop,
               "480+480 60/100, 500+480 64/80, 1440+480 61/100, 1460+480 65/80");
    // Edges come no nearer than a step.
    expectDrag(tool, at(956, 60), {120, 0}, noKeys, TextId::undoGateTime, "480+960 60/100, 500+960 64/80");
    expectDrag(tool, at(484, 60), {-115, 0}, noKeys, TextId::undoEventChange, "0+960 60/100, 20+960 64/80");
    drag(tool, at(956, 60), {-300, 0}, Qt::AltModifier);
    EXPECT_EQ(song.track(1), before);
    expectDrag(EditTool::pencil, at(700, 60), {120, 0}, noKeys, TextId::undoEventMove, "960+480 60/100, 980+480 64/80");
    expectDrag(EditTool::velocity, at(700, 60), {0, -40}, noKeys, TextId::undoVelocity,
               "480+480 60/127, 500+480 64/120");
}

TEST_F(RollGestureTest, AnUnselectedNoteIsDraggedAlone)
{
    song.selection.set(std::vector{a, b});
    drag(EditTool::select, middleOf(c), {120, 0});
    EXPECT_EQ(song.selection.inOrder(), std::vector{c});
    song.expectStep(TextId::undoEventMove, before, "480+480 60/100, 500+480 64/80, 2400+960 60/60");
    heard.clear();
    drag(EditTool::select, middleOf(c), {0, 36});
    EXPECT_EQ(heard, "60 59 57 .");
}

TEST_F(RollGestureTest, CancelledNothingHasHappened)
{
    song.selection.set(std::vector{a, b});
    for (const EditTool tool : {EditTool::select, EditTool::pencil, EditTool::eraser, EditTool::velocity}) {
        const std::string calm = shown();
        gesture.press(tool, middleOf(a), noKeys);
        gesture.move(middleOf(a) + QPoint(200, 24), noKeys);
        EXPECT_NE(shown(), calm);
        gesture.cancel();
        gesture.release(middleOf(a), noKeys);
        EXPECT_EQ(shown(), calm);
    }
    click(EditTool::select, middleOf(a));
    drag(EditTool::select, middleOf(a), {20, 0}, noKeys); // less than half a step
    EXPECT_EQ(song.editor.GetUndoRedoIndex(), -1);
}

TEST_F(RollGestureTest, ThePencilDraws)
{
    click(EditTool::select, middleOf(b)); // whose velocity the next note gets
    gesture.press(EditTool::pencil, at(3100, 72), noKeys);
    ASSERT_TRUE(gesture.drawn());
    EXPECT_EQ(gesture.drawn()->start, 2880U); // the step that holds the place
    gesture.release(at(3100, 72), noKeys);
    EXPECT_EQ(song.selected(), "2880+480 72/80");
    song.expectStep(TextId::undoEventInsert, before, before + ", 2880+480 72/80");
    drag(EditTool::pencil, at(3100, 72), {200, 30});
    song.expectStep(TextId::undoEventInsert, before, before + ", 2880+960 72/80");
    drag(EditTool::pencil, at(3100, 72), {-200, 0});
    song.expectStep(TextId::undoEventInsert, before, before + ", 2880+480 72/80");
    drag(EditTool::pencil, at(3100, 72), {5, 0}, Qt::AltModifier);
    song.expectStep(TextId::undoEventInsert, before, before + ", 3100+20 72/80");
    song.scale.setStart(7680);
    click(EditTool::pencil, at(7700, 60)); // behind the block
    song.expectStep(TextId::undoEventInsert, before, before + " | 7680+480 60/80");
    gesture.press(EditTool::pencil, {RollScale::left - 1, 300}, noKeys);
    gesture.press(EditTool::pencil, {300, RollScale::ruler - 1}, noKeys);
    EXPECT_EQ(gesture.mode(), RollGesture::Mode::none);
}

TEST_F(RollGestureTest, TheEraserSweeps)
{
    const QPoint from = at(600, 66);
    gesture.press(EditTool::eraser, from, noKeys);
    gesture.move(at(600, 58), noKeys); // one long step over both
    EXPECT_EQ(shown(), "1920-2880 60/60");
    gesture.release(at(600, 58), noKeys);
    song.expectStep(TextId::undoEventDelete, before, "1920+960 60/60");
    drag(EditTool::eraser, at(3000, 60), {20, 0});
    EXPECT_EQ(song.editor.GetUndoRedoIndex(), -1);
}

TEST_F(RollGestureTest, DivideAndJoinTakeAClick)
{
    EXPECT_EQ(gesture.cutAt(at(2500, 60)), 2400U);
    EXPECT_FALSE(gesture.cutAt(at(1930, 60)));
    EXPECT_FALSE(gesture.cutAt(at(3500, 60)));
    click(EditTool::divide, at(2500, 60));
    song.expectStep(TextId::undoNoteSplit, before, "480+480 60/100, 500+480 64/80, 1920+480 60/60, 2400+480 60/60");
    click(EditTool::join, middleOf(a));
    song.expectStep(TextId::undoNoteJoin, before, "480+2400 60/100, 500+480 64/80");
    click(EditTool::divide, at(3500, 60));
    EXPECT_EQ(gesture.mode(), RollGesture::Mode::none);
}

TEST_F(RollGestureTest, EdgesOfShortNotesLeaveABody)
{
    song.grid.setFree(true);
    song.addNote(blk, 4000, 8, 50); // two pixels
    song.addNote(blk, 5000, 60, 50);
    ASSERT_TRUE(gesture.hit(at(4000, 50)));
    EXPECT_EQ(gesture.hit(at(4000, 50))->zone, RollGesture::Zone::body);
    EXPECT_EQ(gesture.hit(at(5000, 50))->zone, RollGesture::Zone::start);
    EXPECT_EQ(gesture.hit(at(5028, 50))->zone, RollGesture::Zone::body);
    EXPECT_EQ(gesture.hit(at(5044, 50))->zone, RollGesture::Zone::end);
    EXPECT_FALSE(gesture.hit(at(5060, 50)));
    EXPECT_FALSE(gesture.hit(at(5028, 51)));
    song.scale.setStart(5020);
    EXPECT_EQ(gesture.hit(at(5020, 50))->zone, RollGesture::Zone::body); // its start is out of sight
}

} // namespace
} // namespace tessaro
