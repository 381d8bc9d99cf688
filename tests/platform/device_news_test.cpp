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

/// Looks every tenth of a second, as the background thread does, and keeps what is told.
struct Looker {
    DeviceNews news;
    Names there{"a", "b"};
    Nanos now{10s};
    std::string told; ///< an R for each removal, an A for each arrival

    Looker() { news.reset(there); }
    void look(bool changed)
    {
        const DeviceNews::Due due = changed ? news.look(now, there) : news.look(now);
        if (due.removal) told += 'R';
        if (due.arrival) told += 'A';
        now += 100ms;
    }
    void see(Names devices)
    {
        there = std::move(devices);
        look(true);
    }
    void rest(int looks = 30)
    {
        while (looks-- > 0) look(false);
    }
};

} // namespace

TEST(DeviceNews, TellRemovalsAtOnceAndArrivalsWhenAllIsQuiet)
{
    Looker l;
    l.see({"a", "b"});
    l.rest();
    EXPECT_EQ(l.told, "") << "a change that was none";
    l.see({"a", "b", "c"});
    EXPECT_EQ(l.told, "");
    l.rest(3);
    EXPECT_EQ(l.told, "A");
    l.see({"b", "c"});
    EXPECT_EQ(l.told, "AR");
    l.rest();
    EXPECT_EQ(l.told, "ARA") << "for what still stands";
    l.see({"c"});
    l.see({"b", "c"});
    l.rest();
    EXPECT_EQ(l.told, "ARARA") << "gone for a moment";
    for (int i = 0; i < 20; ++i) l.see({"c" + std::to_string(i)});
    EXPECT_EQ(l.told, "ARARAR") << "a burst is one removal";
    l.rest();
    EXPECT_EQ(l.told, "ARARARA");
    for (int i = 0; i < 45; ++i) l.see({"d" + std::to_string(i)});
    EXPECT_EQ(l.told, "ARARARARARAR") << "a burst without an end, every other second";
}

// Whoever lets go at a removal and takes what is there at an arrival holds in the end what is there.
TEST(DeviceNews, LeaveNobodyBehind)
{
    std::minstd_rand random(3);
    for (int round = 0; round < 300; ++round) {
        Looker l;
        Names held = l.there;
        std::size_t handled = 0;
        const auto handle = [&] {
            for (; handled < l.told.size(); ++handled) held = l.told[handled] == 'R' ? Names{} : l.there;
            for (const std::string& name : held)
                ASSERT_NE(std::find(l.there.begin(), l.there.end(), name), l.there.end()) << l.told;
        };
        for (int i = 0; i < 60; ++i) {
            Names next = l.there;
            if (random() % 4 == 0) {
                next.clear();
                for (const char* name : {"a", "b", "c"})
                    if (random() % 2) next.emplace_back(name);
            }
            l.see(next);
            handle();
        }
        l.rest();
        handle();
        ASSERT_EQ(held, l.there) << l.told;
        ASSERT_EQ(l.told.find("RR"), l.told.npos) << "nothing is let go twice";
    }
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
