// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/position.h"
#include "cli/track_list.h"

#include <gtest/gtest.h>

namespace tessaro::cli {
namespace {

TEST(Arguments, TrackLists)
{
    EXPECT_EQ(tracksOf("1,3,5-8"), (std::vector<int>{1, 3, 5, 6, 7, 8}));
    EXPECT_EQ(tracksOf("100"), std::vector<int>{100});
    for (const char* text : {"", ",", "0", "101", "1,", "1-", "-3", "8-5", "1 2", "x"})
        EXPECT_EQ(tracksOf(text), std::nullopt) << text;
}

TEST(Arguments, Positions)
{
    for (const char* text : {"0", "4294967295", "1:1:0", "17:4:479"}) EXPECT_TRUE(isPosition(text)) << text;
    for (const char* text : {"", "-1", "1:2", "1:2:3:4", "1::3", "a", "4294967296", "1:2:", "1 "})
        EXPECT_FALSE(isPosition(text)) << text;
}

} // namespace
} // namespace tessaro::cli
