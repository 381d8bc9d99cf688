// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/message_queue.h"
#include "base/real_clock.h"
#include "realtime/loom_rig.h"
#include "realtime/play/play_owners.h"
#include "realtime/rec/record_thread.h"
#include "support/rt_guard.h"

#include <gtest/gtest.h>

#include <thread>

namespace tessaro::test {

namespace {

/// Counts, and keeps nothing.
class CountingWindow final : public MessageTarget {
public:
    bool post(const Message&) noexcept override
    {
        ++posted;
        return true;
    }
    void send(const Message&) override {}
    std::atomic<int> posted = 0;
};

class LoomThreads : public testing::Test {
protected:
    LoomThreads() : loom(clock, midi)
    {
        loom.CreateNoteOnTbl();
        loom.setRtHook(&rtGuardHook);
        loom.setLoomMainWnd(&window);
        loom.CallTimeSetEvent(4, 4, 0, 1);
        openPorts();
        loom.setLoomInPort(0, 512);
    }

    void openPorts()
    {
        const std::array<std::int32_t, 4> map{0, 1, 2, 3};
        loom.setLoomOutPortMap(map, 512, 0, map.size());
    }
    template <class Condition>
    void waitFor(Condition condition)
    {
        while (!condition()) clock.sleepFor(1ms);
    }

    RealClock clock;
    FakeMidi midi;
    CountingWindow window;
    Loom loom;
};

} // namespace

TEST_F(LoomThreads, BurstsFromManyThreadsArriveWholeAndInOrder)
{
    constexpr int senders = 3;
    constexpr int burst = 5000;
    std::vector<std::thread> threads;
    for (int s = 0; s < senders; ++s)
        threads.emplace_back([this, s] {
            Bytes bytes(300, static_cast<std::uint8_t>(s));
            bytes.front() = 0xF0;
            bytes.back() = 0xF7;
            for (int i = 0; i < burst; ++i) {
                const auto value = [](int n) { return static_cast<std::uint8_t>(n & 0x7F); };
                EXPECT_EQ(loom.loomSendShortMsg(s, 0xE0, value(i), value(i >> 7)), 0U);
                if (i % 100 == 0) {
                    EXPECT_EQ(loom.loomSendLongMsg(s, bytes.data(), bytes.size()), 0U);
                }
            }
        });
    for (auto& thread : threads) thread.join();
    waitFor([&] { return midi.count() == senders * (burst + burst / 100); });
    waitFor([&] { return loom.getLoomInLongmsg() == 0; });
    loom.CallTimeKillEvent(1);
    std::array<int, senders> next{};
    for (const Sent& message : midi.takeSent()) {
        int& i = next.at(static_cast<std::size_t>(message.driver));
        if (message.bytes[0] == 0xE0) {
            ASSERT_EQ(message.bytes[1] + message.bytes[2] * 128, i++);
        }
    }
    EXPECT_EQ(next, (std::array<int, senders>{burst, burst, burst}));
}

/// Playing and recording together, thru and MIDI clock beside them, while everything is changed.
TEST_F(LoomThreads, EverybodyAtOnce)
{
    std::uint32_t sum = 0;
    int received = 0;
    MessageQueue recordOwner([&](const Message& message) {
        if (message.id != msg::data) return;
        const auto& entry = *reinterpret_cast<const LoomRingEntry*>(message.lParam);
        sum += entry.time + (entry.data ? entry.data[entry.length - 1] : entry.data1);
        loom.loomIncRrdpt();
        ++received;
    });
    PlayOwners owners(loom, clock);
    RecordThread recordThread(loom, clock, owners);
    recordThread.start();
    recordThread.setOwner(&recordOwner);
    loom.setLoomOwner(&window);
    loom.setLoomRecFlag(1);
    loom.setLoomThruFlag(1);
    loom.setLoomThruPort(3);
    loom.setLoomRealTimeMessagesSw(1);
    std::atomic<bool> done = false;
    std::atomic<int> played = 0;
    loom.loomPlayStart();
    loom.setLoomQueplying(1);

    std::thread feeder([&] {
        for (std::uint32_t tick = 0; !done; ++tick) {
            while (loom.getLoomQueCount() > 512 && !done) clock.sleepFor(1ms);
            const int key = static_cast<int>(tick / 4 % 100);
            loom.putLoomQueData(
                shortRecord(1, tick % 960, 0x90, key, tick % 2 ? 0 : 90, static_cast<int>(tick % 7), 0));
            if (tick % 50 == 0) loom.putLoomQueData(tempoRecord(0, tick, 40'000 + tick % 3000));
            ++played;
        }
    });
    std::thread driver([&] {
        Bytes sysex(600, 1);
        sysex.front() = 0xF0;
        sysex.back() = 0xF7;
        for (std::uint8_t key = 0; !done; key = (key + 1) & 0x7F) {
            const Bytes on{0x90, key, 80};
            const Bytes off{0x80, key, 0};
            const Bytes timing{0xF8};
            midi.sink->received(on, clock.now() - 20ms);
            midi.sink->received(sysex, clock.now());
            midi.sink->received(off, clock.now());
            if (key % 16 == 0) midi.sink->received(timing, clock.now());
            clock.sleepFor(200us);
        }
    });
    // The user interface's thread.
    std::uint64_t seen = 0;
    for (int i = 0; i < 60 || played < 2000 || received < 200; ++i) {
        loom.setLoomTrkSw(i & 1, i % 7);
        loom.setLoomTrkTrsp(i % 12, i % 7);
        loom.setLoomRelativeTempo(i % 500);
        loom.queTimeTic();
        seen += loom.getLoomQplaytime() + loom.getLoomInnerTime() + static_cast<unsigned>(loom.getLoomRealTempo());
        loom.setLoomSyncMode(i / 20 % 2);
        recordOwner.drain();
        if (i % 10 == 5) {
            loom.setLoomRecFlag(0);
            waitFor([&] { return loom.getLoomRecFlag() == 0; });
            loom.setLoomRecFlag(1);
        }
        if (i % 10 == 3) openPorts();
        if (i % 10 == 7) loom.setLoomQueAlloff(1);
        loom.loomSendShortMsg(2, 0xB0, 1, 1);
        clock.sleepFor(1ms);
    }
    done = true;
    feeder.join();
    driver.join();
    EXPECT_GT(seen + sum, 0U);
    loom.setLoomQueplying(0);
    loom.setLoomQueAlloff(1);
    waitFor([&] { return loom.getLoomQueQlloff() == 0; });
    recordThread.stop();
    loom.CallTimeKillEvent(1);
    StreamChecker checker;
    checker.check(midi.takeSent());
    EXPECT_EQ(checker.sounding(), 0);
}

} // namespace tessaro::test
