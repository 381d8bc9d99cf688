// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/panel_dock.h"
#include "views/transport/transport_bar.h"
#include "views/widgets/number_field.h"
#include "window_fixture.h"

#include <QLineEdit>

namespace tessaro {
namespace {

class TransportTest : public WindowTest {
protected:
    TransportTest() { frame().openFile(song); }

    CCnpWindow& panel() { return program->panel(); }
    TransportBar& bar() { return frame().transportBar(); }
    ToolButton& button(const QString& name)
    {
        for (ToolButton* found : buttons())
            if (found->accessibleName() == name) return *found;
        throw std::runtime_error(name.toStdString());
    }
    static void type(NumberField& field, const QString& text)
    {
        QTest::mouseClick(&field, Qt::LeftButton);
        QTest::keyClicks(field.line(), text);
        QTest::keyClick(field.line(), Qt::Key_Return);
    }
    std::uint32_t bar(std::uint32_t number) { return editor().MeasToTime({number - 1, 0, 0}); }
};

TEST_F(TransportTest, PlacesAreTyped)
{
    const std::pair<const char*, _EDT_MEAS> places[] = {
        {"3", {2, 0, 0}}, {"4:2", {3, 1, 0}}, {"5.3.120", {4, 2, 120}}, {"12 1 0", {11, 0, 0}}};
    for (const auto& [text, place] : places) {
        type(bar().locationField(), QString::fromLatin1(text));
        EXPECT_EQ(panel().GetLocation(), editor().MeasToTime(place)) << text;
        EXPECT_FALSE(bar().locationField().line());
    }
    const std::uint32_t stays = panel().GetLocation();
    type(bar().locationField(), QStringLiteral("0:1:0"));
    ASSERT_TRUE(bar().locationField().line());
    QTest::keyClick(bar().locationField().line(), Qt::Key_Escape);
    EXPECT_EQ(panel().GetLocation(), stays);

    QTest::keyClick(&frame(), Qt::Key_Space);
    advance(500);
    type(bar().locationField(), QStringLiteral("20")); // and plays on from there
    program->queue().drain();
    advance(500);
    EXPECT_TRUE(panel().GetPlayBtn());
    EXPECT_GT(panel().GetLocation(), bar(20));
}

TEST_F(TransportTest, TheTempoChangesWhileTheSongPlays)
{
    QTest::keyClick(&frame(), Qt::Key_Space);
    advance(1000);
    const auto pace = [this] { // ticks in a second
        const std::uint32_t from = panel().GetLocation();
        advance(1000);
        return panel().GetLocation() - from;
    };
    const std::uint32_t own = pace();
    const QString ownTempo = bar().tempoField().value();
    const int twice = panel().GetTempo() * 2;
    type(bar().tempoField(), QString::number(twice));
    EXPECT_EQ(bar().tempoField().value(), QString::number(twice));
    EXPECT_NEAR(pace(), own * 2, own / 10);
    EXPECT_TRUE(frame().actions().tempoReset.isEnabled());
    QTest::keyClick(&frame(), Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(panel().GetTempo(), twice - 1);
    QTest::mouseClick(&button("Tempo of the Song"), Qt::LeftButton);
    EXPECT_EQ(bar().tempoField().value(), ownTempo);
    EXPECT_FALSE(frame().actions().tempoReset.isEnabled());
    EXPECT_TRUE(panel().GetPlayBtn());
}

TEST_F(TransportTest, HeldButtonsLastAsLongAsTheyAreHeld)
{
    ToolButton& forward = button("Forward");
    QTest::mousePress(&forward, Qt::LeftButton);
    for (int i = 0; i < 4; ++i) frame().actions().forward.repeat();
    EXPECT_EQ(panel().GetLocation(), editor().MeasToTime({1, 1, 0})); // five beats
    QTest::mouseRelease(&forward, Qt::LeftButton);
    QTest::keyPress(&frame(), Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyRelease(&frame(), Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_GE(panel().GetLocation(), bar(3));
    EXPECT_FALSE(frame().actions().forward.isHeld());

    frame().actions().top.trigger();
    ToolButton& fast = button("Fast Forward");
    QTest::mousePress(&fast, Qt::LeftButton);
    EXPECT_TRUE(frame().actions().fastForward.isChecked());
    advance(2000);
    EXPECT_GT(panel().GetLocation(), bar(4)); // four times as fast
    QTest::mouseRelease(&fast, Qt::LeftButton);
    EXPECT_FALSE(frame().actions().fastForward.isChecked());
    const std::uint32_t reached = panel().GetLocation();
    advance(500);
    EXPECT_EQ(panel().GetLocation(), reached);
}

TEST_F(TransportTest, LoopPointsPushEachOther)
{
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    type(bar().loopStartField(), QStringLiteral("9"));
    type(bar().loopEndField(), QStringLiteral("5"));
    EXPECT_FALSE(panel().GetLoop(start, end));
    EXPECT_EQ(start, bar(5));
    EXPECT_EQ(end, bar(5));
    type(bar().loopEndField(), QStringLiteral("7"));
    frame().actions().loop.trigger();
    EXPECT_TRUE(panel().GetLoop(start, end));
    EXPECT_EQ(end, bar(7));
    list().setCurrentIndex(cell(4, TrackColumn::name));
    frame().actions().loopTrack.trigger();
    EXPECT_TRUE(panel().GetLoop(start, end));
    EXPECT_LT(start, end);
}

TEST_F(TransportTest, SwitchesAndTranspositionAgreeWithThePanel)
{
    const auto agrees = [this] {
        const FrameActions& a = frame().actions();
        return a.midiChase.isChecked() == panel().GetMIDIChase() && a.viewChase.isChecked() == panel().GetViewChase()
            && a.metronome.isChecked() == panel().GetMetronome()
            && a.midiSync.isChecked() == (panel().GetSyncMode() != 0);
    };
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_V, Qt::Key_K, Qt::Key_C}) {
        QTest::keyClick(&frame(), key);
        EXPECT_TRUE(agrees()) << key;
    }
    EXPECT_TRUE(panel().GetMetronome());
    frame().actions().midiSync.trigger();
    EXPECT_EQ(panel().GetSyncMode(), 1U);
    EXPECT_TRUE(agrees());
    frame().actions().midiSync.trigger();
    EXPECT_EQ(panel().GetSyncMode(), 0U);
    type(bar().transposeField(), QStringLiteral("-5"));
    QTest::keyClick(&frame(), Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(bar().transposeField().value(), "-4");
    EXPECT_EQ(panel().GetTranspose(), -4);
}

TEST_F(TransportTest, ThePanelComesBackWhereItStood)
{
    for (const PanelPlace place : {PanelPlace::bottom, PanelPlace::floating, PanelPlace::top}) {
        for (QAction* action : frame().actions().panelPlace.actions())
            if (action->data().toInt() == static_cast<int>(place)) action->trigger();
        EXPECT_EQ(frame().panelDock().place(), place);
        if (place == PanelPlace::floating) frame().panelDock().setGeometry(30, 40, 900, 70);
        frame().close();
        startProgram({});
        EXPECT_EQ(frame().panelDock().place(), place);
        EXPECT_EQ(frame().actions().panelPlace.checkedAction()->data().toInt(), static_cast<int>(place));
        if (place == PanelPlace::floating) {
            EXPECT_EQ(frame().panelDock().pos(), QPoint(30, 40));
        }
    }
}

} // namespace
} // namespace tessaro
