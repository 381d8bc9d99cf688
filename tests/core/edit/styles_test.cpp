// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/fakes.h"
#include "core/song_picture.h"

#include <gtest/gtest.h>

#include <memory>

namespace tessaro::test {
namespace {

using Codes = std::vector<int>;
using Calls = std::vector<std::string>;

constexpr std::uint32_t latestTick = 0xFFFFFFFF;

struct Bench : EditorBench {
    FakeView view;
    CRealBlk* setup = editor.NewAddTailRealBlk();
    CRealBlk* phrase = editor.NewAddTailRealBlk();

    /// A section with a set-up block and two phrases in slot 8.
    POSITION add(const std::string& section, std::uint32_t top, std::uint32_t end)
    {
        auto style = std::make_unique<CStyleBlk>();
        style->SetSectionName(section);
        style->SetTime(top, end);
        style->SetSetup(8, setup);
        style->SetMute(9, true);
        style->SetSectionClock(3840);
        style->SetTempoEnable(true);
        for (std::uint32_t at : {0U, 960U}) {
            CPhraseBlk* made = nullptr;
            style->NewPhrase(&made);
            made->SetTime(at, at + 960);
            made->SetRealBlk(phrase);
            made->SetCtabPart(10);
            style->AddPhrase(8, at, made);
        }
        return editor.StyleRec(top, style.release());
    }
    static CStyleBlk& at(POSITION pos) { return *List<CStyleBlk>::get(pos); }
};

TEST(StyleEdit, BlocksStandInOrderAndCopiesShareTheirData)
{
    Bench b;
    b.transport.playing = true;
    const POSITION verse = b.add("verse", 1920, 3840);
    EXPECT_TRUE(b.transport.calls.empty()) << "recording leaves the transport running";
    b.add("intro", 0, 1920);
    b.add("fill", 1920, 2000);
    EXPECT_EQ(picture(b.editor).substr(picture(b.editor).find('{')), "{intro 0-1920}{verse 1920-3840}{fill 1920-2000}");

    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.StyleCopy(verse, 9600)); });
    EXPECT_EQ(b.transport.calls.front(), "stop");
    const CStyleBlk& copy = Bench::at(b.editor.GetTailStylePos());
    EXPECT_EQ(copy.GetTimeEnd(), 11520U);
    EXPECT_EQ(copy.GetSetup(8), b.setup);
    EXPECT_EQ(copy.GetSectionClock(), 3840U);
    EXPECT_TRUE(copy.GetTempoEnable());
    ASSERT_EQ(copy.GetCount(8), 1U) << "only the head phrase is carried";
    EXPECT_EQ(List<CPhraseBlk>::get(copy.GetHeadPos(8))->GetRealBlk(), b.phrase);
    EXPECT_EQ(List<CPhraseBlk>::get(copy.GetHeadPos(8))->GetCtabPart(), 10);
    Bench::at(verse).SetMute(9, false);
    EXPECT_TRUE(copy.GetMute(9));

    EXPECT_TRUE(b.editor.StyleCopy(verse, latestTick - 10));
    EXPECT_EQ(Bench::at(b.editor.GetTailStylePos()).GetTimeEnd(), latestTick);
    EXPECT_FALSE(b.editor.StyleNew(0, nullptr));
    EXPECT_FALSE(b.editor.StyleDel(nullptr));
}

TEST(StyleEdit, MovingAndDeletingComeBackWithAllPhrases)
{
    Bench b;
    const POSITION first = b.add("intro", 0, 1920);
    b.add("verse", 1920, 3840);
    b.editor.addObserver(&b.view);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.StyleMove(first, 5000)); });
    EXPECT_EQ(b.view.codes.front(), hint::styleMove);
    EXPECT_EQ(Bench::at(b.editor.GetTailStylePos()).GetTimeEnd(), 6920U);
    EXPECT_EQ(Bench::at(b.editor.GetTailStylePos()).GetCount(8), 1U);
    b.editor.UndoNode();
    EXPECT_EQ(b.editor.GetHeadStylePos(), first);
    EXPECT_EQ(Bench::at(first).GetCount(8), 2U);
    b.view.codes.clear();
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.StyleDel(first)); });
    EXPECT_EQ(b.view.codes.front(), hint::styleDel);
    EXPECT_EQ(b.editor.GetTimeEndStyle(), 3840U);
}

TEST(StyleEdit, SizeDivisionAndJoin)
{
    Bench b;
    const POSITION first = b.add("intro", 1000, 2920);
    for (const std::uint32_t time : {0U, 1000U, 2920U, 9999U})
        expectRefused(b.editor, [&] { return b.editor.StyleDiv(first, time); });
    b.editor.addObserver(&b.view);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.StyleDiv(first, 1500)); });
    EXPECT_EQ(Codes(b.view.codes.begin(), b.view.codes.begin() + 2), (Codes{hint::styleNew, hint::styleSize}));
    const POSITION second = b.editor.GetTailStylePos();
    EXPECT_EQ(Bench::at(first).GetTimeEnd(), 1500U);
    EXPECT_EQ(Bench::at(second).GetTimeTop(), 1500U);
    EXPECT_EQ(Bench::at(second).GetTimeEnd(), 2920U);

    expectRefused(b.editor, [&] { return b.editor.StyleApp(first, first); });
    expectRefused(b.editor, [&] { return b.editor.StyleApp(first, second); });
    b.view.codes.clear();
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.StyleApp(second, first)); });
    EXPECT_EQ(Codes(b.view.codes.begin(), b.view.codes.begin() + 2), (Codes{hint::styleSize, hint::styleDel}));
    EXPECT_EQ(Bench::at(first).GetTimeEnd(), 2920U);

    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.StyleSize(first, 500)); });
    EXPECT_EQ(Bench::at(first).GetTimeEnd(), 1001U) << "one tick at least";
}

TEST(StyleEdit, SoloExcludesTracksAndReachesTheSwitches)
{
    Bench b;
    b.editor.SetTrkSolo(3, true);
    EXPECT_FALSE(b.editor.SetStyleSoloExe(7, true)) << "parts below 8 do not sound";
    EXPECT_TRUE(b.editor.SetStyleSoloExe(8, true));
    EXPECT_FALSE(b.editor.IsSoloExist());
    b.editor.SetStyleSoloExe(9, true);
    EXPECT_FALSE(b.editor.GetStyleSolo(8));
    b.editor.SetStyleMute(9, true);
    b.editor.SetTrkOnOff();
    EXPECT_TRUE(b.transport.sounding().empty());
    EXPECT_TRUE(b.transport.on[101 + 9]) << "solo does not look at mute";
    EXPECT_FALSE(b.transport.on[101 + 8]);
    EXPECT_TRUE(b.transport.on[101 + 7]);
    b.editor.SetStyleSoloExe(9, false);
    b.editor.SetStyleOnOff();
    EXPECT_FALSE(b.transport.on[101 + 9]);
    EXPECT_TRUE(b.transport.on[101 + 8]);
    b.transport.calls.clear();
    b.editor.SetStyleOnOff();
    EXPECT_TRUE(b.transport.calls.empty());

    EXPECT_TRUE(b.editor.SetStyleChSoloOn(0, 12));
    EXPECT_FALSE(b.editor.SetStyleChSoloOff(0, 3)) << "part 3 has the channel and no solo";
    EXPECT_TRUE(b.editor.GetStyleSolo(12));
    EXPECT_FALSE(b.editor.SetStyleChSoloOn(1, 12));
    EXPECT_FALSE(b.editor.IsSoloExistStyle()) << "all others lose it";
    EXPECT_FALSE(b.document.modified);
}

TEST(StyleEdit, SettingsReachTheEngine)
{
    Bench b;
    b.editor.SetStylePort(10, 2);
    EXPECT_EQ(b.transport.calls, (Calls{"port111=2", "port101=2"})) << "part 0 follows";
    EXPECT_TRUE(b.document.modified);
    b.transport.calls.clear();
    EXPECT_FALSE(b.editor.SetStyleCh(10, 16));
    EXPECT_FALSE(b.editor.SetStylePort(16, 0));
    EXPECT_TRUE(b.transport.calls.empty());

    b.editor.SetStyleTrans(9, 30);
    b.editor.SetStyleTransEnable(10, false);
    b.transport.calls.clear();
    b.editor.SetStyleTransOfst(12);
    EXPECT_EQ(b.transport.calls, (Calls{"trans109=12", "trans110=36", "trans112=12", "trans113=12", "trans114=12",
                                        "trans115=12", "trans116=12"}));
}

} // namespace
} // namespace tessaro::test
