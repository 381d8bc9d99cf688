// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks and events through the images that the clipboard holds.
#include "core/model/poslist.h"
#include "files/clip/blk_clip_reader.h"
#include "files/clip/clip_writer.h"
#include "files/clip/evnt_clip_reader.h"
#include "files/native/cnv_evnt.h"
#include "files/native_bench.h"
#include "files/random_smf.h"
#include "files/smf/port_meta.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

constexpr std::uint8_t linkBody[] = {0x43, 0, 0, 0, 0, 0, 0, 1};

struct ClipBench : NativeBench {
    BlkRef blk(int track, std::uint32_t top, std::uint32_t length = 480)
    {
        editor.SetTrkTypePrivate(track, trktype::midi);
        CTrk& t = trk(track);
        return {&t, t.NewAdd(top, top + length, editor.NewAddTailRealBlk(), blktype::real)};
    }
    static POSITION add(const BlkRef& ref, _EDT_EVNT rec)
    {
        rec.time += List<CBlk>::get(ref.blk)->GetTimeTop();
        return List<CBlk>::get(ref.blk)->InsEvnt(rec);
    }
    /// In the order of their tracks, the master's left out.
    std::vector<BlkRef> allBlks()
    {
        std::vector<BlkRef> all;
        for (int n = 1; n < trackCount; ++n)
            for (CBlk* b = trk(n).blocks().head(); b; b = List<CBlk>::next(b)) all.push_back({&trk(n), b});
        return all;
    }
    Bytes image(const std::vector<BlkRef>& blks)
    {
        Bytes out;
        EXPECT_TRUE(ClipWriter(editor).SetClipTr9_blk(out, blks));
        return out;
    }
    bool paste(const Bytes& image, int track = 0, std::uint32_t time = 0)
    {
        // Exactly as long as the image, so that the sanitizers see a read too far.
        const std::vector<std::uint8_t> bytes(image);
        BlkClipReader reader(editor, strings, bytes);
        const bool done = reader.ClipPaste_blk(time, track);
        placed = reader.placed();
        return done;
    }
    std::vector<int> placedTracks() const
    {
        std::vector<int> numbers;
        for (const BlkRef& ref : placed) numbers.push_back(Song::numberOf(ref.trk));
        return numbers;
    }
    std::vector<BlkRef> placed;
};

/// Places, types, names and events of the blocks of tracks 1 to 100.
std::vector<std::string> blockLines(ClipBench& bench)
{
    std::vector<std::string> lines;
    for (const BlkRef& ref : bench.allBlks()) {
        const CBlk& b = *List<CBlk>::get(ref.blk);
        Bytes events;
        ByteWriter out(events);
        EXPECT_TRUE(CnvBlk(*b.GetRealBlk(), out));
        lines.push_back(std::to_string(Song::numberOf(ref.trk)) + ' ' + std::to_string(b.GetTimeTop()) + ' '
                        + std::to_string(b.GetTimeEnd()) + ' ' + b.GetName() + ' '
                        + std::string(events.begin(), events.end()));
    }
    return lines;
}

/// Whether ports stand as events, which no reader keeps.
bool hasPorts(const Song& song)
{
    for (const CRealBlk* real = song.realBlks().head(); real; real = List<CRealBlk>::next(real))
        for (const CEvnt* e = real->events().head(); e; e = List<CEvnt>::next(e))
            if (e->GetStatus() == status::metaEvent && isPort(e->payload())) return true;
    return false;
}

} // namespace

TEST(ClipImage, HasTheBytesThatOtherProgramsRead)
{
    ClipBench bench;
    const BlkRef ref = bench.blk(2, 960);
    List<CBlk>::get(ref.blk)->SetName("ab");
    bench.trk(2).SetTranspose(-1);
    const POSITION note = ClipBench::add(ref, noteRec(200, 7));

    CPosList places;
    for (const std::uint32_t time : {200U, 100U, 330U}) places.NewAddTail()->Set(ref.trk, ref.blk, note, time);
    const Bytes event{0x90, 60, 100, 0, 0, 0, 7};
    const Bytes events = join({{0x81, 0x48}, event, {0}, event, {0x81, 0x02}, event});
    Bytes out;
    for (const ClipKind kind : {ClipKind::evnts, ClipKind::mstrEvnts, ClipKind::guitar}) {
        ASSERT_TRUE(ClipWriter(bench.editor).SetClipTr9(out, places, kind));
        EXPECT_EQ(SmfBytes().chunk(events, kind == ClipKind::guitar ? "TR9G" : "TR9C").bytes(), out);
    }
    EXPECT_EQ(3, bench.progress.begun);
    EXPECT_EQ(3, bench.progress.ended);

    SmfBytes body;
    body.id("TR9H").number(1, 4).chunk(join({{0x81, 0x48}, event}), "TR9B").number(2, 1);
    body.raw({1, 0, 1, 0xFF, 0, 0, 1, 0, 0, 0, 0, 0, 0x7F}).raw(Bytes(19));
    body.raw({1, 0}).number(960, 4).number(1440, 4).number(1, 4).raw(Bytes(18)).raw({2, 'a', 'b'});
    SmfBytes image;
    image.chunk(body.bytes(), "TR9I");
    for (const char* list : {"SCRS", "SCRA", "SCRD"}) image.chunk(Bytes(4), list);
    EXPECT_EQ(image.bytes(), bench.image({ref}));

    CEvnt* formless = nullptr;
    List<CBlk>::get(ref.blk)->GetRealBlk()->NewAddTail(&formless);
    places.NewAddTail()->Set(ref.trk, ref.blk, formless, 400);
    EXPECT_FALSE(ClipWriter(bench.editor).SetClipTr9(out, places, ClipKind::evnts));
    EXPECT_TRUE(out.empty());
    EXPECT_EQ(4, bench.progress.ended);
}

TEST(ClipImage, SongsArriveEqualAndGoWithOneUndo)
{
    int songs = 0;
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        ClipBench from;
        Dice dice(seed);
        if (!from.load(randomSmf(dice)) || from.allBlks().empty() || hasPorts(from.editor.song())) continue;
        const Bytes image = from.image(from.allBlks());
        ClipBench to;
        const auto empty = to.dump();
        ASSERT_TRUE(to.paste(image, 0, List<CBlk>::get(from.allBlks()[0].blk)->GetTimeTop()));
        const auto song = blockLines(to);
        ASSERT_TRUE(blockLines(from) == song);
        ASSERT_EQ(1, to.editor.GetUndoRedoCount());
        std::string title;
        ASSERT_TRUE(to.editor.IsEnableUndo(title) && title == "ﾌﾞﾛｯｸ貼り付け");
        ASSERT_TRUE(to.editor.UndoNode());
        ASSERT_TRUE(to.allBlks().empty());
        ASSERT_TRUE(to.editor.RedoNode());
        ASSERT_TRUE(blockLines(to) == song);

        // The events one by one are the same as well.
        for (const BlkRef& ref : from.allBlks()) {
            CPosList places;
            std::vector<_EDT_EVNT> expected;
            const List<CEvnt>& events = List<CBlk>::get(ref.blk)->GetRealBlk()->events();
            for (CEvnt* e = events.head(); e; e = List<CEvnt>::next(e)) {
                places.NewAddTail()->Set(ref.trk, ref.blk, e, e->GetTime());
                e->Get(expected.emplace_back());
            }
            Bytes out;
            ASSERT_TRUE(ClipWriter(from.editor).SetClipTr9(out, places, ClipKind::evnts));
            EvntClipReader reader(out);
            ASSERT_TRUE(reader.ChkTr9c(ClipKind::evnts));
            _EDT_EVNT rec;
            for (const _EDT_EVNT& want : expected) {
                ASSERT_TRUE(reader.GetEvntTr9c(rec));
                ASSERT_TRUE(want.time == rec.time && want.status == rec.status && want.gateTime == rec.gateTime);
                ASSERT_TRUE(want.post1 == rec.post1 && want.post2 == rec.post2 && want.metaType == rec.metaType);
                ASSERT_TRUE(std::equal(want.data, want.data + want.szData, rec.data, rec.data + rec.szData));
            }
            ASSERT_FALSE(reader.GetEvntTr9c(rec));
            ASSERT_TRUE(reader.ok());
        }
        ++songs;
    }
    EXPECT_GT(songs, 50);
}

TEST(ClipPaste, PutsBlocksOntoTracksAndTimes)
{
    struct Case {
        std::vector<int> from;
        int onto;
        std::vector<int> to;
    };
    const std::vector<Case> cases{{{5, 7}, 20, {20, 22}}, {{1, 2}, 100, {100, 100}}, {{7, 5}, 2, {2, 1}},
                                  {{7, 5}, 1, {1, 1}},    {{5, 7}, 0, {5, 7}},       {{100}, 1, {1}}};
    for (const Case& c : cases) {
        ClipBench bench;
        std::vector<BlkRef> blks;
        for (const int track : c.from) blks.push_back(bench.blk(track, 960));
        ASSERT_TRUE(bench.paste(bench.image(blks), c.onto, 100));
        EXPECT_EQ(c.to, bench.placedTracks());
    }

    ClipBench bench;
    const std::uint32_t last = 0xFFFF'FFFF;
    const Bytes image = bench.image({bench.blk(1, 960), bench.blk(1, 480, 100), bench.blk(1, 1920, 50)});
    for (const auto& [time, spans] : std::vector<std::pair<std::uint32_t, std::vector<std::uint32_t>>>{
             {960, {960, 1440, 480, 580, 1920, 1970}},
             {100, {100, 580, 0, 100, 1060, 1110}},
             {last - 500, {last - 500, last - 20, last - 980, last - 880, last, last}}}) {
        ASSERT_TRUE(bench.paste(image, 9, time));
        std::vector<std::uint32_t> got;
        for (const BlkRef& ref : bench.placed) {
            got.push_back(List<CBlk>::get(ref.blk)->GetTimeTop());
            got.push_back(List<CBlk>::get(ref.blk)->GetTimeEnd());
        }
        EXPECT_EQ(spans, got);
    }
}

TEST(ClipPaste, LeavesOutWhatTheTrackDoesNotTake)
{
    ClipBench from;
    const BlkRef midi = from.blk(1, 0);
    const BlkRef third = from.blk(3, 0);
    from.editor.SetTrkTypePrivate(2, trktype::wave);
    const BlkRef wave{&from.trk(2),
                      from.trk(2).NewAdd(0, 100, from.editor.NewAddTailRealBlk(), blktype::real, "sound")};
    const Bytes image = from.image({midi, wave, third});

    ClipBench to;
    to.editor.SetTrkType(2, trktype::unused);
    ASSERT_TRUE(to.paste(image));
    EXPECT_EQ((std::vector<int>{1, 2, 3}), to.placedTracks());
    EXPECT_EQ(trktype::wave, to.trk(2).GetType()) << "an unused track takes the type";
    EXPECT_TRUE(to.user.messages.empty());

    to.editor.SetTrkType(5, trktype::wave);
    to.editor.SetTrkType(6, trktype::midi);
    const std::uint32_t reals = to.editor.GetRealBlkCount();
    ASSERT_TRUE(to.paste(image, 5, 960));
    EXPECT_EQ((std::vector<int>{7}), to.placedTracks());
    EXPECT_EQ((std::vector<int>{2903, 2903}), to.user.messages) << "one for each";
    EXPECT_EQ(reals + 1, to.editor.GetRealBlkCount());
}

TEST(ClipPaste, BrokenImagesChangeNothing)
{
    ClipBench from;
    const BlkRef ref = from.blk(1, 0);
    ClipBench::add(ref, noteRec(0, 100));
    ClipBench::add(ref, bytesRec(0xF0, 10, {1, 2, 3, 0xF7}));
    const Bytes whole = from.image({ref, from.blk(2, 480)});
    const std::size_t lists = whole.size() - 36;

    ClipBench to;
    const auto song = to.dump();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        // A list that does not even begin may be missing.
        const bool isWhole = length >= lists && (length - lists) % 12 < 4;
        ASSERT_EQ(isWhole, to.paste(cut)) << length;
        if (isWhole) to.editor.UndoNode();
        if (isWhole) to.editor.RemoveScratch();
        if (isWhole) to.editor.InitEditor();
        ASSERT_EQ(song, to.dump()) << length;
        ASSERT_EQ(0, to.editor.GetUndoRedoCount());
    }
    Bytes unequal = whole;
    unequal[lists + 11] = 1; // an entry in one of the three lists
    EXPECT_FALSE(to.paste(unequal));
    Bytes many = whole;
    std::fill_n(many.begin() + 12, 4, std::uint8_t{0xFF}); // blocks
    EXPECT_FALSE(to.paste(many));
    EXPECT_EQ(song, to.dump());
    EXPECT_TRUE(to.user.messages.empty());

    const Bytes events = SmfBytes().chunk({0, 0x90, 60, 100, 0, 0, 0, 7, 5, 0xB0, 7}, "TR9C").bytes();
    for (std::size_t length = 0; length <= events.size(); ++length) {
        const Bytes cut(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(length));
        EvntClipReader reader{cut};
        const bool is = reader.ChkTr9c(ClipKind::evnts);
        ASSERT_EQ(length == events.size(), is);
        _EDT_EVNT rec;
        ASSERT_EQ(is, is && reader.GetEvntTr9c(rec));
        ASSERT_FALSE(is && reader.GetEvntTr9c(rec));
        ASSERT_FALSE(reader.ok());
    }
    EXPECT_FALSE(EvntClipReader(events).ChkTr9c(ClipKind::guitar));
}

TEST(ClipPaste, LinksToTheScoreStayBehind)
{
    ClipBench from;
    from.score.load(linkBody); // any bytes count as a score
    const BlkRef ref = from.blk(1, 0);
    const std::vector<std::uint8_t> body(std::begin(linkBody), std::end(linkBody));
    const POSITION link = ClipBench::add(ref, bytesRec(0xFF, 0, body, 0x7F));
    ClipBench::add(ref, noteRec(10, 100));

    ClipBench to;
    ASSERT_TRUE(to.paste(from.image({ref})));
    EXPECT_EQ(1U, to.editor.GetRealBlkCount() - 1);
    EXPECT_EQ(1U, List<CBlk>::get(to.placed.at(0).blk)->GetRealBlk()->GetNum());

    CPosList places;
    places.NewAddTail()->Set(ref.trk, ref.blk, link, 0);
    Bytes out;
    ASSERT_TRUE(ClipWriter(from.editor).SetClipTr9(out, places, ClipKind::evnts));
    EXPECT_EQ(SmfBytes().chunk({}, "TR9C").bytes(), out);

    from.score.clear(); // then the event is one as any other, but would be a link where it goes
    ASSERT_TRUE(to.paste(from.image({ref}), 5));
    EXPECT_EQ(1U, List<CBlk>::get(to.placed.at(0).blk)->GetRealBlk()->GetNum());
}

} // namespace tessaro::test
