// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/fakes.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

/// A song with a block on track 1, a second one on track 2, and an event in the first.
struct HintBench : EditorBench {
    FakeView view;
    POSITION trk, trk2, blk, blk2, evnt;

    HintBench()
    {
        editor.NewBlk(1, 0);
        editor.NewBlk(2, 480);
        editor.NewAddTailEvnt(1, 0, noteRec(10, 20));
        trk = editor.GetTrkPos(1);
        trk2 = editor.GetTrkPos(2);
        blk = editor.GetHeadBlkPos(1);
        blk2 = editor.GetHeadBlkPos(2);
        evnt = editor.GetHeadEvntPos(1, 0);
        editor.addObserver(&view);
    }
};

TEST(Hints, EachOperationSendsItsCodeAndObject)
{
    HintBench b;
    CEditor& e = b.editor;
    const auto code = [&](auto&& send) {
        b.view.codes.clear();
        b.view.withEditor.clear();
        send();
        EXPECT_EQ(b.view.codes.size(), 1U);
        return b.view.withEditor.back() ? b.view.codes.back() : -b.view.codes.back();
    };
    EXPECT_EQ(code([&] { e.HintEvntChng(b.trk, b.blk, b.evnt); }), 1);
    EXPECT_EQ(code([&] { e.HintTimeChng(); }), -2);
    EXPECT_EQ(code([&] { e.HintMeasChng(); }), -3);
    EXPECT_EQ(code([&] { e.HintTsChng(b.trk, b.blk, b.evnt); }), 4);
    EXPECT_EQ(code([&] { e.HintLocationChng(b.trk, b.blk, b.evnt, b.evnt); }), 5);
    EXPECT_EQ(code([&] { e.HintDelEvnt(b.trk, b.blk, b.evnt); }), 6);
    EXPECT_EQ(code([&] { e.HintInsEvnt(b.trk, b.blk, b.evnt); }), 7);
    EXPECT_EQ(code([&] { e.HintInsRest(b.trk, b.blk, b.evnt); }), 8);
    EXPECT_EQ(code([&] { e.HintBlkNew(b.trk, b.blk); }), 9);
    EXPECT_EQ(code([&] { e.HintBlkRealRec(b.trk, b.blk); }), 9);
    EXPECT_EQ(code([&] { e.HintBlkMove(b.trk, b.blk, b.trk2, b.blk2); }), 10);
    EXPECT_EQ(code([&] { e.HintBlkDel(b.trk, b.blk); }), 11);
    EXPECT_EQ(code([&] { e.HintBlkApp(b.trk, b.blk); }), 12);
    EXPECT_EQ(code([&] { e.HintBlkDiv(b.trk, b.blk, b.blk2); }), 13);
    EXPECT_EQ(code([&] { e.HintBlkMerge(b.trk, b.blk, b.trk2, b.blk2); }), 14);
    EXPECT_EQ(code([&] { e.HintAddBlk(b.trk, b.blk); }), 16);
    EXPECT_EQ(code([&] { e.HintBlkName(b.trk, b.blk); }), 17);
    EXPECT_EQ(code([&] { e.HintTrkSolo(1); }), 18);
    EXPECT_EQ(code([&] { e.HintTrkMute(b.trk, true); }), 19);
    EXPECT_EQ(code([&] { e.HintChSolo(0, 0); }), 20);
    EXPECT_EQ(code([&] { e.HintChMute(0, 0); }), 21);
    EXPECT_EQ(code([&] { e.HintTrkArrange(b.trk, b.trk2); }), 22);
    EXPECT_EQ(code([&] { e.HintBlkReSize(b.trk, b.blk); }), 23);
    EXPECT_EQ(code([&] { e.HintBlkReal(b.trk, b.blk); }), 24);
    EXPECT_EQ(code([&] { e.HintBlkUpdate(b.trk, b.blk); }), 27);
    EXPECT_EQ(code([&] { e.HintTrkCh(1, 3); }), 29);
    EXPECT_EQ(code([&] { e.HintTrkPort(1, 4); }), 30);
    EXPECT_EQ(code([&] { e.HintSoloMute(); }), 33);
    EXPECT_EQ(code([&] { e.HintTrkPort(); }), 34);
    EXPECT_EQ(code([&] { e.HintTrkType(); }), 35);
    EXPECT_EQ(code([&] { e.HintStyleNew(b.blk); }), 40);
    EXPECT_EQ(code([&] { e.HintStyleDel(b.blk); }), 41);
    EXPECT_EQ(code([&] { e.HintStyleMove(b.blk, b.blk2); }), 42);
    EXPECT_EQ(code([&] { e.HintStyleSize(b.blk); }), 43);
    EXPECT_EQ(code([&] { e.HintSysSetupChng(); }), 50);
    EXPECT_EQ(code([&] { e.HintTrkInstType(b.trk); }), 51);
    EXPECT_EQ(code([&] { e.HintTrkStaffType(b.trk); }), 52);
    EXPECT_EQ(code([&] { e.HintTrkWavVol(b.trk); }), 53);
    EXPECT_EQ(code([&] { e.HintKeyChng(); }), 54);
    EXPECT_EQ(code([&] { e.HintScrEvtMove(b.trk, b.blk, b.evnt, nullptr, 1, nullptr, 2); }), 60);
    EXPECT_EQ(code([&] { e.HintScrEvtIndex(b.trk, b.blk, b.evnt, nullptr, 1, nullptr, 2); }), 61);
}

TEST(Hints, PayloadsReadBackAsSent)
{
    HintBench b;
    CEditor& e = b.editor;
    POSITION p1 = nullptr, p2 = nullptr, p3 = nullptr, p4 = nullptr, p5 = nullptr;
    const auto all = [&] { return std::vector{p1, p2, p3, p4}; };

    e.HintLocationChng(b.trk, b.blk, b.evnt, b.blk2);
    e.GetHintLocationChng(p1, p2, p3, p4);
    EXPECT_EQ(all(), (std::vector{b.trk, b.blk, b.evnt, b.blk2}));
    e.HintBlkMove(b.trk, b.blk, b.trk2, b.blk2);
    e.GetHintBlkMove(p1, p2, p3, p4);
    EXPECT_EQ(all(), (std::vector{b.trk, b.blk, b.trk2, b.blk2}));
    e.HintBlkDiv(b.trk, b.blk, b.blk2);
    e.GetHintBlkDiv(p1, p2, p3, p4);
    EXPECT_EQ(all(), (std::vector{b.trk, b.blk, b.trk, b.blk2})) << "the track stands in both sets";
    e.HintChMute(7, 9);
    std::uint8_t port = 0, ch = 0;
    e.GetHintCh(port, ch);
    EXPECT_EQ(std::pair(port, ch), std::pair(std::uint8_t{7}, std::uint8_t{9}));
    e.HintTrkArrange(b.trk, b.trk2);
    e.GetHintTrkArrange(p1, p2);
    EXPECT_EQ(std::pair(p1, p2), std::pair(b.trk, b.trk2));
    e.HintStyleMove(b.blk, b.blk2);
    e.GetHintStyle(p1, p2);
    EXPECT_EQ(std::pair(p1, p2), std::pair(b.blk, b.blk2));
    int art = 0, dsp = 0;
    e.HintScrEvtMove(b.trk, b.blk, b.evnt, b.blk2, 5, b.trk2, 6);
    e.GetHintScrEvt(p1, p2, p3, p4, art, p5, dsp);
    EXPECT_EQ(all(), (std::vector{b.trk, b.blk, b.evnt, b.blk2}));
    EXPECT_EQ(std::pair(art, dsp), std::pair(5, 6));
    EXPECT_EQ(p5, b.trk2);
}

TEST(Hints, SideEffectsComeBeforeTheViewsHear)
{
    HintBench b;
    CEditor& e = b.editor;
    CBlk* blk = List<CBlk>::get(b.blk);
    blk->playState().playState = PlayState::playing;
    e.HintBlkRealRec(b.trk, b.blk);
    EXPECT_EQ(blk->playState().playState, PlayState::playing) << "a block under recording plays on";
    e.HintBlkNew(b.trk, b.blk);
    EXPECT_EQ(blk->playState().playState, PlayState::notSetUp);

    const std::uint8_t fast[] = {0x03, 0xD0, 0x90};
    e.AddTempo(0, fast);
    const POSITION tempo = e.GetTailEvntPos(0, 0);
    b.view.read = [&](int code, CEditor* editor) {
        if (code == hint::locationChng) {
            EXPECT_EQ(editor->TimeToMsecond(480), 250U);
        }
    };
    EXPECT_EQ(e.TimeToMsecond(480), 500U) << "the map is a cache";
    e.HintLocationChng(e.GetTrkPos(0), e.GetHeadBlkPos(0), tempo, tempo);

    b.view.read = [&](int, CEditor*) { EXPECT_EQ(b.transport.calls.back(), "ch1=5"); };
    e.SetTrkCh(1, 5);
    b.view.read = nullptr;
    b.view.codes.clear();
    EXPECT_FALSE(e.SetTrkCh(1, 16));
    EXPECT_TRUE(b.view.codes.empty());

    EXPECT_TRUE(b.document.modified);
    EXPECT_TRUE(e.GetModifyLock());
}

TEST(Hints, TheEndOfAStepRebuildsAndTellsTheTypeOnce)
{
    HintBench b;
    b.editor.flags().trkTypeChanged = true;
    b.editor.HintDispReq();
    EXPECT_EQ(b.view.codes, (std::vector{hint::timeChng, hint::dispReq, hint::trkType}));
    b.view.codes.clear();
    b.editor.HintDispReq();
    EXPECT_EQ(b.view.codes, (std::vector{hint::timeChng, hint::dispReq}));
}

TEST(Hints, ABroadcastSparesItsSenderAndSurvivesItsViews)
{
    HintBench b;
    FakeView second;
    FakeView third;
    b.editor.addObserver(&second);
    b.editor.addObserver(&third);
    b.editor.HintBlkNew(b.trk, b.blk);
    b.view.codes.clear();
    second.codes.clear();
    third.codes.clear();

    b.editor.Hint(&second, hint::blkUpdate);
    EXPECT_EQ(b.view.codes.size(), 1U);
    EXPECT_TRUE(second.codes.empty());

    // A view that causes a hint of its own, and one that goes away, disturb nobody behind them.
    b.view.read = [&](int code, CEditor* editor) {
        if (code == hint::blkNew) editor->HintTrkSolo(2);
    };
    second.read = [&](int code, CEditor* editor) {
        if (code == hint::blkNew) editor->removeObserver(&second);
    };
    POSITION seen = nullptr;
    third.read = [&](int code, CEditor* editor) {
        if (code == hint::blkNew) editor->GetHint(seen);
    };
    b.editor.HintBlkNew(b.trk, b.blk);
    EXPECT_EQ(seen, b.trk);
    second.codes.clear();
    b.editor.HintSoloMute();
    EXPECT_TRUE(second.codes.empty());
}

} // namespace
} // namespace tessaro::test
