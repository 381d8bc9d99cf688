// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/fakes.h"

#include <gtest/gtest.h>

#include <array>

namespace tessaro::test {
namespace {

using Signature = std::array<std::uint8_t, 4>;

/// A song in 4/4 with signatures at measures 3 and 5 and a text event between.
struct Bench : EditorBench {
    FakeView view;
    CRealBlk& master = *editor.song().masterReal();
    POSITION trk = editor.GetTrkPos(0);
    POSITION blk = editor.GetHeadBlkPos(0);

    Bench()
    {
        add(2 * 1920, {3, 2, 24, 8});
        add(2 * 1920 + 2 * 1440, {4, 2, 24, 8});
        const std::vector<std::uint8_t> text = {'x'};
        master.InsEvnt(bytesRec(0xFF, 4000, text, 0x01));
        editor.InitMeasInfo();
        editor.addObserver(&view);
    }

    void add(std::uint32_t time, Signature s) { editor.AddTs(time, s.data()); }

    [[nodiscard]] POSITION at(std::uint32_t time) const
    {
        POSITION found = nullptr;
        for (CEvnt* e = master.events().head(); e; e = List<CEvnt>::next(e))
            if (e->isMeta(0x58) && e->GetTime() == time) found = e;
        return found;
    }
    [[nodiscard]] std::vector<std::uint32_t> times(std::uint8_t metaType = 0x58) const
    {
        std::vector<std::uint32_t> all;
        for (const CEvnt* e = master.events().head(); e; e = List<CEvnt>::next(e))
            if (e->isMeta(metaType)) all.push_back(e->GetTime());
        return all;
    }
    [[nodiscard]] std::uint32_t measureOf(std::uint32_t time) const
    {
        _EDT_MEAS meas;
        editor.TimeToMeas(time, meas);
        return meas.meas;
    }
};

TEST(Signatures, OverwritingKeepsTheLaterOnesOnTheirMeasures)
{
    Bench b;
    const POSITION first = b.at(0);
    const Signature five = {5, 2, 24, 8};
    CEvnt* e = List<CEvnt>::get(first);
    e->SetTs(0, five.data());
    b.editor.ChngTs(b.trk, b.blk, first, 0, 4, 2, e);
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0, 4800, 4800 + 2880}));
    EXPECT_EQ(b.measureOf(4800), 3U);
    EXPECT_EQ(b.measureOf(7680), 5U);
    EXPECT_EQ(b.times(0x01), (std::vector<std::uint32_t>{4000})) << "other events stay";
    EXPECT_EQ(b.view.codes, (std::vector{hint::evntChng, hint::tsChng}));
    EXPECT_FALSE(b.editor.flags().measChanged);
}

TEST(Signatures, OverwritingTheLastOneMovesNothing)
{
    Bench b;
    const POSITION last = b.at(6720);
    const Signature seven = {7, 3, 24, 8};
    CEvnt* e = List<CEvnt>::get(last);
    e->SetTs(6720, seven.data());
    b.editor.ChngTs(b.trk, b.blk, last, 6720, 4, 2, e);
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0, 3840, 6720}));
    EXPECT_EQ(b.view.codes, (std::vector{hint::evntChng, hint::measChng}));
    EXPECT_TRUE(b.editor.flags().measChanged);

    b.view.codes.clear();
    b.editor.ChngTs(b.trk, b.blk, last, 6720, 7, 3, e);
    EXPECT_TRUE(b.view.codes.empty()) << "the same values change nothing";
}

TEST(Signatures, InsertionReCountsTheMeasuresBehindIt)
{
    Bench b;
    const Signature two = {2, 2, 24, 8};
    b.add(1920, two);
    _EDT_MEASINFO prev;
    b.editor.GetMeasInfo(2, prev);
    const POSITION pos = b.at(1920);
    _EDT_EVNT rec;
    b.master.GetEvnt(pos, rec);
    b.editor.InsTs(b.trk, b.blk, pos, rec, prev);
    // One measure lay between; it is a measure of 2/4 now.
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0, 1920, 2880, 5760}));
    EXPECT_EQ(b.measureOf(2880), 3U);
    EXPECT_EQ(b.measureOf(5760), 5U);
    EXPECT_EQ(b.view.codes, (std::vector{hint::tsChng}));
}

TEST(Signatures, DeletionTakesTheClockOfTheOneBefore)
{
    Bench b;
    const POSITION pos = b.at(3840);
    _EDT_EVNT rec;
    b.master.GetEvnt(pos, rec);
    b.editor.DelTs(b.trk, b.blk, pos, rec);
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0, 7680}));
    EXPECT_EQ(b.measureOf(7680), 5U);
    EXPECT_EQ(b.view.codes, (std::vector{hint::delEvnt, hint::tsChng}));

    const POSITION last = b.at(7680);
    b.view.codes.clear();
    b.master.GetEvnt(last, rec);
    b.editor.DelTs(b.trk, b.blk, last, rec);
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0}));
    EXPECT_EQ(b.view.codes, (std::vector{hint::delEvnt, hint::measChng}));
}

TEST(Signatures, OnlyTheLatestAtATickStays)
{
    Bench b;
    const std::vector<std::uint8_t> text = {'y'};
    b.master.InsEvnt(bytesRec(0xFF, 3840, text, 0x01));
    b.add(3840, {6, 3, 24, 8});
    const POSITION latest = b.at(3840);
    b.editor.DelDuplicateTs(b.trk, b.blk, latest);
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0, 3840, 6720}));
    EXPECT_EQ(b.at(3840), latest);
    EXPECT_EQ(b.times(0x01), (std::vector<std::uint32_t>{3840, 4000}));
    EXPECT_EQ(b.view.codes, (std::vector{hint::delEvnt}));
}

TEST(Signatures, AMoveIsRecordedAsDeletionsAndThenInsertions)
{
    Bench b;
    b.editor.UpdateTs(b.trk, b.blk, b.at(3840), 480);
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 0) << "outside of a step nothing is recorded";
    b.editor.OpenUndoNode("move");
    b.editor.UpdateTs(b.trk, b.blk, b.at(4320), -5000);
    b.editor.CloseUndoNode();
    CUndoNode* step = nullptr;
    ASSERT_TRUE(b.editor.GetUndoNode(0, &step));
    std::vector<UndoKind> kinds;
    for (const CUndo& change : step->changes) kinds.push_back(change.kind);
    EXPECT_EQ(kinds, (std::vector{UndoKind::evntDel, UndoKind::evntDel, UndoKind::evntIns, UndoKind::evntIns}));
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0, 0, 2200})) << "times stop at 0";
}

TEST(Signatures, OddBodiesFromFilesAreLeftAlone)
{
    Bench b;
    CEvnt* odd = nullptr;
    b.master.New(&odd);
    const std::uint8_t one[] = {3};
    ASSERT_TRUE(odd->SetMeta(1920, 0x58, 1, one, 0));
    b.master.Add(1920, odd);
    _EDT_EVNT rec;
    b.master.GetEvnt(odd, rec);
    b.editor.ChngTs(b.trk, b.blk, odd, 1920, 4, 2, odd);
    b.editor.UpdateTs(b.trk, b.blk, odd, 1920);
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0, 1920, 5760, 8640}));
    b.editor.DelTs(b.trk, b.blk, odd, rec);
    EXPECT_EQ(b.times(), (std::vector<std::uint32_t>{0, 5760, 8640}));
}

} // namespace
} // namespace tessaro::test
