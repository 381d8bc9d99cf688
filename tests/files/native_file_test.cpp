// SPDX-License-Identifier: GPL-3.0-or-later
// The chunks of a native song file, and what of them makes the song.
#include "core/model/style_ctab.h"
#include "files/native_bench.h"
#include "files/recognise.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessaro::test {

namespace {

Bytes part(const Bytes& file, std::size_t offset, std::size_t length)
{
    const auto from = file.begin() + static_cast<std::ptrdiff_t>(offset);
    return {from, from + static_cast<std::ptrdiff_t>(length)};
}

/// A style block with one set-up and one phrase.
Bytes styleBlk(std::uint32_t top, std::uint32_t setup, std::uint32_t phrase)
{
    SmfBytes out;
    out.raw(Bytes(16)).raw({3, 2}).number(1440, 4).number(5760, 4).raw({1, 7, 8, 9});
    out.number(top, 4).number(top + 100, 4).raw(Bytes(32)).raw(Bytes(4)).number(setup, 4).raw(Bytes(56));
    Bytes table(77);
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<std::uint8_t>(i + 1);
    out.number(phrase, 4).raw(phrase ? table : Bytes(77)).raw(Bytes(15 * 81));
    return out.raw({1, 'f', 0, 2, 's', 'e'}).bytes();
}

} // namespace

TEST(NativeFile, ANewSongByTheByte)
{
    NativeBench bench;
    bench.trk(1).SetPort(2);
    bench.trk(1).SetTranspose(-3);
    bench.trk(1).SetMute(true);
    bench.trk(1).SetInstType(0x01020304);
    bench.trk(1).SetName("ab");
    bench.editor.NewBlk(1, 960);
    const Bytes file = bench.save();

    Bytes header = SmfBytes().id("TR9H").number(64, 4).raw({4, 0}).number(101, 2).number(2, 4).number(480, 2).bytes();
    header.resize(72);
    EXPECT_EQ(header, part(file, 0, 72));

    std::size_t at = 72;
    const Bytes master{0, 0xFF, 0x58, 4, 4, 2, 24, 8, 0, 0xFF, 0x51, 3, 7, 0xA1, 0x20};
    const Bytes blks = SmfBytes().chunk(master, "TR9B").chunk({}, "TR9B").bytes();
    EXPECT_EQ(blks, part(file, at, blks.size()));
    at += blks.size();

    const Bytes trks = SmfBytes()
                           .chunk(TrkBytes()
                                      .info({1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 127})
                                      .blk(0, 0, 0, 1, {6, 'B', 'l', 'o', 'c', 'k', '0'})
                                      .bytes(),
                                  "TR9T")
                           .chunk(SmfBytes()
                                      .raw({1, 2, 0, 0xFD, 0, 1, 1, 1, 2, 3, 4, 0, 127})
                                      .raw(Bytes(19))
                                      .raw({2, 'a', 'b', 1, 0})
                                      .number(960, 4)
                                      .number(960, 4)
                                      .number(1, 4)
                                      .raw(Bytes(18))
                                      .raw({6, 'B', 'l', 'o', 'c', 'k', '1'})
                                      .bytes(),
                                  "TR9T")
                           .bytes();
    EXPECT_EQ(trks, part(file, at, trks.size()));
    at += trks.size() + 99 * (8 + 33);

    SmfBytes style;
    style.raw(Bytes(2 + 4 + 16)).raw({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}).raw(Bytes(1 + 16));
    style.raw(Bytes(16, 1)).raw(Bytes(32)).raw({1, 0}).raw(Bytes(32)).raw({0});
    EXPECT_EQ(SmfBytes().chunk(style.bytes(), "T9ST").bytes(), part(file, at, file.size() - at));
}

TEST(NativeFile, IsToldByItsChunks)
{
    const auto kindOf = [](Bytes file) {
        const auto length = static_cast<std::uint32_t>(file.size());
        file.resize(file.size() + 16);
        return recogniseFile(file.data(), length).kind;
    };
    const Bytes whole = nativeFile({{}, {}}, {TrkBytes().bytes()}).bytes();
    const auto changed = [&](std::size_t at, std::uint8_t value) {
        Bytes file = whole;
        file[at] = value;
        return kindOf(file);
    };
    EXPECT_EQ(filekind::native, kindOf(whole));
    EXPECT_EQ(filekind::native, changed(8, 15)) << "the last version";
    EXPECT_EQ(filekind::unknown, changed(8, 16)) << "a later one";
    EXPECT_EQ(filekind::unknown, changed(15, 3)) << "a real block is missing";
    EXPECT_EQ(filekind::unknown, changed(11, 2)) << "a track is missing";
    EXPECT_EQ(filekind::unknown, changed(12, 0xFF)) << "billions of real blocks";
    EXPECT_EQ(filekind::unknown, changed(79, 1)) << "a chunk ends elsewhere";
    EXPECT_EQ(filekind::unknown, kindOf(nativeFile({{}}, std::vector<Bytes>(102)).bytes())) << "too many tracks";
    EXPECT_EQ(filekind::native, changed(7, 9)) << "the header's own length says nothing";
}

TEST(NativeFile, TrackSettings)
{
    NativeBench bench;
    const std::vector<Bytes> trks = {
        TrkBytes().info({2, 0, 0, 0, 0, 0, 1}).blk(0, 0, 0).bytes(),
        TrkBytes().info({2, 9, 200, 100, 1, 1, 0, 1, 2, 3, 4, 5, 0xE0}).bytes(),
        TrkBytes().info({1, 0, 3, 0x9C, 2, 0, 7, 0, 0, 0, 1}).bytes(),
    };
    ASSERT_TRUE(bench.load(nativeFile({{}}, trks).bytes()));
    EXPECT_EQ(trktype::midi, bench.trk(0).GetType()) << "the master stays what it is";
    EXPECT_EQ(trktype::wave, bench.trk(1).GetType());
    EXPECT_EQ(15, bench.trk(1).GetCh());
    EXPECT_EQ(36, bench.trk(1).GetTrans());
    EXPECT_EQ(0x01020304U, bench.trk(1).GetInstType());
    EXPECT_EQ(0x60, bench.trk(1).GetWavVol());
    EXPECT_EQ(-36, bench.trk(2).GetTrans());
    EXPECT_TRUE(bench.trk(2).GetSolo() && bench.trk(2).GetTransEnable());
    EXPECT_EQ(trktype::midi, bench.trk(16).GetType()) << "tracks that the file has not are those of a new song";

    ASSERT_TRUE(bench.load(nativeFile({{}}, trks, 3).bytes()));
    EXPECT_EQ(0U, bench.trk(1).GetInstType()) << "before version 4";
    EXPECT_EQ(0x7F, bench.trk(1).GetWavVol());
    EXPECT_EQ(9, bench.trk(1).GetPort());
}

TEST(NativeFile, BlocksShareRealBlocks)
{
    NativeBench bench;
    const Bytes trk = TrkBytes().blk(200, 100, 2, 2).blk(100, 900, 2).bytes();
    const Bytes program{0, 0xC0, 1};
    ASSERT_TRUE(bench.load(nativeFile({{}, {}, program}, {TrkBytes().blk(0, 50, 0).bytes(), trk}).bytes()));
    EXPECT_EQ(2U, bench.editor.GetRealBlkCount()) << "what nothing shows is gone";
    const CBlk* first = bench.trk(1).blocks().head();
    const CBlk* second = bench.trk(1).blocks().tail();
    EXPECT_EQ(100U, first->GetTimeTop()) << "blocks stand in order";
    EXPECT_EQ(blktype::ghost, second->GetType());
    EXPECT_EQ(200U, second->GetTimeEnd()) << "no end before the top";
    EXPECT_EQ(first->GetRealBlk(), second->GetRealBlk());
    EXPECT_EQ("x", second->GetName());
    EXPECT_EQ(3U, bench.editor.GetBlkNameNum()) << "each block used up a number";

    EXPECT_FALSE(bench.load(nativeFile({{}, {}}, {TrkBytes().bytes(), trk}).bytes())) << "no such real block";
    EXPECT_FALSE(bench.load(nativeFile({}, {TrkBytes().bytes()}).bytes())) << "the first chunk is read as events";
    Bytes cut = TrkBytes().blk(0, 0, 0).bytes();
    cut.pop_back();
    EXPECT_FALSE(bench.load(nativeFile({{}}, {cut}).bytes())) << "a name ends early";
}

TEST(NativeFile, Styles)
{
    NativeBench bench;
    const std::vector<Bytes> reals = {{}, {0, 0xC0, 1}, {0, 0x90, 60, 1, 0, 0, 0, 9}};
    const auto with = [&](std::uint32_t count, const std::vector<Bytes>& blks, std::uint8_t version = 0) {
        SmfBytes file = fullFile(reals, TrkBytes().bytes());
        file.chunk(styleTrk(count, version), "T9ST");
        for (const Bytes& blk : blks) file.chunk(blk, "T9SB");
        return file.bytes();
    };
    ASSERT_TRUE(bench.load(with(2, {styleBlk(960, 1, 2), styleBlk(0, 0, 2)})));
    ASSERT_EQ(2, bench.editor.GetCountStyle());
    EXPECT_EQ(3U, bench.editor.GetRealBlkCount());
    const CStyleBlk& first = *bench.editor.styles().blks().head();
    const CStyleBlk& second = *bench.editor.styles().blks().tail();
    EXPECT_EQ(0U, first.GetTimeTop()) << "style blocks stand in order";
    EXPECT_EQ(nullptr, first.GetSetup(1)) << "number 0 is none";
    ASSERT_TRUE(second.GetSetup(1));
    EXPECT_EQ(1U, second.GetSetup(1)->GetNum());
    EXPECT_EQ(5760U, List<CPhraseBlk>::get(second.GetHeadPos(0))->GetTimeEnd());
    EXPECT_EQ(12, List<CPhraseBlk>::get(second.GetHeadPos(0))->GetCtab().noteMute[0]);
    EXPECT_EQ("se", second.GetSectionName());
    const auto song = bench.dump();
    const Bytes saved = bench.save();
    ASSERT_TRUE(bench.load(saved));
    EXPECT_EQ(song, bench.dump());
    EXPECT_EQ(saved, bench.save());

    ASSERT_TRUE(bench.load(with(1, {styleBlk(0, 1, 2)}, 1))) << "another version is no style";
    EXPECT_EQ(0, bench.editor.GetCountStyle());
    EXPECT_EQ(1U, bench.editor.GetRealBlkCount());
    EXPECT_FALSE(bench.load(with(1, {styleBlk(0, 3, 0)}))) << "no such set-up";
    EXPECT_FALSE(bench.load(with(1, {styleBlk(0, 0, 3)}))) << "no such phrase";
    EXPECT_FALSE(bench.load(with(0xFFFFFFFF, {styleBlk(0, 0, 0)}))) << "more blocks than there are";
}

TEST(NativeFile, ScoreChunksAreCarried)
{
    NativeBench bench;
    const Bytes link{0, 0xFF, 0x7F, 8, 0x43, 0, 0, 0, 0, 0, 0, 1};
    SmfBytes file = fullFile({{}, link}, TrkBytes().blk(0, 10, 1).bytes());
    file.chunk(styleTrk(), "T9ST");
    const Bytes plain = file.bytes();
    const Bytes score = SmfBytes().chunk({1, 2, 3}, "SCRS").chunk({}, "SCRA").chunk({4}, "SCRD").bytes();
    const auto links = [&] { return bench.trk(1).blocks().head()->GetNum(); };
    const auto endsWith = [](const Bytes& saved, const Bytes& tail) {
        return saved.size() > tail.size() && std::equal(tail.rbegin(), tail.rend(), saved.rbegin());
    };

    ASSERT_TRUE(bench.load(SmfBytes(file).raw(score).bytes()));
    EXPECT_EQ(1U, links());
    EXPECT_TRUE(bench.score.isScoreLink(*bench.trk(1).blocks().head()->GetRealBlk()->events().head()));
    EXPECT_TRUE(endsWith(bench.save(), score));
    const Bytes saved = bench.save();
    ASSERT_TRUE(bench.load(saved));
    EXPECT_EQ(saved, bench.save());
    const Bytes midi = bench.save(1);
    EXPECT_EQ(std::search(midi.begin(), midi.end(), link.begin() + 4, link.end()), midi.end()) << "means nothing there";

    ASSERT_TRUE(bench.load(SmfBytes(file).raw(score).raw({'X', 'Y'}).bytes())) << "what is no chunk stays behind";
    EXPECT_TRUE(endsWith(bench.save(), score));

    ASSERT_TRUE(bench.load(plain));
    EXPECT_EQ(0U, links()) << "nothing to refer to";
    EXPECT_FALSE(endsWith(bench.save(), score)) << "nothing is left of the song before";
    ASSERT_TRUE(bench.load(plain, true));
    EXPECT_EQ(1U, links()) << "kept before waves";
    EXPECT_FALSE(bench.load(SmfBytes(file).id("SCRS").number(9, 4).bytes())) << "a score that is cut off";
}

} // namespace tessaro::test
