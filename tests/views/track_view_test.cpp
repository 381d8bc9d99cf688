// SPDX-License-Identifier: GPL-3.0-or-later
#include "parts_fixture.h"
#include "track_song.h"
#include "views/frame/frame_actions.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/trk_blk_view.h"
#include "views/tracks/trk_pram_view.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QSplitter>
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
    std::vector<std::tuple<WindowKind, int, std::uint32_t>> opened;
    static constexpr const char* whole = "1:0-1920 1:3840-5760 2:1920-3840";

    TrackView()
    {
        for (const auto& [track, bar] : {std::pair(1, 0U), {1, 2U}, {2, 1U}})
            PartsFixture::addNote(fixture.addBlock(track, bar * 1920, bar * 1920 + 1920), bar * 1920, 60, 10);
        fixture.bind();
        fixture.parts.open = [this](WindowKind kind, int track, std::uint32_t tick) {
            opened.push_back({kind, track, tick});
        };
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
    void key(Qt::Key key) { keyIn(view(), key); }
    static void keyIn(QWidget& where, Qt::Key key, Qt::KeyboardModifiers keys = {})
    {
        QCoreApplication::processEvents();
        QTest::keyClick(&where, key, keys);
    }
    /// With the window of the actions in sight, without which their keys sleep.
    void activate(QWidget& focused)
    {
        fixture.window.show();
        frame->activateWindow();
        focused.setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
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
    drag({357, 17}, {50, 17});
    panel.GetLoop(start, end);
    EXPECT_EQ(start, 0U);
    EXPECT_EQ(end, 3840U);
}

TEST_F(TrackView, AltAndCtrlMergeIntoASelectedBlockThatIsMet)
{
    click({100, 30});
    drag({400, 50}, {400, 50}, Qt::ControlModifier);
    EXPECT_EQ(selected(), "1:0-1920 2:1920-3840");
    drag({100, 30}, {430, 50}, Qt::AltModifier | Qt::ControlModifier);
    EXPECT_EQ(undoTitle(), TextId::undoBlockMerge);
    EXPECT_EQ(blks(), "1:0-1920 1:3840-5760 2:1920-3840 3:3840-5760");
    const auto notes = [this](int track) {
        return editor.song().trk(track)->blocks().head()->GetRealBlk()->events().count();
    };
    EXPECT_EQ(notes(2), 2U);
    EXPECT_EQ(notes(3), 2U); // the copy of what the other has become
    editor.UndoNode();
    EXPECT_EQ(blks(), whole);
    EXPECT_EQ(notes(2), 1U);
}

TEST_F(TrackView, KeysOfBlocksAreOneStepEach)
{
    activate(view());
    const Qt::KeyboardModifiers ctrlShift = Qt::ControlModifier | Qt::ShiftModifier;
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers with;
        TextId title;
        const char* blks;
    };
    const Case cases[] = {
        {Qt::Key_D, Qt::ControlModifier, TextId::undoBlockCopy, "1:0-1920 1:3840-5760 2:1920-3840 2:3840-5760"},
        {Qt::Key_D, ctrlShift, TextId::undoBlockLink, "1:0-1920 1:3840-5760 2:1920-3840 2:3840-5760g"},
        {Qt::Key_X, Qt::ControlModifier, TextId::undoBlockCut, "1:0-1920 1:3840-5760"},
        {Qt::Key_V, Qt::ControlModifier, TextId::undoBlockPaste, "1:0-1920 1:3840-5760 2:0-1920 2:1920-3840"},
        {Qt::Key_B, Qt::ControlModifier, TextId::undoBlockNew, "1:0-1920 1:3840-5760 2:0-1920 2:1920-3840"},
        {Qt::Key_Right, Qt::AltModifier, TextId::undoBlockMove, "1:0-1920 1:3840-5760 2:1921-3841"},
        {Qt::Key_Up, {}, TextId::undoBlockMove, "1:0-1920 1:1920-3840 1:3840-5760"},
        {Qt::Key_Right, Qt::ShiftModifier, TextId::undoBlockResize, "1:0-1920 1:3840-5760 2:1920-5760"},
    };
    for (const Case& each : cases) {
        click({400, 50});
        keyIn(view(), each.key, each.with);
        EXPECT_EQ(blks(), each.blks);
        EXPECT_EQ(undoTitle(), each.title) << each.blks;
        editor.UndoNode();
        EXPECT_EQ(blks(), whole);
    }

    keyIn(view(), Qt::Key_A, Qt::ControlModifier);
    keyIn(view(), Qt::Key_J, ctrlShift);
    EXPECT_EQ(blks(), "1:0-5760 2:1920-3840");
    EXPECT_EQ(undoTitle(), TextId::undoBlockJoin);
    click({440, 30}, EditTool::divide); // at the bar line next to it
    EXPECT_EQ(blks(), "1:0-1920 1:1920-5760 2:1920-3840");
    EXPECT_EQ(undoTitle(), TextId::undoBlockSplit);
    fixture.bench.panel.SetLocation(3840);
    click({700, 30});
    keyIn(view(), Qt::Key_E, ctrlShift);
    EXPECT_EQ(blks(), "1:0-1920 1:1920-3840 1:3840-5760 2:1920-3840");
}

TEST_F(TrackView, KeysOfLinkedBlocks)
{
    activate(view());
    drag({400, 50}, {60, 50}, Qt::AltModifier);
    EXPECT_EQ(selected(), "2:0-1920g");
    keyIn(view(), Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(selected(), "2:1920-3840");
    keyIn(view(), Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selected(), "2:0-1920g 2:1920-3840");
    keyIn(view(), Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(blks(), "1:0-1920 1:3840-5760 2:0-1920 2:1920-3840");
    EXPECT_EQ(undoTitle(), TextId::undoBlockRealize);
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
    activate(view());
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
    drag({100, 30}, {100, 30}, {}, EditTool::pencil); // a block there
    editor.UndoNode();
    EXPECT_EQ(bar.maximum(), measures + 2) << "measures that were added stay";
    view().setOrigin(0);
    frame->songReplaced();
    EXPECT_EQ(bar.maximum(), measures);
}

TEST_F(TrackView, ArrowsWithoutASelectionGoToTracksAndBlocks)
{
    activate(view());
    key(Qt::Key_Down);
    EXPECT_EQ(frame->currentTrack(), 2);
    key(Qt::Key_Right);
    EXPECT_EQ(selected(), "2:1920-3840");
    key(Qt::Key_Escape);
    EXPECT_EQ(selected(), "");
    key(Qt::Key_Up);
    key(Qt::Key_Up); // no further
    EXPECT_EQ(frame->currentTrack(), 1);
    key(Qt::Key_Left);
    EXPECT_EQ(selected(), "1:0-1920");
    EXPECT_EQ(blks(), whole);
    key(Qt::Key_Escape);
    for (int step = 0; step < 2; ++step) key(Qt::Key_Down);
    EXPECT_FALSE(frame->can(ViewCommand::nudgeRight)); // no block there
}

TEST_F(TrackView, KeysOfTracksAndEditors)
{
    using Opened = std::vector<std::tuple<WindowKind, int, std::uint32_t>>;
    CTrkPramView& prams = frame->pramView();
    activate(prams);
    prams.setCurrentIndex(frame->table().index(1, static_cast<int>(TrackColumn::name)));
    const CTrk& trk = *editor.song().trk(2);
    keyIn(prams, Qt::Key_A);
    keyIn(prams, Qt::Key_M);
    keyIn(prams, Qt::Key_S);
    EXPECT_TRUE(trk.GetRec() && trk.GetMute() && trk.GetSolo());
    keyIn(prams, Qt::Key_M);
    EXPECT_FALSE(trk.GetMute());
    fixture.actions[ViewCommand::muteTrack].setShortcut(Qt::CTRL | Qt::Key_F3);
    keyIn(prams, Qt::Key_M);
    EXPECT_FALSE(trk.GetMute());
    keyIn(prams, Qt::Key_F3, Qt::ControlModifier);
    EXPECT_TRUE(trk.GetMute());

    for (const Qt::Key edits : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
        keyIn(prams, edits);
        auto* line = prams.findChild<QLineEdit*>();
        ASSERT_TRUE(line) << edits;
        QTest::keyClicks(line, QStringLiteral("ams"));
        QTest::keyClick(line, Qt::Key_Return);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !prams.findChild<QLineEdit*>(); }));
        EXPECT_EQ(trk.GetName(), "ams");
    }
    prams.setCurrentIndex(frame->table().index(1, static_cast<int>(TrackColumn::record)));
    keyIn(prams, Qt::Key_F2);
    EXPECT_TRUE(trk.GetRec());
    keyIn(prams, Qt::Key_Return);
    EXPECT_FALSE(trk.GetRec());
    EXPECT_TRUE(opened.empty());

    activate(view());
    click({700, 30});
    key(Qt::Key_Return);
    EXPECT_EQ(opened, (Opened{{WindowKind::piano, 1, 3840}}));
    key(Qt::Key_Escape);
    frame->setCurrentTrack(10); // the drums
    key(Qt::Key_Enter);
    EXPECT_EQ(opened.back(), (Opened::value_type{WindowKind::drum, 10, 0}));
}

TEST_F(TrackView, EscapeEndsADragBeforeItIsACommandOfTheMainWindow)
{
    FrameActions actions(*frame, fixture.icons, fixture.text);
    int backs = 0;
    QObject::connect(&actions.back, &QAction::triggered, frame.get(), [&] { ++backs; });
    activate(view());
    press({100, 30});
    QTest::mouseMove(view().viewport(), {800, 90});
    ASSERT_TRUE(view().gesture().drop());
    key(Qt::Key_Escape);
    EXPECT_EQ(backs, 0);
    EXPECT_FALSE(view().gesture().active());
    release({800, 90});
    EXPECT_EQ(blks(), whole);
    key(Qt::Key_Escape);
    EXPECT_EQ(backs, 1);
}

TEST_F(TrackView, AnotherSongEndsADrag)
{
    click({400, 50});
    press({100, 30});
    QTest::mouseMove(view().viewport(), {800, 90});
    ASSERT_TRUE(view().gesture().drop());
    editor.InitEditor();
    frame->songReplaced();
    EXPECT_EQ(selected(), "");
    QTest::mouseMove(view().viewport(), {700, 90});
    release({700, 90});
    EXPECT_EQ(blks(), "");
    view().grab();
    EXPECT_TRUE(frame->selectedEvnts().empty());
}

TEST_F(TrackView, FollowingTurnsPagesInsideABarThatIsWiderThanTheWindow)
{
    frame->splitter().setSizes({1440, 240});
    const int width = view().geometry().size().width();
    ASSERT_LT(width, 320);
    std::uint32_t origin = 0;
    int pages = 0;
    for (std::uint32_t tick = 0; tick < 5 * 1920; tick += 30) {
        view().setPosition(tick, true);
        const int x = view().geometry().windowX(tick);
        EXPECT_TRUE(x >= TrkGeometry::leftMargin && x < width) << tick;
        pages += std::exchange(origin, view().geometry().origin()) != view().geometry().origin();
    }
    EXPECT_LT(pages, 5 * (320 / (width - 60) + 1));
    EXPECT_GE(pages, 5);
}

} // namespace
} // namespace tessaro
