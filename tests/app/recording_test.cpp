// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/keyboard_control.h"
#include "views/frame/step_control.h"
#include "views/keyboard/keyboard_panel.h"
#include "views/keyboard/keyboard_view.h"
#include "views/keyboard/typed_layout.h"
#include "views/step/step_panel.h"
#include "views/transport/transport_bar.h"
#include "views/widgets/number_field.h"
#include "window_fixture.h"

#include <QLineEdit>
#include <QSpinBox>

namespace tessaro {
namespace {

struct PlayedNote {
    int key;
    std::uint32_t tick;
    std::uint32_t gate;
};

/// A new song, one input and the computer's keyboard.
class RecordingTest : public WindowTest {
protected:
    RecordingTest()
    {
        midi.played.names = {"Stage Piano", "Computer keyboard"};
        typedKeys = &playedKeys;
        startProgram({});
    }

    CCnpWindow& panel() { return program->panel(); }
    Recorder& recorder() { return panel().recorder(); }
    TransportBar& bar() { return frame().transportBar(); }
    KeyboardControl& keyboard() { return frame().keyboard(); }

    void play(std::initializer_list<std::uint8_t> message) { midi.played.play(0, std::vector<std::uint8_t>(message)); }
    void note(std::uint8_t key, int milliseconds)
    {
        play({0x90, key, 100});
        advance(milliseconds);
        play({0x80, key, 0});
        advance(100);
    }
    void arm(int row)
    {
        list().setFocus();
        list().setCurrentIndex(cell(row, TrackColumn::name));
        QTest::keyClick(&list(), Qt::Key_A);
    }
    std::vector<PlayedNote> notes(int track)
    {
        std::vector<PlayedNote> found;
        for (const CBlk* blk = editor().song().trk(track)->blocks().head(); blk; blk = List<CBlk>::next(blk))
            for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
                if (status::kind(e->GetStatus()) == status::note)
                    found.push_back({e->GetPost1(), blk->GetTimeTop() + e->GetTime(), e->GetGateTime()});
        return found;
    }
    QImage lane(int row)
    {
        QApplication::processEvents();
        const TrkGeometry& places = blks().geometry();
        return blks().viewport()->grab(places.toWindow(places.blkRect(row + 1, 0, 480))).toImage();
    }
};

TEST_F(RecordingTest, ATakeFromTheRedButtonToUndoAndRedo)
{
    QAction& record = frame().actions().record;
    QTest::mouseClick(&bar().recordButton(), Qt::LeftButton); // no track waits
    EXPECT_EQ(boxes, QStringList(utf8Text(strings(TextId::armTrackFirst))));
    EXPECT_FALSE(record.isChecked());
    EXPECT_EQ(bar().recordButton().state(), RecordButton::State::off);

    clickCell(2, TrackColumn::record);
    EXPECT_TRUE(editor().song().trk(3)->GetRec());
    EXPECT_EQ(cell(2, TrackColumn::record).data(Qt::CheckStateRole), Qt::Checked);
    QTest::mouseClick(&bar().recordButton(), Qt::LeftButton);
    EXPECT_EQ(bar().recordButton().state(), RecordButton::State::armed);
    EXPECT_FALSE(frame().statusLine().news().isEmpty());

    const QImage before = lane(2);
    QTest::keyClick(&frame(), Qt::Key_Space);
    EXPECT_EQ(bar().recordButton().state(), RecordButton::State::recording);
    EXPECT_TRUE(record.isChecked());
    EXPECT_FALSE(frame().actions().newSong.isEnabled());
    EXPECT_FALSE(frame().actions().trackUp.isEnabled());
    advance(500);
    note(60, 250);
    note(64, 250);
    EXPECT_NE(lane(2), before) << "the block grows";
    EXPECT_TRUE(blks().isVisible());

    QTest::keyClick(&frame(), Qt::Key_Space);
    EXPECT_EQ(bar().recordButton().state(), RecordButton::State::off);
    EXPECT_FALSE(frame().actions().play.isChecked());
    EXPECT_TRUE(frame().actions().newSong.isEnabled());
    const auto taken = notes(3);
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[0].key, 60);
    EXPECT_NEAR(taken[0].tick, 480, 2); // 120 beats a minute
    EXPECT_NEAR(taken[0].gate, 240, 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 1; }));

    QTest::keyClick(&frame(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(notes(3).empty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 0; }));
    EXPECT_FALSE(frame().actions().undo.isEnabled()); // one step
    QTest::keyClick(&frame(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(notes(3).size(), 2U);
    EXPECT_TRUE(boxes.size() == 1);
}

TEST_F(RecordingTest, UndoWaitsUntilTheTakeHasEnded)
{
    frame().openFile(song);
    deleteFirstBlock(2);
    arm(0);
    QTest::keyClick(&list(), Qt::Key_R);
    QTest::keyClick(&list(), Qt::Key_Space);
    ASSERT_EQ(recorder().state(), RecState::recording);
    EXPECT_FALSE(frame().actions().undo.isEnabled());
    EXPECT_FALSE(frame().actions().save.isEnabled());
    QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&list(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(recorder().state(), RecState::recording);
    advance(300);
    saveAnswer = SaveAnswer::cancel;
    EXPECT_FALSE(frame().close()); // the take is whole before the question
    EXPECT_EQ(recorder().state(), RecState::idle);
    EXPECT_TRUE(frame().actions().undo.isEnabled());
    EXPECT_EQ(editor().GetUndoRedoCount(), 2);
}

TEST_F(RecordingTest, TheTimeLineFollowsALongTake)
{
    arm(0);
    QTest::keyClick(&list(), Qt::Key_R);
    QTest::keyClick(&list(), Qt::Key_Space);
    for (int second = 0; second < 40; ++second) {
        note(48, 900);
        const TrkGeometry& places = blks().geometry();
        ASSERT_LT(places.windowX(panel().GetLocation()), places.size().width());
        ASSERT_GE(places.windowX(panel().GetLocation()), 0);
    }
    EXPECT_EQ(recorder().state(), RecState::recording);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(notes(1).size(), 40U);
}

TEST_F(RecordingTest, TheCountInStandsInTheLocationBox)
{
    store->setInt("System", "Count In Meas", 1);
    arm(0);
    QTest::keyClick(&list(), Qt::Key_R);
    QTest::keyClick(&list(), Qt::Key_Space);
    QStringList counts;
    for (int step = 0; step < 30; ++step) {
        advance(100);
        const QString shown = bar().locationField().banner();
        if (!shown.isEmpty() && !counts.contains(shown)) counts << shown;
    }
    EXPECT_EQ(counts.size(), 4) << counts.join(' ').toStdString();
    EXPECT_TRUE(bar().locationField().banner().isEmpty());
    EXPECT_GT(panel().GetLocation(), 0U);
}

TEST_F(RecordingTest, AReceiveErrorStopsAndTells)
{
    arm(0);
    QTest::keyClick(&list(), Qt::Key_R);
    QTest::keyClick(&list(), Qt::Key_Space);
    advance(300);
    frame().handle({msg::recordError, 0, 0});
    EXPECT_EQ(recorder().state(), RecState::idle);
    EXPECT_EQ(boxes, QStringList(utf8Text(strings(TextId::midiReceiveError))));
    EXPECT_EQ(frame().statusLine().news(), boxes[0]);
}

// The computer's keyboard

TEST_F(RecordingTest, LettersAreNotesWhileTheKeyboardIsOpen)
{
    EXPECT_EQ(midi.played.opened(), 0);
    frame().actions().keyboard.trigger();
    EXPECT_TRUE(keyboard().isOpen());
    EXPECT_EQ(midi.played.opened(), 1) << "the keys are the input now";
    arm(0);
    EXPECT_FALSE(editor().song().trk(1)->GetRec()) << "A is no command now";
    clickCell(0, TrackColumn::record);
    QTest::keyClick(&frame(), Qt::Key_F9);
    ASSERT_EQ(bar().recordButton().state(), RecordButton::State::armed);
    QTest::keyClick(&frame(), Qt::Key_Space);
    for (const Qt::Key key : {Qt::Key_Z, Qt::Key_M, Qt::Key_R, Qt::Key_L, Qt::Key_K, Qt::Key_Period}) {
        QTest::keyPress(&list(), key);
        EXPECT_EQ(keyboard().keyboard().sounds(semitoneOfKey(0, key).value_or(100)), key != Qt::Key_K);
        advance(200);
        QTest::keyRelease(&list(), key);
    }
    EXPECT_TRUE(panel().GetPlayBtn());
    EXPECT_FALSE(panel().GetMetronome());
    EXPECT_FALSE(editor().song().trk(1)->GetMute());

    QTest::keyPress(&list(), Qt::Key_X); // held when the panel closes
    frame().actions().keyboard.trigger();
    EXPECT_FALSE(keyboard().isOpen());
    EXPECT_EQ(midi.played.opened(), 0) << "given back";
    advance(100);
    QTest::keyClick(&frame(), Qt::Key_Space);
    EXPECT_EQ(notes(1).size(), 6U);
    QTest::keyClick(&list(), Qt::Key_M);
    EXPECT_TRUE(editor().song().trk(1)->GetMute());
}

TEST_F(RecordingTest, TextIsTypedAsEverAndNothingHangs)
{
    frame().actions().keyboard.trigger();
    QTest::keyPress(&list(), Qt::Key_Z);
    EXPECT_TRUE(keyboard().keyboard().sounds(0));
    QTest::keyClick(&frame(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_FALSE(keyboard().keyboard().sounds(0)) << "the keys went to the box";
    ASSERT_TRUE(bar().locationField().line());
    QTest::keyClicks(bar().locationField().line(), "2:1:000");
    QTest::keyClick(bar().locationField().line(), Qt::Key_Return);
    EXPECT_EQ(panel().GetLocation(), 1920U);

    KeyboardView& piano = keyboard().panel().view(); // the mouse slides from key to key
    const PianoKeys places(typedSemitones, QRectF(piano.rect()));
    const auto at = [&](double x) { return QPoint(static_cast<int>(x), piano.height() - 5); };
    QTest::mousePress(&piano, Qt::LeftButton, {}, at(5));
    EXPECT_TRUE(keyboard().keyboard().sounds(0));
    QTest::mouseMove(&piano, at(60));
    EXPECT_FALSE(keyboard().keyboard().sounds(0));
    QTest::mouseRelease(&piano, Qt::LeftButton, {}, at(60));
    for (int semitone = 0; semitone < typedSemitones; ++semitone) EXPECT_FALSE(keyboard().keyboard().sounds(semitone));
}

TEST_F(RecordingTest, WithoutAnInputAnArmedTrackBringsTheKeyboard)
{
    arm(0);
    EXPECT_FALSE(keyboard().isOpen());
    midi.played.names = {"Computer keyboard"};
    startProgram({});
    arm(0);
    EXPECT_TRUE(keyboard().isOpen());
    frame().actions().keyboard.trigger();
    EXPECT_FALSE(keyboard().isOpen());
    arm(1);
    EXPECT_FALSE(keyboard().isOpen()) << "the person closed it";
}

// Step input

TEST_F(RecordingTest, StepInputTakesTheChosenLengths)
{
    store->setInt("System", "Rec Mode", 1);
    StepPanel& steps = frame().steps().panel();
    EXPECT_FALSE(steps.isVisible());
    arm(0);
    QTest::keyClick(&list(), Qt::Key_R);
    QTest::keyClick(&list(), Qt::Key_Space);
    ASSERT_EQ(recorder().state(), RecState::recording);
    EXPECT_TRUE(steps.isVisible());

    note(60, 50);
    QTest::keyClick(&frame(), Qt::Key_4, Qt::ControlModifier); // an eighth
    steps.kind(StepKind::dotted).trigger();
    steps.velocityBox().setValue(77);
    note(62, 50);
    QTest::keyClick(&frame(), Qt::Key_Space);
    EXPECT_TRUE(frame().actions().play.isChecked()) << "a rest, and step input goes on";
    steps.kind(StepKind::dotted).trigger(); // off again
    note(64, 50);
    QTest::keyClick(&frame(), Qt::Key_R);
    EXPECT_FALSE(steps.isVisible());
    const auto taken = notes(1);
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_EQ(taken[1].tick, 480U);
    EXPECT_EQ(taken[1].gate, 360U);
    EXPECT_EQ(taken[2].tick, 1200U);
    EXPECT_EQ(taken[2].gate, 240U);
}

} // namespace
} // namespace tessaro
