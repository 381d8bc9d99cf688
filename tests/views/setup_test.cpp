// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/profile_store.h"
#include "core/doc/scratch_folder.h"
#include "core/edit/undo_scope.h"
#include "song_fixture.h"
#include "support/random.h"
#include "views/setup/click_preview.h"
#include "views/setup/controller_filter.h"
#include "views/setup/driver_order.h"
#include "views/setup/number_choices.h"
#include "views/setup/position_scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>

namespace tessaro {
namespace {

using Ports = std::vector<std::int32_t>;

/// "2+ 0+ 1-": drivers, checked or not.
std::string rowsOf(const DriverOrder& order)
{
    std::string line;
    for (const DriverOrder::Row& row : order.rows())
        line += (line.empty() ? "" : " ") + std::to_string(row.driver) + (row.checked ? '+' : '-');
    return line;
}

TEST(Setup, TheDriversOfThePortsComeFirstAndOnce)
{
    const struct {
        Ports ports;
        std::size_t drivers;
        const char* rows;
    } cases[] = {
        {{}, 0, ""},
        {{0, 1}, 0, ""},
        {{}, 3, "0- 1- 2-"},
        {{2, 0}, 4, "2+ 0+ 1- 3-"},
        {{1, 1, 0, 1}, 2, "1+ 0+"},
        {{0x80, 1, 0x7F, -1, 3}, 3, "1+ 0- 2-"},
    };
    for (const auto& c : cases) EXPECT_EQ(rowsOf(DriverOrder(c.ports, c.drivers)), c.rows);
}

TEST(Setup, ADraggedRowComesInBeforeTheOneItIsDroppedOn)
{
    const struct {
        std::size_t row;
        std::size_t place;
        const char* rows;
    } cases[] = {
        {0, 2, "1- 0- 2- 3-"}, {2, 0, "2- 0- 1- 3-"}, {3, 1, "0- 3- 1- 2-"},
        {0, 4, "1- 2- 3- 0-"}, {0, 1, "0- 1- 2- 3-"}, {1, 0, "1- 0- 2- 3-"},
        {2, 2, "0- 1- 2- 3-"}, {4, 0, "0- 1- 2- 3-"}, {0, 5, "0- 1- 2- 3-"},
    };
    for (const auto& c : cases) {
        DriverOrder order({}, 4);
        order.drop(c.row, c.place);
        EXPECT_EQ(rowsOf(order), c.rows) << c.row << " on " << c.place;
    }
}

TEST(Setup, NoDriverIsLostOrDoubledByMoving)
{
    test::Dice dice(5);
    for (int run = 0; run < 200; ++run) {
        const std::size_t drivers = 1 + dice.below(6);
        DriverOrder order({}, drivers);

        for (int i = 0; i < 20; ++i) {
            const std::size_t row = dice.below(8);
            switch (dice.below(4)) {
            case 0: order.drop(row, dice.below(8)); break;
            case 1: order.step(row, dice.oneIn(2) ? 1 : -1); break;
            case 2: order.check(row, dice.oneIn(2)); break;
            default: order.putFirst({static_cast<int>(dice.below(8)), static_cast<int>(dice.below(8))});
            }
        }
        Ports all;
        for (const DriverOrder::Row& row : order.rows()) all.push_back(row.driver);
        const Ports ports = order.ports();
        for (std::size_t port = 0; port < ports.size(); ++port)
            EXPECT_EQ(order.portOf(ports[port]), static_cast<int>(port));
        std::ranges::sort(all);
        Ports expected(drivers);
        std::iota(expected.begin(), expected.end(), 0);
        EXPECT_EQ(all, expected);
    }
}

TEST(Setup, TheBoxOfAllControllersFollowsTheirSwitches)
{
    ControllerFilter::Switches some{};
    some[127] = 1;
    ControllerFilter::Switches all;
    all.fill(1);
    for (const int stored : {2, -1, 7}) EXPECT_EQ(ControllerFilter(stored, some).box(), 2);

    ControllerFilter filter(2, some);
    filter.click();
    EXPECT_EQ(filter.box(), 0);
    EXPECT_EQ(filter.switches(), ControllerFilter::Switches{});
    filter.click();
    EXPECT_EQ(filter.box(), 1);
    EXPECT_EQ(filter.switches(), all);
    filter.set(some);
    EXPECT_EQ(filter.box(), 2);
    filter.set(all);
    EXPECT_EQ(filter.box(), 1);
    filter.click();
    EXPECT_EQ(filter.box(), 0);
    filter.set({});
    EXPECT_EQ(filter.box(), 0);
}

TEST(Setup, ChoicesComeInTheOrderOfTheirKeys)
{
    const test::ScratchFolder folder;
    ProfileStore store(folder / "none.ini");
    EXPECT_TRUE(numberChoices(store, "Sysex Size").empty());
    const std::pair<int, int> keys[] = {{127, 9}, {128, 1}, {10, 4}, {2, 512}, {3, 0}, {5, 64}};
    for (const auto& [key, value] : keys) store.setInt("Sysex Size", std::to_string(key), value);
    const std::vector<int> choices = numberChoices(store, "Sysex Size");
    EXPECT_EQ(choices, (std::vector<int>{512, 64, 4, 9}));

    EXPECT_EQ(choiceFor(choices, 5), 0U); // the first, not the nearest
    EXPECT_EQ(choiceFor({64, 128, 512}, 65), 1U);
    EXPECT_EQ(choiceFor({64, 128, 512}, 64), 0U);
    EXPECT_EQ(choiceFor({64, 128, 512}, 513), std::nullopt);
}

/// 4/4, from bar 2 on 7/8, from bar 3 on 255/1.
struct OddSong : SongFixture {
    OddSong()
    {
        const UndoScope step(editor, "signatures");
        insert(1920, {7, 3, 24, 8});
        insert(1920 + 1680, {255, 0, 24, 8});
    }
    void insert(std::uint32_t time, const std::vector<std::uint8_t>& body)
    {
        editor.InsEvnt(editor.GetTrkPos(0), editor.GetHeadBlkPos(0), test::bytesRec(0xFF, time, body, 0x58));
    }
};

TEST(Setup, PositionsReadBackAsTheyAreWritten)
{
    OddSong song;
    test::Dice dice(7);
    for (const PositionScale& scale : {PositionScale(nullptr), PositionScale(&song.editor)}) {
        for (int i = 0; i < 2000; ++i) {
            const std::uint32_t tick = dice.oneIn(2) ? dice.below(9000) : dice.below(1U << 31);
            EXPECT_EQ(scale.parse(scale.text(tick)), tick) << scale.text(tick);
        }
    }
}

TEST(Setup, PositionsAreTypedInParts)
{
    const struct {
        const char* typed;
        std::optional<std::uint32_t> tick;
    } cases[] = {
        {"0001:1:000", 0},
        {"3", 3840},
        {"3:2", 4320},
        {"3.2 7", 4327},
        {"3:0:0", 3840},
        {"1:9:1", 3841}, // beats run on into the bars behind
        {"0", std::nullopt},
        {"", std::nullopt},
        {":2:3", std::nullopt},
        {"-1", std::nullopt},
        {"1:2:3:4", std::nullopt},
        {"1:2:3:", std::nullopt},
        {"1000000", 1'919'998'080},
        {"999999999999999999", std::nullopt},
        {"1999999", std::nullopt},
        {"1999999:1999999", std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(PositionScale(nullptr).parse(c.typed), c.tick) << c.typed;
    OddSong song;
    const PositionScale scale(&song.editor);
    EXPECT_EQ(scale.text(1920 + 240), "0002:2:000");
    EXPECT_EQ(scale.parse("2:7:239"), 1920U + 6 * 240 + 239);
    EXPECT_EQ(scale.parse("5"), 1920U + 1680 + 2 * 255 * 1920);
    EXPECT_EQ(scale.parse("999999"), std::nullopt) << "no room for its tick";
}

TEST(Setup, BarsAreTurnedWithTheirBeat)
{
    const PositionScale plain(nullptr);
    EXPECT_EQ(plain.moveBars(500, 2), 500U + 3840);
    EXPECT_EQ(plain.moveBars(4340, -1), 2420U);
    EXPECT_EQ(plain.moveBars(2420, -5), 500U);
    EXPECT_EQ(plain.moveBars(std::numeric_limits<std::int32_t>::max(), 1),
              std::uint32_t{std::numeric_limits<std::int32_t>::max()});
    OddSong song;
    EXPECT_EQ(PositionScale(&song.editor).moveBars(960, 1), 1920U + 480);
}

TEST(Setup, OneEndOfARangePushesTheOther)
{
    const auto range = [](std::uint32_t start, std::uint32_t end) { return std::pair(start, end); };
    PushedRange punch{100, 200};
    punch.setStart(150);
    EXPECT_EQ(std::pair(punch.start, punch.end), range(150, 200));
    punch.setStart(300);
    EXPECT_EQ(std::pair(punch.start, punch.end), range(300, 300));
    punch.setEnd(400);
    EXPECT_EQ(std::pair(punch.start, punch.end), range(300, 400));
    punch.setEnd(50);
    EXPECT_EQ(std::pair(punch.start, punch.end), range(50, 50));
}

TEST(Setup, TheClickIsHeardForABarAndEndsWhereItBegan)
{
    std::vector<std::vector<int>> sent;
    ClickPreview preview([&](int port, int status, int key, int velocity) {
        sent.push_back({port, status, key, velocity});
    });
    MetronomeSettings metronome{2, 9, 76, 77, 100, 60};
    preview.start();
    EXPECT_TRUE(preview.step(metronome));
    metronome.port = 5;
    metronome.channel = 0;
    int steps = 1;
    while (preview.step(metronome)) ++steps;
    EXPECT_EQ(steps, 8);
    ASSERT_EQ(sent.size(), 8U);
    EXPECT_EQ(sent[0], (std::vector{2, 0x99, 76, 100}));
    EXPECT_EQ(sent[1], (std::vector{2, 0x99, 76, 0}));
    for (std::size_t i = 2; i < sent.size(); i += 2) {
        EXPECT_EQ(sent[i], (std::vector{5, 0x90, 77, 60}));
        EXPECT_EQ(sent[i + 1], (std::vector{5, 0x90, 77, 0}));
    }
    preview.silence();
    EXPECT_EQ(sent.size(), 8U);
}

} // namespace
} // namespace tessaro
