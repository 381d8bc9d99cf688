// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom_rig.h"
#include "support/random.h"
#include "support/rt_guard.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tessaro::test {

namespace {

__extension__ typedef __int128 Wide;

/// Time of a sum of tick * tempo at a relative tempo, rounded to the nearest nanosecond by plain long division.
Nanos exactTime(Wide ticksTimesTempo, int relative)
{
    const Wide over = ticksTimesTempo * 1000 * 1000;
    const Wide under = Wide{480} * (1000 + relative);
    return Nanos(static_cast<std::int64_t>((over * 2 + under) / (under * 2)));
}

std::vector<Nanos> dueTimes(const std::vector<Sent>& messages)
{
    std::vector<Nanos> result;
    for (const Sent& message : messages) result.push_back(message.due);
    return result;
}

class Watcher final : public SendObserver {
public:
    void sent(const SentMessage& message) noexcept override
    {
        const RtGuardPause pause;
        seen.push_back(message);
    }
    std::vector<SentMessage> seen;
};

constexpr int control = 0xB0;

} // namespace

TEST(RtGuardDeathTest, EndsTheProgramOnAllocation)
{
    if (!rtGuardWatches()) GTEST_SKIP();
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            rtGuardHook(true);
            Bytes bytes(100);
            rtGuardHook(false);
        },
        "real-time section");
}

TEST(LoomTime, IsExactOverAnHourOfTempoChanges)
{
    for (const int relative : {0, -371, 3000}) {
        Rig rig;
        Dice dice(static_cast<std::uint32_t>(relative + 1000));
        rig.run(1'234'567ns);
        rig.loom.setLoomRelativeTempo(relative);
        rig.loom.queTimeTic();
        rig.arm();
        rig.put(shortRecord(1, 0, control, 1, 1));
        std::vector<Nanos> wanted;
        const Nanos start = rig.clock.now();
        Wide sum = 0;
        std::uint32_t tempo = 500'000;
        wanted.push_back(start);
        rig.play();
        while (exactTime(sum, relative) < 1h) {
            const std::uint32_t delta = dice.below(dice.oneIn(4) ? 5000 : 50);
            sum += Wide{delta} * tempo;
            if (dice.oneIn(3)) {
                tempo = dice.between(1, dice.oneIn(20) ? 0xFFFFFF : 700'000);
                rig.put(tempoRecord(static_cast<int>(delta), 0, tempo));
            } else {
                rig.put(shortRecord(static_cast<int>(delta), 0, control, 1, 1));
                wanted.push_back(start + exactTime(sum, relative));
            }
            if (rig.loom.getLoomQueCount() > 500) rig.clock.sleepUntil(wanted.back());
        }
        rig.clock.sleepUntil(wanted.back());
        EXPECT_EQ(dueTimes(rig.sent()), wanted) << relative;
    }
}

TEST(LoomTime, ChangesOfRelativeTempoBetweenTicksLeaveNoError)
{
    Rig rig;
    Dice dice(7);
    rig.arm();
    constexpr int last = 300'000;
    rig.put(shortRecord(1, 0, control, 1, 1));
    rig.put(shortRecord(last, 0, control, 1, 2));
    rig.play();

    // The place in ticks, integrated over time at each change.
    long double place = 0;
    int relative = 0;
    Nanos since = rig.clock.now();
    const auto ticksPerNano = [](int r) { return 480.0L * (1000 + r) / 1000 / 500'000'000; };
    while (place < 0.9L * last) {
        const Nanos span(dice.between(1, 2'000'000'000));
        rig.run(span);
        place += static_cast<long double>(span.count()) * ticksPerNano(relative);
        relative = static_cast<int>(dice.below(1500)) - 600;
        rig.loom.setLoomRelativeTempo(relative);
        rig.loom.queTimeTic();
        since = rig.clock.now();
        EXPECT_NEAR(static_cast<double>(place), static_cast<double>(rig.loom.ticksPlayed()), 1.001);
    }
    rig.run(2h);
    const auto sent = rig.sent();
    ASSERT_EQ(sent.size(), 2U);
    const long double rest = (static_cast<long double>(last) - place) / ticksPerNano(relative);
    EXPECT_NEAR(static_cast<double>(rest), static_cast<double>((sent[1].due - since).count()), 1000.0);
}

TEST(LoomTime, ARunStartsWithItsFirstTick)
{
    Rig rig;
    for (const int first : {0, 1, 2}) {
        rig.arm(960);
        rig.put(shortRecord(first, 961, control, 1, 1));
        rig.put(shortRecord(48, 1009, control, 1, 2));
        rig.run(17ms);
        EXPECT_TRUE(rig.sent().empty()) << "not before it plays";
        const Nanos start = rig.clock.now();
        rig.play();
        rig.run(60ms);
        const Nanos begun = start + (first == 2 ? exactTime(500'000, 0) : 0ns);
        EXPECT_EQ(dueTimes(rig.sent()), (std::vector{begun, begun + 50ms})) << first;
        EXPECT_EQ(rig.loom.getLoomQplaytime(), 1009U);
    }
}

TEST(LoomTime, LateRecordsKeepTheirPlannedTime)
{
    Rig rig;
    rig.arm();
    rig.put(shortRecord(1, 0, control, 1, 1));
    rig.play();
    rig.run(101ms);
    EXPECT_EQ(rig.loom.getLoomInnerTime(), 96U) << "time goes on without records";
    rig.put(shortRecord(48, 48, control, 1, 2));
    rig.put(shortRecord(48, 96, control, 1, 3));
    rig.put(shortRecord(48, 144, control, 1, 4));
    rig.run(0ms);
    EXPECT_EQ(rig.midi.count(), 3U);
    rig.run(100ms);
    EXPECT_EQ(dueTimes(rig.sent()), (std::vector<Nanos>{0ms, 50ms, 100ms, 150ms}));
}

TEST(LoomTime, APausedRunGoesOnWhereItStood)
{
    Rig rig;
    rig.arm();
    rig.put(shortRecord(1, 0, control, 1, 1));
    rig.put(shortRecord(480, 480, control, 1, 2));
    rig.play();
    rig.run(200ms);
    rig.loom.setLoomQueplying(0);
    rig.run(5s);
    EXPECT_EQ(rig.loom.ticksPlayed(), 192);
    EXPECT_EQ(rig.loom.dueOfTick(480), Nanos::max());
    rig.play();
    EXPECT_EQ(rig.loom.dueOfTick(480), 5500ms);
    rig.run(300ms);
    EXPECT_EQ(dueTimes(rig.sent()), (std::vector<Nanos>{0ms, 5500ms}));
}

TEST(LoomTime, PreCountHoldsPositionAndInnerTime)
{
    Rig rig;
    rig.loom.setLoomMetronome(1, 9, 34, 33, 100, 80);
    rig.arm(1920);
    rig.loom.setLoomPreCount(1);
    rig.put(shortRecord(0, 1920, que::beat, 0, 1, 0));
    rig.put(shortRecord(480, 1920, que::beat, 0, 0, 0));
    rig.put(shortRecord(0, 1920, que::beat, 1, 1, 0));
    rig.put(shortRecord(480, 1920, que::beat, 1, 0, 0));
    rig.put(shortRecord(1, 1921, control, 1, 1));
    rig.put(shortRecord(480, 2401, control, 1, 2));
    rig.play();
    rig.run(1s);
    EXPECT_EQ(rig.loom.getLoomQplaytime(), 1920U);
    EXPECT_EQ(rig.loom.getLoomInnerTime(), 0U);
    const std::vector<Sent> clicks{
        {1, 0ms, {0x99, 34, 100}}, {1, 500ms, {0x99, 34, 0}}, {1, 500ms, {0x99, 33, 80}}, {1, 1s, {0x99, 33, 0}}};
    EXPECT_EQ(rig.sent(), clicks);
    rig.loom.setLoomPreCount(0);
    rig.loom.setLoomInnerTime(0);
    rig.run(502ms);
    EXPECT_EQ(rig.loom.getLoomQplaytime(), 2401U);
    EXPECT_EQ(rig.loom.getLoomInnerTime(), 481U);
    EXPECT_EQ(rig.sent().size(), 2U);
}

TEST(LoomTime, StopsAtThePlayEnd)
{
    Rig rig;
    rig.arm(100);
    rig.loom.setLoomQplayend(100 + 480);
    rig.put(shortRecord(1, 100, 0x90, 60, 100));
    rig.put(shortRecord(480, 580, 0x90, 62, 100));
    rig.put(shortRecord(1, 581, 0x90, 64, 100));
    rig.play();
    rig.run(10s);
    const std::vector<Sent> wanted{
        {0, 0ms, {0x90, 60, 100}}, {0, 500ms, {0x90, 62, 100}}, {0, 500ms, {0x90, 60, 0}}, {0, 500ms, {0x90, 62, 0}}};
    EXPECT_EQ(rig.sent(), wanted);
    EXPECT_EQ(rig.loom.getLoomQueplying(), 0);
    const auto news = rig.window.take();
    ASSERT_EQ(news.size(), 1U);
    EXPECT_EQ(news[0].id, msg::realtime);
    EXPECT_EQ(news[0].wParam, 5U);
    EXPECT_EQ(news[0].lParam, 580);
}

TEST(LoomTime, AJumpMovesTheSongNotTheClock)
{
    Rig rig;
    rig.arm();
    rig.loom.setLoomQplayend(1000);
    rig.put(shortRecord(1, 900, control, 1, 1));
    rig.put(shortRecord(48, 10, control, 1, 2));
    rig.put(shortRecord(48, 58, control, 1, 3));
    rig.play();
    rig.run(110ms);
    EXPECT_EQ(dueTimes(rig.sent()), (std::vector<Nanos>{0ms, 50ms, 100ms}));
    EXPECT_EQ(rig.loom.getLoomQueplying(), 1);
    rig.run(2s);
    EXPECT_EQ(rig.loom.getLoomQueplying(), 0) << "the end is reached from the new place";
    EXPECT_EQ(rig.loom.ticksPlayed(), 96 + 1000 - 58);
}

TEST(LoomTime, WaveOffsetAndTrimMoveTheLine)
{
    Rig rig;
    rig.loom.setLoomMidiTimerAdjust(1000);
    rig.loom.queTimeTic();
    rig.arm();
    rig.put(shortRecord(1, 0, control, 1, 1));
    rig.put(shortRecord(480'480, 480, control, 1, 2));
    rig.play();
    rig.run(100s);
    rig.loom.setLoomMidiTimerOfst(-3);
    rig.run(500s);
    EXPECT_EQ(rig.sent().back().due, 500s + 3ms);
}

TEST(LoomTime, TemposReadAsWholeBeats)
{
    Rig rig;
    const auto set = [&](std::uint32_t tempo, int relative) {
        rig.loom.setLoomMidiTempo(static_cast<std::uint8_t>(tempo >> 16), static_cast<std::uint16_t>(tempo));
        rig.loom.setLoomRelativeTempo(relative);
        rig.loom.queTimeTic();
    };
    for (int base = 4; base <= 300; ++base) {
        set((60'000'000 + static_cast<std::uint32_t>(base) / 2) / static_cast<std::uint32_t>(base), 0);
        ASSERT_EQ(rig.loom.getLoomTempo(), base);
        for (int real = base / 4 + 1; real < base * 4; real += 7) {
            set(0, (real * 1000 + base - 1) / base - 1000); // a tempo of 0 changes nothing
            ASSERT_EQ(rig.loom.getLoomRealTempo(), real) << base;
        }
    }
    rig.loom.setLoomRelativeTempo(-5000);
    EXPECT_EQ(rig.loom.getLoomRelativeTempo(), -999);
}

TEST(LoomTime, OldRunsLeaveNothingBehind)
{
    Rig rig;
    rig.arm();
    for (int i = 0; i < 100; ++i) rig.put(shortRecord(1, 0, control, 1, 1));
    rig.loom.loomPlayStart();
    EXPECT_EQ(rig.loom.getLoomQueCount(), 0U);
    rig.put(shortRecord(1, 0, control, 1, 2));
    EXPECT_EQ(rig.loom.getLoomQueCount(), 1U);
    rig.play();
    rig.run(1s);
    EXPECT_EQ(rig.sent(), (std::vector<Sent>{{0, 0ms, {control, 1, 2}}}));

    rig.arm();
    unsigned taken = 0;
    while (rig.loom.putLoomQueData(shortRecord(0, 0, que::null))) ++taken;
    EXPECT_GE(taken, 1024U);
    EXPECT_EQ(rig.loom.getLoomQueCount(), taken);
    rig.play();
    EXPECT_EQ(rig.loom.getLoomQueCount(), 0U);
}

TEST(LoomTime, ObserverSeesPlannedAndActualTime)
{
    ManualClock clock;
    FakeMidi midi;
    Loom loom(clock, midi);
    Watcher watcher;
    loom.setSendObserver(&watcher);
    loom.CreateNoteOnTbl();
    loom.CallTimeSetEvent(4, 4, 0, 1);
    const std::array<std::int32_t, 2> map{3, 2};
    loom.setLoomOutPortMap(map, 512, 0, 2);
    loom.loomPlayStart();
    loom.putLoomQueData(shortRecord(1, 7, 0x90, 60, 1, 1, 1));
    loom.setLoomQueplying(1);
    clock.advanceTo(100ms);
    loom.putLoomQueData(shortRecord(48, 55, 0x90, 60, 0, 1, 1));
    loom.loomSendShortMsg(0, 0xC0, 5, 0);
    ASSERT_EQ(watcher.seen.size(), 3U);
    EXPECT_EQ(watcher.seen[0].port, 1);
    EXPECT_EQ(watcher.seen[0].songTick, 7U);
    EXPECT_EQ(watcher.seen[1].due, 50ms);
    EXPECT_EQ(watcher.seen[1].sent, 100ms);
    EXPECT_EQ(watcher.seen[2].songTick, std::nullopt);
}

} // namespace tessaro::test
