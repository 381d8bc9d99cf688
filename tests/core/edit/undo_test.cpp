// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "core/fakes.h"
#include "core/song_picture.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tessaro::test {
namespace {

using Codes = std::vector<int>;
constexpr int undoFailed = 915;
constexpr int redoFailed = 916;
constexpr int undoRecordFailed = 919;

/// A song with a block of four notes at one tick and one later on track 1, and a view.
struct Bench : EditorBench {
    POSITION trk = editor.GetTrkPos(1);
    POSITION blk = nullptr;
    std::vector<POSITION> notes;
    FakeView view;

    Bench()
    {
        editor.NewBlk(1, 0);
        blk = editor.GetHeadBlkPos(1);
        block().SetTimeEnd(9600);
        for (const std::uint32_t time : {480, 480, 480, 480, 960}) {
            const auto key = static_cast<std::uint8_t>(60 + notes.size());
            notes.push_back(block().InsEvnt(noteRec(time, 100, key)));
        }
        editor.addObserver(&view);
    }
    CBlk& block() { return *List<CBlk>::get(blk); }
    std::vector<POSITION> order()
    {
        std::vector<POSITION> out;
        for (POSITION pos = block().GetHeadPos(); pos; pos = pos->next) out.push_back(pos);
        return out;
    }
    template <class Edit>
    void step(Edit&& edit)
    {
        const UndoScope scope(editor, "step");
        ASSERT_TRUE(scope);
        edit();
    }
    void deleteNote(std::size_t n)
    {
        step([&] { editor.DeleteEvnt(trk, blk, notes[n]); });
    }
    /// What a view hears of it, but for the tempo map and the end of the step.
    template <class Call>
    Codes heard(Call&& call)
    {
        view.codes.clear();
        call();
        std::erase_if(view.codes, [](int code) { return code == hint::timeChng || code == hint::dispReq; });
        return view.codes;
    }
};

TEST(Undo, StepsWithoutAChangeLeaveNoTrace)
{
    Bench b;
    b.step([] {});
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 0);
    EXPECT_FALSE(b.document.modified);
    b.deleteNote(0);
    b.step([] {});
    EXPECT_EQ(b.editor.GetUndoRedoIndex(), 0);
    EXPECT_FALSE(b.editor.UndoNode(2)) << "there is only one";
    EXPECT_EQ(b.editor.GetUndoRedoIndex(), -1);
    EXPECT_TRUE(b.user.messages.empty());
}

TEST(Undo, StepsDoNotNestAndRefuseUndo)
{
    Bench b;
    b.deleteNote(0);
    b.step([&] {
        b.editor.flags().askGhostDelete = false;
        EXPECT_FALSE(b.editor.OpenUndoNode("inner"));
        EXPECT_FALSE(b.editor.flags().askGhostDelete);
        EXPECT_FALSE(b.editor.UndoNode());
        EXPECT_FALSE(b.editor.RedoNode());
        EXPECT_FALSE(b.editor.ClearUndoRedo());
    });
    b.step([&] { EXPECT_TRUE(b.editor.flags().askGhostDelete); });
}

TEST(Undo, TitlesNameWhatComesNext)
{
    Bench b;
    std::string title = "none";
    EXPECT_FALSE(b.editor.IsEnableUndo(title));
    b.deleteNote(0);
    EXPECT_FALSE(b.editor.IsEnableRedo(title));
    EXPECT_EQ(title, "none");
    EXPECT_TRUE(b.editor.IsEnableUndo(title));
    EXPECT_EQ(title, "step");
    b.editor.UndoNode();
    EXPECT_FALSE(b.editor.IsEnableUndo(title));
    EXPECT_TRUE(b.editor.IsEnableRedo(title));
    CUndoNode* node = nullptr;
    EXPECT_TRUE(b.editor.GetUndoNode(0, &node));
    EXPECT_FALSE(b.editor.GetUndoNode(1, &node));
}

TEST(Undo, TheModifiedMarkFollowsTheHistory)
{
    Bench b;
    b.deleteNote(0);
    b.deleteNote(1);
    b.editor.UndoNode();
    EXPECT_TRUE(b.document.modified);
    b.editor.UndoNode();
    EXPECT_FALSE(b.document.modified);
    b.editor.RedoNode();
    EXPECT_TRUE(b.document.modified);
    b.editor.SetModify();
    b.editor.UndoNode();
    EXPECT_TRUE(b.document.modified) << "a change without undo stands";

    Bench cleared;
    EXPECT_FALSE(cleared.editor.ClearUndoRedo());
    cleared.deleteNote(0);
    EXPECT_TRUE(cleared.editor.ClearUndoRedo());
    EXPECT_EQ(cleared.editor.GetUndoRedoCount(), 0);
    cleared.deleteNote(1);
    cleared.editor.UndoNode();
    EXPECT_TRUE(cleared.document.modified) << "so does one whose history is gone";
}

TEST(Undo, TheTransportStandsStillDuringStepsAndUndo)
{
    Bench b;
    b.transport.playing = true;
    b.step([&] {
        b.editor.SetTrkArrange(3, 1);
        b.editor.SetTrkArrange(4, 1);
        EXPECT_FALSE(b.transport.playing);
        EXPECT_FALSE(b.document.modified);
    });
    EXPECT_TRUE(b.transport.playing);
    EXPECT_TRUE(b.document.modified);
    EXPECT_FALSE(b.editor.GetModifyLock()) << "a step can be taken back";
    b.transport.calls.clear();
    b.editor.UndoNode();
    EXPECT_EQ(b.transport.calls.front(), "stop");
    EXPECT_EQ(b.transport.calls.back(), "resume");
    b.transport.playing = false;
    b.editor.StopSeq();
    b.editor.PlaySeq();
    EXPECT_FALSE(b.transport.playing) << "what did not run is not started";
}

TEST(Undo, ANewStepDropsWhatCouldBeRedone)
{
    Bench b;
    for (std::size_t n = 0; n < 4; ++n) b.deleteNote(n);
    b.editor.UndoNode(2);
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 4);
    b.deleteNote(4);
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 3);
    EXPECT_FALSE(b.editor.RedoNode());
    EXPECT_TRUE(b.editor.UndoNode(3));
    EXPECT_EQ(b.order(), b.notes);
}

TEST(Undo, EventsOfOneTickKeepTheirOrder)
{
    Bench b;
    Dice dice(3);
    std::vector<std::vector<POSITION>> states{b.order()};
    for (int i = 0; i < 300; ++i) {
        b.step([&] {
            for (std::uint32_t n = dice.between(1, 3); n > 0; --n) {
                const auto now = b.order();
                const POSITION any = now.empty() ? nullptr : now[dice.below(static_cast<std::uint32_t>(now.size()))];
                const std::uint32_t time = 480 * dice.below(3);
                switch (any ? dice.below(3) : 0) {
                case 0: b.editor.InsEvnt(b.trk, b.blk, noteRec(time, 10)); break;
                case 1: b.editor.DeleteEvnt(b.trk, b.blk, any); break;
                default: b.editor.SetLocation(b.trk, b.blk, any, time);
                }
            }
        });
        states.push_back(b.order());
        if (!dice.oneIn(3)) continue;
        const int back = static_cast<int>(
            dice.between(1, std::min<std::uint32_t>(5, static_cast<std::uint32_t>(states.size() - 1))));
        ASSERT_TRUE(b.editor.UndoNode(back));
        ASSERT_EQ(b.order(), states[states.size() - 1 - static_cast<std::size_t>(back)]);
        if (dice.oneIn(2))
            states.resize(states.size() - static_cast<std::size_t>(back));
        else
            b.editor.RedoNode(back);
    }
    const auto last = states.back();
    for (std::size_t n = states.size() - 1; n > 0; --n) {
        ASSERT_TRUE(b.editor.UndoNode());
        ASSERT_EQ(b.order(), states[n - 1]);
    }
    while (b.editor.RedoNode()) {}
    EXPECT_EQ(b.order(), last);
}

TEST(Undo, RestsComeAndGoBetween)
{
    for (const bool moved : {false, true}) {
        Bench b;
        _EDT_EVNT rec = noteRec(480, 10);
        rec.status = 0x00;
        ASSERT_TRUE(b.editor.InsRest(b.trk, b.blk, rec));
        const POSITION rest = b.notes[3]->next;
        b.step([&] { b.editor.InsEvnt(b.trk, b.blk, noteRec(480, 10, 90)); });
        const POSITION note = rest->next;
        b.editor.UndoNode();
        if (moved)
            b.editor.SetLocation(b.trk, b.blk, rest, 2000);
        else
            b.editor.DelRest(b.trk, b.blk, rest);
        ASSERT_TRUE(b.editor.RedoNode());
        EXPECT_EQ(note->prev, b.notes[3]) << "behind all of its time";
        ASSERT_TRUE(b.editor.UndoNode());
        EXPECT_TRUE(b.user.messages.empty());
    }
}

TEST(Undo, OnlyStrictHistoriesAreApplied)
{
    Bench b;
    b.deleteNote(0);
    b.deleteNote(1);
    b.editor.UndoNode();
    b.editor.DeleteEvnt(b.trk, b.blk, b.notes[4]); // outside of any step
    const auto order = b.order();
    EXPECT_FALSE(b.editor.RedoNode());
    EXPECT_EQ(b.user.messages, (std::vector<int>{redoFailed}));
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 2);
    EXPECT_FALSE(b.editor.UndoNode());
    EXPECT_EQ(b.user.messages.back(), undoFailed);
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 0);
    EXPECT_EQ(b.order(), order);
    b.deleteNote(2);
    EXPECT_TRUE(b.editor.UndoNode()) << "a new history begins";
    EXPECT_TRUE(b.document.modified);
}

TEST(Undo, AnOverwritingOutsideJoinsTheLastStep)
{
    Bench b;
    b.deleteNote(0);
    const std::string before = picture(b.editor);
    b.editor.SetEvnt(b.trk, b.blk, b.notes[1], noteRec(480, 7, 99));
    const std::string after = picture(b.editor);
    ASSERT_NE(before, after);
    b.editor.UndoNode();
    EXPECT_EQ(b.order(), b.notes);
    EXPECT_EQ(List<CEvnt>::get(b.notes[1])->GetPost1(), 61);
    b.editor.RedoNode();
    EXPECT_EQ(picture(b.editor), after);
}

TEST(Undo, UnknownKindsAreUndoneButNotRedone)
{
    Bench b;
    CUndo unknown(static_cast<UndoKind>(9));
    EXPECT_TRUE(b.editor.Undo(&unknown));
    EXPECT_FALSE(b.editor.Redo(&unknown));
    b.deleteNote(0);
    CUndoNode* node = nullptr;
    b.editor.GetUndoNode(0, &node);
    node->changes.emplace_back(static_cast<UndoKind>(15));
    EXPECT_TRUE(b.editor.UndoNode());
    EXPECT_FALSE(b.editor.RedoNode());
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 1);
    EXPECT_FALSE(b.editor.UndoNode()) << "a step half done";
    EXPECT_EQ(b.user.messages, (std::vector<int>{redoFailed, undoFailed}));
}

TEST(Undo, AFailureToRecordLetsTheStepGoOn)
{
    Bench b;
    b.transport.playing = true;
    ASSERT_TRUE(b.editor.OpenUndoNode("step"));
    b.editor.DeleteEvnt(b.trk, b.blk, b.notes[0]);
    EXPECT_TRUE(b.editor.ErrCloseUndoNode());
    EXPECT_EQ(b.user.messages, (std::vector<int>{undoRecordFailed}));
    EXPECT_FALSE(b.editor.IsUndoOpen());
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 0);
    EXPECT_FALSE(b.transport.playing) << "the operation has not ended";
    EXPECT_TRUE(b.document.modified);
    b.editor.DeleteEvnt(b.trk, b.blk, b.notes[1]);
    b.editor.CloseUndoNode();
    EXPECT_EQ(b.block().GetNum(), 3U);
}

TEST(Undo, ViewsHearOfEachKind)
{
    Bench b;
    CEditor& e = b.editor;
    const POSITION trk2 = e.GetTrkPos(2);
    e.NewBlk(2, 0);
    const POSITION blk2 = e.GetHeadBlkPos(2);
    List<CBlk>::get(blk2)->InsEvnt(noteRec(0, 10));
    List<CBlk>::get(blk2)->SetTimeEnd(1920);
    const auto expect = [&](const Codes& undone, const Codes& redone, auto&& edit) {
        expectUndoable(e, edit);
        EXPECT_EQ(b.heard([&] { EXPECT_TRUE(e.UndoNode()); }), undone);
        EXPECT_EQ(b.heard([&] { EXPECT_TRUE(e.RedoNode()); }), redone);
        EXPECT_TRUE(e.UndoNode());
    };
    expect({6}, {7}, [&] { e.InsEvnt(b.trk, b.blk, noteRec(700, 10)); });
    expect({7}, {6}, [&] { e.DeleteEvnt(b.trk, b.blk, b.notes[1]); });
    expect({1}, {1}, [&] { e.SetEvnt(b.trk, b.blk, b.notes[2], noteRec(480, 9, 9)); });
    expect({5}, {5}, [&] { e.SetLocation(b.trk, b.blk, b.notes[0], 5000); });
    expect({11}, {9}, [&] { e.BlkNew(b.trk, 0, 480); });
    expect({9}, {11}, [&] { e.BlkDel(b.trk, b.blk); });
    expect({10}, {10}, [&] { e.BlkMove(b.trk, b.blk, trk2, 0); });
    expect({27}, {27}, [&] { e.BlkMerge(trk2, blk2, b.trk, b.blk, 480); });
    expect({1, 11, 27}, {9, 27, 1}, [&] { e.BlkDiv(b.trk, b.blk, 500 + 480); });
    expect({23}, {23}, [&] { e.BlkSize(b.trk, b.blk, 4800); });
    expect({24, 11}, {9, 24}, [&] {
        e.BlkGhost(b.trk, b.blk, trk2, 9600);
        e.BlkRealize(trk2, e.GetTailBlkPos(trk2));
    });
    expect({22}, {22}, [&] { e.SetTrkArrange(1, 4); });
    expect({22}, {22}, [&] { e.SetTrkArrange(2, 0); });
    CStyleBlk* style = nullptr;
    e.NewStyle(&style);
    style->SetTime(0, 1920);
    expect({41}, {40}, [&] { e.StyleNew(0, style); });
    e.RedoNode();
    expect({40}, {41}, [&] { e.StyleDel(style); });
    expect({42}, {42}, [&] { e.StyleMove(style, 960); });
    expect({43}, {43}, [&] { e.StyleSize(style, 960); });
}

TEST(Undo, MapsFollowMasterEventsOnce)
{
    Bench b;
    CEditor& e = b.editor;
    const POSITION master = e.GetHeadBlkPos(0);
    const auto insert = [&](std::uint32_t time, const std::vector<std::uint8_t>& body, std::uint8_t type) {
        e.InsEvnt(e.GetTrkPos(0), master, bytesRec(0xFF, time, body, type));
    };
    b.step([&] {
        insert(1920, {3, 2, 24, 8}, 0x58);
        insert(3840, {0x0F, 0x42, 0x40}, 0x51);
        insert(3840, {1, 0}, 0x59);
    });
    const auto measure = [&] {
        _EDT_MEAS meas;
        e.TimeToMeas(3360, meas);
        return meas.meas;
    };
    EXPECT_EQ(measure(), 3U);
    EXPECT_EQ(e.TimeToMsecond(4320), 5000U);
    EXPECT_EQ(b.heard([&] { e.UndoNode(); }), (Codes{6, 6, 6, 3, 54}));
    EXPECT_EQ(measure(), 2U);
    EXPECT_EQ(e.TimeToMsecond(4320), 4500U);
    EXPECT_EQ(b.heard([&] { e.RedoNode(); }), (Codes{7, 7, 7, 3, 54}));
    EXPECT_EQ(measure(), 3U);
    EXPECT_EQ(e.TimeToMsecond(4320), 5000U);
}

TEST(Undo, ATrackTakesItsTypeBackForABlock)
{
    Bench b;
    b.step([&] { b.editor.BlkDel(b.trk, b.blk); });
    b.editor.SetTrkType(1, trktype::wave);
    EXPECT_EQ(b.heard([&] { EXPECT_TRUE(b.editor.UndoNode()); }), (Codes{hint::blkNew, hint::trkType}));
    EXPECT_EQ(List<CTrk>::get(b.trk)->GetType(), trktype::midi);
}

TEST(Undo, NoTrackGoesBeforeTheMaster)
{
    Bench b;
    CUndo change(UndoKind::trkMove);
    change.trk = b.trk;
    change.more = std::make_unique<CUndo::More>();
    EXPECT_FALSE(b.editor.Undo(&change));
    change.more->trkNumber = 1;
    EXPECT_TRUE(b.editor.Undo(&change));
}

TEST(Undo, OnlyUnusedRealBlocksAreScratch)
{
    Bench b;
    CEditor& e = b.editor;
    e.BlkGhost(b.trk, b.blk, e.GetTrkPos(3), 0);
    e.BlkNew(b.trk, 9600, 10000);
    CRealBlk* gone = List<CBlk>::get(e.GetTailBlkPos(1))->GetRealBlk();
    e.BlkDel(b.trk, e.GetTailBlkPos(1));
    CRealBlk* setup = e.NewAddTailRealBlk();
    CRealBlk* phraseData = e.NewAddTailRealBlk();
    CStyleBlk* style = nullptr;
    e.NewStyle(&style);
    style->SetSetup(15, setup);
    for (int n = 0; n < 2; ++n) {
        CPhraseBlk* phrase = nullptr;
        style->NewPhrase(&phrase);
        phrase->SetRealBlk(n == 0 ? nullptr : phraseData);
        style->AddPhrase(3, 0, phrase);
    }
    e.AddStyle(0, style);
    e.RemoveScratch();
    std::set<const CRealBlk*> kept;
    for (const CRealBlk* real = e.song().realBlks().head(); real; real = List<CRealBlk>::next(real)) kept.insert(real);
    EXPECT_EQ(kept, (std::set<const CRealBlk*>{e.song().masterReal(), b.block().GetRealBlk(), setup, phraseData}));
    EXPECT_FALSE(kept.contains(gone));
}

} // namespace
} // namespace tessaro::test
