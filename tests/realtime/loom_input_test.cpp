// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom_rig.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <deque>

namespace tessaro::test {

namespace {

constexpr int on = 0x90;

Bytes bytesOf(const LoomRingEntry& entry)
{
    return {entry.data, entry.data + (entry.status == 0xF0 ? entry.length : entry.size)};
}

} // namespace

TEST(LoomInput, ThruEndsNotesWhereTheyBegan)
{
    Dice dice(3);
    for (int round = 0; round < 30; ++round) {
        Rig rig;
        StreamChecker checker;
        rig.loom.setLoomThruFlag(1);
        rig.loom.setLoomThruPort(0);
        std::vector<std::pair<int, int>> held;
        for (int step = 0; step < 500; ++step) {
            switch (dice.below(12)) {
            case 0: rig.loom.setLoomThruPort(static_cast<int>(dice.below(6))); break;
            case 1: rig.loom.setLoomThruCh(static_cast<int>(dice.below(17)) - 1); break;
            case 2: rig.loom.setLoomThruTrns(static_cast<int>(dice.below(140)) - 70); break;
            case 3: rig.loom.setLoomThruFilt(dice.oneIn(4) ? 0xFFU : 0U); break;
            case 4: rig.loom.setLoomThruPort(dice.oneIn(2) ? 0x80 : 1); break;
            default: break;
            }
            if (!held.empty() && dice.oneIn(2)) {
                const auto which = held.begin() + dice.below(static_cast<std::uint32_t>(held.size()));
                rig.input({(dice.oneIn(2) ? 0x80 : on) | which->first, which->second, 0});
                held.erase(which);
            } else {
                held.emplace_back(dice.below(16), dice.below(128));
                rig.input({on | held.back().first, held.back().second, 64});
            }
        }
        for (const auto& [channel, key] : held) rig.input({on | channel, key, 0});
        const auto sent = rig.sent();
        EXPECT_GT(sent.size(), 50U);
        checker.check(sent);
        EXPECT_EQ(checker.sounding(), 0);
    }
}

TEST(LoomInput, ThruMovesAndFilters)
{
    Rig rig;
    rig.loom.setLoomThruFlag(1);
    rig.loom.setLoomThruPort(2);
    rig.loom.setLoomThruCh(4);
    rig.loom.setLoomThruTrns(12);
    rig.loom.setLoomThruFilt(0x08 | 0x20);
    for (const int kind : {0x80, 0x90, 0xA0, 0xB0, 0xE0}) rig.input({kind, 60, 50});
    rig.input({0xC1, 9});
    rig.input({0xD1, 9});
    rig.input({0xF0, 1, 2});
    rig.input({0xF8});
    rig.input({3, 0xF7});
    std::vector<Bytes> got;
    for (const Sent& message : rig.sent()) {
        EXPECT_EQ(message.driver, 2);
        got.push_back(message.bytes);
    }
    const std::vector<Bytes> wanted{{0x94, 72, 50}, {0xA4, 72, 50}, {0xE4, 60, 50}, {0xC4, 9}, {0xF0, 1, 2}, {3, 0xF7}};
    EXPECT_EQ(got, wanted);
}

TEST(LoomInput, TheRecordRingWrapsAndKeepsBytesUntilFreed)
{
    Rig rig;
    Dice dice(5);
    rig.loom.setLoomRecFlag(1);
    std::deque<Bytes> waiting;
    std::uint16_t read = 0;
    const auto readOne = [&] {
        ASSERT_NE(read, rig.loom.getLoomWrdpt());
        const LoomRingEntry& entry = rig.loom.getLoomRecdata()[read];
        const Bytes wanted = waiting.front();
        if (wanted[0] == 0xF0) {
            ASSERT_EQ(entry.status, wanted.size() > 65'535 ? 0xF7 : 0xF0);
            ASSERT_TRUE(bytesOf(entry) == wanted);
        } else {
            ASSERT_EQ((Bytes{entry.status, entry.data1, entry.data2}), wanted);
        }
        waiting.pop_front();
        rig.loom.loomIncRrdpt();
        read = static_cast<std::uint16_t>((read + 1) % 600);
    };
    for (int i = 0; i < 5000; ++i) {
        Bytes message{0x90, dice.byteBelow(128), dice.byteBelow(128)};
        if (dice.oneIn(4)) {
            message.assign(2 + dice.below(dice.oneIn(30) ? 150'000 : 3000), dice.byteBelow(128));
            message.front() = 0xF0;
            message.back() = 0xF7;
        }
        const std::uint16_t before = rig.loom.getLoomWrdpt();
        for (std::size_t at = 0; at < message.size();) { // in slices
            const std::size_t size = std::min<std::size_t>(message.size() - at, 1 + dice.below(100'000));
            rig.midi.sink->received(std::span(message).subspan(at, message.size() < 4 ? 3 : size), rig.clock.now());
            at += message.size() < 4 ? 3 : size;
        }
        if (rig.loom.getLoomWrdpt() == before) {
            EXPECT_EQ(rig.loom.getLoomRecError(), 1) << "nothing is lost in silence";
            rig.loom.setLoomRecError(0);
        } else {
            waiting.push_back(message);
        }
        while (waiting.size() > 590 || (!waiting.empty() && dice.oneIn(2))) readOne();
    }
    while (!waiting.empty()) readOne();
    EXPECT_EQ(read, rig.loom.getLoomWrdpt());
}

TEST(LoomInput, LossIsReported)
{
    Rig rig;
    rig.input({on, 60, 1});
    EXPECT_EQ(rig.loom.getLoomWrdpt(), 0) << "not recording";
    rig.loom.setLoomRecFlag(1);
    for (int i = 0; i < 599; ++i) rig.input({on, i % 128, 1});
    EXPECT_EQ(rig.loom.getLoomRecError(), 0);
    rig.input({on, 1, 1});
    EXPECT_EQ(rig.loom.getLoomRecError(), 1);
    rig.loom.loomIncRrdpt();
    rig.loom.setLoomRecError(0);
    rig.input({on, 2, 1});
    EXPECT_EQ(rig.loom.getLoomRecError(), 0);

    for (int i = 0; i < 599; ++i) rig.loom.loomIncRrdpt();
    const auto end = rig.loom.getLoomWrdpt();
    // A message cut off by another one, by an error of the driver, by junk, by another input.
    rig.input({0xF0, 1});
    rig.input({on, 1, 1});
    EXPECT_EQ(rig.loom.getLoomRecError(), 1);
    rig.loom.setLoomRecError(0);
    rig.input({0xF0, 1});
    rig.midi.sink->inputError();
    EXPECT_EQ(rig.loom.getLoomRecError(), 1);
    rig.input({2, 0xF7});
    rig.input({0xF0, 1, 0x95, 0xF7});
    rig.input({0xF0, 1});
    EXPECT_TRUE(rig.loom.setLoomInPort(1, 512));
    rig.input({2, 0xF7});
    rig.input({0x90, 0x80, 1});
    rig.input({0x90, 1});
    EXPECT_EQ(rig.loom.getLoomWrdpt(), (end + 1) % 600) << "only the note came through";
    EXPECT_TRUE(rig.loom.setLoomInPort(0x80, 512));
    EXPECT_EQ(rig.midi.sink, nullptr);
    rig.midi.failing = 0;
    EXPECT_FALSE(rig.loom.setLoomInPort(0, 512));
}

TEST(LoomInput, EntriesCarryTheSongTickOfTheirArrival)
{
    Rig rig;
    rig.loom.setLoomRecFlag(1);
    rig.arm(4800);
    rig.input({on, 1, 1});
    rig.put(shortRecord(1, 4800, que::null));
    rig.put(shortRecord(480, 5280, que::null));
    rig.put(shortRecord(0, 4800, que::null)); // the song jumps back
    rig.play();
    rig.run(100ms);
    rig.input({on, 2, 1});
    rig.run(450ms);
    const std::array<std::uint8_t, 3> late{on, 3, 1};
    rig.midi.sink->received(late, rig.clock.now() - 10ms);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(rig.loom.getLoomRecdata()[i].time, (std::array{4800U, 4896U, 4838U}.at(i))) << i;
}

TEST(LoomSync, NewsOfAnotherMachine)
{
    Rig rig;
    rig.arm(960);
    for (const int status : {0xFA, 0xFB, 0xFC}) rig.input({status});
    rig.input({0xF2, 0x25, 0x03});
    const auto news = rig.window.take();
    ASSERT_EQ(news.size(), 4U);
    EXPECT_EQ((std::array{news[0].wParam, news[1].wParam, news[2].wParam, news[3].wParam}),
              (std::array<std::uint64_t, 4>{3, 4, 2, 6}));
    EXPECT_EQ(news[0].lParam, 960);
    EXPECT_EQ((news[3].lParam >> 16 & 0x7F) * 128 + (news[3].lParam >> 8 & 0x7F), 0x03 * 128 + 0x25);
    rig.run(1s);
    EXPECT_EQ(rig.loom.getLoomQueplying(), 0) << "in internal sync the window decides";
}

TEST(LoomSync, StandsStillWithoutClocks)
{
    Rig rig;
    rig.loom.setLoomSyncMode(1);
    const auto clocks = [&](int n) {
        for (; n > 0; --n, rig.run(20ms)) rig.input({0xF8});
    };
    clocks(48);
    EXPECT_EQ(rig.loom.getLoomQueplying(), 0);
    rig.arm();
    rig.put(shortRecord(1, 0, on, 60, 90));
    for (int tick = 20; tick <= 400; tick += 20) rig.put(shortRecord(20, static_cast<std::uint32_t>(tick), que::null));
    rig.put(shortRecord(0, 400, on, 60, 0));
    rig.input({0xFB});
    EXPECT_EQ(rig.loom.getLoomQueplying(), 1);
    EXPECT_TRUE(rig.sent().empty()) << "begins with the clock";
    clocks(11);
    rig.run(1ms);
    EXPECT_EQ(rig.loom.getLoomQplaytime(), 220U);
    rig.run(10s);
    EXPECT_LE(rig.loom.getLoomQplaytime(), 240U);
    rig.input({0xFC});
    EXPECT_EQ(rig.loom.getLoomQueplying(), 0);
    EXPECT_EQ(rig.sent().back().bytes, (Bytes{on, 60, 0}));
    rig.run(1s);
    rig.input({0xFB});
    clocks(1);
    EXPECT_EQ(rig.loom.getLoomQplaytime(), 240U);
    clocks(7);
    rig.run(1ms);
    EXPECT_EQ(rig.loom.getLoomQplaytime(), 380U) << "goes on with the clock after the last before";
    clocks(2);
    EXPECT_EQ(rig.loom.getLoomQplaytime(), 400U);
    EXPECT_TRUE(rig.sent().empty()) << "the note had ended";
    rig.loom.setLoomQueplying(0);
    rig.input({0xFA});
    clocks(2);
    EXPECT_EQ(rig.loom.getLoomQueplying(), 0) << "no longer armed";
}

TEST(LoomSync, LeadsOthers)
{
    Rig rig(2);
    rig.loom.setLoomRealTimeMessagesSw(1);
    const auto play = [&](std::uint32_t position) {
        rig.arm(position);
        // A loop of 96 ticks, told to slaves as the feeder does.
        rig.put(shortRecord(1, position, que::null));
        rig.put(shortRecord(96, position + 96, que::stopPlay, 0, 0, 0));
        rig.put(shortRecord(0, 38'500, que::songPosition, 0, 0, 0));
        rig.put(shortRecord(0, position + 96, que::continuePlay, 0, 0, 0));
        rig.put(shortRecord(30, 38'530, que::null));
        rig.play();
        rig.run(130ms);
        rig.loom.setLoomQueplying(0);
        std::vector<Bytes> first;
        std::vector<Nanos> clocks;
        const auto sent = rig.sent();
        const Nanos start = sent.empty() ? 0ns : sent[0].due;
        for (const Sent& message : sent) {
            if (message.driver != 0) continue;
            if (message.bytes[0] == 0xF8)
                clocks.push_back(message.due - start);
            else
                first.push_back(message.bytes);
        }
        EXPECT_EQ(std::count_if(sent.begin(), sent.end(), [](const Sent& m) { return m.driver == 1; }),
                  std::ptrdiff_t(sent.size() / 2));
        return std::pair(first, clocks);
    };
    const auto tick = [](int n) { return Nanos(std::llround(n * 500e6 / 480)); };
    const auto [fromTop, topClocks] = play(0);
    // 38500 ticks are 320 sixteenths and a rest.
    EXPECT_EQ(fromTop, (std::vector<Bytes>{{0xFA}, {0xFC}, {0xF2, 320 & 0x7F, 320 >> 7}, {0xFB}, {0xFC}}));
    EXPECT_EQ(topClocks, (std::vector{tick(0), tick(20), tick(40), tick(60), tick(80), tick(96), tick(116)}));
    const auto [inside, insideClocks] = play(130);
    EXPECT_EQ(inside.front(), (Bytes{0xFB}));
    EXPECT_EQ(insideClocks.front(), tick(10));

    rig.loom.setLoomRealTimeMessagesSw(0);
    EXPECT_TRUE(play(0).first.empty());
    // An absurd tempo must not hold up the engine.
    rig.loom.setLoomRealTimeMessagesSw(1);
    rig.loom.setLoomMidiTempo(0, 1);
    rig.loom.queTimeTic();
    rig.arm();
    rig.play();
    rig.run(1s);
    EXPECT_LT(rig.sent().size(), 20'000U);
}

} // namespace tessaro::test
