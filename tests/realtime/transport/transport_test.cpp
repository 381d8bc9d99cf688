// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "realtime/play/output_filter.h"
#include "realtime/transport/devices.h"
#include "realtime/transport/panel_bench.h"

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

using TransportTest = PanelTest;

TEST_F(TransportTest, PlaysStopsAndGoesBack)
{
    bench.panel.SetLocation(480);
    bench.panel.SpaceKey();
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    EXPECT_TRUE(seen.timer);
    play(1000ms);
    EXPECT_NEAR(bench.panel.GetLocation(), 480 + 960, 10);
    EXPECT_EQ(view.got.back(), (std::pair<std::uint32_t, std::uint64_t>{0x415, bench.panel.GetLocation()}));

    bench.panel.ESCKey(); // plays on from where it began
    EXPECT_EQ(view.got.back(), (std::pair<std::uint32_t, std::uint64_t>{0x416, 480}));
    EXPECT_FALSE(bench.smc.running());
    bench.main.pump();
    play(500ms);
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    EXPECT_NEAR(bench.panel.GetLocation(), 480 + 480, 15);

    bench.panel.SpaceKey();
    EXPECT_FALSE(bench.panel.GetPlayBtn());
    EXPECT_FALSE(seen.timer);
    EXPECT_EQ(bench.main.handled.back().id, 0x417U);
    bench.panel.ESCKey();
    EXPECT_EQ(bench.panel.GetLocation(), 480U);
    EXPECT_FALSE(bench.smc.running());
    bench.panel.SetLocation(-1);
    EXPECT_EQ(bench.panel.GetLocation(), 0U);
    bench.panel.End();
    EXPECT_EQ(bench.panel.GetLocation(), bench.editor.GetTimeEnd());
    bench.panel.Start();
    bench.panel.Top();
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    EXPECT_EQ(bench.smc.smcGetPlayCount(), 0U);
    EXPECT_EQ(bench.panel.Stop(), 1);
    EXPECT_EQ(bench.panel.Stop(), 1);
}

TEST_F(TransportTest, TellsViewsOfWrapsUnlessTheyDoNotFollow)
{
    bench.panel.SetLoop(960, 1440);
    bench.panel.ShortCutLoopClicked();
    bench.panel.SetLocation(960);
    bench.panel.Start();
    view.got.clear();
    play(600ms);
    EXPECT_NE(std::find(view.got.begin(), view.got.end(), std::pair<std::uint32_t, std::uint64_t>{0x416, 960}),
              view.got.end());
    view.got.clear();
    bench.panel.SetViewChase(false);
    play(1000ms);
    EXPECT_TRUE(view.got.empty());
    EXPECT_EQ(bench.settings.ints.at("System/View Chase"), 0);

    std::uint32_t start = 0;
    std::uint32_t end = 0;
    EXPECT_TRUE(bench.panel.GetLoop(start, end));
    EXPECT_EQ(end, 1440U);
    bench.panel.Stop();
    bench.panel.SetTop();
    EXPECT_FALSE(bench.panel.GetLoop(start, end));
    EXPECT_EQ(end, 0U);
}

TEST_F(TransportTest, TempoBoxReachesEveryTempo)
{
    for (int wanted = 20; wanted <= 480; ++wanted) {
        bench.panel.SetTempo(wanted);
        ASSERT_EQ(bench.panel.GetTempo(), wanted);
    }
    bench.panel.TempoReset();
    EXPECT_EQ(seen.tempo, 120);
    bench.panel.TempoUp();
    EXPECT_EQ(seen.tempo, 121);
    EXPECT_EQ(bench.loom.getLoomRelativeTempo(), 9); // the smallest that reaches it
}

TEST_F(TransportTest, StandsWhileAnEditTakesItsTimeAndGoesOnBehindIt)
{
    bench.panel.Start();
    play(100ms);
    {
        const UndoScope step(bench.editor, "long");
        bench.editor.StopSeq();
        bench.panel.timer(); // the window lives on behind a progress bar or a box
        EXPECT_TRUE(bench.panel.GetPlayBtn());
    }
    EXPECT_TRUE(bench.smc.running());
    bench.editor.StopSeq();
    bench.editor.SetPrgDlg(); // as undo has
    bench.panel.timer();
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    bench.editor.EndPrgDlg();
    bench.editor.PlaySeq();
    EXPECT_TRUE(bench.smc.running());
    bench.editor.StopSeq();
    bench.panel.timer();
    EXPECT_FALSE(bench.panel.GetPlayBtn());
}

TEST_F(TransportTest, EditsInterruptPlayAndKeepItsPlace)
{
    bench.panel.SetLoop(0, 9600);
    bench.panel.ShortCutLoopClicked();
    bench.panel.Start();
    play(1000ms);
    bench.editor.StopSeq();
    EXPECT_FALSE(bench.smc.running());
    const std::uint32_t at = bench.smc.smcGetPlayCount();
    bench.editor.PlaySeq();
    EXPECT_TRUE(bench.smc.running());
    play(200ms);
    EXPECT_NEAR(bench.panel.GetLocation(), at + 192, 10);
    EXPECT_TRUE(bench.panel.GetPlayBtn());

    bench.editor.StopSeq();
    bench.panel.Stop();
    bench.editor.PlaySeq();
    EXPECT_FALSE(bench.smc.running()) << "stopped for good meanwhile";
    bench.panel.Start();

    // A song that has ended by itself stays ended.
    bench.panel.ShortCutLoopClicked();
    bench.panel.SetLocation(19200);
    bench.main.pump();
    bench.run(7s);
    EXPECT_FALSE(bench.smc.smcPlayStatus());
    bench.editor.StopSeq();
    bench.editor.PlaySeq();
    EXPECT_FALSE(bench.smc.running());
}

TEST_F(TransportTest, FollowsWhatComesFromOutside)
{
    bench.panel.SetLocation(4800);
    tell(3);
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    EXPECT_EQ(bench.smc.smcGetPlayCount(), 0U);
    tell(6, 8 << 8U); // not while it plays
    EXPECT_EQ(bench.smc.smcGetPlayCount(), 0U);
    tell(2);
    EXPECT_FALSE(bench.panel.GetPlayBtn());
    tell(6, (1 << 16U) | (8 << 8U));
    EXPECT_EQ(bench.panel.GetLocation(), 136U * 120);
    tell(4);
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    EXPECT_EQ(bench.smc.smcGetPlayCount(), 136U * 120);
    bench.panel.Stop();

    // Filtered, it is no longer obeyed; the panel's own requests and the song's end still are.
    bench.smc.setInFilter(filter::realTime, {});
    tell(3);
    tell(4);
    tell(6, 8 << 8U);
    EXPECT_FALSE(bench.panel.GetPlayBtn());
    bench.panel.Start();
    tell(2);
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    bench.panel.SetLocation(960);
    bench.main.pump();
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    tell(5);
    EXPECT_FALSE(bench.panel.GetPlayBtn());
}

TEST_F(TransportTest, DevicesReachTheEngine)
{
    Devices devices{bench.smc, bench.midi};
    devices.enumerate();
    EXPECT_EQ(devices.midiOutNames(), (std::vector<std::string>{"one", "---", "three"}));
    const std::int32_t drivers[] = {0x7F, 2, 2};
    EXPECT_TRUE(devices.setOutPorts(drivers, 8192, 10)) << "a port without a driver is no failure";
    EXPECT_EQ(bench.smc.outPorts(), 3U);
    bench.take();
    devices.sendShort(2, 0xB0, 7, 1);
    bench.main.send({msg::allSoundOff, 0, 0});
    bench.run(20ms);
    EXPECT_EQ(bench.take().size(), 1U + 2 * 16 * 2);
}

} // namespace
} // namespace tessaro::test
