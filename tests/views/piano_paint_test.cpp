// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the piano roll: what it paints, its ruler, keyboard, status line, page and settings.
#include "core/edit/undo_scope.h"
#include "parts_fixture.h"
#include "views/roll/grid_box.h"
#include "views/roll/note_prop_page.h"
#include "views/roll/note_text.h"
#include "views/roll/piano_frame.h"
#include "views/roll/roll_view.h"
#include "views/roll/strip_view.h"
#include "views/roll/time_marks.h"
#include "views/setup/choice_box.h"
#include "views/theme/colours.h"

#include <QApplication>
#include <QLineEdit>
#include <QPaintEvent>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(NoteText, KeysReadBackAsTheyWereWritten)
{
    EXPECT_EQ(keyName(0), "C-1");
    EXPECT_EQ(keyName(60), "C4");
    EXPECT_EQ(keyName(127), "G9");
    for (int key = 0; key < 128; ++key) EXPECT_EQ(parseKey(keyName(key)), key);
    EXPECT_EQ(parseKey(" bb3 "), 58);
    EXPECT_EQ(parseKey("b3"), 59);
    EXPECT_EQ(parseKey("c#-1"), 1);
    EXPECT_EQ(parseKey("61"), 61);
    for (const char* wrong : {"", "H4", "C", "C##4", "Cb-1", "G#9", "128", "-1", "C4x"})
        EXPECT_EQ(parseKey(wrong), std::nullopt) << wrong;
}

TEST(NoteText, LengthsAreBeatsAndTicks)
{
    EXPECT_EQ(lengthText(1000, 480), "2:40");
    EXPECT_EQ(parseLength("2:40", 480), 1000U);
    EXPECT_EQ(parseLength("3:0", 240), 720U);
    EXPECT_EQ(parseLength("720", 480), 720U);
    for (const char* wrong : {"", ":", "1:", "-1", "1:-1", "1:2:3", "9999999:0"})
        EXPECT_EQ(parseLength(wrong, 480), std::nullopt) << wrong;
}

TEST(TimeMarks, EachLineOnceByItsHighestRank)
{
    PartsFixture song;
    song.bind();
    std::vector<TimeMark> marks;
    const auto lines = [&](std::uint32_t first, std::uint32_t end, std::uint32_t room, std::uint32_t grid) {
        timeMarks(
            song.editor, first, end, room, [grid](std::uint32_t) { return grid; }, marks);
        std::string seen;
        for (const TimeMark& mark : marks)
            seen += (mark.rank == TimeMark::Rank::bar    ? "|"
                     : mark.rank == TimeMark::Rank::beat ? "'"
                                                         : ".")
                  + std::to_string(mark.tick) + " ";
        return seen;
    };
    EXPECT_EQ(lines(0, 1921, 10, 960), "|0 '480 '960 '1440 |1920 ");
    EXPECT_EQ(lines(1400, 2000, 10, 320), "'1440 .1600 |1920 "); // triplets of quarters
    EXPECT_EQ(lines(240, 960, 10, 240), "'480 .240 .720 ");      // the finer ones later, measure by measure
    EXPECT_EQ(lines(240, 960, 300, 240), "'480 ");               // too narrow for the grid
    EXPECT_EQ(lines(0, 4000, 500, 240), "|0 |1920 |3840 ");      // and for beats
    EXPECT_EQ(marks[2].measure, 3U);
    EXPECT_EQ(lines(0xFFFFFF00U, 0xFFFFFFFFU, 10, 0), ""); // bars end before time does
}

/// A window over track 3, a tick a pixel wide, with rows of 16 pixels.
class PianoFrameTest : public testing::Test {
protected:
    PianoFrameTest()
    {
        blk = &song.addBlock(3, 0, 3840);
        for (std::uint32_t time = 0; time < 1920; time += 480)
            notes.push_back(song.addNote(*blk, time, 60 + static_cast<int>(time / 480), 240));
        song.addBlock(4, 0, 1920);
        song.addNote(*song.editor.song().trk(4)->blocks().head(), 100, 62, 300);
        song.bind();
        QApplication::setPalette(lightPalette());
        frame = std::make_unique<CPianoFrame>(song.parts, 3);
        song.actions.setActive(frame.get());
        frame->resize(1000, 700);
        frame->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(frame.get()));
        view = &frame->view();
        strip = &frame->strip();
        view->rescale([](RollScale& scale) {
            scale.setZoom(2);
            scale.setRowHeight(16);
            scale.setScroll((127 - 62) * 16 - 120);
        });
        QApplication::processEvents();
    }

    /// In the midst of a key's row.
    [[nodiscard]] QPoint at(std::uint32_t time, int key) const
    {
        return {view->scale().x(time), view->scale().y(static_cast<std::uint8_t>(key)) + 7};
    }
    static void drag(QWidget* widget, QPoint from, QPoint to, Qt::KeyboardModifiers keys = {})
    {
        QTest::mousePress(widget, Qt::LeftButton, keys, from);
        for (int i = 1; i <= 8; ++i) QTest::mouseMove(widget, from + (to - from) * i / 8);
        QTest::mouseRelease(widget, Qt::LeftButton, keys, to);
    }
    void select(std::initializer_list<std::size_t> which)
    {
        std::vector<EvntRef> refs;
        for (const std::size_t i : which) refs.push_back({song.editor.GetTrkPos(3), blk, notes[i]});
        frame->selectEvnts(refs);
    }
    /// Every note of the block, in order.
    [[nodiscard]] std::string events() const
    {
        std::string all;
        for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
            if (status::kind(e->GetStatus()) == status::note)
                all += std::to_string(e->GetTime()) + "/" + keyName(e->GetPost1()).toStdString() + "+"
                     + std::to_string(e->GetGateTime()) + " ";
        return all;
    }
    [[nodiscard]] QColor pixel(QPoint place) const { return view->grab().toImage().pixelColor(place); }

    PartsFixture song;
    CBlk* blk = nullptr;
    std::vector<POSITION> notes;
    std::unique_ptr<CPianoFrame> frame;
    CRollView* view = nullptr;
    StripView* strip = nullptr;
};

TEST_F(PianoFrameTest, NotesLookByVelocitySelectionAndBlock)
{
    const QPoint place = at(60, 60); // before the name
    const QColor loud = pixel(place);
    EXPECT_GT(contrast(loud, view->palette().color(QPalette::Base)), 1.5);
    select({0});
    EXPECT_NE(pixel(place), loud);
    frame->run(ViewCommand::selectNone);
    EXPECT_EQ(pixel(place), loud);
    {
        const UndoScope step(song.editor, "softer");
        _EDT_EVNT rec;
        song.editor.GetEvnt(song.editor.GetTrkPos(3), blk, notes[0], rec);
        rec.post2 = 20;
        song.editor.SetEvnt(song.editor.GetTrkPos(3), blk, notes[0], rec);
    }
    EXPECT_NE(pixel(place), loud);
    {
        const UndoScope step(song.editor, "link");
        song.editor.BlkGhost(song.editor.GetTrkPos(3), blk, song.editor.GetTrkPos(3), 3840);
    }
    view->rescale([](RollScale& scale) { scale.setStart(3840); });
    EXPECT_NE(pixel(at(3840 + 480 + 60, 61)), loud);

    view->rescale([](RollScale& scale) { scale.setStart(0); });
    const QPoint shadow = at(300, 62);
    const QColor ground = pixel(shadow);
    frame->run(ViewCommand::shadows);
    EXPECT_TRUE(frame->isOn(ViewCommand::shadows));
    EXPECT_NE(pixel(shadow), ground);
}

/// Adds up the pixels that a widget was asked to paint.
class PaintedPixels : public QObject {
public:
    int pixels = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            for (const QRect& rect : static_cast<QPaintEvent*>(event)->region()) pixels += rect.width() * rect.height();
        return false;
    }
};

TEST_F(PianoFrameTest, FollowsThePositionByStripsAndPages)
{
    PaintedPixels painted;
    view->installEventFilter(&painted);
    frame->setPosition(480, true);
    QApplication::processEvents();
    EXPECT_GT(painted.pixels, 0);
    EXPECT_LT(painted.pixels, view->width() * view->height() / 10);
    frame->setPosition(1920 * 9 + 5, false);
    EXPECT_EQ(view->scale().start(), 0U);
    frame->setPosition(1920 * 9 + 5, true);
    EXPECT_EQ(view->scale().start(), 1920U * 9);
    frame->setPosition(1920 * 9 + 500, true);
    EXPECT_EQ(view->scale().start(), 1920U * 9);
}

TEST_F(PianoFrameTest, TheWheelScrollsAndZoomsAtThePointer)
{
    view->rescale([](RollScale& scale) { scale.setStart(19200); });
    const QPoint place(500, at(0, 61).y());
    const auto turn = [&](int angle, Qt::KeyboardModifiers keys) {
        QWheelEvent event(place, view->mapToGlobal(place), {}, {0, angle}, Qt::NoButton, keys, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(view, &event);
    };
    const std::uint32_t time = view->scale().time(place.x());
    turn(-240, Qt::ControlModifier);
    EXPECT_GT(view->scale().zoom(), 3);
    EXPECT_NEAR(view->scale().time(place.x()), time, 4);
    turn(240, Qt::ControlModifier);
    EXPECT_NEAR(view->scale().zoom(), 2, 0.01);
    turn(-120, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(view->scale().rowHeight(), 15);
    EXPECT_EQ(view->scale().key(place.y()), 61);
    const int scroll = view->scale().scroll();
    turn(-120, {});
    EXPECT_EQ(view->scale().scroll(), scroll + 3 * 15);
    turn(-120, Qt::ShiftModifier);
    EXPECT_GT(view->scale().time(place.x()), time);
}

TEST_F(PianoFrameTest, TheStatusLineTellsWhatIsUnderThePointer)
{
    QTest::mouseMove(view, at(500, 61));
    EXPECT_EQ(frame->status().values(), (NoteStatus::Values{"1:02:000", "0:240", "C#4", "100"}));
    EXPECT_EQ(frame->status().accessibleDescription(), "Position 1:02:000, Length 0:240, Key C#4, Velocity 100");
    QTest::mouseMove(view, at(800, 59));
    EXPECT_EQ(frame->status().values(), (NoteStatus::Values{"1:02:320", "", "B3", ""}));
}

TEST_F(PianoFrameTest, TheRulerLocatesAndMarksTheLoop)
{
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    QTest::mouseClick(view, Qt::LeftButton, {}, {view->scale().x(490), 10});
    EXPECT_EQ(song.bench.panel.GetLocation(), 480U); // on the grid
    drag(view, {view->scale().x(470), 10}, {view->scale().x(1210), 10});
    EXPECT_TRUE(song.bench.panel.GetLoop(start, end));
    EXPECT_EQ(std::pair(start, end), std::pair(480U, 1200U));
    drag(view, {view->scale().x(1200) + 2, 10}, {view->scale().x(1440), 10}); // by its end
    drag(view, {view->scale().x(480) - 2, 10}, {view->scale().x(250), 10});
    song.bench.panel.GetLoop(start, end);
    EXPECT_EQ(std::pair(start, end), std::pair(240U, 1440U));
}

TEST_F(PianoFrameTest, KeysSoundWhileTheyAreHeld)
{
    const auto count = [this] {
        std::pair<int, int> onOff;
        song.bench.run(std::chrono::milliseconds(20));
        for (const test::Heard& heard : song.bench.take()) {
            onOff.first += heard.isNoteOn();
            onOff.second += heard.isNoteOff();
        }
        return onOff;
    };
    count();
    QTest::mousePress(view, Qt::LeftButton, {}, {100, at(0, 64).y()});
    EXPECT_EQ(count(), std::pair(1, 0));
    QTest::mouseMove(view, {100, at(0, 65).y()});
    EXPECT_EQ(count(), std::pair(1, 1));
    QTest::mouseRelease(view, Qt::LeftButton, {}, {100, at(0, 65).y()});
    EXPECT_EQ(count(), std::pair(0, 1));
}

TEST_F(PianoFrameTest, NothingIsEditedWhileTheSongIsLocked)
{
    select({1});
    frame->run(ViewCommand::copy);
    using enum ViewCommand;
    for (const ViewCommand command : {cut, paste, remove, duplicate, nudgeLeft, octaveDown, longer, splitNotes}) {
        EXPECT_TRUE(frame->can(command)) << static_cast<int>(command);
        song.locked = true;
        EXPECT_FALSE(frame->can(command)) << static_cast<int>(command);
        song.locked = false;
    }
    frame->run(selectAll);
    EXPECT_EQ(frame->selectedEvnts().size(), 4U);
    frame->run(invertSelection);
    EXPECT_FALSE(frame->can(remove));
}

TEST_F(PianoFrameTest, EscapeAndAnUndoEndWhatTheMouseBegan)
{
    for (const bool escape : {true, false}) {
        QTest::mousePress(view, Qt::LeftButton, {}, at(60, 60));
        QTest::mouseMove(view, at(700, 66));
        if (escape)
            QTest::keyClick(view, Qt::Key_Escape);
        else
            song.editor.HintDispReq();
        QTest::mouseRelease(view, Qt::LeftButton, {}, at(700, 66));
        EXPECT_EQ(events(), "0/C4+240 480/C#4+240 960/D4+240 1440/D#4+240 ") << escape;
    }
}

TEST_F(PianoFrameTest, PropertiesOfOneNoteAndOfSeveral)
{
    using Field = CPnoNotePropPage::Field;
    select({0});
    frame->run(ViewCommand::properties);
    CPnoNotePropPage& page = *frame->noteProperties();
    const auto type = [&](Field field, const char* text) {
        QLineEdit& line = page.field(field);
        line.setText(text);
        line.setModified(true);
        QTest::keyClick(&line, Qt::Key_Return);
    };
    EXPECT_EQ(page.field(Field::time).text(), "1:01:000");
    EXPECT_EQ(page.field(Field::length).text(), "0:240");
    type(Field::key, "g4");
    type(Field::length, "1:0");
    type(Field::time, "1:2:10");
    type(Field::velocity, "0"); // not a note any more: as it was
    EXPECT_EQ(events(), "480/C#4+240 490/G4+480 960/D4+240 1440/D#4+240 ");
    EXPECT_EQ(List<CEvnt>::get(notes[0])->GetPost2(), 100);
    EXPECT_EQ(page.field(Field::velocity).text(), "100");

    select({1, 2});
    EXPECT_EQ(page.field(Field::velocity).text(), "100");
    EXPECT_EQ(page.field(Field::key).text(), "");
    type(Field::key, "C5");
    EXPECT_EQ(events(), "480/C5+240 490/G4+480 960/C5+240 1440/D#4+240 ");
    EXPECT_TRUE(song.editor.UndoNode());
    EXPECT_EQ(events(), "480/C#4+240 490/G4+480 960/D4+240 1440/D#4+240 ");

    frame->run(ViewCommand::remove); // what it shows has gone
    EXPECT_FALSE(page.field(Field::key).isEnabled());
    select({3});
    EXPECT_EQ(page.field(Field::key).text(), "D#4");
    page.close();
    frame->run(ViewCommand::remove);
    song.editor.ClearUndoRedo();
    frame->retranslate();
    frame->run(ViewCommand::properties);
    EXPECT_FALSE(page.field(Field::key).isEnabled());
}

TEST_F(PianoFrameTest, TheGridIsOneForAllWindows)
{
    const auto lengthIn = [](const CPianoFrame& window) { return window.gridBox().noteBox().chosen(-1); };
    CPianoFrame other(song.parts, 4);
    frame->run(ViewCommand::gridFiner);
    EXPECT_EQ(song.grid.index(), 5);
    EXPECT_EQ(lengthIn(other), 5);
    other.run(ViewCommand::gridFree);
    EXPECT_TRUE(frame->isOn(ViewCommand::gridFree));
    EXPECT_FALSE(frame->gridBox().noteBox().isEnabled());
    EXPECT_FALSE(frame->can(ViewCommand::gridFiner));
    frame->run(ViewCommand::gridFree);
    for (int i = 0; i < 9; ++i) other.run(ViewCommand::gridCoarser);
    EXPECT_EQ(lengthIn(*frame), 0);
    EXPECT_FALSE(frame->can(ViewCommand::gridCoarser));
}

TEST_F(PianoFrameTest, ZoomGridAndStripAreAsTheyWere)
{
    frame->gridBox().noteBox().choose(3);
    frame->gridBox().shapeBox().choose(2);
    Q_EMIT frame->gridBox().shapeBox().activated(2);
    EXPECT_EQ(song.grid.index(), 17); // triplets of eighths
    view->rescale([](RollScale& scale) { scale.setZoom(5.25); });
    frame->run(ViewCommand::controlStrip);
    EXPECT_FALSE(strip->isVisible());
    strip->setKind({StripKind::What::control, 11});
    frame->run(ViewCommand::audition);
    frame->saveState();
    EXPECT_EQ(song.bench.settings.ints["View Condition/Piano Zoom"], 5);
    EXPECT_EQ(song.bench.settings.ints["View Condition/Piano VZoom"], 16);
    EXPECT_EQ(song.bench.settings.ints["View Condition/Piano Interval"], 200);
    const CPianoFrame other(song.parts, 4);
    EXPECT_EQ(other.view().scale().zoom(), 5.25);
    EXPECT_EQ(other.view().scale().rowHeight(), 16);
    EXPECT_FALSE(other.isOn(ViewCommand::controlStrip));
    EXPECT_FALSE(other.isOn(ViewCommand::audition));
    EXPECT_EQ(other.strip().kind(), (StripKind{StripKind::What::control, 11}));
    EXPECT_EQ(other.track(), 4);
    song.bench.settings.ints["View Condition/Piano Strip Kind"] = 0x7777; // of nothing
    EXPECT_TRUE(CPianoFrame(song.parts, 4).strip().kind().isVelocity());
}

} // namespace
} // namespace tessaro
