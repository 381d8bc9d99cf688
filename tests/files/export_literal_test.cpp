// SPDX-License-Identifier: GPL-3.0-or-later
// The stages against lists that insert each record by a walk, as the rules describe it.
#include "files/export_rig.h"
#include "files/smf_out/song_merger.h"
#include "files/smf_out/stages.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <list>
#include <set>

namespace tessaro::test {
namespace {

using Walked = std::list<SmfRecord>;
using Cursor = Walked::iterator;

std::uint8_t kindOf(const SmfRecord& r) { return r.status & 0xF0; }

void Sort(Walked& list, Cursor& cursor, const SmfRecord& r)
{
    while (cursor != list.end() && cursor->time <= r.time) ++cursor;
    cursor = list.insert(cursor, r);
}

void SortBefore(Walked& list, Cursor cursor, const SmfRecord& r)
{
    while (cursor != list.end() && cursor->time < r.time) ++cursor;
    list.insert(cursor, r);
}

void walkRepeat(Walked& list, std::span<const RepeatJump> jumps)
{
    Walked out;
    std::uint32_t o = 0;
    std::uint32_t s = 0;
    const auto copy = [&](auto before) {
        for (SmfRecord r : list) {
            if (r.time < s || !before(r.time)) continue;
            r.time = r.time + o - s;
            out.push_back(r);
        }
    };
    for (const RepeatJump& jump : jumps) {
        copy([&](std::uint32_t time) { return time < jump.from; });
        if (jump.from == jump.to) return list.swap(out);
        o += jump.from - s;
        s = jump.to;
    }
    copy([](std::uint32_t) { return true; });
    list.swap(out);
}

void walkFwdSyng(Walked& list)
{
    std::set<const SmfRecord*> moved;
    for (Cursor at = list.begin(); at != list.end();) {
        const Cursor r = at++;
        if (kindOf(*r) != 0x60 || !moved.insert(&*r).second) continue;
        Walked taken;
        taken.splice(taken.begin(), list, r);
        r->time = r->time < 5 ? 0 : r->time - 5;
        Cursor to = list.begin();
        while (to != list.end() && to->time <= r->time) ++to;
        list.splice(to, taken);
    }
}

void walkUnpackSyng(Walked& list)
{
    for (Cursor r = list.begin(); r != list.end(); ++r) {
        if (kindOf(*r) != 0x60) continue;
        SmfRecord note = *r;
        note.time += 5;
        note.status = static_cast<std::uint8_t>(0x90 | (r->status & 0x0F));
        note.event = nullptr;
        Cursor from = r;
        Sort(list, from, note);
    }
}

void walkUnpackNote(Walked& list)
{
    for (Cursor r = list.begin(); r != list.end(); ++r)
        if (kindOf(*r) == 0x90 && r->gate != 0)
            SortBefore(list, r, {.time = r->time + r->gate, .status = r->status, .post1 = r->post1});
}

void walkUnpackVce(Walked& list)
{
    for (Cursor r = list.begin(); r != list.end(); ++r) {
        if (kindOf(*r) != 0x30) continue;
        const std::uint8_t ch = r->status & 0x0F;
        Cursor from = r;
        Sort(list, from,
             {.time = r->time + 5, .status = static_cast<std::uint8_t>(0xB0 | ch), .post1 = 0x20, .post2 = r->post2});
        Sort(list, from, {.time = r->time + 10, .status = static_cast<std::uint8_t>(0xC0 | ch), .post1 = r->post3});
    }
}

/// Records numbered in their posts, so that no two are equal.
RecordList randomRecords(Dice& dice)
{
    RecordList list;
    std::uint32_t time = 0;
    for (std::uint8_t n = dice.byteBelow(24); n > 0; --n) {
        if (!dice.oneIn(2)) time += dice.below(7);
        const auto kind = std::array<std::uint8_t, 5>{0x30, 0x60, 0x90, 0x90, 0xB0}[dice.below(5)];
        const auto channel = dice.byteBelow(2);
        list.push_back({.time = time,
                        .gate = kind == 0x30 || kind == 0xB0 ? 0 : dice.below(14),
                        .status = static_cast<std::uint8_t>(kind | channel),
                        .post1 = n,
                        .post2 = n,
                        .post3 = n});
    }
    return list;
}

/// Jumps as a plan has them: each from a tick that is reached.
std::vector<RepeatJump> randomJumps(Dice& dice)
{
    std::vector<RepeatJump> jumps;
    std::uint32_t now = 0;
    for (std::uint32_t n = dice.below(5); n > 0; --n) {
        const std::uint32_t from = now + dice.below(40);
        now = dice.oneIn(8) ? from : dice.below(60);
        jumps.push_back({from, now});
    }
    return jumps;
}

TEST(ExportLiteral, StagesPutEachRecordWhereAWalkWould)
{
    for (std::uint32_t seed = 0; seed < 5000; ++seed) {
        Dice dice(seed);
        RecordList list = randomRecords(dice);
        Walked walked(list.begin(), list.end());
        const auto agree = [&](const char* stage) {
            EXPECT_EQ(list, RecordList(walked.begin(), walked.end())) << stage << " of seed " << seed;
        };
        const std::vector<RepeatJump> jumps = randomJumps(dice);
        RecordList played;
        Repeat(list, jumps, played);
        list.swap(played);
        walkRepeat(walked, jumps);
        agree("Repeat");
        FwdSyng(list);
        walkFwdSyng(walked);
        agree("FwdSyng");
        UnpackSyng(list);
        walkUnpackSyng(walked);
        agree("UnpackSyng");
        UnpackNote(list);
        walkUnpackNote(walked);
        agree("UnpackNote");
        UnpackVce(list);
        walkUnpackVce(walked);
        agree("UnpackVce");
        if (HasFailure()) return;
    }
}

void randomBlks(ExportRig& rig, Dice& dice)
{
    for (std::uint8_t n = 0; n < 12; ++n) {
        CRealBlk& real = rig.blk(static_cast<int>(dice.below(5)), dice.below(30));
        std::uint32_t time = 0;
        for (std::uint8_t i = dice.byteBelow(8); i > 0; --i) {
            addShort(real, time, 0xB0, {n, i});
            time += dice.below(9);
        }
        if (dice.oneIn(4)) rig.trk(static_cast<int>(dice.below(5))).NewAdd(dice.below(30), &real, blktype::ghost);
    }
}

void walkMerge(ExportRig& rig, int number, Walked& list)
{
    const CTrk& trk = rig.trk(number);
    for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
        Cursor cursor = list.begin();
        for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
            Sort(list, cursor,
                 {.time = blk->GetTimeTop() + e->GetTime(),
                  .status = static_cast<std::uint8_t>(0xB0 | trk.GetCh()),
                  .post1 = e->GetPost1(),
                  .post2 = e->GetPost2()});
    }
}

TEST(ExportLiteral, MergingPutsEachEventWhereAWalkWould)
{
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        Dice dice(seed);
        ExportRig rig;
        randomBlks(rig, dice);
        NullScorePlayout score;
        SongMerger merger(rig.editor, score);
        RecordList upward;
        merger.MergeAll(upward);
        ZpLists downward;
        merger.MergeZp(downward);
        Walked walkedUp;
        Walked walkedDown;
        for (int number = 0; number < trackCount; ++number) walkMerge(rig, number, walkedUp);
        for (int number = trackCount; number-- > 0;) walkMerge(rig, number, walkedDown);
        ASSERT_EQ(upward, RecordList(walkedUp.begin(), walkedUp.end())) << "seed " << seed;
        ASSERT_EQ(downward.main, RecordList(walkedDown.begin(), walkedDown.end())) << "seed " << seed;
    }
}

} // namespace
} // namespace tessaro::test
