// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/maps/tempo_map.h"
#include "views/list/list_view.h"
#include "views/master/master_frame.h"
#include "views/master/tempo_view.h"
#include "views/roll/strip_path.h"
#include "views/view_bench.h"

#include <QLineEdit>
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
    QTest::mouseMove(&curve(), at(3840, 140) + QPoint(0, 20));
    EXPECT_EQ(steps(), before);
    QTest::mouseClick(&curve(), Qt::LeftButton, {}, at(3840, 120));
    curve().grab();
    const auto points = curve().evnts().tempos(1920, 3841);
    ASSERT_EQ(points.size(), 5U);
    EXPECT_LT(points[2].beats, 118);
    EXPECT_EQ(std::lround(points[4].beats), 140);
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
