// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"
#include "platform/device_news.h"
#include "platform/midi/keyboard_port.h"
#include "platform/recording_sink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace std::chrono_literals;

namespace tessaro {

namespace {

using Names = std::vector<std::string>;

/// Looks every tenth of a second, as the background thread does, and acts as who is told: lets go at a removal, and
/// takes what is there at an arrival.
struct Looker {
    DeviceNews news;
    Names there{"a", "b"};
    Names held = there;
    Nanos now{10s};
    std::string told; ///< an R for each removal, an A for each arrival

    Looker() { news.reset(there); }
    void see(Names devices)
    {
        const bool changed = devices != there;
        there = std::move(devices);
        const DeviceNews::Due due = changed ? news.look(now, there) : news.look(now);
        if (due.removal) told += 'R', held.clear();
        if (due.arrival) told += 'A', held = there;
        now += 100ms;
    }
    void rest(int looks)
    {
        while (looks-- > 0) see(there);
    }
};

} // namespace

TEST(DeviceNews, AreToldOnceForABurstAndLeaveNobodyBehind)
{
    std::minstd_rand random(3);
    for (int round = 0; round < 300; ++round) {
        Looker l;
        for (int i = 0; i < 60; ++i) {
            Names next;
            for (const char* name : {"a", "b", "c"})
                if (random() % 2) next.emplace_back(name);
            l.see(random() % 4 == 0 ? next : l.there);
            ASSERT_TRUE(std::ranges::includes(l.there, l.held)) << "a removal is told at once: " << l.told;
        }
        l.rest(9);
        ASSERT_EQ(l.held, l.there) << l.told;
        ASSERT_EQ(l.told.find("RR"), l.told.npos) << "nothing is let go twice";
    }
    Looker l;
    for (int i = 0; i < 19; ++i) l.see({"d" + std::to_string(i)});
    EXPECT_EQ(l.told, "R");
    for (int i = 0; i < 3; ++i) l.see({"e" + std::to_string(i)});
    EXPECT_EQ(l.told, "RAR") << "a burst without an end";
}

TEST(KeyboardPort, PlaysToWhoHasItOpen)
{
    ManualClock clock;
    KeyboardPort keyboard(clock);
    RecordingSink sink;
    keyboard.send(Bytes{0x90, 60, 100});
    EXPECT_FALSE(keyboard.openInput("Other", sink));
    auto in = keyboard.openInput(keyboard.driverName(), sink);
    clock.sleepFor(5ms);
    keyboard.send(Bytes{0x90, 60, 100});
    in = keyboard.openInput(keyboard.driverName(), sink); // before the first is closed
    keyboard.send(Bytes{0x80, 60, 0});
    in.reset();
    keyboard.send(Bytes{0x90, 61, 100});
    EXPECT_EQ(sink.messages(), (std::vector<Bytes>{{0x90, 60, 100}, {0x80, 60, 0}}));
    EXPECT_EQ(sink.times()[0], Nanos(5ms));
}

} // namespace tessaro
