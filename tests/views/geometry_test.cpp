// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/fakes.h"
#include "views/roll/ruler_gesture.h"
#include "views/tracks/ruler_lines.h"
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

TEST(RulerLines, KeepTheirDistanceAtEveryZoom)
{
    test::EditorBench bench; // of 4/4
    TrkGeometry geometry;
    geometry.setSize({1000, 400});
    for (const double zoom : {6.0, 17.0, 60.0, 384.0}) {
        geometry.setZoom(zoom);
        for (const std::uint32_t origin : {0U, 1000U, 1920U * 5000U}) {
            geometry.setOrigin(origin);
            int lastLabel = -1000;
            int last = -1000;
            int labels = 0;
            const auto lines = rulerLines(geometry, bench.editor.maps().meas(), {0, 0, 1000, 400}, 48);
            for (const RulerLine& line : lines) {
                EXPECT_GE(line.x - last, 8) << zoom;
                last = line.x;
                if (line.kind == RulerLine::Kind::beat) continue;
                EXPECT_EQ(line.x, geometry.windowX((line.measure - 1) * 1920)) << zoom;
                if (line.kind != RulerLine::Kind::labelled) continue;
                ++labels;
                EXPECT_GE(line.x - lastLabel, 48);
                lastLabel = line.x;
            }
            EXPECT_GE(labels, 2) << "somewhere there is a number";
            EXPECT_LE(lines.size(), 200U);
        }
    }
    // A part of the window has the lines of the whole.
    const QRect part(300, 0, 50, 400);
    const auto inside = [&](const QRect& area) {
        std::vector<int> xs;
        for (const RulerLine& line : rulerLines(geometry, bench.editor.maps().meas(), area, 48))
            if (part.contains(line.x, 0)) xs.push_back(line.x);
        return xs;
    };
    EXPECT_EQ(inside(part), inside({0, 0, 1000, 400}));
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
