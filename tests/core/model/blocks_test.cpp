// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/fakes.h"
#include "core/model/blk.h"
#include "core/model/realblk.h"
#include "core/model/trk.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace tessaro {
namespace {

_EDT_EVNT note(std::uint32_t time, std::uint8_t key, std::uint32_t gate = 10) { return test::noteRec(time, gate, key); }

struct Entry {
    std::uint32_t time;
    CEvnt* event;
};

void expectSame(const CRealBlk& real, const std::vector<Entry>& model)
{
    ASSERT_EQ(real.GetNum(), model.size());
    POSITION pos = real.GetHeadPos();
    for (const Entry& entry : model) {
        CEvnt* e = nullptr;
        ASSERT_TRUE(real.GetNext(pos, &e));
        ASSERT_EQ(e, entry.event);
        ASSERT_EQ(e->GetTime(), entry.time);
    }
    EXPECT_EQ(pos, nullptr);
}

/// The place behind all entries not later than `time`.
std::vector<Entry>::iterator behind(std::vector<Entry>& model, std::uint32_t time)
{
    return std::upper_bound(model.begin(), model.end(), time,
                            [](std::uint32_t t, const Entry& entry) { return t < entry.time; });
}

/// A real block beside a plain list that is kept by the letter of the rules.
class RealBlkEdits : public testing::TestWithParam<std::uint32_t> {
protected:
    using At = std::vector<Entry>::iterator;

    std::uint32_t anyTime() { return dice.below(GetParam()); }
    At any() { return model.begin() + dice.below(static_cast<std::uint32_t>(model.size())); }

    void insert(std::uint32_t time)
    {
        const POSITION pos = real.InsEvnt(note(time, 60));
        ASSERT_NE(pos, nullptr);
        model.insert(behind(model, time), {time, List<CEvnt>::get(pos)});
    }

    void insertFrom(At hint, std::uint32_t time)
    {
        CEvnt* e = nullptr;
        real.New(&e);
        e->SetStatus(status::note);
        POSITION from = hint->event;
        real.Sort(from, time, e);
        e->SetTime(time);
        EXPECT_EQ(from, e);
        model.insert(behind(model, time), {time, e});
    }

    void move(At at, std::uint32_t time)
    {
        CEvnt* e = at->event;
        EXPECT_EQ(real.Sort(time, e), e) << "a position outlives a move";
        model.erase(at);
        model.insert(behind(model, time), {time, e});
    }

    /// Takes a run of events out and back, each to its place.
    void restore(At at)
    {
        struct Taken {
            CEvnt* event;
            POSITION place;
        };
        std::vector<Taken> taken;
        const std::vector<Entry> whole = model;
        for (std::uint32_t n = dice.between(1, 20); n > 0 && at != model.end(); --n) {
            taken.push_back({at->event, CRealBlk::placeOf(at->event)});
            real.RemoveAt(at->event);
            at = model.erase(at);
        }
        for (; !taken.empty(); taken.pop_back()) real.Restore(taken.back().event, taken.back().place);
        model = whole;
    }

    test::Dice dice{7};
    EvntPool pool;
    CRealBlk real{pool};
    std::vector<Entry> model;
};

TEST_P(RealBlkEdits, KeepOrderPositionsAndIndex)
{
    for (int step = 0; step < 4000; ++step) {
        const std::uint32_t time = anyTime();
        const std::uint32_t what = model.empty() ? 0 : dice.below(8);
        if (what < 3) {
            insert(time);
        } else if (what == 3) {
            const At hint = any();
            insertFrom(hint, hint->time + dice.below(GetParam() - hint->time));
        } else if (what < 6) {
            move(any(), time);
        } else if (what == 6) {
            const At at = any();
            ASSERT_TRUE(real.Del(at->event));
            model.erase(at);
        } else {
            ASSERT_NO_FATAL_FAILURE(restore(any()));
        }
        const std::uint32_t asked = dice.below(GetParam() + 20);
        const auto found = std::ranges::lower_bound(model, asked, {}, &Entry::time);
        ASSERT_EQ(real.GetTimePos(asked), found == model.end() ? nullptr : found->event);
    }
    expectSame(real, model);
    for (std::size_t left = model.size(); left > 0; --left) { // a sweep pushes the marks before it
        ASSERT_TRUE(real.Del(real.GetHeadPos()));
        model.erase(model.begin());
        const auto found = std::ranges::lower_bound(model, GetParam() / 2, {}, &Entry::time);
        ASSERT_EQ(real.GetTimePos(GetParam() / 2), found == model.end() ? nullptr : found->event);
    }
}

INSTANTIATE_TEST_SUITE_P(Times, RealBlkEdits, testing::Values(3U, 500U, 1000000U));

TEST(RealBlk, AnEventComesBackToItsPlaceWhateverRestsCameAndWent)
{
    EvntPool pool;
    CRealBlk real(pool);
    _EDT_EVNT rest;
    rest.time = 5;
    const POSITION early = real.InsEvnt(rest);
    const POSITION first = real.InsEvnt(note(10, 1));
    rest.time = 10;
    const POSITION between = real.InsEvnt(rest);
    const POSITION second = real.InsEvnt(note(10, 2));
    const POSITION third = real.InsEvnt(note(10, 3));

    const POSITION place = CRealBlk::placeOf(second);
    EXPECT_EQ(place, first);
    EXPECT_EQ(CRealBlk::placeOf(first), nullptr);
    real.RemoveAt(second);
    real.Del(between);
    real.Restore(List<CEvnt>::get(second), place);
    EXPECT_EQ(second->prev, first);
    EXPECT_EQ(second->next, third);
    real.RemoveAt(first);
    real.Restore(List<CEvnt>::get(first), nullptr);
    EXPECT_EQ(first->prev, early) << "never in front of an earlier rest";
}

TEST(RealBlk, EndTimeLooksAtTheTailAndMoveClamps)
{
    EvntPool pool;
    CRealBlk real(pool);
    real.InsEvnt(note(50, 60, 1000));
    real.InsEvnt(note(200, 61, 5));
    EXPECT_EQ(real.GetEndTime(), 205U);
    real.Move(-100);
    EXPECT_EQ(real.GetTopEvntTime(), 0U);
    EXPECT_EQ(List<CEvnt>::get(real.GetTailPos())->GetTime(), 100U);
    EXPECT_EQ(real.InsEvnt([] {
        auto r = note(0, 1);
        r.status = 0x81;
        return r;
    }()),
              nullptr);
    EXPECT_EQ(real.GetNum(), 2U) << "a refused record leaves nothing behind";
}

TEST(RealBlk, ShiftingSignaturesLeavesOtherEvents)
{
    EvntPool pool;
    CRealBlk real(pool);
    const std::uint8_t fourFour[] = {4, 2, 24, 8};
    real.AddTs(0, fourFour);
    real.InsEvnt(note(1000, 60));
    real.AddTs(1920, fourFour);
    real.InsEvnt(note(1930, 61));
    real.AddTs(3840, fourFour);
    real.ChngTs(real.GetTimePos(1920), 960);
    std::vector<std::pair<std::uint32_t, std::uint8_t>> seen;
    for (const CEvnt* e = real.events().head(); e; e = List<CEvnt>::next(e))
        seen.emplace_back(e->GetTime(), e->GetStatus());
    EXPECT_EQ(seen, (std::vector<std::pair<std::uint32_t, std::uint8_t>>{
                        {0, 0xFF}, {1000, 0x90}, {1930, 0x90}, {2880, 0xFF}, {4800, 0xFF}}));
}

TEST(Blk, TimesAreAbsoluteAndGhostsShareEvents)
{
    EvntPool pool;
    CRealBlk real(pool);
    CBlk source;
    CBlk ghost;
    source.Set(1000, 2000, &real, blktype::real);
    ghost.Set(5000, 6000, &real, blktype::ghost);
    EXPECT_EQ(source.InsEvnt(note(999, 60)), nullptr);
    const POSITION pos = source.InsEvnt(note(2000, 60));
    ASSERT_NE(pos, nullptr);
    EXPECT_EQ(source.GetTimePos(2000), pos) << "the end itself is answered";
    EXPECT_EQ(source.GetTimePos(2001), nullptr);
    EXPECT_EQ(source.GetTimePos(999), nullptr);
    EXPECT_EQ(ghost.GetTimePos(5500), pos);
    source.SetTimeEnd(999);
    EXPECT_EQ(source.GetTimeEnd(), 2000U);
    source.SetTimeTop(500);
    EXPECT_EQ(source.GetTimeEnd(), 1500U);
    source.SetTimeEndCmp(1400);
    EXPECT_EQ(source.GetTimeEnd(), 1500U);
    CBlk empty;
    EXPECT_EQ(empty.GetTimePos(0), nullptr);
    EXPECT_EQ(empty.InsEvnt(note(0, 60)), nullptr);
}

TEST(Trk, BlocksSortByTopAndUseUpNumbers)
{
    BlkNamer namer;
    CTrk trk(namer);
    EvntPool pool;
    CRealBlk real(pool);
    const POSITION first = trk.NewAdd(100, 200, &real, blktype::real, "intro");
    const POSITION second = trk.NewAdd(100, 300, &real, blktype::ghost, "again");
    CBlk* third = nullptr;
    trk.New(&third);
    EXPECT_EQ(third->GetName(), "Block2");
    third->Set(50, &real, blktype::real);
    trk.Add(third, 50);
    EXPECT_EQ(trk.GetPos(0), third);
    EXPECT_EQ(trk.GetPos(1), first);
    EXPECT_EQ(trk.GetPos(2), second);
    ASSERT_TRUE(trk.Move(first, 400));
    EXPECT_EQ(trk.GetTailPos(), first) << "a position outlives a move";
    EXPECT_EQ(List<CBlk>::get(first)->GetTimeEnd(), 500U);
    EXPECT_TRUE(trk.IsGhostExist(&real));
    EXPECT_FALSE(trk.SetType(trktype::wave)) << "only an empty track changes its type";
    EXPECT_FALSE(trk.SetTranspose(37));
    EXPECT_TRUE(trk.SetTranspose(-36));
    EXPECT_FALSE(trk.SetCh(16));
}

} // namespace
} // namespace tessaro
