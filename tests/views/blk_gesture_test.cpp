// SPDX-License-Identifier: GPL-3.0-or-later
#include "track_song.h"
#include "views/tracks/blk_gesture.h"

#include <gtest/gtest.h>

namespace tessaro {
namespace {

constexpr Qt::KeyboardModifiers none = Qt::NoModifier;

/// Blocks of a bar: a and b on track 1 in bars 1 and 3, c on track 2 in bar 2. Bars begin at 40, 360, 680, 1000.
class BlkGestures : public ::testing::Test {
protected:
    TrackSong song;
    BlkGesture gesture{song.editor, song.geometry, song.blks, song.selection};
    BlkRef a = song.add(1, 0, 1920);
    BlkRef b = song.add(1, 3840, 5760);
    BlkRef c = song.add(2, 1920, 3840);

    BlkOutcome drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = none, EditTool tool = EditTool::select)
    {
        const BlkOutcome pressed = gesture.press(from, keys, tool);
        gesture.move((from + to) / 2, keys);
        gesture.move(to, keys);
        const BlkOutcome released = gesture.release(to, keys);
        return released.index() ? released : pressed;
    }
    BlkOutcome click(QPoint at, Qt::KeyboardModifiers keys = none, EditTool tool = EditTool::select)
    {
        return drag(at, at, keys, tool);
    }
    static std::string told(const BlkOutcome& outcome)
    {
        const auto line = [](const char* what, auto... numbers) {
            std::string out = what;
            ((out += ' ' + std::to_string(numbers)), ...);
            return out;
        };
        if (const auto* go = std::get_if<GoTo>(&outcome)) return line("go", go->time);
        if (const auto* loop = std::get_if<MakeLoop>(&outcome)) return line("loop", loop->start, loop->end);
        if (const auto* drawn = std::get_if<DrawBlk>(&outcome))
            return line("draw", drawn->track, drawn->top, drawn->end);
        if (const auto* sized = std::get_if<EndBlkAt>(&outcome)) return line("end", sized->end);
        if (const auto* divided = std::get_if<DivideSelected>(&outcome)) return line("divide", divided->time);
        if (std::holds_alternative<EraseSelected>(outcome)) return "erase";
        if (std::holds_alternative<JoinToNext>(outcome)) return "join";
        const auto* dropped = std::get_if<DropSelected>(&outcome);
        if (!dropped) return "";
        const char* kinds[] = {"move", "copy", "link", "relink", "merge"};
        return line(kinds[static_cast<int>(dropped->kind)], dropped->shift.ticks, dropped->shift.rows);
    }
};

TEST_F(BlkGestures, InTheRulerMoveThePlaceAndTheLoop)
{
    EXPECT_EQ(told(click({200, 5})), "go 0"); // exactly half a bar
    EXPECT_EQ(told(click({201, 5})), "go 1920");
    EXPECT_EQ(told(click({201, 5}, Qt::ShiftModifier)), "go 960");
    EXPECT_EQ(told(drag({370, 5}, {1010, 5})), "loop 1920 5760");
    EXPECT_EQ(told(drag({1010, 5}, {370, 300})), "loop 1920 5760");
    EXPECT_EQ(told(drag({1002, 18}, {1330, 18})), "loop 1920 7680"); // the right handle
    EXPECT_EQ(told(drag({358, 18}, {45, 18})), "loop 0 7680");
    EXPECT_EQ(told(drag({38, 18}, {1900, 18})), "loop 7680 7680"); // never past the other
    gesture.setLoop(0, 0);
    EXPECT_EQ(told(drag({41, 18}, {365, 18})), "loop 0 1920"); // both in one place
    song.geometry.setOrigin(1920);
    EXPECT_EQ(told(click({45, 5})), "go 1920");
}

TEST_F(BlkGestures, ClicksSelect)
{
    struct Case {
        QPoint at;
        Qt::KeyboardModifiers keys;
        const char* selected;
    };
    const Case cases[] = {
        {{100, 30}, none, "1:0-1920"},
        {{700, 30}, none, "1:3840-5760"},
        {{100, 30}, Qt::ControlModifier, "1:3840-5760 1:0-1920"},
        {{700, 30}, Qt::ControlModifier, "1:0-1920"},
        {{400, 50}, Qt::ShiftModifier, "2:1920-3840 1:0-1920"},
        {{700, 30}, Qt::ShiftModifier, "1:3840-5760 1:0-1920"}, // from the same beginning
        {{100, 30}, none, "1:0-1920"},
        {{100, 44}, none, "1:0-1920"}, // 4 pixels beside a selected block
        {{400, 300}, Qt::ControlModifier, "1:0-1920"},
        {{400, 300}, none, ""},
    };
    for (const bool slow : {false, true}) // longer than the timer takes
        for (const Case& each : cases) {
            gesture.press(each.at, each.keys, EditTool::select);
            if (slow) gesture.timeout();
            EXPECT_EQ(told(gesture.release(each.at, each.keys)), "");
            EXPECT_EQ(song.selected(), each.selected) << each.at.x() << slow;
        }
}

TEST_F(BlkGestures, RubberBandSelectsWhatItMeets)
{
    drag({500, 300}, {45, 25});
    EXPECT_EQ(song.selected(), "1:0-1920 2:1920-3840");
    drag({690, 70}, {900, 30}, Qt::ControlModifier);
    EXPECT_EQ(song.selected(), "1:0-1920 2:1920-3840 1:3840-5760");
    drag({650, 70}, {350, 50}, Qt::ControlModifier);
    EXPECT_EQ(song.selected(), "1:0-1920 1:3840-5760");
    gesture.press({500, 300}, none, EditTool::select);
    gesture.move({450, 45}, none);
    EXPECT_EQ(gesture.band(), QRect(QPoint(450, 45), QPoint(500, 300)));
    EXPECT_EQ(song.selected(), "2:1920-3840");
    gesture.cancel();
    EXPECT_EQ(song.selected(), "1:0-1920 1:3840-5760");
    EXPECT_FALSE(gesture.active());
}

TEST_F(BlkGestures, DragSnapsToBarsAndRows)
{
    struct Case {
        QPoint by;
        Qt::KeyboardModifiers keys;
        const char* told;
    };
    const Qt::KeyboardModifiers both = Qt::AltModifier | Qt::ControlModifier;
    const Case cases[] = {
        {{160, 10}, none, ""}, // half a bar and half a row
        {{161, 0}, none, "move 1920 0"},
        {{0, 11}, none, "move 0 1"},
        {{-700, -100}, none, "move -1920 -5"},
        {{320, 0}, Qt::ControlModifier, "copy 1920 0"},
        {{320, 40}, Qt::AltModifier, "link 1920 2"},
        {{-320, 40}, both, "merge -1920 2"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(told(drag({400, 50}, QPoint(400, 50) + each.by, each.keys)), each.told) << each.by.x();
    EXPECT_EQ(song.selected(), "2:1920-3840");
}

TEST_F(BlkGestures, GhostsShowWhereBlocksWouldStand)
{
    const QRect view(0, 0, 2000, 2100);
    song.select({a, c});
    gesture.press({400, 50}, none, EditTool::select);
    EXPECT_TRUE(gesture.waits());
    gesture.move({402, 50}, none);
    EXPECT_TRUE(gesture.waits()); // neither time nor way enough
    gesture.timeout();
    EXPECT_FALSE(gesture.waits());
    gesture.move({80, 30}, none); // from here on any way is a drag
    EXPECT_EQ(gesture.ghosts(view), (std::vector{QRect(40, 22, 320, 20), QRect(40, 22, 320, 20)})); // both at the edges
    EXPECT_TRUE(gesture.ghosts({500, 0, 100, 100}).empty());
    EXPECT_EQ(told(gesture.release({80, 30}, Qt::ControlModifier)), "copy -1920 -1"); // Ctrl as the button goes up

    gesture.press({400, 50}, none, EditTool::select);
    gesture.timeout();
    EXPECT_EQ(told(gesture.release({400, 50}, none)), ""); // held long, but not moved
    gesture.press({400, 50}, none, EditTool::select);
    gesture.move({800, 50}, none);
    song.editor.BlkDel(c.trk, c.blk); // from elsewhere
    EXPECT_EQ(told(gesture.release({800, 50}, none)), "");
}

TEST_F(BlkGestures, WithAltTakeWhatIsHit)
{
    song.select({b});
    drag({100, 30}, {100, 70}, Qt::AltModifier | Qt::ControlModifier);
    EXPECT_EQ(song.selected(), "1:3840-5760 1:0-1920");
    drag({400, 50}, {400, 90}, Qt::AltModifier);
    EXPECT_EQ(song.selected(), "2:1920-3840");
    gesture.press({400, 50}, Qt::AltModifier, EditTool::select);
    EXPECT_EQ(told(gesture.release({720, 50}, none)), "link 1920 0"); // the press has decided
    EXPECT_EQ(told(drag({100, 30}, {430, 30}, Qt::ControlModifier)), "copy 1920 0");
    EXPECT_EQ(song.selected(), "1:0-1920"); // a copy is of what is dragged
}

TEST_F(BlkGestures, OfTheOtherTools)
{
    EXPECT_EQ(told(drag({100, 70}, {100, 70}, none, EditTool::pencil)), "draw 3 0 1920");
    EXPECT_EQ(told(drag({900, 70}, {370, 300}, none, EditTool::pencil)), "draw 3 1920 5760");
    EXPECT_EQ(told(drag({360, 70}, {680, 70}, none, EditTool::pencil)), "draw 3 1920 3840");
    EXPECT_EQ(told(drag({45, 70}, {150, 70}, Qt::ShiftModifier, EditTool::pencil)), "draw 3 0 960");
    EXPECT_EQ(told(click({100, 2050}, none, EditTool::pencil)), "");
    EXPECT_EQ(told(drag({357, 30}, {1000, 30})), "end 5760");
    EXPECT_EQ(told(drag({357, 30}, {20, 30}, none, EditTool::pencil)), "end 1920");
    EXPECT_EQ(gesture.zoneAt({357, 30}, EditTool::select), BlkGesture::Zone::blkEnd);
    EXPECT_EQ(gesture.zoneAt({357, 30}, EditTool::eraser), BlkGesture::Zone::blk);
    EXPECT_EQ(told(drag({100, 30}, {700, 30}, none, EditTool::eraser)), "erase");
    EXPECT_EQ(song.selected(), "1:0-1920 1:3840-5760");
    EXPECT_EQ(told(click({100, 300}, none, EditTool::eraser)), "");
    song.select({a, c});
    EXPECT_EQ(told(click({440, 50}, none, EditTool::divide)), "divide 2400");
    EXPECT_EQ(song.selected(), "1:0-1920 2:1920-3840"); // what is selected with it is divided, too
    EXPECT_EQ(told(click({740, 30}, none, EditTool::divide)), "divide 4200");
    EXPECT_EQ(song.selected(), "1:3840-5760");
    EXPECT_EQ(told(click({100, 30}, none, EditTool::join)), "join");
}

} // namespace
} // namespace tessaro
