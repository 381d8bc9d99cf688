// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/maps/tempo_map.h"
#include "core/model/tick.h"
#include "views/list/list_view.h"
#include "views/master/master_frame.h"
#include "views/master/tempo_view.h"
#include "views/roll/strip_path.h"
#include "views/view_bench.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

namespace tessaro {
namespace {

TEST(TempoScaleTest, GoesThereAndBack)
{
    TempoScale scale;
    scale.resize(1000, 500);
    scale.setStart(1000);
    for (const double zoom : {1.0, 24.0, 240.0}) {
        scale.setZoom(zoom);
        for (const int x : {96, 200, 999}) EXPECT_EQ(scale.x(scale.time(x)), x) << zoom;
    }
    EXPECT_EQ(scale.time(10), 1000U);
    EXPECT_LT(scale.x(0), TempoScale::left);
    scale.setTempos(72, 300);
    EXPECT_EQ(scale.slowest(), 40);
    EXPECT_EQ(scale.fastest(), 320);
    for (const double beats : {40.0, 120.0, 320.0}) EXPECT_NEAR(scale.beats(scale.y(beats)), beats, 0.5);
    EXPECT_LT(scale.y(200), scale.y(100));
    const std::uint32_t under = scale.time(500);
    scale.zoomAt(500, 12);
    EXPECT_NEAR(scale.time(500), under, 12);
    scale.showSpan({4800, 9600});
    EXPECT_EQ(scale.x(4800), TempoScale::left);
    EXPECT_LT(scale.x(9600), 1000);
    EXPECT_EQ(TempoScale::lane(TempoScale::ruler), 0);
    EXPECT_EQ(TempoScale::lane(TempoScale::curveTop), -1);
}

TEST(RampPointsTest, PutsATempoToEachStepOfTheGrid)
{
    ViewBench bench;
    const auto ramp = [&bench](StripPoint from, StripPoint to) {
        StripPath path;
        path.start(from);
        path.lineTo(to);
        std::string all;
        for (const TempoPoint& point : rampPoints(path, bench.editor, bench.grid))
            all += std::to_string(point.time) + '=' + std::to_string(std::lround(point.beats)) + ' ';
        return all;
    };
    EXPECT_TRUE(rampPoints({}, bench.editor, bench.grid).empty());
    bench.grid.setIndex(1); // half notes
    EXPECT_EQ(ramp({0, 10000}, {1920, 12000}), "0=100 960=110 1920=120 ");
    EXPECT_EQ(ramp({1920, 12000}, {0, 10000}), "0=100 960=110 1920=120 ");
    EXPECT_EQ(ramp({100, 10000}, {1200, 11100}), "100=100 960=109 1200=111 ");
    EXPECT_EQ(ramp({0, 8000}, {1920, 8000}), "0=80 ");
    EXPECT_EQ(ramp({960, 8000}, {960, 8000}), "960=80 ");
    EXPECT_EQ(ramp({0, 100}, {960, 200000}), "0=4 960=1000 ");
    bench.grid.setIndex(7); // dotted whole notes begin anew with each bar
    EXPECT_EQ(ramp({0, 10000}, {3840, 14000}), "0=100 1920=120 3840=140 ");
    bench.grid.setFree(true); // beats
    EXPECT_EQ(ramp({10, 10000}, {970, 12000}), "10=100 490=110 970=120 ");
    EXPECT_EQ(ramp({tick::latest - 10, 10000}, {tick::latest, 12000}).substr(0, 11), "4294967285=");
}

class MasterTest : public testing::Test {
protected:
    MasterTest() { bench.block(1, 0).SetTimeEnd(1920 * 16); }

    CMstrFrm& open()
    {
        frame = std::make_unique<CMstrFrm>(bench.parts());
        frame->resize(1200, 700);
        frame->show();
        curve().grab();
        bench.grid.setIndex(2); // quarter notes
        return *frame;
    }
    TempoView& curve() { return frame->curve(); }
    CListVw& list() { return frame->list(); }
    QPoint at(std::uint32_t time, double beats) { return {curve().scale().x(time), curve().scale().y(beats)}; }
    QPoint lane(FlagLane flag, std::uint32_t time)
    {
        return {curve().scale().x(time) + 4, TempoScale::yOfLane(static_cast<int>(flag)) + 10};
    }
    void drag(EditTool tool, std::initializer_list<QPoint> way, Qt::KeyboardModifiers keys = {})
    {
        bench.actions.setTool(tool);
        QTest::mousePress(&curve(), Qt::LeftButton, keys, *way.begin());
        for (const QPoint& point : way) QTest::mouseMove(&curve(), point);
        QTest::mouseRelease(&curve(), Qt::LeftButton, keys, *(way.end() - 1));
        curve().grab();
    }
    /// As "time=beats", whole numbers.
    std::string tempos()
    {
        curve().grab();
        std::string all;
        for (const TempoPoint& point : curve().evnts().tempos())
            all += std::to_string(point.time) + '=' + std::to_string(std::lround(point.beats)) + ' ';
        return all;
    }
    void add(std::uint32_t time, double beats)
    {
        EvntDraft draft = newEvnt(EvntKind::tempo, time, 0);
        draft.data = {static_cast<std::uint8_t>(static_cast<int>(6e7 / beats) >> 16),
                      static_cast<std::uint8_t>(static_cast<int>(6e7 / beats) >> 8),
                      static_cast<std::uint8_t>(static_cast<int>(6e7 / beats))};
        list().edits().insert(0, draft);
        curve().grab();
    }
    int steps() { return bench.editor.GetUndoRedoIndex(); }

    ViewBench bench;
    std::unique_ptr<CMstrFrm> frame;
};

TEST_F(MasterTest, DrawsARampOverTheGridAsOneStep)
{
    open();
    add(2400, 90); // goes
    add(9600, 150);
    const int before = steps();
    drag(EditTool::line, {at(1920, 100), at(3840, 140)});
    EXPECT_EQ(steps(), before + 1);
    EXPECT_EQ(tempos(), "0=120 1920=100 2400=110 2880=120 3360=130 3840=140 9600=150 ");
    _EDT_TIMEINFO info;
    bench.editor.GetTimeInfo(3000, info);
    EXPECT_NEAR(6e7 / info.tempo, 120, 1);
    bench.editor.UndoNode();
    EXPECT_EQ(tempos(), "0=120 2400=90 9600=150 ");

    // The curve bends between release and the next press; its ends stay.
    drag(EditTool::curve, {at(1920, 100), at(3840, 140)});
    QTest::mouseMove(&curve(), at(3840, 140)); // a pointer that is there already does not move
    const QPoint below = at(3840, 140) + QPoint(0, 20);
    QMouseEvent hover(QEvent::MouseMove, below, curve().mapToGlobal(below), {}, {}, {});
    QApplication::sendEvent(&curve(), &hover);
    EXPECT_EQ(steps(), before);
    QTest::mouseClick(&curve(), Qt::LeftButton, {}, at(3840, 120));
    curve().grab();
    const auto points = curve().evnts().tempos(1920, 3841);
    ASSERT_EQ(points.size(), 5U);
    EXPECT_LT(points[2].beats, 118);
    EXPECT_EQ(std::lround(points[4].beats), 140);
}

TEST_F(MasterTest, AFlatLineTakesThePlaceOfWhatItPasses)
{
    open();
    add(1920, 100);
    add(2400, 90);
    add(3840, 140);
    drag(EditTool::line, {at(960, 80), at(2880, 80)});
    EXPECT_EQ(tempos(), "0=120 960=80 3840=140 ");
    bench.editor.UndoNode();
    EXPECT_EQ(tempos(), "0=120 1920=100 2400=90 3840=140 ");
}

TEST_F(MasterTest, PencilOverTheFirstTempoKeepsIt)
{
    open();
    drag(EditTool::pencil, {at(0, 80), at(480, 80), at(960, 80)});
    EXPECT_EQ(tempos(), "0=80 ");
    bench.editor.UndoNode();
    EXPECT_EQ(tempos(), "0=120 ");
}

TEST_F(MasterTest, DragsAndErasesPoints)
{
    open();
    add(1920, 100);
    add(3840, 140);
    add(5760, 160);
    drag(EditTool::select, {at(1920, 100), at(2000, 110), at(3840, 130)});
    EXPECT_EQ(tempos(), "0=120 3840=130 5760=160 "); // takes the place of the one that it meets
    EXPECT_EQ(list().selection().count(), 1U);
    drag(EditTool::select, {at(5760, 160), at(5760, 150), at(7000, 130)}, Qt::ShiftModifier);
    EXPECT_EQ(curve().evnts().tempos().size(), 3U);
    drag(EditTool::select, {at(0, 120), at(960, 110), at(1920, 100)});
    EXPECT_EQ(tempos().substr(0, 6), "0=100 "); // keeps its time
    const int before = steps();
    drag(EditTool::eraser, {at(0, 100), at(3840, 130), at(3900, 130)});
    EXPECT_EQ(curve().evnts().tempos().size(), 2U);
    EXPECT_EQ(steps(), before + 1);
    frame->run(ViewCommand::selectAll);
    frame->run(ViewCommand::nudgeUp);
    EXPECT_EQ(tempos().substr(0, 6), "0=101 ");
}

TEST_F(MasterTest, ADragGoesOnWhileThePictureScrolls)
{
    open();
    add(1920, 100);
    bench.actions.setTool(EditTool::select);
    QTest::mousePress(&curve(), Qt::LeftButton, {}, at(1920, 100));
    QTest::mouseMove(&curve(), at(2400, 100));
    const QPoint pointer = at(2880, 100);
    QTest::mouseMove(&curve(), pointer);
    curve().scrollTo(1920); // the pointer is over a later time now
    QTest::mouseRelease(&curve(), Qt::LeftButton, {}, pointer);
    EXPECT_EQ(tempos(), "0=120 4800=100 ");

    // A band keeps its beginning; beyond the edge the picture goes on.
    curve().scrollTo(0);
    const int middle = curve().scale().y(110);
    QTest::mousePress(&curve(), Qt::LeftButton, {}, {at(480, 0).x(), curve().height() - 2});
    QTest::mouseMove(&curve(), {curve().width() / 2, middle});
    QTest::mouseMove(&curve(), {curve().width() + 20, TempoScale::curveTop + 1});
    ASSERT_TRUE(QTest::qWaitFor([this] { return curve().scale().start() > 5760; }));
    QTest::mouseMove(&curve(), {curve().width() - 20, TempoScale::curveTop + 1});
    const std::uint32_t still = curve().scale().start();
    QTest::mouseRelease(&curve(), Qt::LeftButton, {}, {curve().width() - 20, TempoScale::curveTop + 1});
    EXPECT_EQ(list().selection().count(), 1U); // that of 4800, out of sight
    EXPECT_EQ(curve().scale().start(), still);
}

TEST_F(MasterTest, TheMenuInsertsAtThePointer)
{
    open();
    add(1920, 100);
    const auto insert = [this](QPoint point, const char* typed) {
        QMenu menu;
        curve().fillMenu(menu, point);
        menu.actions().front()->trigger();
        ASSERT_TRUE(curve().line());
        curve().line()->selectAll();
        QTest::keyClicks(curve().line(), typed);
        QTest::keyClick(curve().line(), Qt::Key_Return);
    };
    const int before = steps();
    insert(at(3840, 150), "133");
    insert(at(1920, 130), "90"); // stands there already
    EXPECT_EQ(tempos(), "0=120 1920=90 3840=133 ");
    insert(lane(FlagLane::markers, 960), "Verse");
    EXPECT_EQ(steps(), before + 3);
    QMenu menu;
    curve().fillMenu(menu, at(3840, 133));
    EXPECT_EQ(list().selection().inOrder(), std::vector{curve().evnts().ref(curve().evnts().tempos().back().evnt)});
    EXPECT_TRUE(curve().openSelected());
    EXPECT_EQ(curve().line()->text(), "133.00");
    bench.editor.UndoNode();
    bench.editor.UndoNode();
    bench.editor.UndoNode();
    EXPECT_FALSE(curve().line()); // its tempo has gone
}

TEST_F(MasterTest, SignaturesThatFollowOneAnotherAreTypedAndDeletedTogether)
{
    open();
    for (const std::uint32_t bar : {2U, 4U, 6U}) {
        EvntDraft draft = newEvnt(EvntKind::signature, bar * 1920, 0);
        draft.data = {2, 2, 24, 8};
        draft.rec.time = bench.editor.MeasToTime({bar, 0, 0});
        list().edits().insert(0, draft);
    }
    const auto signatures = [this] {
        std::string all;
        for (std::size_t row = 0; row < list().rows().count(); ++row)
            if (kindOf(list().rows().event(row)) == EvntKind::signature)
                all += list().cellText(row, ListColumn::place).toStdString() + '='
                     + list().cellText(row, ListColumn::value1).toStdString() + ' ';
        return all;
    };
    const std::string before = signatures();
    EXPECT_EQ(before, "1:01:000=4/4 3:01:000=2/4 5:01:000=2/4 7:01:000=2/4 ");
    const auto rowOf = [this](std::uint32_t bar) {
        return static_cast<int>(list().rows().firstFrom(bench.editor.MeasToTime({bar, 0, 0})));
    };
    const auto click = [this](int row, Qt::KeyboardModifiers keys) {
        const QModelIndex cell = list().model()->index(row, static_cast<int>(ListColumn::value1));
        QTest::mouseClick(list().viewport(), Qt::LeftButton, keys, list().visualRect(cell).center());
    };
    click(rowOf(2), {});
    click(rowOf(4), Qt::ControlModifier);
    frame->run(ViewCommand::editCell);
    auto* line = list().viewport()->findChild<QLineEdit*>();
    ASSERT_TRUE(line);
    QTest::keyClicks(line, "3/4");
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(signatures(), "1:01:000=4/4 3:01:000=3/4 5:01:000=3/4 7:01:000=2/4 ");
    EXPECT_EQ(list().selection().count(), 1U); // the other one was made anew
    EXPECT_EQ(list().currentIndex().row(), rowOf(4));
    frame->run(ViewCommand::remove);
    EXPECT_EQ(signatures(), "1:01:000=4/4 5:01:000=3/4 7:01:000=2/4 ");
    bench.editor.UndoNode();
    bench.editor.UndoNode();
    EXPECT_EQ(signatures(), before);
    bench.editor.RedoNode();
    frame->run(ViewCommand::selectAll);
    frame->run(ViewCommand::remove);
    EXPECT_EQ(signatures(), "1:01:000=4/4 ");
}

TEST_F(MasterTest, KeepsItsFilterApartFromTheList)
{
    open();
    list().setFilter({1U << static_cast<unsigned>(KindGroup::tempos), -1});
    EXPECT_EQ(bench.settings.getInt("Track", "Master Filter", 0), ~(1 << static_cast<int>(KindGroup::tempos)));
    EXPECT_EQ(bench.listSettings.monitorType, 0);
    open();
    EXPECT_EQ(list().rows().count(), 1U);
}

TEST_F(MasterTest, TypesValuesInTheirPlace)
{
    open();
    add(1920, 100);
    bench.actions.setTool(EditTool::select);
    QTest::mouseDClick(&curve(), Qt::LeftButton, {}, at(1920, 100));
    ASSERT_TRUE(curve().line());
    EXPECT_EQ(curve().line()->text(), "100.00");
    curve().line()->selectAll();
    QTest::keyClicks(curve().line(), "2");
    QTest::keyClick(curve().line(), Qt::Key_Return);
    ASSERT_TRUE(curve().line()); // no such tempo
    QTest::keyClicks(curve().line(), "22.5");
    const int before = steps();
    QTest::keyClick(curve().line(), Qt::Key_Return);
    EXPECT_FALSE(curve().line());
    EXPECT_EQ(steps(), before + 1);
    curve().grab();
    EXPECT_NEAR(curve().evnts().tempos()[1].beats, 222.5, 0.01);
}

TEST_F(MasterTest, PutsFlagsIntoTheirLanes)
{
    open();
    struct Case {
        FlagLane lane;
        std::uint32_t time;
        const char* typed;
        std::uint32_t lands;
        const char* shown;
    };
    const Case cases[] = {{FlagLane::signatures, 4000, "3/4", 3840, "3/4"},
                          {FlagLane::keys, 1920, "Eb major", 1920, "Eb major"},
                          {FlagLane::markers, 2400, "Verse", 2400, "Verse"},
                          {FlagLane::texts, 960, "hello", 960, "hello"}};
    for (const Case& flag : cases) {
        const int before = steps();
        QTest::mouseDClick(&curve(), Qt::LeftButton, {}, lane(flag.lane, flag.time));
        ASSERT_TRUE(curve().line()) << flag.typed;
        curve().line()->selectAll();
        QTest::keyClicks(curve().line(), flag.typed);
        QTest::keyClick(curve().line(), Qt::Key_Return);
        EXPECT_EQ(steps(), before + 1);
        curve().grab();
        const auto flags = curve().evnts().flags(flag.lands, flag.lands + 1);
        ASSERT_FALSE(flags.empty()) << flag.typed;
        const auto row = list().rows().find(curve().evnts().ref(flags.back().evnt));
        ASSERT_TRUE(row);
        const ListColumn column = flag.lane <= FlagLane::keys ? ListColumn::value1 : ListColumn::data;
        EXPECT_EQ(list().cellText(*row, column), flag.shown);
    }
    _EDT_MEAS place;
    bench.editor.TimeToMeas(3840 + 1440, place);
    EXPECT_EQ(place.meas, 4U);
    // Escape leaves all as it was; a marker can be dragged, a signature cannot.
    const int before = steps();
    QTest::mouseDClick(&curve(), Qt::LeftButton, {}, lane(FlagLane::texts, 7680));
    QTest::keyClick(curve().line(), Qt::Key_Escape);
    EXPECT_EQ(steps(), before);
    drag(EditTool::select, {lane(FlagLane::markers, 2400), lane(FlagLane::markers, 2880)});
    EXPECT_EQ(curve().evnts().flags(2880, 2881).size(), 1U);
    bench.user.messages.clear();
    drag(EditTool::select, {lane(FlagLane::signatures, 3840), lane(FlagLane::signatures, 7680)});
    EXPECT_EQ(bench.user.messages, std::vector{static_cast<int>(TextId::eventNotMovable)});
    EXPECT_EQ(curve().evnts().flags(7680, 7681).size(), 0U);
}

TEST_F(MasterTest, TheFirstTempoAndSignatureStay)
{
    open();
    add(1920, 100);
    frame->run(ViewCommand::selectAll);
    bench.user.messages.clear();
    frame->run(ViewCommand::remove);
    EXPECT_EQ(bench.user.messages, std::vector{static_cast<int>(TextId::eventNotDeletable)});
    EXPECT_EQ(tempos(), "0=120 ");
    EXPECT_EQ(list().rows().count(), 2U);
}

} // namespace
} // namespace tessaro
