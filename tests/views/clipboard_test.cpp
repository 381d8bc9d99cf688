// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/strings.h"
#include "core/fakes.h"
#include "core/model/meta.h"
#include "views/clipboard/song_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

using Format = SongClipboard::Format;

class ClipboardTest : public testing::Test {
protected:
    ClipboardTest() { QGuiApplication::clipboard()->clear(); }

    BlkRef blk(int track, std::uint32_t top, std::uint32_t end)
    {
        CTrk& trk = *editor().song().trk(track);
        return {&trk, trk.NewAdd(top, end, editor().NewAddTailRealBlk(), blktype::real)};
    }
    EvntRef add(const BlkRef& ref, const _EDT_EVNT& rec)
    {
        return {ref.trk, ref.blk, List<CBlk>::get(ref.blk)->InsEvnt(rec)};
    }
    std::vector<EvntRef> paste(const BlkRef& into, std::uint32_t time)
    {
        return clipboard.pasteEvnts(Song::numberOf(into.trk), time, [&] { return into; });
    }
    BlkRef master() { return {editor().GetTrkPos(0), editor().song().masterBlk()}; }
    static _EDT_EVNT signature(std::uint32_t time, std::uint8_t beats)
    {
        static std::uint8_t data[4] = {0, 2, 24, 8};
        data[0] = beats;
        _EDT_EVNT rec;
        rec.status = status::metaEvent;
        rec.metaType = meta::timeSignature;
        rec.time = time;
        rec.data = data;
        rec.szData = 4;
        return rec;
    }
    static std::vector<std::uint32_t> times(const std::vector<EvntRef>& refs)
    {
        std::vector<std::uint32_t> all;
        for (const EvntRef& ref : refs)
            all.push_back(List<CBlk>::get(ref.blk)->GetTimeTop() + List<CEvnt>::get(ref.evnt)->GetTime());
        return all;
    }
    CEditor& editor() { return bench.editor; }

    using Times = std::vector<std::uint32_t>;
    test::EditorBench bench;
    Strings strings{Language::japanese};
    SongClipboard clipboard{bench.editor, strings};
};

TEST_F(ClipboardTest, EventsGoToAnotherBlockWithTheirDistances)
{
    const BlkRef from = blk(1, 480, 960);
    const BlkRef into = blk(2, 960, 1440);
    const std::vector<EvntRef> refs{add(from, test::noteRec(500, 7)), add(from, test::noteRec(500, 8)),
                                    add(from, test::noteRec(900, 9))};
    EXPECT_FALSE(clipboard.holds(Format::evnts));
    EXPECT_TRUE(paste(into, 1000).empty());
    ASSERT_TRUE(clipboard.copyEvnts(refs));
    EXPECT_TRUE(clipboard.holds(Format::evnts));
    EXPECT_FALSE(clipboard.holds(Format::mstrEvnts) || clipboard.holds(Format::blks));

    const auto pasted = paste(into, 1300);
    EXPECT_EQ((Times{1300, 1300, 1700}), times(pasted));
    EXPECT_EQ(1709U, List<CBlk>::get(into.blk)->GetTimeEnd());
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(7 + i, List<CEvnt>::get(pasted[i].evnt)->GetGateTime());
    EXPECT_EQ((Times{960, 960, 1200}), times(paste(into, 800))) << "none before the block";

    std::string title;
    EXPECT_TRUE(editor().IsEnableUndo(title) && title == "ｲﾍﾞﾝﾄ貼り付け");
    EXPECT_TRUE(editor().UndoNode(2));
    EXPECT_EQ(nullptr, editor().GetHeadEvntPos(into.trk, into.blk));
    EXPECT_TRUE(bench.user.messages.empty());
}

TEST_F(ClipboardTest, RefusesWhatDoesNotFit)
{
    const BlkRef from = blk(1, 0, 960);
    const EvntRef note = add(from, test::noteRec(0, 10));
    const EvntRef tempo{master().trk, master().blk, editor().GetHeadEvntPos(master().trk, master().blk)};
    ASSERT_TRUE(clipboard.copyEvnts(std::vector{note}));
    EXPECT_FALSE(clipboard.copyEvnts({}));
    EXPECT_FALSE(clipboard.copyEvnts(std::vector{note, tempo}));
    EXPECT_FALSE(clipboard.copyBlks({}));
    EXPECT_TRUE(clipboard.holds(Format::evnts)) << "kept";
    EXPECT_TRUE(paste(master(), 0).empty());
    EXPECT_TRUE(clipboard.pasteBlks(1, 0).empty());

    editor().SetTrkType(9, trktype::wave);
    EXPECT_TRUE(paste(blk(9, 0, 10), 0).empty());
    editor().ClearUndoRedo();
    for (const Format format : {Format::evnts, Format::mstrEvnts, Format::blks}) {
        auto* data = new QMimeData;
        data->setData(SongClipboard::name(format), QByteArray("TR9C\0\0\0\x08\0\x90<", 11));
        QGuiApplication::clipboard()->setMimeData(data);
        EXPECT_TRUE(clipboard.holds(format));
        EXPECT_TRUE(paste(from, 0).empty() && paste(master(), 0).empty());
        EXPECT_TRUE(clipboard.pasteBlks(0, 0).empty());
    }
    EXPECT_EQ(0, editor().GetUndoRedoCount());
}

/// A block that would stay empty is not made, and what could be redone stays.
TEST_F(ClipboardTest, AsksForABlockOnlyWhenSomethingGoesThere)
{
    const BlkRef from = blk(1, 0, 960);
    ASSERT_TRUE(clipboard.copyEvnts(std::vector{add(from, test::noteRec(0, 10)), add(from, test::noteRec(960, 10))}));
    editor().SetTrkType(9, trktype::wave);
    int asked = 0;
    const auto target = [&](int track) {
        return [this, &asked, track]() -> BlkRef {
            ++asked;
            const POSITION trk = editor().GetTrkPos(track);
            editor().BlkNew(trk, 0, 480);
            return {trk, editor().GetTailBlkPos(trk)};
        };
    };
    EXPECT_TRUE(clipboard.pasteEvnts(9, 0, target(9)).empty());
    EXPECT_TRUE(clipboard.pasteEvnts(0, 0, target(0)).empty());
    EXPECT_EQ(0, asked);
    EXPECT_EQ(2U, clipboard.pasteEvnts(3, 0, target(3)).size());
    EXPECT_EQ(1, editor().GetUndoRedoCount());
    EXPECT_EQ(970U, editor().song().trk(3)->blocks().head()->GetTimeEnd());
    editor().UndoNode();
    EXPECT_TRUE(editor().song().trk(3)->IsEmpty());
    EXPECT_TRUE(clipboard.pasteEvnts(9, 0, target(9)).empty());
    EXPECT_TRUE(editor().RedoNode());
    EXPECT_EQ(1, asked);
}

TEST_F(ClipboardTest, SignaturesReplaceThoseOfTheirBar)
{
    const std::vector<EvntRef> refs{add(master(), signature(10, 3)), add(master(), signature(20, 5)),
                                    add(master(), signature(9000, 2))};
    ASSERT_TRUE(clipboard.copyEvnts(refs));
    EXPECT_TRUE(clipboard.holds(Format::mstrEvnts));
    for (const EvntRef& ref : refs) List<CBlk>::get(ref.blk)->GetRealBlk()->Del(ref.evnt);
    editor().InitMeasInfo();
    const auto pasted = paste(master(), 1);
    ASSERT_EQ(2U, pasted.size());
    EXPECT_EQ(5, List<CEvnt>::get(pasted[0].evnt)->payload()[0]);
    EXPECT_EQ(1920U, times(pasted)[0]);
    EXPECT_EQ(3, editor().song().masterReal()->GetNum() - 1) << "the first one, the tempo, and two";
}

TEST_F(ClipboardTest, BlocksGoToTracks)
{
    const std::vector<BlkRef> blks{blk(5, 480, 960), blk(7, 960, 1000)};
    add(blks[1], test::noteRec(970, 3, 61));
    ASSERT_TRUE(clipboard.copyBlks(blks));
    EXPECT_TRUE(clipboard.holds(Format::blks));
    const auto pasted = clipboard.pasteBlks(20, 0);
    ASSERT_EQ(2U, pasted.size());
    EXPECT_EQ(editor().GetTrkPos(22), pasted[1].trk);
    const CBlk& second = *List<CBlk>::get(pasted[1].blk);
    EXPECT_EQ(480U, second.GetTimeTop());
    EXPECT_EQ(List<CBlk>::get(blks[1].blk)->GetName(), second.GetName());
    EXPECT_EQ(10U, second.GetRealBlk()->events().head()->GetTime());
}

} // namespace
} // namespace tessaro
