// SPDX-License-Identifier: GPL-3.0-or-later
// The piano roll under real mouse and keys: what each gesture makes of the song, and that one undo takes it back.
#include "parts_fixture.h"
#include "views/roll/piano_frame.h"
#include "views/roll/roll_view.h"
#include "views/roll/strip_splitter.h"
#include "views/roll/strip_view.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

constexpr Qt::KeyboardModifiers noKeys;

/// Track 3 on a grid of sixteenths, two ticks a pixel: four notes of an eighth, and one of the first key again.
class PianoTest : public testing::Test {
protected:
    static constexpr const char* before = "0 60 240, 480 61 240, 960 62 240, 1440 63 240, 1920 60 240";

    PianoTest()
    {
        blk = &song.addBlock(3, 0, 3840);
        for (const auto& [time, key] : {std::pair(0U, 60), {480U, 61}, {960U, 62}, {1440U, 63}, {1920U, 60}})
            notes.push_back(song.addNote(*blk, time, key, 240));
        song.bind();
        QGuiApplication::clipboard()->clear();
        song.window.resize(1400, 760);
        frame = std::make_unique<CPianoFrame>(song.parts, 3);
        frame->setParent(&song.window);
        frame->resize(song.window.size());
        frame->onChanged = [this] { song.actions.refresh(); };
        song.actions.setActive(frame.get());
        song.window.show();
        frame->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&song.window));
        view = &frame->view();
        strip = &frame->strip();
        view->rescale([](RollScale& scale) {
            scale.setZoom(2);
            scale.setRowHeight(16);
            scale.setScroll((127 - 62) * 16 - 120);
        });
        view->setFocus();
    }

    [[nodiscard]] QPoint at(std::uint32_t time, int key) const
    {
        return {view->scale().x(time), view->scale().y(static_cast<std::uint8_t>(key)) + 7};
    }
    [[nodiscard]] QPoint inStrip(std::uint32_t time, int value) const
    {
        return {view->scale().x(time), strip->gesture().scale().y(value)};
    }
    static void press(QWidget* widget, QPoint from, QPoint to, Qt::KeyboardModifiers keys = noKeys)
    {
        QTest::mousePress(widget, Qt::LeftButton, keys, from);
        for (int i = 1; from != to && i <= 8; ++i) {
            const QPoint place = from + (to - from) * i / 8;
            QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, keys);
            QApplication::sendEvent(widget, &move);
        }
    }
    static void drag(QWidget* widget, QPoint from, QPoint to, Qt::KeyboardModifiers keys = noKeys)
    {
        press(widget, from, to, keys);
        QTest::mouseRelease(widget, Qt::LeftButton, keys, to);
    }
    using Which = std::initializer_list<std::size_t>;
    void select(Which which)
    {
        std::vector<EvntRef> refs;
        for (const std::size_t i : which) refs.push_back({song.editor.GetTrkPos(3), blk, notes[i]});
        frame->selectEvnts(refs);
    }
    /// The numbers of the selected notes.
    [[nodiscard]] std::string selected() const
    {
        std::string all;
        for (const EvntRef& ref : frame->selectedEvnts())
            all += std::to_string(std::ranges::find(notes, ref.evnt) - notes.begin());
        return all;
    }
    /// "time key gate" of each note in order, with its velocity where that is not 100.
    [[nodiscard]] std::string events(int track = 3) const
    {
        std::string all;
        const CTrk& trk = *song.editor.song().trk(track);
        for (const CBlk* b = trk.blocks().head(); b; b = List<CBlk>::next(b))
            for (const CEvnt* e = b->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
                if (status::kind(e->GetStatus()) != status::note) continue;
                all += (all.empty() ? "" : ", ") + std::to_string(b->GetTimeTop() + e->GetTime()) + " "
                     + std::to_string(e->GetPost1()) + " " + std::to_string(e->GetGateTime());
                if (e->GetPost2() != 100) all += " v" + std::to_string(e->GetPost2());
            }
        return all;
    }
    /// One step of this title led to these notes; it is taken back.
    void expectStep(TextId title, const std::string& after, const std::string& was = before, int track = 3)
    {
        std::string done;
        song.editor.IsEnableUndo(done);
        EXPECT_EQ(done, song.bench.strings(title)) << after;
        EXPECT_EQ(events(track), after);
        EXPECT_EQ(song.editor.GetUndoRedoIndex(), 0) << after;
        song.editor.UndoNode();
        EXPECT_EQ(events(track), was) << after;
        song.editor.ClearUndoRedo();
        song.actions.refresh(); // as the main window does
    }
    [[nodiscard]] std::string values() const
    {
        std::string all;
        song.notes.forEachValue(3, strip->kind(), 0, 3840, [&](const ValueInView& value) {
            all += std::to_string(value.time) + ":" + std::to_string(value.value) + " ";
        });
        return all;
    }

    PartsFixture song;
    CBlk* blk = nullptr;
    std::vector<POSITION> notes;
    std::unique_ptr<CPianoFrame> frame;
    CRollView* view = nullptr;
    StripView* strip = nullptr;
};

TEST_F(PianoTest, ClicksAndBandsSelect)
{
    const auto click = [this](int time, int key, Qt::KeyboardModifiers keys) {
        QTest::mouseClick(view, Qt::LeftButton, keys, at(static_cast<std::uint32_t>(time), key));
        return selected();
    };
    EXPECT_EQ(click(600, 61, noKeys), "1");
    EXPECT_EQ(click(100, 60, noKeys), "0");
    EXPECT_EQ(click(1000, 62, Qt::ControlModifier), "02");
    EXPECT_EQ(click(100, 60, Qt::ControlModifier), "2");
    EXPECT_EQ(click(1500, 63, Qt::ControlModifier), "23");
    EXPECT_EQ(click(600, 61, noKeys), "1");
    EXPECT_EQ(click(1500, 63, Qt::ShiftModifier), "123");
    EXPECT_EQ(click(300, 66, noKeys), "");
    drag(view, at(400, 64), at(1000, 61));
    EXPECT_EQ(selected(), "12");
    drag(view, at(1800, 61), at(2100, 59), Qt::ControlModifier);
    EXPECT_EQ(selected(), "124");
    EXPECT_EQ(song.editor.GetUndoRedoCount(), 0);
}

struct Place {
    std::uint32_t time;
    int key;
};

TEST_F(PianoTest, EachGestureIsOneStepThatUndoTakesBack)
{
    const auto expect = [this](EditTool tool, Which selection, Place from, Place to, Qt::KeyboardModifiers keys,
                               TextId title, const char* after) {
        select(selection);
        song.actions.setTool(tool);
        press(view, at(from.time, from.key), at(to.time, to.key), keys);
        EXPECT_EQ(events(), before); // nothing before the release
        QTest::mouseRelease(view, Qt::LeftButton, keys, at(to.time, to.key));
        expectStep(title, after);
        press(view, at(from.time, from.key), at(to.time, to.key), keys);
        QTest::keyClick(view, Qt::Key_Escape);
        QTest::mouseRelease(view, Qt::LeftButton, keys, at(to.time, to.key));
        EXPECT_EQ(song.editor.GetUndoRedoCount(), 0) << after;
    };
    expect(EditTool::select, {}, {600, 61}, {860, 63}, noKeys, TextId::undoEventMove,
           "0 60 240, 720 63 240, 960 62 240, 1440 63 240, 1920 60 240");
    expect(EditTool::select, {1, 2}, {600, 61}, {860, 61}, noKeys, TextId::undoEventMove,
           "0 60 240, 720 61 240, 1200 62 240, 1440 63 240, 1920 60 240");
    expect(EditTool::select, {}, {600, 61}, {640, 61}, Qt::AltModifier, TextId::undoEventMove,
           "0 60 240, 520 61 240, 960 62 240, 1440 63 240, 1920 60 240");
    expect(EditTool::select, {}, {600, 61}, {860, 62}, Qt::ShiftModifier, TextId::undoEventMove,
           "0 60 240, 720 61 240, 960 62 240, 1440 63 240, 1920 60 240");
    expect(EditTool::select, {1}, {600, 61}, {1320, 64}, Qt::ControlModifier, TextId::undoDragDrop,
           "0 60 240, 480 61 240, 960 62 240, 1200 64 240, 1440 63 240, 1920 60 240");
    expect(EditTool::select, {}, {718, 61}, {960, 61}, noKeys, TextId::undoGateTime,
           "0 60 240, 480 61 480, 960 62 240, 1440 63 240, 1920 60 240");
    expect(EditTool::select, {}, {482, 61}, {602, 61}, noKeys, TextId::undoEventChange,
           "0 60 240, 600 61 120, 960 62 240, 1440 63 240, 1920 60 240");
    expect(EditTool::pencil, {}, {2650, 65}, {2650, 65}, noKeys, TextId::undoEventInsert,
           "0 60 240, 480 61 240, 960 62 240, 1440 63 240, 1920 60 240, 2640 65 120");
    expect(EditTool::pencil, {}, {310, 65}, {850, 65}, noKeys, TextId::undoEventInsert,
           "0 60 240, 240 65 600, 480 61 240, 960 62 240, 1440 63 240, 1920 60 240");
    expect(EditTool::eraser, {}, {60, 60}, {1020, 62}, noKeys, TextId::undoEventDelete, "1440 63 240, 1920 60 240");
    expect(EditTool::divide, {}, {590, 61}, {590, 61}, noKeys, TextId::undoNoteSplit,
           "0 60 240, 480 61 120, 600 61 120, 960 62 240, 1440 63 240, 1920 60 240");
    expect(EditTool::join, {}, {100, 60}, {100, 60}, noKeys, TextId::undoNoteJoin,
           "0 60 2160, 480 61 240, 960 62 240, 1440 63 240");
    expect(EditTool::velocity, {1, 2}, {600, 61}, {600, 60}, noKeys, TextId::undoVelocity,
           "0 60 240, 480 61 240 v84, 960 62 240 v84, 1440 63 240, 1920 60 240");
}

TEST_F(PianoTest, EachKeyIsOneStepThatUndoTakesBack)
{
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers with;
        TextId title;
        const char* second; ///< the second note then, and what comes next to it
    };
    constexpr Case cases[] = {
        {Qt::Key_Left, noKeys, TextId::undoEventMove, "360 61 240, "},
        {Qt::Key_Right, noKeys, TextId::undoEventMove, "600 61 240, "},
        {Qt::Key_Left, Qt::AltModifier, TextId::undoEventMove, "479 61 240, "},
        {Qt::Key_Right, Qt::AltModifier, TextId::undoEventMove, "481 61 240, "},
        {Qt::Key_Up, noKeys, TextId::undoTranspose, "480 62 240, "},
        {Qt::Key_Down, noKeys, TextId::undoTranspose, "480 60 240, "},
        {Qt::Key_Up, Qt::ShiftModifier, TextId::undoTranspose, "480 73 240, "},
        {Qt::Key_Down, Qt::ShiftModifier, TextId::undoTranspose, "480 49 240, "},
        {Qt::Key_Right, Qt::ShiftModifier, TextId::undoGateTime, "480 61 360, "},
        {Qt::Key_Left, Qt::ShiftModifier, TextId::undoGateTime, "480 61 120, "},
        {Qt::Key_Delete, noKeys, TextId::undoEventDelete, ""},
        {Qt::Key_X, Qt::ControlModifier, TextId::undoEventCut, ""},
        {Qt::Key_V, Qt::ControlModifier, TextId::undoEventPaste, "480 61 240, 720 61 240, "}, // what was cut
        {Qt::Key_D, Qt::ControlModifier, TextId::undoEventInsert, "480 61 240, 720 61 240, "},
        {Qt::Key_E, Qt::ControlModifier, TextId::undoNoteSplit, "480 61 120, 600 61 120, "},
    };
    for (const Case& c : cases) {
        frame->setPosition(c.key == Qt::Key_V ? 720 : 600, false);
        select({1});
        QTest::keyClick(view, c.key, c.with);
        expectStep(c.title, "0 60 240, " + std::string(c.second) + "960 62 240, 1440 63 240, 1920 60 240");
    }
    QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected(), "01234");
    QTest::keyClick(view, Qt::Key_3);
    EXPECT_EQ(song.actions.tool(), EditTool::eraser);
}

TEST_F(PianoTest, ABlockIsMadeWhereNoneStandsInTheSameStep)
{
    const CTrk& trk = *song.editor.song().trk(5);
    select({0, 1});
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    frame->setTrack(5);
    song.actions.setTool(EditTool::pencil);
    for (const bool paste : {false, true}) {
        frame->setPosition(1920, false);
        if (paste)
            QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier);
        else
            drag(view, at(1930, 60), at(2400, 60));
        EXPECT_EQ(trk.GetCount(), 1U);
        EXPECT_EQ(frame->selectedEvnts().size(), paste ? 2U : 1U);
        expectStep(paste ? TextId::undoEventPaste : TextId::undoEventInsert,
                   paste ? "1920 60 240, 2400 61 240" : "1920 60 480", "", 5);
        EXPECT_EQ(trk.GetCount(), 0U);
    }
}

TEST_F(PianoTest, LinkedBlocksRefuse)
{
    ASSERT_TRUE(song.editor.BlkGhost(song.editor.GetTrkPos(3), blk, song.editor.GetTrkPos(3), 3840));
    song.editor.ClearUndoRedo();
    view->rescale([](RollScale& scale) { scale.setStart(3840); });
    constexpr int refused = static_cast<int>(TextId::linkedBlockNotEditable);
    int times = 0;
    for (const EditTool tool :
         {EditTool::select, EditTool::pencil, EditTool::eraser, EditTool::divide, EditTool::velocity}) {
        song.actions.setTool(tool);
        const bool clicks = tool == EditTool::divide;
        drag(view, at(3840 + 600, 61), clicks ? at(3840 + 600, 61) : at(3840 + 600, 64));
        EXPECT_EQ(song.bench.user.messages, std::vector<int>(static_cast<std::size_t>(++times), refused));
    }
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Delete}) {
        song.actions.setTool(EditTool::select);
        QTest::mouseClick(view, Qt::LeftButton, noKeys, at(3840 + 600, 61));
        QTest::keyClick(view, key);
        EXPECT_EQ(song.bench.user.messages.size(), static_cast<std::size_t>(++times));
    }
    EXPECT_EQ(song.editor.GetUndoRedoCount(), 0);
}

TEST_F(PianoTest, TheStripDrawsFreelyStraightAndBent)
{
    strip->setKind({StripKind::What::control, 11});
    for (const EditTool tool : {EditTool::pencil, EditTool::line, EditTool::curve}) {
        song.actions.setTool(tool);
        drag(strip, inStrip(0, 10), inStrip(480, 90));
        if (tool == EditTool::curve) { // up, until the next press
            QTest::mouseMove(strip, inStrip(480, 90) - QPoint(0, 40));
            QTest::mouseClick(strip, Qt::LeftButton, noKeys, inStrip(480, 90) - QPoint(0, 40));
        }
        std::vector<int> shown;
        song.notes.forEachValue(3, strip->kind(), 0, 3840, [&](const ValueInView& v) { shown.push_back(v.value); });
        ASSERT_GE(shown.size(), 4U) << static_cast<int>(tool);
        if (tool == EditTool::curve)
            EXPECT_GT(shown[shown.size() / 2], 60); // the line is at 50 there
        else
            EXPECT_TRUE(std::ranges::is_sorted(shown)) << static_cast<int>(tool);
        EXPECT_EQ(song.editor.GetUndoRedoIndex(), 0);
        song.editor.UndoNode();
        EXPECT_EQ(values(), "");
        song.editor.ClearUndoRedo();
    }
    strip->setKind({});
    song.actions.setTool(EditTool::line);
    drag(strip, inStrip(480, 10), inStrip(960, 120));
    expectStep(TextId::undoVelocity, "0 60 240, 480 61 240 v10, 960 62 240 v120, 1440 63 240, 1920 60 240");
}

TEST_F(PianoTest, NothingIsTouchedOfASongThatGoes)
{
    for (QWidget* held : {static_cast<QWidget*>(view), static_cast<QWidget*>(strip)}) {
        song.actions.setTool(EditTool::select);
        press(held, held == view ? at(600, 61) : inStrip(480, 100), held == view ? at(900, 64) : inStrip(480, 20));
        song.editor.InitEditor();
        song.notes.clear();
        frame->songReplaced();
        QTest::mouseRelease(held, Qt::LeftButton, noKeys, {300, 60});
        EXPECT_EQ(song.editor.GetUndoRedoCount(), 0);
        EXPECT_TRUE(frame->selectedEvnts().empty());
    }
}

TEST_F(PianoTest, SoundsEndWithTheWindow)
{
    int sounding = 0;
    const auto listen = [this, &sounding] {
        song.bench.run(std::chrono::milliseconds(20));
        for (const test::Heard& heard : song.bench.take()) sounding += heard.isNoteOn() - heard.isNoteOff();
        return sounding;
    };
    const auto begin = [&] {
        QTest::mousePress(view, Qt::LeftButton, noKeys, {100, at(0, 64).y()});
        EXPECT_EQ(listen(), 1);
    };
    begin();
    frame->hide();
    EXPECT_EQ(listen(), 0);
    frame->show();
    begin();
    QEvent leaves(QEvent::WindowDeactivate);
    QApplication::sendEvent(view, &leaves);
    EXPECT_EQ(listen(), 0);
    QTest::mouseRelease(view, Qt::LeftButton, noKeys, {100, 60});
    begin();
    frame.reset();
    EXPECT_EQ(listen(), 0);
}

TEST_F(PianoTest, RevealsATickWithItsNotesInTheMiddle)
{
    CBlk& high = song.addBlock(3, 1920 * 7, 1920 * 8);
    song.addNote(high, 1920 * 7 + 480, 110, 240);
    song.bind();
    CPianoFrame other(song.parts, 3);
    other.reveal(1920 * 7); // before it has its place, as a window that has just been opened
    other.resize(900, 500);
    other.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&other));
    const auto middle = [&other] {
        const RollScale& scale = other.view().scale();
        return static_cast<int>(scale.key((RollScale::ruler + scale.height()) / 2));
    };
    EXPECT_EQ(other.view().scale().start(), 1920U * 7);
    EXPECT_EQ(middle(), 110);
    other.reveal(10);
    EXPECT_EQ(other.view().scale().start(), 0U);
    EXPECT_NEAR(middle(), 61, 1);
    other.setTrack(9);
    EXPECT_EQ(middle(), 60);
    other.setTrack(3);
    song.addNote(high, 1920 * 7, 20, 240);
    song.editor.HintDispReq();
    other.reveal(1920 * 7); // of what is too much the lowest
    const RollScale& scale = other.view().scale();
    EXPECT_EQ(scale.key(scale.height() - scale.rowHeight()), 20);
}

TEST(StripSplitter, TheStripGivesWayToTheNotes)
{
    for (const auto& [wanted, together, height] : {std::tuple(200, 800, 200),
                                                   {200, 400, 160},
                                                   {200, 250, 100},
                                                   {200, 190, 70},
                                                   {200, 100, 40},
                                                   {60, 400, 60},
                                                   {900, 1000, 400}})
        EXPECT_EQ(StripSplitter::stripHeight(wanted, together), height) << wanted << " of " << together;
    StripSplitter splitter(new QWidget, new QWidget);
    splitter.resize(400, 250);
    splitter.show();
    EXPECT_LE(splitter.sizes().back(), 100);
    EXPECT_EQ(splitter.wanted(), 200);
    splitter.resize(400, 800);
    EXPECT_EQ(splitter.sizes().back(), 200);
    splitter.hide();
}

} // namespace
} // namespace tessaro
