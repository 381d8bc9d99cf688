// SPDX-License-Identifier: GPL-3.0-or-later
// What is heard of a take while it runs, and what is not.
#include "realtime/play/play_bench.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

_EDT_EVNT event(std::uint8_t status, std::uint32_t time, std::uint8_t data1, std::uint32_t gate = 0)
{
    _EDT_EVNT rec;
    rec.status = status;
    rec.time = time;
    rec.post1 = data1;
    rec.post2 = 100;
    rec.gateTime = gate;
    return rec;
}

TEST(TakeEcho, TellsEachEventOncePerPassInTheOrderOfTime)
{
    Dice dice{11};
    TakeEcho echo;
    echo.clear();
    std::vector<std::pair<std::uint32_t, std::uint8_t>> heard; // by time, then in the order of adding
    std::uint8_t name = 0;
    for (int pass = 0; pass < 8; ++pass) {
        echo.locate(100);
        std::vector<std::pair<std::uint32_t, std::uint8_t>> told;
        const auto before = heard;
        for (std::uint32_t tick = 100; tick < 200; ++tick) {
            while (const TakeEcho::Event* e = echo.next(tick)) told.emplace_back(e->time, e->data1);
            if (!dice.oneIn(6)) continue;
            const std::uint32_t time = dice.between(100, tick); // what was played is behind the feeder
            echo.add(3, event(0x95, time, name, 10));
            heard.emplace_back(time, name++);
            if (dice.oneIn(2)) echo.takeOver();
        }
        echo.takeOver();
        EXPECT_EQ(told, before) << "in pass " << pass;
        std::stable_sort(heard.begin(), heard.end(), [](auto a, auto b) { return a.first < b.first; });
    }

    echo.clear();
    echo.add(1, event(0xF0, 100, 0));
    echo.add(1, event(0xFF, 100, 0));
    for (std::size_t n = 0; n < 2 * TakeEcho::room; ++n) {
        echo.add(1, event(0xB0, 5, 7));
        if (n % 1000 == 0) echo.takeOver();
    }
    echo.locate(0);
    std::size_t count = 0;
    while (echo.next(100)) ++count;
    EXPECT_LE(count, TakeEcho::room);
    EXPECT_GT(count, TakeEcho::room / 2);
}

class TakePlay : public testing::TestWithParam<int> {
protected:
    TakePlay()
    {
        for (int track = 1; track <= 3; ++track) {
            CBlk& blk = bench.block(track);
            for (std::uint32_t t = 0; t < 3840; t += 480) bench.addNote(blk, t, 100, keyOf(track));
            bench.editor.SetTrkCh(track, static_cast<std::uint8_t>(track));
        }
        bench.editor.song().trk(3)->SetRec(true);
        bench.bind();
        bench.editor.song().trk(2)->SetMute(true); // its switch stays on: what is left out is not even queued
        bench.smc.smcSetThruPort(0x80);
        bench.settings.ints["System/Real Rec Mode"] = GetParam();
        bench.panel.SetLoop(0, 960);
        bench.panel.ShortCutLoopClicked();
    }
    static std::uint8_t keyOf(int track) { return static_cast<std::uint8_t>(40 + track); }
    void run(std::chrono::milliseconds span)
    {
        for (; span > 0ms; span -= 50ms) {
            bench.run(50ms);
            bench.main.pump();
            bench.panel.timer();
        }
    }
    void playKey(std::uint8_t key)
    {
        bench.receive({0x90, key, 100});
        run(100ms);
        bench.receive({0x90, key, 0});
    }
    [[nodiscard]] std::vector<std::uint32_t> ticksOf(std::uint8_t key)
    {
        std::vector<std::uint32_t> ticks;
        for (const Heard& h : bench.log.heard)
            if (h.isNoteOn() && h.bytes[1] == key) ticks.push_back(*h.tick);
        return ticks;
    }

    PlayBench bench;
};

TEST_P(TakePlay, PlaysThePassesBeforeOnceEachTime)
{
    const bool replaces = GetParam() == 1;
    bench.panel.ShortCutRECClicked();
    bench.panel.Start();
    run(300ms);
    playKey(70); // near 288
    run(500ms);
    playKey(71); // near 864, when the feeder is in the second pass already
    while (bench.smc.smcGetPlayCount() > 240) bench.run(1ms);
    playKey(72); // at the loop's start
    CBlk& take = *bench.editor.song().trk(3)->blocks().tail();
    EXPECT_EQ(&take, bench.panel.GetRecBlk(bench.editor.GetTrkPos(3)));
    run(2000ms);
    bench.editor.StopSeq(); // an edit that interrupts the take
    bench.editor.PlaySeq();
    run(2000ms);
    EXPECT_EQ(take.playState().playState, 0) << "the feeder has left the take's block alone";

    const std::uint32_t played = static_cast<std::uint32_t>(ticksOf(keyOf(1)).size()); // two a pass
    EXPECT_GE(played, 8U);
    const std::pair<std::uint8_t, std::uint32_t> keys[] = {{70, 288}, {71, 864}, {72, 0}};
    for (const auto& [key, at] : keys) {
        const std::vector<std::uint32_t> ticks = ticksOf(key);
        EXPECT_NEAR(static_cast<double>(ticks.size()), played / 2.0 - 1, 1) << "in each pass but the first";
        for (const std::uint32_t tick : ticks) EXPECT_NEAR(tick, at, 8);
    }
    EXPECT_EQ(ticksOf(keyOf(3)).empty(), replaces);
    const auto note = std::find_if(bench.log.heard.begin(), bench.log.heard.end(),
                                   [](const Heard& h) { return h.isNoteOn() && h.bytes[1] == 70; });
    EXPECT_EQ(note->bytes[0], 0x93) << "on the track's channel";

    // The take ends and the song plays on: from the block now, and once.
    bench.panel.RecStop();
    bench.take();
    run(2000ms);
    EXPECT_NEAR(static_cast<double>(ticksOf(70).size()), 2, 1);
    bench.panel.Stop();
}

TEST_P(TakePlay, LeavesOutMutedTracksOnlyWhileItRecordsInTime)
{
    bench.settings.ints["RealtimeRec/Mute"] = 1;
    for (const bool records : {true, false}) {
        if (records) bench.panel.ShortCutRECClicked();
        bench.take();
        bench.panel.Start();
        run(1200ms);
        EXPECT_FALSE(ticksOf(keyOf(1)).empty());
        EXPECT_EQ(ticksOf(keyOf(2)).empty(), records);
        bench.panel.Stop();
    }
}

INSTANTIATE_TEST_SUITE_P(RealRecModes, TakePlay, testing::Values(0, 1));

} // namespace
} // namespace tessaro::test
