// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"
#include "streams/take_check.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

TEST(Overflow, OfABlockedLoopIsToldAndWhatCameBeforeIsKept)
{
    constexpr std::uint8_t sent = 100;
    ManualClock clock;
    Cables cables;
    StudioOn<ManualClock> studio(clock, cables, 40);
    ASSERT_TRUE(studio.open(0, Cables::silence));
    ASSERT_TRUE(studio.record());
    studio.loopTo(240);
    const auto out = cables.loopback.openOutput(Loopback::name);
    for (std::uint8_t i = 0; i < sent; ++i) {
        for (std::uint8_t channel = 0; channel < 16; ++channel)
            out->send(Bytes{static_cast<std::uint8_t>(0xB0U | channel), 1, i}, clock.now());
        clock.sleepFor(std::chrono::milliseconds(2)); // everybody works but the loop
    }
    EXPECT_TRUE(studio.player.panel().IsRecButton()) << "nobody has been told yet";
    studio.loop();
    studio.loop();
    EXPECT_EQ(studio.user.messages, std::vector{static_cast<int>(TextId::midiReceiveError)});
    EXPECT_FALSE(studio.player.panel().IsRecButton());
    EXPECT_FALSE(studio.player.smc().running());
    EXPECT_FALSE(studio.player.editor().IsUndoOpen());

    std::size_t kept = 0;
    const TakenByChannel taken = takenOf(studio.player.editor());
    for (const std::vector<Taken>& channel : taken) {
        for (std::size_t i = 0; i < channel.size(); ++i) EXPECT_EQ(channel[i].bytes[2], i) << "none is missing before";
        kept += channel.size();
    }
    EXPECT_EQ(kept, loomRingEntries - 1U);

    ASSERT_TRUE(studio.record()) << "the next take";
    studio.loopTo(studio.player.smc().smcGetPlayCount() + 240);
    out->send(Bytes{0xC5, 77}, clock.now());
    studio.loop();
    studio.player.panel().Stop();
    EXPECT_EQ(studio.user.messages.size(), 1U);
    EXPECT_EQ(takenOf(studio.player.editor())[0].size() + studio.armed->finish().events, taken[0].size() + 1);
}

} // namespace
} // namespace tessaro::test
