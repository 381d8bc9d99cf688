// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/keyboard/piano_keys.h"
#include "views/keyboard/typed_keyboard.h"
#include "views/keyboard/typed_layout.h"
#include "views/step/step_chooser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessaro {
namespace {

TEST(TypedLayout, RowsRiseInSemitonesAndOverlap)
{
    const std::string lower = "ZSXDCVGBHNJM,L.;/";
    const std::string upper = "Q2W3ER5T6Y7UI9O0P";
    for (std::size_t i = 0; i < lower.size(); ++i) EXPECT_EQ(semitoneOfKey(0, lower[i]), i);
    for (std::size_t i = 0; i < upper.size(); ++i) EXPECT_EQ(semitoneOfKey(0, upper[i]), 12 + i);
    for (const char other : {'A', 'F', 'K', '1', '4', '8', '\'', '['}) EXPECT_FALSE(semitoneOfKey(0, other)) << other;
    EXPECT_EQ(keysOfSemitone(0), "Z");
    EXPECT_EQ(keysOfSemitone(12), "Q,");
    EXPECT_EQ(keysOfSemitone(typedSemitones - 1), "P");

    // The place decides, whatever the key says: Z stands where other countries have Y or W.
    EXPECT_EQ(semitoneOfKey(52, 'Y'), 0);
    EXPECT_EQ(semitoneOfKey(24, 'A'), 12);
    EXPECT_FALSE(semitoneOfKey(38, 'Q'));  // the place of the A plays nothing
    EXPECT_EQ(semitoneOfKey(250, 'Z'), 0); // a place that tells nothing
}

class TypedKeyboardTest : public testing::Test {
protected:
    TypedKeyboardTest()
    {
        keyboard.onMessage = [this](std::span<const std::uint8_t> m) {
            sent += (m[0] == 0x90 ? '+' : '-') + std::to_string(m[1]) + ' ';
        };
    }
    std::string take() { return std::exchange(sent, {}); }

    TypedKeyboard keyboard;
    std::string sent;
};

TEST_F(TypedKeyboardTest, ANoteSoundsAsLongAsAKeyHoldsIt)
{
    keyboard.press(10, 12);
    keyboard.press(10, 12); // the key repeats
    keyboard.press(20, 12); // the same note on the other row
    EXPECT_TRUE(keyboard.sounds(12));
    keyboard.release(10);
    EXPECT_EQ(take(), "+60 ");
    keyboard.release(20);
    keyboard.release(20);
    keyboard.release(99);
    EXPECT_EQ(take(), "-60 ");
    EXPECT_FALSE(keyboard.sounds(12));
}

TEST_F(TypedKeyboardTest, NothingHangsWhenTheOctaveChanges)
{
    for (int octave = -3; octave <= 9; ++octave) {
        keyboard.setOctave(octave);
        take();
        keyboard.press(1, 0);
        keyboard.press(2, typedSemitones - 1);
        keyboard.setOctave(octave == 3 ? 4 : 3);
        keyboard.release(1);
        keyboard.release(2);
        const std::string all = take();
        EXPECT_EQ(std::count(all.begin(), all.end(), '+'), 2) << octave;
        EXPECT_EQ(std::count(all.begin(), all.end(), '-'), 2) << octave;
    }
    keyboard.press(1, 0);
    keyboard.press(2, 4);
    keyboard.releaseAll();
    EXPECT_EQ(take(), "+48 +52 -48 -52 ");
}

TEST(PianoKeys, AreFoundWhereTheyAreDrawn)
{
    const PianoKeys keys(typedSemitones, {0, 0, 640, 90});
    for (int semitone = 0; semitone < typedSemitones; ++semitone) {
        const QRectF place = keys.key(semitone);
        EXPECT_EQ(keys.at({place.center().x(), place.bottom() - 4}), semitone);
    }
    EXPECT_EQ(keys.key(typedSemitones - 1).right(), 640);
    EXPECT_FALSE(keys.at({-1, 5}));
    EXPECT_FALSE(keys.at({5, 91}));
}

TEST(StepChooser, LengthsAndTheirDivisions)
{
    StepChooser chooser;
    EXPECT_EQ(chooser.step(), 480U);
    const std::pair<StepKind, std::array<std::uint32_t, 6>> kinds[] = {
        {StepKind::plain, {1920, 960, 480, 240, 120, 60}},
        {StepKind::dotted, {2880, 1440, 720, 360, 180, 90}},
        {StepKind::triplet, {1280, 640, 320, 160, 80, 40}},
        {StepKind::quintuplet, {1536, 768, 384, 192, 96, 48}},
    };
    for (const auto& [kind, ticks] : kinds) {
        chooser.setKind(kind);
        for (int length = 0; length < StepChooser::lengths; ++length) {
            chooser.setLength(length);
            EXPECT_EQ(chooser.step(), ticks[static_cast<std::size_t>(length)]);
        }
    }
    chooser.setVelocity(0);
    chooser.setDuration(1000);
    EXPECT_EQ(chooser.GetVolocity(), 1);
    EXPECT_EQ(chooser.GetDuration(), StepChooser::mostDuration);
}

} // namespace
} // namespace tessaro
