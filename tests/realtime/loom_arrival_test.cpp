// SPDX-License-Identifier: GPL-3.0-or-later
// The song tick of what arrives, against a walk over all that moves the song, however late the driver is.
#include "realtime/loom_rig.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace tessaro::test {

namespace {

/// What the song does, told twice: to the engine as records and orders, and here as a polygon of time and ticks.
class Course {
public:
    Course(Rig& rig, Dice& dice, std::uint32_t start) : m_rig(rig), m_dice(dice) { m_jumps.push_back({0, start}); }

    /// Clicks for some beats; behind them the song goes on one tick later.
    void countIn(int beats)
    {
        const std::uint32_t start = m_jumps[0].song;
        m_songBegins = std::int64_t{beats} * 480;
        for (int i = 0; i <= beats; ++i) m_rig.put(shortRecord(i == 0 ? 0 : 480, start, que::beat, 1, i < beats, 0));
        m_jumps.push_back({m_songBegins + 1, start});
        m_queued = m_songBegins + 1;
        m_first = false;
        m_rig.put(shortRecord(1, start, que::null));
    }

    /// Records with tempo changes and jumps.
    void queue(int records)
    {
        for (; records > 0; --records) {
            const std::int64_t tick = m_queued + m_dice.below(m_dice.oneIn(10) ? 64 : 12);
            const std::uint32_t song = songAt(tick);
            if (m_dice.oneIn(4)) {
                const std::uint32_t tempo = m_dice.between(100'000, 1'500'000);
                put(tempoRecord(0, song, tempo), tick);
                m_tempos.push_back({tick, tempo});
            } else if (m_dice.oneIn(6)) {
                // As the feeder does it: things of the old place, then a record of the new one.
                const std::uint32_t target = m_dice.below(5000);
                for (std::uint32_t i = m_dice.below(3); i > 0; --i) put(shortRecord(0, song, 0xB0, 1, 1), tick);
                put(shortRecord(0, target, que::null), tick);
                m_jumps.push_back({tick, target});
            } else {
                put(shortRecord(0, song, que::null), tick);
            }
        }
    }

    void play()
    {
        m_rig.play();
        m_corner = {m_rig.clock.now(), 0};
    }

    /// The control panel changes the tempo now.
    void setRelative(int thousandths)
    {
        m_corner = {m_rig.clock.now(), tickOf(m_rig.clock.now())};
        m_relative = thousandths;
        m_rig.loom.setLoomRelativeTempo(thousandths);
        m_rig.loom.queTimeTic();
    }

    /// Ticks of the run at a time that no later order changed.
    [[nodiscard]] long double tickOf(Nanos time)
    {
        Corner at = m_corner;
        while (true) {
            const long double end = at.tick + static_cast<long double>((time - at.time).count()) * speed();
            if (m_nextTempo == m_tempos.size() || end < static_cast<long double>(m_tempos[m_nextTempo].tick))
                return end;
            // Orders come in order of time, so what is passed once is passed for good.
            const auto corner = static_cast<long double>(m_tempos[m_nextTempo].tick);
            at.time += Nanos(std::llround((corner - at.tick) / speed()));
            at.tick = corner;
            m_tempo = m_tempos[m_nextTempo++].tempo;
            m_corner = at;
        }
    }

    [[nodiscard]] std::uint32_t songAt(std::int64_t tick) const
    {
        const auto jump =
            std::find_if(m_jumps.rbegin(), m_jumps.rend() - 1, [&](const Jump& j) { return j.tick <= tick; });
        if (jump->tick < m_songBegins || tick < 0) return m_jumps[0].song;
        return static_cast<std::uint32_t>(jump->song + tick - jump->tick);
    }
    [[nodiscard]] std::int64_t songBegins() const { return m_songBegins; }

private:
    struct Corner {
        Nanos time{};
        long double tick = 0;
    };
    struct Tempo {
        std::int64_t tick;
        std::uint32_t tempo;
    };
    struct Jump {
        std::int64_t tick;
        std::uint32_t song;
    };

    void put(_LOOM_QUE_REC record, std::int64_t tick)
    {
        record.delta = static_cast<std::int32_t>(tick - m_queued + (m_first ? 1 : 0));
        m_first = false;
        m_queued = tick;
        m_rig.put(record);
    }
    [[nodiscard]] long double speed() const { return 480.0L * (1000 + m_relative) / 1'000'000 / m_tempo; }

    Rig& m_rig;
    Dice& m_dice;
    std::vector<Jump> m_jumps;
    std::vector<Tempo> m_tempos;
    std::size_t m_nextTempo = 0;
    Corner m_corner;
    std::uint32_t m_tempo = 500'000;
    int m_relative = 0;
    std::int64_t m_queued = 0;
    std::int64_t m_songBegins = 0;
    bool m_first = true;
};

struct Arrival {
    Nanos when{};
    Nanos handedOver{};
    long double tick = 0;
};

class Reader {
public:
    explicit Reader(Loom& loom) : m_loom(loom) {}
    std::optional<LoomRingEntry> next()
    {
        if (m_index == m_loom.getLoomWrdpt()) return std::nullopt;
        const LoomRingEntry entry = m_loom.getLoomRecdata()[m_index];
        m_index = static_cast<std::uint16_t>((m_index + 1) % loomRingEntries);
        m_loom.loomIncRrdpt();
        return entry;
    }

private:
    Loom& m_loom;
    std::uint16_t m_index = 0;
};

} // namespace

TEST(LoomArrival, TheTickIsTheNearestAtTheTimeOfArrival)
{
    constexpr long double unsure = 1e-4L; // nearer to half a tick than nanoseconds can tell
    int checked = 0;
    for (std::uint32_t round = 0; round < 30; ++round) {
        Rig rig;
        Dice dice(round);
        const std::uint32_t start = dice.below(3000);
        rig.run(Nanos(dice.below(100'000'000)));
        rig.loom.setLoomRecFlag(1);
        rig.arm(start);
        Course course(rig, dice, start);
        const bool countIn = dice.oneIn(3);
        if (countIn) course.countIn(static_cast<int>(dice.between(1, 4)));
        rig.loom.setLoomPreCount(countIn);
        course.queue(4000);

        const int latest = dice.oneIn(3) ? 0 : 50'000'000;
        std::vector<Arrival> waiting;
        const auto arrives = [&] {
            const Nanos before = waiting.empty() ? 0ns : waiting.back().handedOver;
            const Nanos late(dice.below(static_cast<std::uint32_t>(latest) + 1));
            return std::max(rig.clock.now() + late, before);
        };
        for (int i = 0; i < 3; ++i, rig.run(Nanos(dice.below(5'000'000))))
            waiting.push_back({rig.clock.now(), arrives(), -1000});
        course.play();
        Nanos songBegan = Nanos::max();
        Reader reader(rig.loom);
        const Nanos end = rig.clock.now() + 20s;
        while (rig.clock.now() < end) {
            Nanos step(dice.below(4'000'000));
            if (!waiting.empty()) step = std::min(step, waiting.front().handedOver - rig.clock.now());
            rig.run(step);
            const Nanos now = rig.clock.now();
            if (countIn && songBegan == Nanos::max() && course.tickOf(now) > course.songBegins() + 0.3L) {
                rig.loom.setLoomPreCount(0);
                songBegan = now;
            }
            if (dice.oneIn(100)) course.setRelative(static_cast<int>(dice.below(1500)) - 500);
            if (dice.oneIn(3)) waiting.push_back({now, arrives(), course.tickOf(now)});
            while (!waiting.empty() && waiting.front().handedOver <= now) {
                const Arrival arrival = waiting.front();
                waiting.erase(waiting.begin());
                const std::array<std::uint8_t, 3> note{0x90, 1, 1};
                rig.midi.sink->received(note, arrival.when);
                const auto entry = reader.next();
                ASSERT_TRUE(entry);
                const auto tick = static_cast<std::int64_t>(std::floor(arrival.tick + 0.5L));
                if (std::abs(arrival.tick + 0.5L - std::round(arrival.tick + 0.5L)) < unsure) continue;
                // The count-in has run out, and the engine has not been told.
                if (countIn && tick > course.songBegins() && songBegan == Nanos::max()) continue;
                ASSERT_EQ(entry->time, course.songAt(tick))
                    << "round " << round << " tick " << static_cast<double>(arrival.tick) << " late "
                    << (now - arrival.when).count();
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 50'000);
}

TEST(LoomArrival, ADriverMayBeAheadOfTime)
{
    Rig rig;
    Reader reader(rig.loom);
    rig.loom.setLoomRecFlag(1);
    rig.arm(0);
    rig.put(shortRecord(1, 0, que::null));
    rig.put(tempoRecord(480, 480, 1'500'000)); // from 500 ms on a tick lasts 3.125 ms
    rig.put(shortRecord(2, 100, que::null));   // and at 506.25 ms the song goes back
    rig.play();
    const Nanos start = rig.clock.now();
    rig.run(499ms);
    const std::array<std::uint8_t, 3> note{0x90, 1, 1};
    for (const auto& [when, tick] :
         {std::pair{499'900us, 480U}, {501'500us, 480U}, {501'600us, 481U}, {505'000us, 100U}, {508'000us, 101U}}) {
        rig.midi.sink->received(note, start + when);
        const auto entry = reader.next();
        ASSERT_TRUE(entry);
        EXPECT_EQ(entry->time, tick) << when.count();
    }
}

TEST(LoomArrival, NothingThatCameBeforeTheStopIsLost)
{
    Rig rig;
    Reader reader(rig.loom);
    rig.loom.setLoomRecFlag(1);
    rig.arm(960);
    rig.put(shortRecord(1, 960, que::null));
    rig.play();
    rig.run(100ms);
    const std::array<std::uint8_t, 3> note{0x90, 1, 1};
    const std::array<std::uint8_t, 2> cut{0xF0, 1};
    const auto stopped = [&] {
        rig.loom.setLoomQueplying(0);
        rig.loom.setLoomRecFlag(0);
    };
    stopped();
    EXPECT_EQ(rig.loom.getLoomRecFlag(), 0);
    rig.input({0x90, 2, 1});
    EXPECT_FALSE(reader.next());

    // Between the switch and the engine's next step; a step of this clock is held back by being inside another.
    rig.arm(960);
    rig.put(shortRecord(1, 960, que::null));
    rig.loom.setLoomRecFlag(1);
    rig.play();
    rig.run(100ms);
    bool done = false;
    const auto task = rig.clock.start(Urgency::normal, [&](Nanos now) {
        if (done) return Nanos::max();
        done = true;
        rig.midi.sink->received(note, now - 50ms);
        stopped();
        rig.midi.sink->received(cut, now);
        EXPECT_EQ(rig.loom.getLoomRecFlag(), 1) << "not yet";
        return Nanos::max();
    });
    rig.run(1ms);
    EXPECT_EQ(rig.loom.getLoomRecFlag(), 0);
    const auto entry = reader.next();
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->time, 960U + 48);
    rig.input({2, 0xF7});
    EXPECT_FALSE(reader.next()) << "the rest came too late";
    EXPECT_EQ(rig.loom.getLoomRecError(), 0);

    // Behind a stop the song stands where it was, for a message as late as that.
    rig.loom.setLoomRecFlag(1);
    rig.run(5ms);
    rig.midi.sink->received(note, rig.clock.now() - 20ms);
    rig.input({0x90, 1, 1});
    EXPECT_EQ(reader.next().value_or(LoomRingEntry{}).time, 960U + 96 - 13);
    EXPECT_EQ(reader.next().value_or(LoomRingEntry{}).time, 960U + 96);
}

} // namespace tessaro::test
