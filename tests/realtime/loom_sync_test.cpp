// SPDX-License-Identifier: GPL-3.0-or-later
// Following the MIDI clock of another machine, and leading one.
#include "realtime/loom/midi_bytes.h"
#include "realtime/loom_rig.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

namespace tessaro::test {

namespace {

constexpr int perBeat = 24;
constexpr int perClock = 20;

using BeatsAt = std::function<double(double seconds)>; // a minute
using Jitter = std::function<Nanos(Nanos)>;

/// Exact times of the clocks of a machine that plays for some seconds.
std::vector<Nanos> clockTimes(Nanos start, double seconds, const BeatsAt& beatsAt)
{
    std::vector<Nanos> times;
    for (double t = 0; t < seconds; t += 60.0 / perBeat / beatsAt(t))
        times.push_back(start + Nanos(std::llround(t * 1e9)));
    return times;
}

Jitter none()
{
    return [](Nanos t) { return t; };
}

Jitter uniform(double most)
{
    return [dice = std::mt19937(1), most](Nanos t) mutable {
        return t + Nanos(std::llround(std::uniform_real_distribution(-most, most)(dice)));
    };
}

Jitter gaussian(double sigma)
{
    return [dice = std::mt19937(2), sigma](Nanos t) mutable {
        return t + Nanos(std::llround(std::normal_distribution(0.0, sigma)(dice)));
    };
}

/// A driver that sends at the start of its periods of 256 frames at 48 kHz.
Jitter periods()
{
    return [](Nanos t) {
        constexpr std::int64_t period = 16'000'000; // thirds of a nanosecond
        return Nanos((t.count() * 3 + period - 1) / period * period / 3);
    };
}

/// A slave that plays a message on each clock's tick.
class Slave {
public:
    explicit Slave(std::uint32_t song = 0)
    {
        rig.loom.setLoomSyncMode(1);
        arm(song);
    }

    void arm(std::uint32_t song)
    {
        rig.arm(song);
        m_song = song;
        m_fed = 0;
        feed();
    }

    /// A clock that came at `when`.
    void clock(Nanos when) { realtime(midi::clock, when); }
    void realtime(std::uint8_t status, Nanos when)
    {
        rig.clock.sleepUntil(when);
        feed();
        rig.midi.sink->received({&status, 1}, when);
    }
    void songPosition(int sixteenths) { rig.input({midi::songPosition, sixteenths & 0x7F, sixteenths >> 7}); }

    /// When the messages fell due, by clock.
    const std::vector<Nanos>& played()
    {
        for (const Sent& sent : rig.sent()) m_played.push_back(sent.due);
        return m_played;
    }

    Rig rig;

private:
    void feed()
    {
        while (rig.loom.getLoomQueCount() < 50) {
            rig.put(shortRecord(m_fed == 0 ? 1 : perClock, m_song + m_fed, 0xB0, 1, 1));
            m_fed += perClock;
        }
    }

    std::uint32_t m_song = 0;
    std::uint32_t m_fed = 0;
    std::vector<Nanos> m_played;
};

double inClocks(Nanos span, double beats) { return static_cast<double>(span.count()) * beats * perBeat / 60e9; }

double beatsOver(Nanos beat) { return 60e9 / static_cast<double>(beat.count()); }

/// How a slave kept up with its master from a clock on.
struct Lead {
    double tempo = 0;    ///< worst tempo of a beat, beats a minute
    double share = 0;    ///< the same as a share of the tempo
    double position = 0; ///< worst distance, clocks
};

Lead compare(const std::vector<Nanos>& master, const std::vector<Nanos>& slave, std::size_t from, std::size_t to)
{
    Lead worst;
    for (std::size_t i = std::max<std::size_t>(from, perBeat); i < std::min({master.size(), slave.size(), to}); ++i) {
        const double wanted = beatsOver(master[i] - master[i - perBeat]);
        const double tempo = std::abs(beatsOver(slave[i] - slave[i - perBeat]) - wanted);
        worst.tempo = std::max(worst.tempo, tempo);
        worst.share = std::max(worst.share, tempo / wanted);
        worst.position = std::max(worst.position, std::abs(inClocks(slave[i] - master[i], wanted)));
    }
    return worst;
}

} // namespace

TEST(LoomSync, HoldsTempoAndPositionForTenMinutes)
{
    for (const double beats : {40.0, 60.0, 90.0, 120.0, 187.3, 240.0, 300.0}) {
        for (Jitter jitter : {uniform(3e6), gaussian(1e6), periods()}) {
            Slave slave;
            slave.rig.run(1s);
            slave.realtime(midi::start, slave.rig.clock.now());
            const auto master = clockTimes(slave.rig.clock.now() + 20ms, 600, [&](double) { return beats; });
            for (const Nanos time : master) slave.clock(jitter(time));
            const auto locked = static_cast<std::size_t>(30 * beats * perBeat / 60);
            const auto& played = slave.played();
            ASSERT_GE(played.size() + 2, master.size());
            const Lead lead = compare(master, played, locked, master.size());
            EXPECT_LT(lead.tempo, 0.1) << beats;
            EXPECT_LT(lead.position, 0.8) << beats;
            EXPECT_NEAR(slave.rig.loom.getLoomRealTempo(), beats, 0.6) << beats;
        }
    }
}

TEST(LoomSync, GoesAlongWithChangesOfTempo)
{
    constexpr double steady = 30; // seconds before the change
    struct Change {
        double from, to, span;
    };
    for (const Change c : {Change{120, 121, 0},
                           {120, 126, 0},
                           {120, 90, 0},
                           {90, 187, 0},
                           {240, 120, 0},
                           {60, 120, 0},
                           {300, 290, 0},
                           {120, 80, 30},
                           {120, 100, 120},
                           {80, 160, 20}}) {
        const auto beatsAt = [&](double t) {
            const double share = c.span > 0 ? std::clamp((t - steady) / c.span, 0.0, 1.0) : t >= steady;
            return c.from + (c.to - c.from) * share;
        };
        for (Jitter jitter : {none(), uniform(3e6), gaussian(1e6)}) {
            Slave slave;
            slave.realtime(midi::start, slave.rig.clock.now());
            const auto master = clockTimes(20ms, steady + c.span + 60, beatsAt);
            for (const Nanos time : master) slave.clock(std::max(jitter(time), slave.rig.clock.now()));
            const auto& played = slave.played();
            ASSERT_GE(played.size() + 3, master.size()) << c.to;
            const auto change = static_cast<std::size_t>(
                std::upper_bound(master.begin(), master.end(), Nanos(std::llround(steady * 1e9))) - master.begin());
            // A tempo of half looks like lost clocks at first.
            const double farthest = c.to * 2 == c.from ? 2.8 : 0.8;
            EXPECT_LT(compare(master, played, change, master.size()).position, farthest) << c.to;
            // Two beats wholly behind a step are enough; slopes are followed all the way.
            const Lead settled = compare(master, played, change + (c.span > 0 ? 0 : 3 * perBeat), master.size());
            EXPECT_LT(settled.share, 0.015) << c.to;
            EXPECT_LT(settled.position, 0.8) << c.to;
            EXPECT_LT(compare(master, played, master.size() - 5 * perBeat, master.size()).tempo, 0.1) << c.to;
        }
    }
}

TEST(LoomSync, MakesUpForLostClocks)
{
    for (const double beats : {60.0, 120.0, 187.3}) {
        Slave slave;
        Jitter jitter = uniform(1e6);
        slave.realtime(midi::start, 0ns);
        const auto master = clockTimes(20ms, 120, [&](double) { return beats; });
        for (std::size_t i = 0; i < master.size(); ++i)
            if (i < 200 || (i % 331 != 0 && i % 503 > 1)) slave.clock(jitter(master[i]));
        const Lead lead = compare(master, slave.played(), 150, master.size());
        EXPECT_LT(lead.position, 0.8) << beats << ": two in a row hold it up for a moment";
        EXPECT_LT(lead.share, 0.035) << beats;
    }
}

TEST(LoomSync, StopsContinuesAndRelocates)
{
    for (const auto delivery : {0ms, 1ms, 40ms}) { // from Song Position to the run armed there
        Slave slave(1920);
        Jitter jitter = gaussian(1e6);
        Nanos now = 0ms;
        const auto clocks = [&](int n) {
            for (; n > 0; --n, now += 20'833'333ns) slave.clock(std::max(jitter(now), slave.rig.clock.now()));
        };
        clocks(100); // the master's clock never rests
        slave.rig.input({midi::continuePlay});
        clocks(200);
        EXPECT_NEAR(slave.rig.loom.getLoomQplaytime(), 1920 + 199 * 20, 20);
        slave.rig.input({midi::stop});
        EXPECT_EQ(slave.rig.loom.getLoomQueplying(), 0);
        slave.rig.sent();
        clocks(50);
        EXPECT_TRUE(slave.rig.sent().empty());
        slave.rig.input({midi::continuePlay});
        clocks(100);
        EXPECT_NEAR(slave.rig.loom.getLoomQplaytime(), 1920 + 299 * 20, 20) << "from where it stood";

        // Stop, Song Position and Continue in one breath, as a loop of the master sends them.
        slave.rig.input({midi::stop});
        slave.songPosition(96);
        slave.rig.input({midi::continuePlay});
        slave.rig.sent();
        const Nanos continued = now;
        if (delivery > 0ms) {
            while (now < continued + delivery) clocks(1);
            EXPECT_TRUE(slave.rig.sent().empty()) << "not at the old place";
        }
        slave.rig.loom.setLoomQueplying(0);
        slave.arm(96 * 120);
        clocks(100);
        const auto behind = static_cast<double>((now - 20'833'333ns - continued).count()) / 20'833'333;
        EXPECT_NEAR(slave.rig.loom.getLoomQplaytime(), 96 * 120 + std::round(behind) * 20, 20) << delivery.count();
        slave.rig.input({midi::stop});
        slave.songPosition(0);
        slave.arm(0);
        slave.rig.sent();
        clocks(10);
        EXPECT_TRUE(slave.rig.sent().empty()) << "waits for Start";
        slave.rig.input({midi::start});
        clocks(3);
        EXPECT_NEAR(slave.rig.loom.getLoomQplaytime(), 40, 20);
    }
}

TEST(LoomSync, RecordsAtTheTicksOfTheMaster)
{
    Slave slave;
    Jitter jitter = uniform(3e6);
    Dice dice(4);
    slave.realtime(midi::start, 0ns);
    slave.rig.loom.setLoomRecFlag(1);
    const auto master = clockTimes(20ms, 90, [](double t) { return t < 40 ? 120.0 : 97.0; });
    double worst = 0;
    std::uint16_t index = 0;
    for (std::size_t i = 0; i + 3 < master.size(); ++i) {
        slave.clock(jitter(master[i]));
        if (i < 200 || (i > 1900 && i < 2100)) continue;
        // A note of 15 ms ago.
        const Nanos when = slave.rig.clock.now() - 15ms;
        slave.rig.midi.sink->received(std::array<std::uint8_t, 3>{0x90, 60, 1}, when);
        const auto next = std::upper_bound(master.begin(), master.end(), when) - master.begin();
        const Nanos before = master[static_cast<std::size_t>(next - 1)];
        const Nanos length = master[static_cast<std::size_t>(next)] - before;
        const double tick =
            static_cast<double>(next - 1) * perClock
            + perClock * static_cast<double>((when - before).count()) / static_cast<double>(length.count());
        ASSERT_NE(index, slave.rig.loom.getLoomWrdpt());
        worst = std::max(worst, std::abs(slave.rig.loom.getLoomRecdata()[index].time - tick));
        index = static_cast<std::uint16_t>((index + 1) % 600);
        slave.rig.loom.loomIncRrdpt();
    }
    EXPECT_LT(worst, 2.5) << "jitter of 3 ms is 2.9 ticks";
}

TEST(LoomSync, ClocksLieOnTheirTicks)
{
    Dice dice(12);
    for (int round = 0; round < 8; ++round) {
        Rig rig(2);
        rig.loom.setLoomRealTimeMessagesSw(1);
        const std::uint32_t start = dice.oneIn(2) ? 0 : dice.below(5000);
        rig.arm(start);
        // A marker on each place of a clock, with the song's ticks in a loop now and then, and changes of tempo.
        std::uint32_t song = start;
        rig.put(shortRecord(1, song, song % perClock == 0 ? 0xB0 : 0, 1, 1));
        int delta = 0;
        for (int i = 0; i < 6000; ++i) {
            ++delta;
            ++song;
            if (dice.oneIn(700)) {
                rig.put(shortRecord(delta, song, song % perClock == 0 ? 0xB0 : 0, 1, 1));
                rig.put(shortRecord(0, song, que::stopPlay, 0, 0, 0));
                song = dice.below(100) * 120;
                rig.put(shortRecord(0, song, que::songPosition, 0, 0, 0));
                rig.put(shortRecord(0, song, que::continuePlay, 0, 0, 0));
                delta = 0;
            }
            if (dice.oneIn(200)) {
                rig.put(tempoRecord(delta, song, dice.between(200'000, 1'000'000)));
                delta = 0;
            }
            if (song % perClock == 0) {
                rig.put(shortRecord(delta, song, 0xB0, 1, 1));
                delta = 0;
            }
        }
        rig.play();
        rig.run(3s);
        rig.loom.setLoomRelativeTempo(210);
        rig.loom.queTimeTic();
        rig.run(2s);
        rig.loom.setLoomQueplying(0);
        std::vector<Nanos> clocks;
        std::vector<Nanos> places;
        Bytes orders;
        for (const Sent& sent : rig.sent()) {
            if (sent.driver != 0) continue;
            if (sent.bytes[0] == midi::clock)
                clocks.push_back(sent.due);
            else if (sent.bytes[0] == 0xB0)
                places.push_back(sent.due);
            else
                orders.push_back(sent.bytes[0]);
        }
        EXPECT_EQ(clocks, places);
        EXPECT_EQ(orders.front(), start == 0 ? midi::start : midi::continuePlay);
        EXPECT_EQ(orders.back(), midi::stop);
        for (std::size_t i = 1; i + 1 < orders.size(); i += 3)
            EXPECT_EQ(Bytes(orders.begin() + static_cast<std::ptrdiff_t>(i),
                            orders.begin() + static_cast<std::ptrdiff_t>(i) + 3),
                      (Bytes{midi::stop, midi::songPosition, midi::continuePlay}));
    }
}

/// Two engines on one clock and a cable between, which jitters.
TEST(LoomSync, TwoEnginesStayTogether)
{
    Slave slave;
    ManualClock& clock = slave.rig.clock;
    FakeMidi midi(2);
    Loom leader(clock, midi);
    leader.CreateNoteOnTbl();
    leader.CallTimeSetEvent(4, 4, 0, 1);
    leader.setLoomOutPortMap(std::array<std::int32_t, 1>{0}, 512, 0, 1);
    leader.setLoomRealTimeMessagesSw(1);
    leader.loomPlayStart();
    leader.putLoomQueData(shortRecord(1, 0, que::null));
    leader.setLoomQueplying(1);

    constexpr auto delay = 8ms;
    Dice dice(5);
    Jitter jitter = uniform(1.5e6);
    std::vector<Nanos> places;
    std::uint32_t queued = 0;
    for (Nanos now = 0ns; now < 600s; now = clock.now() + 5ms) {
        clock.sleepUntil(now);
        while (leader.getLoomQueCount() < 20) {
            queued += 480;
            leader.putLoomQueData(tempoRecord(480, queued, dice.oneIn(60) ? dice.between(420'000, 600'000) : 0));
        }
        if (dice.oneIn(8'000)) {
            leader.setLoomRelativeTempo(static_cast<int>(dice.below(200)) - 100);
            leader.queTimeTic();
        }
        for (const Sent& sent : midi.takeSent()) {
            const bool isClock = sent.bytes[0] == midi::clock;
            if (isClock) places.push_back(sent.due + delay);
            slave.realtime(sent.bytes[0], std::max(isClock ? jitter(sent.due + delay) : sent.due, clock.now()));
        }
    }
    const auto& played = slave.played();
    ASSERT_GE(played.size() + 3, places.size());
    EXPECT_LT(compare(places, played, 100, places.size()).position, 1.2);
    leader.setLoomQueplying(0);
    EXPECT_EQ(midi.takeSent().back().bytes, Bytes{midi::stop});
}

/// The engine's own output comes back to it.
TEST(LoomSync, DoesNotFollowItself)
{
    Rig rig(1);
    rig.loom.setLoomRealTimeMessagesSw(1);
    const auto loopback = [&](Nanos span) {
        std::size_t count = 0;
        for (const Nanos end = rig.clock.now() + span; rig.clock.now() < end; rig.run(1ms))
            for (const Sent& sent : rig.sent()) {
                rig.midi.sink->received(sent.bytes, rig.clock.now());
                ++count;
            }
        return count;
    };
    rig.arm();
    rig.put(shortRecord(1, 0, que::null));
    rig.play();
    EXPECT_EQ(loopback(5s), 241U) << "Start and 48 clocks a second";
    EXPECT_EQ(rig.loom.ticksPlayed(), 4800);
    rig.loom.setLoomSyncMode(1); // while it plays
    EXPECT_LE(loopback(5s), 2U) << "a slave leads nobody";
    rig.loom.setLoomQueplying(0);
    loopback(1s);
    rig.arm();
    rig.input({midi::start});
    EXPECT_EQ(loopback(5s), 0U);
    EXPECT_EQ(rig.loom.ticksPlayed(), -1) << "waits for a clock";
}

} // namespace tessaro::test
