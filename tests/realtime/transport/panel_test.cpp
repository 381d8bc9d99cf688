// SPDX-License-Identifier: GPL-3.0-or-later
// The panel's held buttons and its record button.
#include "realtime/transport/panel_bench.h"

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

TEST(Winding, GoesByTheSongsBarsAndBeats)
{
    PlayBench bench;
    const std::uint8_t threeEight[] = {3, 3, 24, 8};
    const std::uint8_t fourFour[] = {4, 2, 24, 8};
    bench.editor.AddTs(0, fourFour);
    bench.editor.AddTs(1920, threeEight); // bars of 720, beats of 240
    bench.bind();

    using enum WindStep;
    const std::tuple<std::uint32_t, int, WindStep, std::uint32_t> cases[] = {
        {0, 1, beat, 480},       {0, 1, bar, 1920},       {1920, 1, bar, 2640},   {2640, -1, bar, 1920},
        {1920, -1, bar, 0},      {1920, 1, beat, 2160},   {1920, -1, beat, 1440}, {100, -1, beat, 0},
        {1000, 1, faster, 1001}, {1000, -1, faster, 999},
    };
    for (const auto& [from, direction, step, to] : cases) {
        Winding winding;
        EXPECT_EQ(winding.repeat(bench.editor, from, direction, step), to) << from;
        EXPECT_EQ(winding.release(bench.editor, to), to) << "one repetition is not rounded";
    }

    Winding winding;
    std::uint32_t at = 0;
    for (std::uint32_t n = 1; n <= 20; ++n) {
        const std::uint32_t before = at;
        at = winding.repeat(bench.editor, at, 1, WindStep::faster);
        EXPECT_EQ(at - before, (n / 10 + 1) * n);
        Winding copy = winding;
        EXPECT_EQ(copy.release(bench.editor, at), n > 19 ? 0U : at); // nearest to the first bar
    }
}

TEST_F(PanelTest, WindsFromWhereItStandsAndSettlesWhenLetGo)
{
    bench.panel.SetLocation(960);
    bench.panel.Start();
    play(300ms);
    bench.panel.Wind(1, WindStep::beat);
    EXPECT_FALSE(bench.panel.GetPlayBtn());
    const std::uint32_t stopped = bench.smc.smcGetPlayCount();
    EXPECT_EQ(bench.panel.GetLocation(), stopped + 480);
    EXPECT_EQ(view.got.back(), (std::pair<std::uint32_t, std::uint64_t>{0x416, stopped + 480}));
    for (int i = 0; i < 25; ++i) bench.panel.Wind(1, WindStep::beat);
    bench.panel.Start(); // lets go of it first
    EXPECT_EQ(bench.smc.smcGetPlayCount() % 1920, 0U);
    EXPECT_EQ(bench.smc.smcGetPlayCount(), bench.editor.GetMeasTime(stopped + 26 * 480));
    bench.panel.Stop();
}

TEST_F(PanelTest, ThinsTheBoxAndNotTheViews)
{
    for (const int thinTime : {0, 1, 3}) {
        bench.panel.setThinTime(thinTime);
        bench.panel.Start();
        seen.locations.clear();
        view.got.clear();
        play(1200ms);
        EXPECT_EQ(seen.locations.size(), thinTime == 3 ? 4U : 12U);
        EXPECT_EQ(view.got.size(), 12U);
        bench.panel.Stop();
    }
}

TEST_F(PanelTest, FastForwardIsFourTimesTheTempoWhileItIsHeld)
{
    bench.panel.SetRelativeTempo(100);
    const int tempo = seen.tempo;
    for (const bool fromStop : {true, false}) {
        bench.panel.SetLocation(0);
        if (!fromStop) bench.panel.Start();
        const std::uint32_t from = bench.smc.smcGetPlayCount();
        bench.panel.FastForwardPressed();
        EXPECT_TRUE(bench.panel.GetFastForward());
        play(1000ms);
        EXPECT_NEAR(bench.smc.smcGetPlayCount(), from + 4 * 960, 20) << "on top of the song's own tempo";
        EXPECT_EQ(seen.tempo, tempo) << "the box keeps the wish";
        bench.panel.FastForwardReleased();
        EXPECT_FALSE(bench.panel.GetFastForward());
        EXPECT_EQ(bench.loom.getLoomRelativeTempo(), 100);
        EXPECT_EQ(bench.smc.running(), !fromStop);
        EXPECT_EQ(seen.timer, !fromStop);
        bench.panel.Stop();
        EXPECT_EQ(bench.panel.GetLocation(), bench.smc.smcGetPlayCount());
    }
}

TEST_F(PanelTest, TakesBeginWithTheirCountInAndGoBackWhenStopped)
{
    bench.settings.ints["System/Count In Meas"] = 1;
    bench.panel.SetLocation(1920);
    bench.panel.ShortCutRECClicked();
    EXPECT_FALSE(bench.panel.IsRecButton()) << "no track is armed";
    armTrack(2);
    bench.panel.ShortCutRECClicked();
    EXPECT_TRUE(bench.panel.IsRecButton());
    bench.panel.Start();
    EXPECT_TRUE(bench.transport.isRecording());
    play(2000ms);
    EXPECT_EQ(seen.texts, (std::vector<std::string>{"-3", "-2", "-1", "0"}));
    EXPECT_NEAR(bench.smc.smcGetPlayCount(), 1920, 20);
    play(2000ms);
    playKey(60);
    EXPECT_FALSE(bench.editor.OpenUndoNode("refused"));
    bench.panel.StopClicked();
    EXPECT_FALSE(bench.panel.IsRecButton());
    EXPECT_FALSE(bench.editor.IsUndoOpen());
    EXPECT_EQ(bench.panel.GetLocation(), 1920U);
    EXPECT_EQ(blocksOn(2), 1U);

    // The song itself counts in: what it plays before is no wrap of a loop.
    bench.settings.ints["System/Count In Play"] = 1;
    bench.panel.SetLoop(1920, 9600);
    bench.panel.ShortCutLoopClicked();
    bench.panel.ShortCutRECClicked();
    bench.panel.Start();
    EXPECT_EQ(bench.panel.GetLocation(), 0U);
    play(500ms);
    EXPECT_EQ(bench.panel.GetRecBlk(bench.editor.GetTrkPos(2))->GetTimeEnd(), 1920U);
    play(2000ms);
    EXPECT_NEAR(bench.panel.recorder().lastTick(), 2400, 20);
    bench.main.send({msg::recordError, 0, 0});
    EXPECT_FALSE(bench.panel.IsRecButton());
    EXPECT_EQ(bench.panel.GetLocation(), 1920U);
}

TEST_F(PanelTest, PunchesInAndOutByHand)
{
    bench.settings.ints["System/Count In Meas"] = 1;
    armTrack(2);
    bench.panel.Start();
    play(1000ms);
    const std::uint32_t in = bench.smc.smcGetPlayCount();
    bench.panel.ShortCutRECClicked();
    EXPECT_TRUE(bench.transport.isRecording());
    EXPECT_EQ(bench.panel.recorder().topTick(), in);
    play(500ms);
    EXPECT_NEAR(bench.smc.smcGetPlayCount(), in + 480, 20) << "without a count-in";
    playKey(64);
    bench.panel.ShortCutRECClicked();
    EXPECT_FALSE(bench.panel.IsRecButton());
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    EXPECT_TRUE(bench.smc.smcPlayStatus());
    EXPECT_EQ(blocksOn(2), 1U);
    bench.take();
    bench.panel.SetLocation(static_cast<long>(in));
    play(1000ms);
    const std::vector<Heard> heard = bench.take();
    EXPECT_EQ(
        std::count_if(heard.begin(), heard.end(), [](const Heard& h) { return h.isNoteOn() && h.bytes[1] == 64; }), 1);
    bench.panel.Stop();
}

TEST_F(PanelTest, StepsOnWhileNothingPlays)
{
    bench.settings.ints["System/Rec Mode"] = 1;
    armTrack(2);
    bench.panel.SetLocation(960);
    bench.panel.ShortCutRECClicked();
    bench.panel.SpaceKey();
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    EXPECT_FALSE(bench.smc.running());
    playKey(60);
    bench.panel.SpaceKey(); // a rest
    bench.panel.timer();
    EXPECT_EQ(bench.panel.GetLocation(), 960U + 2 * 480);
    bench.panel.Wind(-1, WindStep::beat);
    bench.panel.WindReleased();
    EXPECT_EQ(bench.panel.recorder().stepTick(), 960U + 480);
    bench.panel.SetLocation(4800);
    EXPECT_EQ(bench.panel.recorder().stepTick(), 4800U);
    playKey(62);
    bench.loom.setLoomSyncMode(1);
    tell(2); // what another machine plays is nothing to step input
    tell(6, 4 << 8U);
    EXPECT_TRUE(bench.panel.IsStepRec());
    bench.loom.setLoomSyncMode(0);
    bench.panel.StopClicked();
    EXPECT_FALSE(bench.panel.GetPlayBtn());
    EXPECT_EQ(bench.panel.GetLocation(), 4800U + 480) << "step input stays where it got";

    bench.panel.Start();
    bench.panel.ShortCutRECClicked(); // step input from here; the song stops for it
    EXPECT_FALSE(bench.smc.running());
    bench.panel.ShortCutRECClicked();
    EXPECT_FALSE(bench.panel.GetPlayBtn());
    EXPECT_FALSE(seen.timer);
    bench.panel.ShortCutRECClicked();
    bench.panel.Top();
    EXPECT_TRUE(bench.panel.IsStepRec()) << "as yet only armed";
    bench.panel.Start();
    bench.panel.Top();
    EXPECT_FALSE(bench.panel.IsStepRec() || bench.panel.GetPlayBtn());
}

TEST_F(PanelTest, FollowsAMasterWithATake)
{
    bench.loom.setLoomSyncMode(1);
    armTrack(2);
    bench.panel.ShortCutRECClicked();
    bench.panel.Start();
    tell(6, 0); // the position it has already
    EXPECT_TRUE(bench.panel.IsRecButton());
    EXPECT_TRUE(bench.smc.running());
    bench.receive({0xFA});
    for (int clock = 0; clock < 48; ++clock) {
        bench.receive({0xF8});
        bench.run(20ms);
    }
    bench.main.pump();
    EXPECT_GT(bench.smc.smcGetPlayCount(), 480U);
    bench.receive({0xFC});
    bench.run(20ms);
    bench.main.pump();
    EXPECT_FALSE(bench.panel.IsRecButton());
    EXPECT_TRUE(bench.panel.GetPlayBtn());
    EXPECT_TRUE(bench.smc.running());
    tell(6, 8 << 8U);
    EXPECT_EQ(bench.panel.GetLocation(), 960U);
    bench.panel.SetLocation(1920);
    EXPECT_TRUE(bench.smc.running()) << "in sync it is at once ready again";
    bench.panel.Stop();
    EXPECT_FALSE(bench.smc.running());
}

} // namespace
} // namespace tessaro::test
