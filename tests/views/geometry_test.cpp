// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/ruler_gesture.h"
#include "views/tracks/song_scale.h"
#include "views/transport/location_text.h"

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(LocationText, KeepsFieldWidths)
{
    EXPECT_EQ(locationText({1, 1, 0}), "1:01:000");
    EXPECT_EQ(locationText({1234, 12, 479}), "1234:12:479");
    EXPECT_EQ(clockText(0), "0:00.0");
    EXPECT_EQ(clockText(59'999), "0:59.9"); // cut, not rounded up to a minute of 60 seconds
    EXPECT_EQ(clockText(3'599'950), "59:59.9");
    EXPECT_EQ(clockText(3'600'000), "1:00:00.0");
    EXPECT_EQ(tempoText(500'000), "120.00");
    EXPECT_EQ(tempoText(0), "-");
    EXPECT_EQ(signatureText(6, 3), "6/8");
    EXPECT_EQ(signatureText(4, 255), "4/0");
}

TEST(SongScale, GoesThereAndBack)
{
    const SongScale scale(1920 * 64, 800);
    for (const std::uint32_t tick : {0U, 1920U, 61'440U, 122'880U})
        EXPECT_NEAR(scale.tick(scale.x(tick)), tick, 1) << tick;
    EXPECT_EQ(scale.tick(-50), 0U);
    EXPECT_EQ(scale.tick(5000), scale.end());
    // Neither an empty song nor a pane without width divides by zero.
    EXPECT_EQ(SongScale(0, 0).tick(100), 1U);
    // The longest possible song stays in order.
    const SongScale longest(0xFFFFFFFFU, 1000);
    EXPECT_LT(longest.x(0xFFFFFFF0U), 1000 - SongScale::margin + 1);
    EXPECT_EQ(longest.tick(999'999), 0xFFFFFFFFU);
}

TEST(Ruler, LabelsKeepTheirDistance)
{
    // A song of mixed measures: every third has half the length.
    const auto top = [](std::uint32_t m) { return m / 3 * 4800 + m % 3 * 1920; };
    for (const std::uint32_t measures : {1U, 7U, 64U, 999U, 9999U}) {
        const SongScale scale(top(measures), 900);
        double last = -1000;
        double previous = -1000;
        const auto marks = rulerMarks(scale, measures, 40, top);
        ASSERT_FALSE(marks.empty());
        EXPECT_EQ(marks.front().measure, 1U);
        EXPECT_TRUE(marks.front().labelled);
        EXPECT_LE(marks.size(), 300U); // what is drawn depends on the width, not on the song
        for (const RulerMark& mark : marks) {
            EXPECT_DOUBLE_EQ(mark.x, scale.x(top(mark.measure - 1)));
            EXPECT_GT(mark.x, previous);
            previous = mark.x;
            if (!mark.labelled) continue;
            EXPECT_GE(mark.x - last, 40);
            last = mark.x;
        }
    }
    EXPECT_TRUE(rulerMarks(SongScale(0, 900), 0, 40, top).empty());
}

TEST(RulerGesture, TellsAClickFromADrag)
{
    RulerGesture gesture;
    gesture.press(100);
    gesture.move(100 + RulerGesture::dragDistance - 1);
    gesture.release();
    EXPECT_EQ(gesture.click(), 100);
    EXPECT_FALSE(gesture.span());

    gesture.press(100);
    gesture.move(40);
    gesture.move(98); // back near the start it is still a drag
    EXPECT_EQ(gesture.span(), std::pair(98, 100));
    gesture.release();
    gesture.move(300);
    EXPECT_EQ(gesture.span(), std::pair(98, 100));
    EXPECT_FALSE(gesture.click());
}

} // namespace
} // namespace tessaro
