// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/style_blk.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace tessaro {
namespace {

TEST(StyleBlk, PhrasesStandInOrderInTheirSlots)
{
    CStyleBlk style;
    const auto add = [&](std::uint32_t top, std::uint32_t end) {
        auto phrase = std::make_unique<CPhraseBlk>();
        phrase->SetTime(top, end);
        return style.AddPhrase(15, top, phrase.release());
    };
    add(960, 1);
    add(0, 2);
    add(960, 3);
    std::vector<std::uint32_t> ends;
    CPhraseBlk* phrase = nullptr;
    for (POSITION pos = style.GetHeadPos(15); style.GetNext(pos, &phrase);) ends.push_back(phrase->GetTimeEnd());
    EXPECT_EQ(ends, (std::vector<std::uint32_t>{2, 1, 3}));
    EXPECT_EQ(style.GetCount(14), 0U);
    style.RemovePhrase(15);
    EXPECT_EQ(style.GetTailPos(15), nullptr);
}

TEST(StyleBlk, SlotsOutsideTakeNothing)
{
    CStyleBlk style;
    const auto phrase = std::make_unique<CPhraseBlk>();
    for (const int slot : {-1, 16}) {
        EXPECT_EQ(style.AddPhrase(slot, 0, phrase.get()), nullptr);
        style.SetMute(slot, true);
        style.RemovePhrase(slot);
        EXPECT_FALSE(style.GetMute(slot));
        EXPECT_EQ(style.GetSetup(slot), nullptr);
        EXPECT_EQ(style.GetCount(slot), 0U);
    }
    style.SetSectionClock(0);
    EXPECT_EQ(style.GetSectionClock(), 1U) << "positions are divided by it";
}

} // namespace
} // namespace tessaro
