// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/play_bench.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

std::vector<Heard> only(const std::vector<Heard>& all, bool (Heard::*test)() const)
{
    std::vector<Heard> kept;
    std::copy_if(all.begin(), all.end(), std::back_inserter(kept), [test](const Heard& s) { return (s.*test)(); });
    return kept;
}

TEST(Feeder, PlaysEventsAtTheirTicks)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    bench.addNote(blk, 0, 480, 60);
    bench.addNote(blk, 480, 0, 62); // no gate: sounds for a tick
    bench.add(blk, 0x10, 960, {1, 2, 3, 4});
    bench.add(blk, 0x30, 960, {5, 6, 7});
    bench.bind();
    const Nanos start = bench.clock.now();
    bench.panel.Start();
    bench.run(1500ms);

    const std::vector<Heard> sent = bench.take();
    struct Expected {
        std::uint32_t tick;
        std::vector<std::uint8_t> bytes;
    };
    const std::vector<Expected> expected{
        {0, {0x90, 60, 100}}, {480, {0x90, 60, 0}}, {480, {0x90, 62, 100}}, {481, {0x90, 62, 0}}, {960, {0xB0, 99, 1}},
        {960, {0xB0, 98, 2}}, {960, {0xB0, 6, 3}},  {960, {0xB0, 0, 5}},    {960, {0xB0, 32, 6}}, {960, {0xC0, 7}},
    };
    ASSERT_EQ(sent.size(), expected.size());
    for (std::size_t i = 0; i < sent.size(); ++i) {
        EXPECT_EQ(sent[i].bytes, expected[i].bytes) << i;
        EXPECT_EQ(sent[i].tick, expected[i].tick) << i;
        const double ms = millis(sent[i].due - start);
        EXPECT_NEAR(ms, expected[i].tick * 500.0 / 480.0, 0.01) << i;
    }
}

TEST(Feeder, KeepsTheTimesOfTempoChangesForAnHour)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    double us = 0;
    std::vector<double> exact;
    for (std::uint32_t beat = 0, tempo = 500000; beat < 7000; ++beat) {
        bench.addNote(blk, beat * 480, 100);
        exact.push_back(us);
        us += tempo;
        tempo = 300000 + (beat * 7919U) % 500000U;
        const std::uint8_t data[] = {static_cast<std::uint8_t>(tempo >> 16U), static_cast<std::uint8_t>(tempo >> 8U),
                                     static_cast<std::uint8_t>(tempo)};
        bench.editor.AddTempo((beat + 1) * 480, data);
    }
    ASSERT_GT(us, 3600e6);
    bench.bind();
    const Nanos start = bench.clock.now();
    bench.panel.Start();
    bench.run(4200s);
    const std::vector<Heard> ons = only(bench.take(), &Heard::isNoteOn);
    ASSERT_EQ(ons.size(), exact.size());
    for (std::size_t i = 0; i < ons.size(); ++i) {
        const double at = std::chrono::duration<double, std::micro>(ons[i].due - start).count();
        ASSERT_NEAR(at, exact[i], 1e6 / 48000 / 2) << i;
    }
}

TEST(Feeder, TakesTheFirst512NotesAtOnce)
{
    PlayBench bench;
    for (int track = 1; track <= 10; ++track) {
        CBlk& blk = bench.block(track);
        for (std::uint8_t key = 0; key < 60; ++key) bench.addNote(blk, 0, 960, key);
        for (std::uint8_t key = 0; key < 60; ++key) bench.addNote(blk, 960, 10, key);
    }
    bench.bind();
    bench.panel.Start();
    bench.run(700ms);
    EXPECT_EQ(only(bench.log.heard, &Heard::isNoteOn).size(), 512U);
    bench.run(2000ms);
    EXPECT_EQ(only(bench.log.heard, &Heard::isNoteOn).size(), 1024U) << "ended notes make room";
    EXPECT_EQ(only(bench.log.heard, &Heard::isNoteOff).size(), 1024U);
}

TEST(Feeder, LosesNothingOfABurst)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    for (unsigned i = 0; i < 60000; ++i)
        bench.add(blk, 0xE0, 0, {static_cast<std::uint8_t>(i % 128), static_cast<std::uint8_t>(i / 128 % 128)});
    bench.addNote(blk, 10, 10);
    bench.bind();
    bench.panel.Start();
    bench.run(5s);
    const std::vector<Heard> sent = bench.take();
    ASSERT_EQ(sent.size(), 60002U);
    for (unsigned i = 0; i < 60000; ++i) ASSERT_EQ(sent[i].bytes[1], i % 128);
}

TEST(Feeder, LoopsWithAShorterFirstPass)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    bench.addNote(blk, 0, 20, 60);
    bench.addNote(blk, 479, 5, 61); // the wrap comes before it the first time
    bench.addNote(blk, 400, 500, 62);
    bench.addNote(blk, 480, 10, 63);
    bench.bind();
    bench.panel.SetLoop(0, 480);
    bench.panel.ShortCutLoopClicked();
    bench.panel.Start();
    bench.run(1600ms);
    const std::vector<Heard> sent = bench.take();
    std::vector<std::pair<std::uint8_t, std::uint32_t>> ons;
    for (const Heard& s : only(sent, &Heard::isNoteOn)) ons.emplace_back(s.bytes[1], *s.tick);
    const std::vector<std::pair<std::uint8_t, std::uint32_t>> expected{
        {60, 0}, {62, 400}, {60, 0}, {62, 400}, {61, 479}, {60, 0}, {62, 400}, {61, 479}, {60, 0}};
    ASSERT_EQ(ons, expected);
    // A note across the wrap ends there; passes follow each other without a gap.
    const std::vector<Heard> offs = only(sent, &Heard::isNoteOff);
    EXPECT_EQ(std::count_if(offs.begin(), offs.end(), [](const Heard& s) { return s.bytes[1] == 62; }), 3);
    std::vector<double> starts;
    for (const Heard& s : sent)
        if (s.isNoteOn() && s.bytes[1] == 60) starts.push_back(millis(s.due));
    EXPECT_NEAR(starts[1] - starts[0], 479 / 0.96, 0.01);
    EXPECT_NEAR(starts[2] - starts[1], 500, 0.01);
    EXPECT_NEAR(starts[3] - starts[2], 500, 0.01);
}

TEST(Feeder, WrapsTellFollowersAndRestoreTheTempo)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    for (std::uint32_t t = 0; t < 1920; t += 240) bench.addNote(blk, t, 10);
    const std::uint8_t slow[] = {0x0F, 0x42, 0x40}; // a second a beat
    bench.editor.AddTempo(480, slow);
    bench.bind();
    bench.smc.setOutFilter(0, true);
    bench.smc.smcLocateQuiet(240, false);
    bench.smc.smcSetLoopStart(240);
    EXPECT_TRUE(bench.smc.smcSetLoopStart(240));
    bench.smc.smcSetLoopEnd(240);
    EXPECT_FALSE(bench.smc.smcSetLoopStart(240)) << "equal points are no loop";
    bench.smc.smcSetLoopEnd(720);
    bench.smc.smcPlayStart();
    bench.run(3s);
    std::vector<double> starts;
    std::vector<std::uint8_t> system;
    for (const Heard& s : bench.take()) {
        if (s.bytes[0] >= 0xFB && system.size() < 6 && s.port == 0) system.push_back(s.bytes[0]);
        if (s.bytes[0] == 0xF2 && s.tick) {
            EXPECT_EQ(s.bytes, (std::vector<std::uint8_t>{0xF2, 2, 0}));
        }
        if (s.isNoteOn() && s.tick == 240U) starts.push_back(millis(s.due));
    }
    ASSERT_GE(starts.size(), 3U);
    EXPECT_NEAR(starts[2] - starts[1], 250 + 500, 0.01) << "half a quick beat, half a slow one";
    EXPECT_NE(std::find(system.begin(), system.end(), 0xFC), system.end());
}

TEST(Feeder, SlicesLongSysexAndLeavesSampleDumpsOut)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    std::vector<std::uint8_t> body(10000, 0x11);
    body.back() = 0xF7;
    bench.addBytes(blk, 0xF0, 0, body);
    bench.addBytes(blk, 0xF0, 10, {0x43, 0x1F, 0x68, 0x00, 0xF7});
    bench.user.answer = true;
    bench.editor.InitMeasInfo();
    bench.editor.InitTimeInfo();
    bench.smc.smcBindSong(&bench.editor);
    bench.run(1s);
    ASSERT_EQ(bench.user.questions.size(), 1U);
    ASSERT_EQ(bench.log.heard.size(), 1U) << "the dump goes out on request, at once";
    EXPECT_FALSE(bench.take()[0].tick.has_value());
    bench.panel.Start();
    bench.run(2s);
    std::vector<std::size_t> sizes;
    for (const Heard& s : bench.take()) sizes.push_back(s.bytes.size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{4096, 4096, 10001 - 8192}));
}

TEST(Feeder, EmptySongEndsThreeBarsIn)
{
    PlayBench bench;
    bench.loom.setLoomMetroFlg(1);
    bench.loom.setLoomMetronome(0, 9, 22, 21, 90, 80);
    bench.bind();
    bench.panel.Start();
    bench.run(5990ms);
    EXPECT_TRUE(bench.smc.smcPlayStatus());
    bench.run(30ms);
    bench.main.pump();
    EXPECT_FALSE(bench.panel.GetPlayBtn());
    EXPECT_FALSE(bench.smc.running());
    const std::vector<Heard> ons = only(bench.take(), &Heard::isNoteOn);
    ASSERT_GE(ons.size(), 12U);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(ons[i].bytes[1], i % 4 == 0 ? 22 : 21) << i;
}

TEST(Feeder, SignaturesMoveTheBeat)
{
    PlayBench bench;
    const std::uint8_t three[] = {3, 3, 24, 8};
    bench.editor.AddTs(1920, three);
    bench.loom.setLoomMetronome(0, 9, 22, 21, 90, 80);
    bench.loom.setLoomMetroFlg(1);
    bench.bind();
    bench.smc.smcLocateQuiet(1920 + 720 + 240, false); // second beat of the second bar of 3/8
    bench.smc.smcPlayStart();
    bench.run(900ms);
    std::vector<int> keys;
    for (const Heard& s : only(bench.take(), &Heard::isNoteOn)) keys.push_back(s.bytes[1]);
    EXPECT_EQ(keys, (std::vector<int>{21, 21, 22, 21}));
}

TEST(CountIn, ClicksWholeBarsAndWhatStandsBeforeThePosition)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    for (std::uint32_t t = 0; t < 19200; t += 480) bench.addNote(blk, t, 100);
    bench.settings.ints["System/Count In Meas"] = 1;
    bench.loom.setLoomMetronome(0, 9, 22, 21, 90, 80);
    bench.bind();
    bench.smc.smcLocateQuiet(1920 + 480, false);
    const Nanos start = bench.clock.now();
    bench.smc.smcSetPreCount(true);
    bench.smc.smcPlayStart();
    EXPECT_EQ(bench.smc.countInShown(), -5);
    bench.run(1200ms);
    EXPECT_EQ(bench.smc.countInShown(), -2);
    EXPECT_EQ(bench.smc.smcGetPlayCount(), 2400U);
    bench.run(2000ms);
    EXPECT_EQ(bench.smc.countInShown(), std::nullopt);
    std::vector<int> clicks;
    std::optional<Nanos> first;
    for (const Heard& s : only(bench.take(), &Heard::isNoteOn)) {
        if (s.bytes[0] == 0x99)
            clicks.push_back(s.bytes[1]);
        else if (!first)
            first = s.due;
    }
    EXPECT_EQ(clicks, (std::vector<int>{22, 21, 21, 21, 22}));
    ASSERT_TRUE(first);
    EXPECT_NEAR(millis(*first - start), 2500, 2);
    bench.smc.smcPlayStop();

    // The song itself in place of the clicks, where there is enough of it.
    bench.settings.ints["System/Count In Play"] = 1;
    bench.smc.smcLocateQuiet(3840 + 480, false);
    bench.smc.smcSetPreCount(true);
    bench.smc.smcPlayStart();
    EXPECT_EQ(bench.smc.countInShown(), std::nullopt);
    EXPECT_EQ(bench.smc.smcGetPlayCount(), 1920U);
    bench.smc.smcPlayStop();
    bench.settings.ints["System/Count In Meas"] = 4;
    bench.smc.smcLocateQuiet(1920, false);
    bench.smc.smcSetPreCount(true);
    bench.smc.smcPlayStart();
    EXPECT_TRUE(bench.smc.countInShown()) << "too near the start";
    bench.smc.smcPlayStop();
    bench.settings.ints["System/Count In Meas"] = 0;
    bench.smc.smcSetPreCount(true);
    bench.smc.smcPlayStart();
    EXPECT_EQ(bench.smc.countInShown(), std::nullopt);
}

TEST(Feeder, FiltersKindsOut)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    bench.addNote(blk, 0, 10);
    bench.add(blk, 0xA0, 0, {1, 2});
    bench.add(blk, 0xB0, 0, {1, 2});
    bench.add(blk, 0x20, 0, {1, 2, 3, 4});
    bench.add(blk, 0xC0, 0, {1});
    bench.add(blk, 0xD0, 0, {1});
    bench.add(blk, 0xE0, 0, {1, 2});
    bench.addBytes(blk, 0xF0, 0, {1, 0xF7});
    bench.bind();
    const std::map<std::uint32_t, std::size_t> left{{0, 11},    {0x01, 9},  {0x04, 10}, {0x08, 7}, {0x10, 10},
                                                    {0x20, 10}, {0x40, 10}, {0x80, 10}, {0xFF, 0}};
    for (const auto& [mask, count] : left) {
        bench.smc.setOutFilter(mask, false);
        bench.smc.smcLocateQuiet(0, true);
        bench.take();
        bench.smc.smcPlayStart();
        bench.run(100ms);
        EXPECT_EQ(bench.take().size(), count) << mask;
        bench.smc.smcPlayStop();
    }
}

} // namespace
} // namespace tessaro::test
