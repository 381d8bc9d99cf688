// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/load_steps.h"
#include "core/fakes.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

TEST(LoadSteps, OtherKindsKeepTheirBlocks)
{
    EditorBench b;
    const std::uint8_t four[] = {4, 2, 24, 8};
    b.editor.AddTs(1920, four);
    b.editor.NewBlk(1, 0);
    b.editor.NewAddTailEvnt(1, 0, noteRec(5000, 10));
    b.editor.BlkSize(1);
    b.editor.BlkSize(3);
    EXPECT_EQ(b.editor.GetBlkTimeEnd(0, 0), 0U);
    b.editor.BlkSize(4);
    EXPECT_EQ(b.editor.GetBlkTimeEnd(0, 0), 1920U);
    EXPECT_EQ(b.editor.GetBlkTimeTop(1, 0), 0U);
}

TEST(LoadSteps, ContinuationsJoinTheirStart)
{
    EditorBench b;
    CEditor& e = b.editor;
    const auto add = [&](int trk, std::uint32_t blk, std::uint8_t status, std::vector<std::uint8_t> body) {
        ASSERT_TRUE(e.NewAddTailEvnt(trk, blk, bytesRec(status, 0, body)));
    };
    e.NewBlk(1, 0);
    add(1, 0, 0xF7, {1});
    add(1, 0, 0xF0, {2});
    add(1, 0, 0xF7, {3, 4});
    e.NewAddTailEvnt(1, 0, noteRec(0, 1));
    add(1, 0, 0xF7, {5});
    e.NewBlk(1, 1920);
    add(1, 1, 0xF7, {6}); // the start is forgotten at the block's end
    const std::vector<std::uint8_t> master = {7};
    e.song().masterReal()->InsEvnt(bytesRec(0xF7, 0, master));
    e.PackSysex();

    _EDT_EVNT rec;
    POSITION pos = e.GetHeadEvntPos(1, 0);
    ASSERT_TRUE(e.GetNextEvnt(1, 0, pos, rec));
    EXPECT_EQ(rec.status, 0xF0);
    EXPECT_EQ(std::vector(rec.data, rec.data + rec.szData), (std::vector<std::uint8_t>{2, 3, 4, 5}));
    ASSERT_TRUE(e.GetNextEvnt(1, 0, pos, rec));
    EXPECT_EQ(rec.status, 0x90);
    EXPECT_FALSE(pos);
    EXPECT_FALSE(e.GetHeadEvntPos(1, 1));
    EXPECT_EQ(e.song().masterReal()->GetCount(0xF0), 3U) << "the master track is not looked at";
}

TEST(LoadSteps, WaveBlocksTakeTheLengthOfTheirSounds)
{
    EditorBench b;
    CEditor& e = b.editor;
    b.waves.lengths = {{"long", 3000}, {"short", 100}};
    e.SetTrkTypePrivate(20, trktype::wave);
    e.NewBlk(20, 960);
    e.NewAddTailEvnt(20, 0, waveRec(0, "long"));
    e.NewAddTailEvnt(20, 0, waveRec(480, "short"));
    e.NewBlk(20, 5000);
    e.NewAddTailEvnt(20, 1, waveRec(0, "unknown"));
    CBlk* source = nullptr;
    ASSERT_TRUE(e.GetBlk(20, 0, &source));
    List<CTrk>::get(e.GetTrkPos(20))->NewAdd(9600, 9700, source->GetRealBlk(), blktype::ghost);
    e.BlkSizeWave();
    EXPECT_EQ(e.GetBlkTimeEnd(20, 0), 960U + 2880);
    EXPECT_EQ(e.GetBlkTimeEnd(20, 1), 5000U) << "an unknown length leaves the end";
    EXPECT_EQ(e.GetBlkTimeEnd(20, 2), 9600U + 2880) << "ghosts follow";

    const std::uint8_t fast[] = {0x03, 0xD0, 0x90};
    e.AddTempo(0, fast);
    e.HintTimeChng();
    EXPECT_EQ(e.GetBlkTimeEnd(20, 0), 960U + 5760) << "and all follow the tempo";
    EXPECT_FALSE(e.BlkSizeWave(e.GetTrkPos(20), e.GetBlkPos(20, 2))) << "a ghost has no length of its own";
}

TEST(LoadSteps, LinksToScoreEntriesGo)
{
    EditorBench b;
    CEditor& e = b.editor;
    e.NewBlk(1, 0);
    const auto add = [&](std::uint8_t type, std::vector<std::uint8_t> body) {
        ASSERT_TRUE(e.NewAddTailEvnt(1, 0, bytesRec(0xFF, 0, body, type)));
    };
    add(0x7F, {0x43, 0, 0, 0, 0, 0, 0x7F, 1});
    add(0x7F, {0x43, 0, 0, 0, 0, 0, 0x80, 1}); // not 7 bits
    add(0x7F, {0x43, 0, 1, 0, 0, 0, 0, 1});    // another head
    add(0x7F, {0x43, 0, 0, 0, 0, 0, 0});       // another length
    add(0x01, {0x43, 0, 0, 0, 0, 0, 0, 1});    // another type
    const std::vector<std::uint8_t> link = {0x43, 0, 0, 1, 2, 3, 4, 5};
    e.song().masterReal()->InsEvnt(bytesRec(0xFF, 0, link, 0x7F));
    const std::uint32_t masters = e.song().masterReal()->GetNum();
    load_steps::deleteScoreLinks(e.song());
    EXPECT_EQ(List<CBlk>::get(e.GetHeadBlkPos(1))->GetNum(), 4U);
    EXPECT_EQ(e.song().masterReal()->GetNum(), masters - 1);
}

} // namespace
} // namespace tessaro::test
