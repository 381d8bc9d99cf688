// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/theme/colours.h"

#include <gtest/gtest.h>

#include <set>

namespace tessaro {
namespace {

using Role = QPalette::ColorRole;

class BothThemes : public testing::TestWithParam<bool> {
protected:
    QPalette palette = GetParam() ? darkPalette() : lightPalette();
};

TEST_P(BothThemes, TextIsReadableOnEveryBackgroundItMeets)
{
    const std::pair<Role, Role> pairs[] = {
        {QPalette::WindowText, QPalette::Window},
        {QPalette::Text, QPalette::Base},
        {QPalette::Text, QPalette::AlternateBase},
        {QPalette::ButtonText, QPalette::Button},
        {QPalette::PlaceholderText, QPalette::Window},
        {QPalette::PlaceholderText, QPalette::Base},
        {QPalette::PlaceholderText, QPalette::Button},
        {QPalette::HighlightedText, QPalette::Highlight},
        {QPalette::Link, QPalette::Base},
        {QPalette::ToolTipText, QPalette::ToolTipBase},
        {QPalette::Base, QPalette::Text},
    };
    for (const auto& [text, back] : pairs)
        EXPECT_GE(contrast(palette.color(text), palette.color(back)), 4.5) << text << " on " << back;
    // The accent as a mark on the lanes, not as a text.
    EXPECT_GE(contrast(palette.color(QPalette::Highlight), palette.color(QPalette::Base)), 3.0);
}

TEST_P(BothThemes, SixteenTrackColoursDifferAndStandOut)
{
    std::set<QRgb> seen;
    for (int track = 1; track <= 16; ++track) {
        const QColor colour = trackColour(track, palette);
        seen.insert(colour.rgb());
        EXPECT_GE(contrast(colour, palette.color(QPalette::Base)), 3.0) << track;
        EXPECT_GE(contrast(colour, palette.color(QPalette::Window)), 3.0) << track;
        EXPECT_EQ(trackColour(track + 16, palette), colour);
    }
    EXPECT_EQ(seen.size(), 16U);
}

TEST_P(BothThemes, TheRedOfRecordingStandsOutAndCarriesASign)
{
    const QColor red = recordColour(palette);
    for (const Role back : {QPalette::Base, QPalette::Window, QPalette::Button})
        EXPECT_GE(contrast(red, palette.color(back)), 3.0) << back;
    EXPECT_GE(contrast(palette.color(QPalette::Base), red), 4.5);
}

INSTANTIATE_TEST_SUITE_P(Colours, BothThemes, testing::Bool(),
                         [](const auto& each) { return each.param ? "dark" : "light"; });

TEST(Colours, ContrastOfKnownPairs)
{
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21.0, 1e-6);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.478, 1e-3);
    EXPECT_TRUE(isDark(darkPalette()));
    EXPECT_FALSE(isDark(lightPalette()));
}

} // namespace
} // namespace tessaro
