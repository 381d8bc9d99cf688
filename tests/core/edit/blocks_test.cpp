// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/fakes.h"
#include "core/song_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessaro::test {
namespace {

using Codes = std::vector<int>;

constexpr int askDeleteLinks = 921;
constexpr std::uint32_t latestTick = 0xFFFFFFFF;

/// Text events that begin with 'L' link to a score entry; a copy is numbered.
struct FakeScore final : ScoreLinks {
    int copies = 0;
    bool any() const override { return true; }
    bool isScoreLink(const CEvnt& e) const override { return e.GetSzData() == 2 && e.payload()[0] == 'L'; }
    void appendTempos(const CEvnt&, std::uint32_t, std::vector<ScoreTempo>&) const override {}
    void copyEntry(const CEvnt& link, CEvnt& copy) override
    {
        EXPECT_TRUE(std::ranges::equal(link.payload(), copy.payload()));
        const std::uint8_t body[] = {'L', static_cast<std::uint8_t>(++copies)};
        copy.SetMeta(copy.GetTime(), 0x7F, 2, body, 0);
    }
    void removeScratch() override {}
    void clear() override {}
    bool load(std::span<const std::uint8_t>) override { return true; }
    bool save(ByteSink&) const override { return true; }
};

struct Linked {
    FakeScore score;
};

struct Bench : Linked, EditorBench {
    Bench() : EditorBench(&score) {}

    FakeView view;
    POSITION one = trk(1);
    POSITION two = trk(2);

    [[nodiscard]] POSITION trk(int number) const { return editor.GetTrkPos(number); }
    /// A block with notes at 0, 480 and 960, each 300 ticks long.
    POSITION source(POSITION on, std::uint32_t top, std::uint32_t end)
    {
        editor.BlkNew(on, top, end);
        POSITION made = List<CTrk>::get(on)->GetHeadPos();
        while (blk(made).GetTimeTop() != top || blk(made).GetNum() != 0) made = made->next;
        for (std::uint32_t n = 0; n < 3; ++n)
            blk(made).GetRealBlk()->InsEvnt(noteRec(n * 480, 300, static_cast<std::uint8_t>(60 + n)));
        return made;
    }
    POSITION ghost(POSITION of, POSITION on, std::uint32_t top)
    {
        editor.BlkGhost(one, of, on, top);
        return List<CTrk>::get(on)->GetTailPos();
    }
    static CBlk& blk(POSITION pos) { return *List<CBlk>::get(pos); }
    [[nodiscard]] std::string look(int number) const { return picture(*List<CTrk>::get(trk(number))); }
    [[nodiscard]] std::uint8_t type(int number) const { return List<CTrk>::get(trk(number))->GetType(); }
};

TEST(BlockEdit, NewBlocksFollowTheTypeOfTheTrack)
{
    Bench b;
    b.editor.addObserver(&b.view);
    b.editor.SetTrkType(20, trktype::wave);
    b.editor.SetTrkType(21, trktype::wave);
    expectRefused(b.editor, [&] { return b.editor.BlkNew(b.trk(0), 0, 480); });
    expectRefused(b.editor, [&] { return b.editor.BlkNew(nullptr, 0, 480); });

    b.view.codes.clear();
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkNew(b.trk(30), 960, 480)); });
    EXPECT_EQ(b.type(30), trktype::midi);
    EXPECT_EQ(b.look(30), "[Block1 1 960-960]") << "an end before the top is the top";
    EXPECT_EQ(std::ranges::count(b.view.codes, hint::trkType), 1) << "told at the end of the step";

    EXPECT_TRUE(b.editor.BlkNew(b.trk(20), 0, 100));
    EXPECT_EQ(b.type(20), trktype::wave);
    expectRefused(b.editor, [&] { return b.editor.BlkRealRec(b.trk(20), 0, 0) != nullptr; });
    EXPECT_NE(b.editor.BlkRealRec(b.trk(21), 10, 10), nullptr);
    EXPECT_EQ(b.look(21), "[Block3 1 10-10 0:255,0,0 0:255,0,0]");
    EXPECT_EQ(b.type(21), trktype::midi) << "an empty wave track becomes a MIDI track for a take";
}

TEST(BlockEdit, OnlyRecordingLeavesTheTransportRunning)
{
    Bench b;
    b.transport.playing = true;
    const POSITION blk = b.editor.BlkRec(b.one, 0, 480);
    b.editor.BlkRealRec(b.one, 480, 480);
    b.editor.BlkName(b.one, blk, "take");
    EXPECT_TRUE(b.transport.calls.empty());
    b.editor.BlkSize(b.one, blk, 960);
    EXPECT_EQ(b.transport.calls, (std::vector<std::string>{"stop"}));
}

TEST(BlockEdit, CopiesAreIndependentAndGhostsAreNot)
{
    Bench b;
    const POSITION source = b.source(b.one, 0, 1920);
    const std::vector<std::uint8_t> link = {'L', 0};
    Bench::blk(source).GetRealBlk()->InsEvnt(bytesRec(0xFF, 480, link, 0x7F));
    b.editor.BlkName(b.one, source, "riff");
    EXPECT_TRUE(b.document.modified);

    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkCopy(b.one, source, b.two, 5000)); });
    const CBlk& copy = *List<CTrk>::get(b.two)->blocks().head();
    EXPECT_EQ(b.look(2), "[riff 1 5000-6920 0:144,60,300 480:144,61,300 480:255,0,0/76/1 960:144,62,300]");
    EXPECT_EQ(List<CEvnt>::get(copy.GetRealBlk()->GetPos(2))->payload()[1], 1) << "a score entry of its own";

    POSITION ghost = nullptr;
    expectUndoable(b.editor, [&] { ghost = b.ghost(source, b.two, 9000); });
    EXPECT_EQ(Bench::blk(ghost).GetName(), "*riff");
    EXPECT_EQ(b.score.copies, 1);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkCopy(b.two, ghost, b.trk(3), latestTick - 10)); });
    const CBlk& second = *List<CTrk>::get(b.trk(3))->blocks().head();
    EXPECT_EQ(second.GetName(), "**riff");
    EXPECT_EQ(second.GetType(), blktype::ghost);
    EXPECT_EQ(second.GetTimeEnd(), latestTick) << "time has an end";

    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkSize(b.one, source, 2400)); });
    EXPECT_EQ(Bench::blk(ghost).GetTimeEnd(), 11400U);
    EXPECT_EQ(copy.GetTimeEnd(), 6920U);
    EXPECT_EQ(second.GetTimeEnd(), latestTick);

    POSITION trk = nullptr;
    POSITION blk = nullptr;
    EXPECT_TRUE(b.editor.SrchSrcBlk(b.two, ghost, trk, blk));
    EXPECT_EQ(trk, b.one);
    EXPECT_EQ(blk, source);
    EXPECT_FALSE(b.editor.SrchSrcBlk(b.one, source, trk, blk));
    EXPECT_TRUE(b.editor.IsGhostExist(b.one, source));
    EXPECT_FALSE(b.editor.IsGhostExist(b.two, List<CTrk>::get(b.two)->GetHeadPos()));

    b.editor.addObserver(&b.view);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkRealize(b.two, ghost)); });
    EXPECT_EQ(b.view.codes.front(), hint::blkReal);
    EXPECT_EQ(Bench::blk(ghost).GetName(), "*riff") << "the star stays";
    Bench::blk(ghost).GetRealBlk()->Remove();
    EXPECT_EQ(Bench::blk(source).GetNum(), 4U);
    expectRefused(b.editor, [&] { return b.editor.BlkRealize(b.two, ghost); });
}

TEST(BlockEdit, BlocksGoOnlyWhereTheirTypeMayStand)
{
    Bench b;
    const POSITION source = b.source(b.one, 0, 1920);
    const POSITION master = b.editor.GetHeadBlkPos(b.trk(0));
    b.editor.SetTrkType(20, trktype::wave);
    b.editor.SetTrkType(21, trktype::wave);
    b.editor.BlkNew(b.trk(20), 0, 10);
    for (const auto transfer : {&CEditor::BlkCopy, &CEditor::BlkGhost}) {
        expectRefused(b.editor, [&] { return (b.editor.*transfer)(b.one, source, b.trk(20), 0); });
        expectRefused(b.editor, [&] { return (b.editor.*transfer)(b.one, source, b.trk(0), 0); });
        expectRefused(b.editor, [&] { return (b.editor.*transfer)(b.trk(0), master, b.one, 0); });
    }
    expectRefused(b.editor, [&] { return b.editor.BlkMove(b.one, source, b.trk(20), 0); });
    expectRefused(b.editor, [&] { return b.editor.BlkMove(b.trk(0), master, b.one, 0); });
    expectRefused(b.editor, [&] { return b.editor.BlkDel(b.trk(0), master); });
    expectRefused(b.editor, [&] { return b.editor.BlkDiv(b.trk(0), master, 0); });
    EXPECT_EQ(b.type(20), trktype::wave);

    b.editor.addObserver(&b.view);
    POSITION moved = nullptr;
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkMove(b.one, source, b.trk(50), 100, &moved)); });
    EXPECT_EQ(b.view.codes.front(), hint::blkMove);
    EXPECT_EQ(std::ranges::count(b.view.codes, hint::trkType), 1);
    EXPECT_EQ(b.type(50), trktype::midi);
    EXPECT_EQ(Bench::blk(moved).GetTimeEnd(), 2020U);
    EXPECT_EQ(Bench::blk(moved).GetName(), "Block1");
    EXPECT_TRUE(List<CTrk>::get(b.one)->IsEmpty());
    EXPECT_TRUE(b.editor.BlkMove(b.trk(50), moved, b.trk(21), 0)) << "an empty wave track takes it too";
    EXPECT_EQ(b.type(21), trktype::midi);
}

TEST(BlockEdit, AMoveOnItsOwnTrackKeepsTheOrderOfEqualTops)
{
    Bench b;
    b.source(b.one, 0, 480);
    const POSITION second = b.source(b.one, 480, 960);
    b.source(b.one, 480, 1200);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkMove(b.one, second, b.one, 480)); });
    EXPECT_EQ(Bench::blk(b.editor.GetTailBlkPos(b.one)).GetTimeEnd(), 960U) << "behind the other of its top";
}

TEST(BlockEdit, DeletingASourceAsksOnceAStepForItsGhosts)
{
    Bench b;
    const POSITION first = b.source(b.one, 0, 480);
    const POSITION other = b.source(b.one, 480, 960);
    b.ghost(first, b.two, 0);
    b.ghost(first, b.trk(3), 0);
    b.ghost(other, b.two, 480);
    const auto both = [&] {
        const bool gone = b.editor.BlkDel(b.one, first);
        return b.editor.BlkDel(b.one, other) || gone;
    };
    expectRefused(b.editor, both);
    EXPECT_EQ(b.user.questions, (std::vector<int>{askDeleteLinks}));
    EXPECT_FALSE(b.editor.BlkDel(b.one, first));
    EXPECT_FALSE(b.editor.BlkDel(b.one, first));
    EXPECT_EQ(b.user.questions.size(), 3U) << "each block for itself outside of a step";

    b.editor.addObserver(&b.view);
    b.user.answer = true;
    b.user.questions.clear();
    expectUndoable(b.editor, both);
    EXPECT_EQ(b.user.questions, (std::vector<int>{askDeleteLinks}));
    EXPECT_EQ(Codes(b.view.codes.begin(), b.view.codes.begin() + 5), Codes(5, hint::blkDel));
    EXPECT_EQ(b.look(1) + b.look(2) + b.look(3), "");
}

TEST(BlockEdit, DivisionCutsWhatReachesOverIt)
{
    Bench b;
    const POSITION blk = b.source(b.one, 1000, 2920);
    Bench::blk(blk).GetRealBlk()->InsEvnt(noteRec(480, 5, 70));
    const POSITION ghost = b.ghost(blk, b.two, 0);
    expectRefused(b.editor, [&] { return b.editor.BlkDiv(b.one, blk, 999); });
    expectRefused(b.editor, [&] { return b.editor.BlkDiv(b.one, blk, 2921); });
    expectRefused(b.editor, [&] { return b.editor.BlkDiv(b.two, ghost, 100); });

    b.editor.addObserver(&b.view);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkDiv(b.one, blk, 1480)); });
    EXPECT_EQ(b.look(1), "[Block1 1 1000-1480 0:144,60,300]"
                         "[Block3 1 1480-2920 0:144,61,300 0:144,70,5 480:144,62,300]");
    EXPECT_EQ(Bench::blk(ghost).GetTimeEnd(), 480U);
    EXPECT_EQ(Codes(b.view.codes.begin(), b.view.codes.begin() + 2), (Codes{hint::blkReSize, hint::blkDiv}));
    EXPECT_EQ(b.progress.begun, b.progress.ended);
    EXPECT_TRUE(std::ranges::is_sorted(b.progress.positions.begin(), b.progress.positions.begin() + 3));

    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkDiv(b.one, blk, 1100)); });
    EXPECT_EQ(picture(*Bench::blk(blk).GetRealBlk()), " 0:144,60,100");
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkDiv(b.one, blk, 1000)); });
    EXPECT_EQ(Bench::blk(blk).GetNum(), 0U) << "at the top all goes to the second block";
    EXPECT_EQ(Bench::blk(blk).GetTimeEnd(), 1000U);
    b.editor.UndoNode(3);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkDiv(b.one, blk, 2920)); });
    EXPECT_EQ(Bench::blk(blk).GetNum(), 4U) << "at the end nothing does";
}

TEST(BlockEdit, MergedEventsLieBehindThoseOfTheirTime)
{
    Bench b;
    const POSITION from = b.source(b.one, 5000, 6900);
    const POSITION into = b.source(b.two, 1000, 2920);
    b.editor.BlkGhost(b.two, into, b.trk(3), 0);
    const POSITION ghost = b.editor.GetHeadBlkPos(b.trk(3));
    expectRefused(b.editor, [&] { return b.editor.BlkMerge(b.one, from, b.two, into, 999); });
    expectRefused(b.editor, [&] { return b.editor.BlkMerge(b.one, from, b.one, from, 6000); });
    expectRefused(b.editor, [&] { return b.editor.BlkMerge(b.trk(3), ghost, b.two, into, 2000); });
    expectRefused(b.editor, [&] { return b.editor.BlkMerge(b.one, from, b.trk(3), ghost, 2000); });
    const POSITION master = b.editor.GetHeadBlkPos(b.trk(0));
    expectRefused(b.editor, [&] { return b.editor.BlkMerge(b.one, from, b.trk(0), master, 2000); });

    b.editor.addObserver(&b.view);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkMerge(b.one, from, b.two, into, 1480)); });
    EXPECT_EQ(picture(*Bench::blk(into).GetRealBlk()), " 0:144,60,300 480:144,61,300 480:144,60,300 "
                                                       "960:144,62,300 960:144,61,300 1440:144,62,300");
    EXPECT_EQ(Bench::blk(into).GetTimeEnd(), 3380U);
    EXPECT_EQ(Bench::blk(ghost).GetTimeEnd(), 2380U);
    EXPECT_EQ(Codes(b.view.codes.begin(), b.view.codes.begin() + 2), (Codes{hint::blkReSize, hint::blkMerge}));
    EXPECT_EQ(Bench::blk(from).GetNum(), 3U);
    EXPECT_EQ(b.progress.begun, b.progress.ended);

    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkApp(b.one, from, b.two, into)); });
    EXPECT_EQ(b.look(1), "");
    EXPECT_EQ(Bench::blk(into).GetNum(), 9U);
    EXPECT_EQ(Bench::blk(into).GetTimeEnd(), 6900U);

    const POSITION third = b.source(b.one, latestTick - 100, latestTick);
    b.editor.BlkMerge(b.one, third, b.two, into, latestTick - 50);
    EXPECT_EQ(Bench::blk(into).GetTimeEnd(), latestTick);
    b.ghost(third, b.trk(4), 0);
    expectRefused(b.editor, [&] { return b.editor.BlkApp(b.one, third, b.two, into); });
    EXPECT_EQ(b.user.questions, (std::vector<int>{askDeleteLinks})) << "a No comes before the merge";
}

TEST(BlockEdit, ABlockIsNotShorterThanItsLastSound)
{
    Bench b;
    const POSITION blk = b.source(b.one, 1000, 2920);
    Bench::blk(blk).GetRealBlk()->InsEvnt(noteRec(480, 1000, 70));
    const POSITION ghost = b.ghost(blk, b.two, 0);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkSize(b.one, blk, 0)); });
    EXPECT_EQ(Bench::blk(blk).GetTimeEnd(), 2480U) << "a long note sounds beyond a later short one";
    EXPECT_EQ(Bench::blk(ghost).GetTimeEnd(), 1480U);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkSize(b.one, blk, 5000)); });
    expectRefused(b.editor, [&] { return b.editor.BlkSize(b.two, ghost, 5000); });

    const POSITION late = Bench::blk(blk).GetRealBlk()->InsEvnt(noteRec(7000, latestTick, 1));
    b.editor.addObserver(&b.view);
    b.editor.ChkBlkReSize(b.one, blk, Bench::blk(blk).GetHeadPos());
    EXPECT_TRUE(b.view.codes.empty());
    b.editor.ChkBlkReSize(b.one, blk, late);
    EXPECT_EQ(Bench::blk(blk).GetTimeEnd(), latestTick);
    EXPECT_EQ(b.view.codes, Codes(2, hint::blkReSize));
}

TEST(BlockEdit, ShiftsStayBehindTheTop)
{
    Bench b;
    const POSITION blk = b.source(b.one, 1000, 2300);
    expectUndoable(b.editor, [&] { EXPECT_TRUE(b.editor.BlkOfst(b.one, blk, -500)); });
    EXPECT_EQ(picture(*Bench::blk(blk).GetRealBlk()), " 0:144,60,300 0:144,61,300 460:144,62,300");
    EXPECT_TRUE(b.editor.BlkOfst(b.one, blk, 1000));
    EXPECT_EQ(picture(*Bench::blk(blk).GetRealBlk()), " 1000:144,61,300 1000:144,60,300 1460:144,62,300");
    EXPECT_EQ(Bench::blk(blk).GetTimeEnd(), 2760U) << "the block grows with its last note";
    const std::string before = picture(b.editor);
    EXPECT_TRUE(b.editor.BlkOfst(b.one, blk, 0));
    EXPECT_EQ(picture(b.editor), before);
    EXPECT_TRUE(b.editor.BlkOfst(b.one, blk, INT64_MIN));
    EXPECT_EQ(Bench::blk(blk).GetRealBlk()->GetEndTime(), 300U);
}

TEST(BlockEdit, PastedBlocksShowTheRealBlockTheyAreGiven)
{
    Bench b;
    CRealBlk* real = b.editor.NewAddTailRealBlk();
    real->InsEvnt(noteRec(10, 20));
    expectRefused(b.editor, [&] { return b.editor.BlkPaste(b.trk(0), 0, 480, real) != nullptr; });
    b.editor.addObserver(&b.view);
    expectUndoable(b.editor, [&] { EXPECT_NE(b.editor.BlkPasteNoHint(b.trk(40), 0, 480, real), nullptr); });
    EXPECT_EQ(b.look(40), "[Block1 1 0-480 10:144,60,20]");
    b.view.codes.clear();
    EXPECT_NE(b.editor.BlkPaste(b.trk(40), 480, 960, real), nullptr);
    EXPECT_EQ(b.view.codes, (Codes{hint::blkNew}));
}

TEST(BlockEdit, WaveBlocksEndWithTheirSound)
{
    Bench b;
    b.waves.lengths = {{"riff", 1000}};
    b.editor.SetTrkType(20, trktype::wave);
    b.editor.BlkNew(b.trk(20), 0, 100);
    const POSITION blk = b.editor.GetHeadBlkPos(b.trk(20));
    const POSITION wave = Bench::blk(blk).GetRealBlk()->InsEvnt(waveRec(480, "riff"));
    b.editor.ChkBlkReSize(b.trk(20), blk, wave);
    EXPECT_EQ(Bench::blk(blk).GetTimeEnd(), 1440U);
    Bench::blk(blk).SetTimeEnd(5000);
    POSITION moved = nullptr;
    EXPECT_TRUE(b.editor.BlkMove(b.trk(20), blk, b.trk(21), 960, &moved));
    EXPECT_EQ(Bench::blk(moved).GetTimeEnd(), 2400U);
    b.waves.lengths.clear();
    EXPECT_FALSE(b.editor.BlkSizeWave(b.trk(21), moved));
    Bench::blk(moved).SetTimeEnd(960);
    b.editor.ChkBlkReSize(b.trk(21), moved, wave);
    EXPECT_EQ(Bench::blk(moved).GetTimeEnd(), 1440U) << "without a known length the event's own time counts";
}

} // namespace
} // namespace tessaro::test
