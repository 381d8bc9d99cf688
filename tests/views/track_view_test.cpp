// SPDX-License-Identifier: GPL-3.0-or-later
#include "parts_fixture.h"
#include "track_song.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/trk_blk_view.h"

#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

/// The track window over blocks of a bar: two on track 1, in bars 1 and 3, and one on track 2 in bar 2. Bars begin at
/// the pixels 40, 360, 680 and 1000.
class TrackView : public ::testing::Test {
protected:
    PartsFixture fixture;
    CEditor& editor = fixture.editor;
    std::unique_ptr<CTrackFrame> frame;
    static constexpr const char* whole = "1:0-1920 1:3840-5760 2:1920-3840";

    TrackView()
    {
        for (const auto& [track, bar] : {std::pair(1, 0U), {1, 2U}, {2, 1U}})
            PartsFixture::addNote(fixture.addBlock(track, bar * 1920, bar * 1920 + 1920), bar * 1920, 60, 10);
        fixture.bind();
        frame = std::make_unique<CTrackFrame>(fixture.parts);
        frame->resize(1700, 700);
        frame->show();
        view().setZoom(6);
        fixture.actions.setActive(frame.get());
    }

    [[nodiscard]] CTrkBlkView& view() const { return frame->blkView(); }
    [[nodiscard]] std::string blks() const { return TrackSong::all(editor); }
    [[nodiscard]] std::string selected() const { return TrackSong::places(frame->selection().blks()); }
    [[nodiscard]] TextId undoTitle() const
    {
        std::string title;
        editor.IsEnableUndo(title);
        for (int id = 959; id <= 988; ++id)
            if (fixture.bench.strings(static_cast<TextId>(id)) == title) return static_cast<TextId>(id);
        return {};
    }

    void press(QPoint at, Qt::KeyboardModifiers keys = {})
    {
        QTest::mousePress(view().viewport(), Qt::LeftButton, keys, at);
    }
    void release(QPoint at, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseRelease(view().viewport(), Qt::LeftButton, keys, at);
    }
    void drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}, EditTool tool = EditTool::select)
    {
        fixture.actions.setTool(tool);
        press(from, keys);
        QTest::mouseMove(view().viewport(), (from + to) / 2);
        QTest::mouseMove(view().viewport(), to);
        release(to, keys);
    }
    void click(QPoint at, EditTool tool = EditTool::select) { drag(at, at, {}, tool); }
    /// Commands have heard of the selection.
    void key(Qt::Key key)
    {
        QCoreApplication::processEvents();
        QTest::keyClick(&view(), key);
    }
};

TEST_F(TrackView, GesturesOfBlocksChangeTheSong)
{
    const Qt::KeyboardModifiers altCtrl = Qt::AltModifier | Qt::ControlModifier;
    struct Case {
        QPoint from;
        QPoint to;
        Qt::KeyboardModifiers keys;
        EditTool tool;
        TextId title;
        const char* blks;
    };
    using enum EditTool;
    const Case cases[] = {
        {{100, 30}, {430, 70}, {}, select, TextId::undoBlockMove, "1:3840-5760 2:1920-3840 3:1920-3840"},
        {{100, 30}, {430, 41}, {}, select, TextId::undoBlockMove, "1:3840-5760 2:1920-3840 2:1920-3840"},
        {{100, 30}, {430, 40}, {}, select, TextId::undoBlockMove, "1:1920-3840 1:3840-5760 2:1920-3840"},
        {{400, 50},
         {60, 300},
         Qt::ControlModifier,
         select,
         TextId::undoBlockCopy,
         "1:0-1920 1:3840-5760 2:1920-3840 14:0-1920"},
        {{400, 50},
         {60, 50},
         Qt::AltModifier,
         select,
         TextId::undoBlockLink,
         "1:0-1920 1:3840-5760 2:0-1920g 2:1920-3840"},
        {{400, 50}, {60, 50}, altCtrl, select, TextId::undoBlockMerge, "1:0-1920 1:3840-5760 2:0-1920 2:1920-3840"},
        {{357, 30}, {650, 30}, {}, select, TextId::undoBlockResize, "1:0-3840 1:3840-5760 2:1920-3840"},
        {{400, 100}, {900, 100}, {}, pencil, TextId::undoBlockNew, "1:0-1920 1:3840-5760 2:1920-3840 4:1920-5760"},
        {{100, 30}, {800, 30}, {}, eraser, TextId::undoBlockDelete, "2:1920-3840"},
        {{100, 30}, {100, 30}, {}, join, TextId::undoBlockJoin, "1:0-5760 2:1920-3840"},
    };
    for (const Case& each : cases) {
        drag(each.from, each.to, each.keys, each.tool);
        EXPECT_EQ(blks(), each.blks);
        EXPECT_EQ(undoTitle(), each.title) << each.blks;
        editor.UndoNode();
        EXPECT_EQ(blks(), whole);
    }
    click({100, 300}); // selects none
    drag({45, 70}, {900, 25});
    EXPECT_EQ(frame->selection().count(), 3U);
    drag({400, 50}, {720, 50}); // all of them
    EXPECT_EQ(blks(), "1:1920-3840 1:5760-7680 2:3840-5760");
    click({440, 30}, EditTool::divide);
    EXPECT_EQ(blks(), "1:1920-3840 1:5760-7680 2:3840-5760"); // no bar line inside
}

TEST_F(TrackView, TheTimerMakesADragOfAPress)
{
    press({100, 30});
    EXPECT_TRUE(view().gesture().waits());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !view().gesture().waits(); }));
    QTest::mouseMove(view().viewport(), {262, 30}); // over half a bar
    release({262, 30});
    EXPECT_EQ(blks(), "1:1920-3840 1:3840-5760 2:1920-3840");
}

TEST_F(TrackView, EscapeEndsADragAndNothingHappensWhileLocked)
{
    click({400, 50});
    press({100, 30});
    QTest::mouseMove(view().viewport(), {800, 90});
    EXPECT_TRUE(view().gesture().drop());
    key(Qt::Key_Escape);
    release({800, 90});
    EXPECT_EQ(blks(), whole);
    EXPECT_EQ(selected(), "2:1920-3840");

    fixture.locked = true;
    drag({100, 30}, {430, 70});
    key(Qt::Key_Delete);
    EXPECT_EQ(blks(), whole);
    EXPECT_EQ(editor.GetUndoRedoCount(), 0);
}

TEST_F(TrackView, TheRulerLocatesAndLoops)
{
    CCnpWindow& panel = fixture.bench.panel;
    click({700, 5});
    EXPECT_EQ(panel.GetLocation(), 3840U);
    drag({370, 5}, {1010, 5});
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    EXPECT_TRUE(panel.GetLoop(start, end));
    EXPECT_EQ(start, 1920U);
    EXPECT_EQ(end, 5760U);
    drag({1003, 17}, {690, 17});
    panel.GetLoop(start, end);
    EXPECT_EQ(end, 3840U);
}

TEST_F(TrackView, EditsLetTheSongPlayOn)
{
    fixture.bench.panel.Start();
    ASSERT_TRUE(fixture.bench.panel.GetPlayBtn());
    drag({400, 50}, {720, 90});
    EXPECT_EQ(blks(), "1:0-1920 1:3840-5760 4:3840-5760");
    EXPECT_TRUE(fixture.bench.panel.GetPlayBtn());
}

TEST_F(TrackView, KeysAndScrollBar)
{
    frame->activateWindow();
    view().setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    click({400, 50});
    key(Qt::Key_Right);
    EXPECT_EQ(blks(), "1:0-1920 1:3840-5760 2:3840-5760");
    key(Qt::Key_Down);
    EXPECT_EQ(blks(), "1:0-1920 1:3840-5760 3:3840-5760");
    key(Qt::Key_Delete);
    EXPECT_EQ(blks(), "1:0-1920 1:3840-5760");

    QScrollBar& bar = *view().horizontalScrollBar();
    const int measures = bar.maximum();
    for (int line = 0; line < measures + 2; ++line) bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(view().geometry().origin(), static_cast<std::uint32_t>(measures + 2) * 1920);
    EXPECT_EQ(bar.maximum(), measures + 2);
}

} // namespace
} // namespace tessaro
