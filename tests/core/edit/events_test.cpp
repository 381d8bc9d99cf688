// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "core/fakes.h"
#include "core/model/meta.h"
#include "core/song_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessaro::test {
namespace {

constexpr std::uint32_t top = 960;
constexpr std::uint32_t latest = 0xFFFFFFFF;

/// A song with a block of type 1 from tick 960 to 2880 on track 1, its ghost on track 2, and a wave track.
struct Bench : EditorBench {
    FakeView view;
    CEditor& e = editor;
    POSITION master = e.GetTrkPos(0);
    POSITION masterBlk = e.GetHeadBlkPos(0);
    POSITION trk = e.GetTrkPos(1);
    POSITION blk = nullptr;
    POSITION ghostTrk = e.GetTrkPos(2);
    POSITION ghost = nullptr;
    std::vector<std::uint8_t> body;

    Bench()
    {
        List<CBlk>::get(masterBlk)->SetTimeEnd(96000);
        e.NewBlk(1, top);
        blk = e.GetHeadBlkPos(1);
        block()->SetTimeEnd(2880);
        List<CTrk>::get(ghostTrk)->NewAdd(9600, 11520, block()->GetRealBlk(), blktype::ghost);
        ghost = e.GetHeadBlkPos(2);
        e.SetTrkTypePrivate(20, trktype::wave);
        e.NewBlk(20, 0);
        e.addObserver(&view);
    }

    [[nodiscard]] CBlk* block() const { return List<CBlk>::get(blk); }
    static CEvnt& at(POSITION pos) { return *List<CEvnt>::get(pos); }

    _EDT_EVNT meta(std::uint8_t type, std::uint32_t time, std::vector<std::uint8_t> bytes)
    {
        body = std::move(bytes);
        return bytesRec(0xFF, time, body, type);
    }
    _EDT_EVNT signature(std::uint32_t time, std::uint8_t num, std::uint8_t den = 2)
    {
        return meta(meta::timeSignature, time, {num, den, 24, 8});
    }
    _EDT_EVNT tempo(std::uint32_t time) { return meta(meta::tempo, time, {7, 0, 0}); }

    POSITION put(const _EDT_EVNT& rec)
    {
        POSITION evnt = nullptr;
        EXPECT_TRUE(e.InsEvnt(trk, blk, rec, evnt));
        return evnt;
    }
    POSITION putMaster(const _EDT_EVNT& rec)
    {
        POSITION evnt = nullptr;
        EXPECT_TRUE(e.InsEvnt(master, masterBlk, rec, evnt));
        view.codes.clear();
        return evnt;
    }

    [[nodiscard]] POSITION signatureAt(std::uint32_t time) const
    {
        for (CEvnt* ev = e.song().masterReal()->events().head(); ev; ev = List<CEvnt>::next(ev))
            if (ev->isMeta(meta::timeSignature) && ev->GetTime() == time) return ev;
        return nullptr;
    }
    [[nodiscard]] std::vector<std::uint32_t> times(std::uint8_t type) const
    {
        std::vector<std::uint32_t> all;
        const CRealBlk& real = *e.song().masterReal();
        for (const CEvnt* ev = real.events().head(); ev; ev = List<CEvnt>::next(ev))
            if (ev->isMeta(type)) all.push_back(ev->GetTime());
        return all;
    }
};

TEST(Events, EachKindHasItsTracks)
{
    const auto enabled = [](int trk, std::uint8_t type, std::uint8_t status, std::uint8_t metaType = 0) {
        _EDT_EVNT rec;
        rec.status = status;
        rec.metaType = metaType;
        return CEditor::IsInsEnable(trk, type, rec);
    };
    for (int status = 0; status < 0x100; ++status) {
        const auto st = static_cast<std::uint8_t>(status);
        const int kind = st & 0xF0;
        const bool wave = kind == 0x40;
        const bool channel = kind != 0xF0 && kind != 0x70 && kind != 0x80 && !wave;
        const bool midi = channel || st == 0xF0 || st == 0xF7;
        EXPECT_EQ(enabled(1, trktype::midi, st), midi || st == 0xFF) << status;
        EXPECT_EQ(enabled(1, trktype::wave, st), wave) << status;
        EXPECT_EQ(enabled(1, trktype::unused, st), false) << status;
        EXPECT_EQ(enabled(0, trktype::midi, st), st == 0xFF) << status;
    }
    for (const std::uint8_t type : {meta::copyright, meta::tempo, meta::timeSignature}) {
        EXPECT_TRUE(enabled(0, trktype::midi, 0xFF, type));
        EXPECT_FALSE(enabled(1, trktype::midi, 0xFF, type));
    }
    EXPECT_TRUE(enabled(0, trktype::midi, 0xFF, meta::keySignature));
    EXPECT_FALSE(enabled(1, trktype::wave, 0xFF, meta::text));
}

TEST(Events, InsertionRaisesTheTimeAndKeepsEntryOrder)
{
    Bench b;
    b.transport.playing = true;
    const POSITION first = b.put(noteRec(100, 10, 1));
    const POSITION second = b.put(noteRec(top, 10, 2));
    EXPECT_EQ(b.at(first).GetTime(), 0U);
    EXPECT_EQ(first->next, second);
    EXPECT_EQ(b.view.codes, (std::vector{hint::insEvnt, hint::insEvnt}));
    EXPECT_EQ(b.transport.calls, (std::vector<std::string>{"stop"})) << "it runs on when the step ends";

    POSITION none = nullptr;
    EXPECT_FALSE(b.e.InsEvnt(b.ghostTrk, b.ghost, noteRec(9600, 10)));
    EXPECT_FALSE(b.e.InsEvnt(b.master, b.masterBlk, noteRec(0, 10)));
    EXPECT_FALSE(b.e.InsEvnt(b.trk, nullptr, noteRec(0, 10)));
    EXPECT_FALSE(b.e.InsEvnt(b.trk, b.blk, b.meta(meta::keySignature, 2000, {1}), none)) << "a refused body";
    EXPECT_EQ(b.block()->GetNum(), 2U);
    b.e.InsEvnt(b.master, b.masterBlk, b.meta(meta::keySignature, 2000, {1, 0}));
    EXPECT_TRUE(b.e.flags().keyChanged);
    EXPECT_EQ(b.at(b.putMaster(b.meta(meta::copyright, 5000, {'c'}))).GetTime(), 0U);
}

TEST(Events, InsertionAndOverwritingGrowTheBlockAndItsGhosts)
{
    Bench b;
    ASSERT_TRUE(b.e.InsEvnt(b.trk, b.blk, noteRec(2400, 960)));
    EXPECT_EQ(b.block()->GetTimeEnd(), 3360U);
    EXPECT_EQ(b.e.GetBlkTimeEnd(2, 0), 9600U + 2400);
    ASSERT_TRUE(b.e.SetEvnt(b.trk, b.blk, b.block()->GetHeadPos(), noteRec(2400, 1440)));
    EXPECT_EQ(b.block()->GetTimeEnd(), 3840U);
    EXPECT_EQ(b.e.GetBlkTimeEnd(2, 0), 9600U + 2880);
    ASSERT_TRUE(b.e.SetEvnt(b.trk, b.blk, b.block()->GetHeadPos(), noteRec(2400, 1)));
    EXPECT_EQ(b.block()->GetTimeEnd(), 3840U) << "it never shrinks";
    ASSERT_TRUE(b.e.SetLocation(b.trk, b.blk, b.block()->GetHeadPos(), 4800));
    EXPECT_EQ(b.block()->GetTimeEnd(), 4801U);
}

TEST(Events, SignaturesStandOnBarLinesOneATick)
{
    Bench b;
    const POSITION moved = b.putMaster(b.signature(2 * 1920 + 1, 3));
    EXPECT_EQ(b.at(moved).GetTime(), 3U * 1920) << "from the middle of measure 3 to measure 4";
    b.putMaster(b.signature(3 * 1920 + 1440, 5));
    EXPECT_EQ(b.times(meta::timeSignature), (std::vector<std::uint32_t>{0, 5760, 7200}));
    expectUndoable(b.e, [&] {
        // The second one at a tick replaces the first: the one behind it was counted in the replaced measure.
        ASSERT_TRUE(b.e.InsEvnt(b.master, b.masterBlk, b.signature(5760, 7)));
    });
    EXPECT_EQ(b.times(meta::timeSignature), (std::vector<std::uint32_t>{0, 5760, 5760 + 7 * 480}));
    POSITION none = nullptr;
    EXPECT_FALSE(b.e.InsEvnt(b.master, b.masterBlk, b.signature(latest, 4), none)) << "no bar line is left";
}

TEST(Events, LaterSignaturesKeepTheirMeasures)
{
    using Times = std::vector<std::uint32_t>;
    using Codes = std::vector<int>;
    struct Case {
        const char* what;
        void (*edit)(Bench&);
        Times times;
        Codes codes;
    };
    const Case cases[] = {
        {"the first one overwritten; its record moves it nowhere",
         [](Bench& b) { b.e.SetEvnt(b.master, b.masterBlk, b.signatureAt(0), b.signature(777, 5)); },
         {0, 4800, 7680},
         {hint::evntChng, hint::tsChng}},
        {"the last one overwritten",
         [](Bench& b) { b.e.SetEvnt(b.master, b.masterBlk, b.signatureAt(6720), b.signature(6720, 7, 3)); },
         {0, 3840, 6720},
         {hint::evntChng, hint::measChng}},
        {"one more: the measure between is one of 2/4 now",
         [](Bench& b) { b.e.InsEvnt(b.master, b.masterBlk, b.signature(1920, 2)); },
         {0, 1920, 2880, 5760},
         {hint::tsChng}},
        {"a second one at a tick, of the same length",
         [](Bench& b) { b.e.InsEvnt(b.master, b.masterBlk, b.signature(3840, 6, 3)); },
         {0, 3840, 6720},
         {hint::delEvnt, hint::insEvnt, hint::measChng}},
        {"one deleted: its measures are those of the one before",
         [](Bench& b) { b.e.DeleteEvnt(b.master, b.masterBlk, b.signatureAt(3840)); },
         {0, 7680},
         {hint::delEvnt, hint::tsChng}},
        {"the last one deleted",
         [](Bench& b) { b.e.DeleteEvnt(b.master, b.masterBlk, b.signatureAt(6720)); },
         {0, 3840},
         {hint::delEvnt, hint::measChng}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Bench b;
        b.putMaster(b.signature(3840, 3));
        b.putMaster(b.signature(6720, 4));
        for (const std::uint32_t time : {3840U, 4000U}) b.putMaster(b.meta(meta::text, time, {'x'}));
        expectUndoable(b.e, [&] {
            c.edit(b);
            EXPECT_EQ(b.view.codes, c.codes);
            EXPECT_EQ(b.e.flags().measChanged, c.codes == (Codes{hint::evntChng, hint::measChng}));
        });
        EXPECT_EQ(b.times(meta::timeSignature), c.times);
        EXPECT_EQ(b.times(meta::text), (Times{3840, 4000})) << "other events stay";
        _EDT_MEAS at;
        b.e.TimeToMeas(c.times.back(), at);
        EXPECT_EQ(at.meas, c.times.back() == 3840 ? 3U : 5U);
    }
}

TEST(Events, AShiftOfSignaturesIsRecordedAsDeletionsAndThenInsertions)
{
    Bench b;
    b.putMaster(b.signature(3840, 3));
    b.putMaster(b.signature(6720, 4));
    const auto times = [&] { return b.times(meta::timeSignature); };
    const POSITION last = b.signatureAt(6720);
    b.e.ChngTs(b.master, b.masterBlk, last, 6720, 4, 2, &b.at(last));
    EXPECT_TRUE(b.view.codes.empty()) << "the same values change nothing";
    b.e.UpdateTs(b.master, b.masterBlk, b.signatureAt(3840), 480);
    EXPECT_EQ(b.e.GetUndoRedoCount(), 0) << "outside of a step nothing is recorded";
    expectUndoable(b.e, [&] { b.e.UpdateTs(b.master, b.masterBlk, b.signatureAt(4320), -5000); });
    CUndoNode* step = nullptr;
    ASSERT_TRUE(b.e.GetUndoNode(0, &step));
    std::vector<UndoKind> kinds;
    for (const CUndo& change : step->changes) kinds.push_back(change.kind);
    EXPECT_EQ(kinds, (std::vector{UndoKind::evntDel, UndoKind::evntDel, UndoKind::evntIns, UndoKind::evntIns}));
    EXPECT_EQ(times(), (std::vector<std::uint32_t>{0, 0, 2200})) << "times stop at 0";

    CEvnt* odd = nullptr; // a body that only files have
    CRealBlk& real = *b.e.song().masterReal();
    real.New(&odd);
    const std::uint8_t one[] = {3};
    ASSERT_TRUE(odd->SetMeta(1920, meta::timeSignature, 1, one, 0));
    real.Add(1920, odd);
    b.e.ChngTs(b.master, b.masterBlk, odd, 1920, 4, 2, odd);
    b.e.UpdateTs(b.master, b.masterBlk, odd, 1920);
    EXPECT_EQ(times(), (std::vector<std::uint32_t>{0, 0, 1920, 4120}));
    _EDT_EVNT rec;
    real.GetEvnt(odd, rec);
    b.e.DelTs(b.master, b.masterBlk, odd, rec);
    EXPECT_EQ(times(), (std::vector<std::uint32_t>{0, 0, 4120}));
}

TEST(Events, ReTimingIsUndoneExactlyAtEqualTicks)
{
    Bench b;
    b.putMaster(b.signature(1920, 3));
    b.putMaster(b.signature(1920 + 2 * 1440, 4));
    b.putMaster(b.signature(1920 + 2 * 1440 + 1920, 2));
    // Text where signatures stand, leave and arrive.
    for (const std::uint32_t t : {0U, 1920U, 2400U, 3840U, 4800U, 5760U, 6720U}) {
        b.putMaster(b.meta(meta::text, t, {'a'}));
        b.putMaster(b.meta(meta::text, t, {'b'}));
    }
    expectUndoable(b.e, [&] { b.e.InsEvnt(b.master, b.masterBlk, b.signature(0, 5)); });
    expectUndoable(b.e, [&] { b.e.SetEvnt(b.master, b.masterBlk, b.signatureAt(0), b.signature(0, 4)); });
    expectUndoable(b.e, [&] { b.e.DeleteEvnt(b.master, b.masterBlk, b.signatureAt(1920)); });
    EXPECT_EQ(b.times(meta::timeSignature), (std::vector<std::uint32_t>{0, 5760, 7680})) << "still measures 4 and 5";
    expectUndoable(b.e, [&] {
        b.e.InsEvnt(b.master, b.masterBlk, b.signature(3000, 6, 3));
        b.e.InsEvnt(b.master, b.masterBlk, b.signature(3840, 2));
        b.e.DeleteEvnt(b.master, b.masterBlk, b.signatureAt(3840)->prev);
    });
    while (b.e.GetUndoRedoIndex() >= 0) ASSERT_TRUE(b.e.UndoNode());
    EXPECT_EQ(b.times(meta::timeSignature), (std::vector<std::uint32_t>{0, 1920, 4800, 6720}));
}

TEST(Events, OverwritingIsUndoneAndRefusedAsAWhole)
{
    Bench b;
    const POSITION note = b.put(noteRec(1000, 10));
    const POSITION text = b.put(b.meta(meta::text, 1000, {'x'}));
    b.view.codes.clear();
    expectUndoable(b.e, [&] {
        ASSERT_TRUE(b.e.SetEvnt(b.trk, b.blk, note, noteRec(1000, 20, 61)));
        // Another time is a move as well, behind what stands there.
        ASSERT_TRUE(b.e.SetEvnt(b.trk, b.blk, note, noteRec(1040, 20, 62)));
    });
    EXPECT_EQ(text->next, note);
    const std::string before = picture(b.e);
    const int steps = b.e.GetUndoRedoCount();
    {
        const UndoScope step(b.e, "refused");
        EXPECT_FALSE(b.e.SetEvnt(b.trk, b.blk, text, b.meta(meta::keySignature, 1000, {1, 2, 3})));
        EXPECT_FALSE(b.e.SetEvnt(b.trk, b.blk, text, b.signature(1000, 3)));
        EXPECT_FALSE(b.e.SetEvnt(b.ghostTrk, b.ghost, note, noteRec(9600, 30)));
        EXPECT_FALSE(b.e.SetEvnt(b.trk, b.blk, nullptr, noteRec(1000, 30)));
    }
    EXPECT_EQ(picture(b.e), before);
    EXPECT_EQ(b.e.GetUndoRedoCount(), steps) << "nothing was recorded";
    // A record may borrow from the very event that it overwrites.
    _EDT_EVNT own;
    b.at(text).Get(own);
    own.time += top;
    EXPECT_TRUE(b.e.SetEvnt(b.trk, b.blk, text, own));
    EXPECT_EQ(picture(b.e), before);
}

TEST(Events, MovesWarnOnceAStepOfWhatStays)
{
    Bench b;
    const POSITION tempo = b.putMaster(b.tempo(960));
    const POSITION signature = b.putMaster(b.signature(1920, 3));
    const POSITION copyright = b.putMaster(b.meta(meta::copyright, 0, {'c'}));
    const POSITION key = b.putMaster(b.meta(meta::keySignature, 0, {1, 0}));
    expectUndoable(b.e, [&] {
        EXPECT_FALSE(b.e.SetLocation(b.master, b.masterBlk, signature, 0));
        EXPECT_FALSE(b.e.SetLocation(b.master, b.masterBlk, copyright, 480));
        b.view.codes.clear();
        EXPECT_TRUE(b.e.SetLocation(b.master, b.masterBlk, tempo, 1920));
        EXPECT_TRUE(b.e.SetLocation(b.master, b.masterBlk, key, 1));
        EXPECT_TRUE(std::count(b.view.codes.begin(), b.view.codes.end(), hint::keyChng));
        b.e.flags() = {};
        EXPECT_TRUE(b.e.SetEvnt(b.master, b.masterBlk, key, b.meta(meta::keySignature, 0, {2, 0})));
        EXPECT_TRUE(b.e.flags().keyChanged);
    });
    EXPECT_EQ(b.user.messages, (std::vector{925}));
    EXPECT_EQ(signature->next, tempo) << "behind what stands at that tick";
    const POSITION note = b.put(noteRec(1500, 10));
    EXPECT_TRUE(b.e.SetLocation(b.trk, b.blk, note, 3));
    EXPECT_EQ(b.at(note).GetTime(), 0U);
    EXPECT_FALSE(b.e.SetLocation(b.ghostTrk, b.ghost, note, 10000));
    EXPECT_FALSE(b.e.SetLocation(b.trk, b.blk, nullptr, 0));
}

TEST(Events, TheFirstSignatureAndTempoStay)
{
    Bench b;
    const POSITION signature = b.e.GetHeadEvntPos(0, 0);
    const POSITION later = b.putMaster(b.tempo(480));
    {
        const UndoScope step(b.e, "nothing");
        b.e.DeleteEvnt(b.master, b.masterBlk, signature);
        b.e.DeleteEvnt(b.master, b.masterBlk, signature->next);
        b.e.DeleteEvnt(b.ghostTrk, b.ghost, later);
        b.e.DeleteEvnt(b.trk, b.blk, nullptr);
    }
    EXPECT_EQ(b.e.GetUndoRedoCount(), 0);
    expectUndoable(b.e, [&] { b.e.DeleteEvnt(b.master, b.masterBlk, later); });
    EXPECT_EQ(b.times(meta::tempo), (std::vector<std::uint32_t>{0}));
}

TEST(Events, RestsLeaveNoTraceInTheHistory)
{
    Bench b;
    b.transport.playing = true;
    _EDT_EVNT rest = noteRec(1000, 3000);
    rest.status = 0x03;
    {
        const UndoScope step(b.e, "rests");
        EXPECT_FALSE(b.e.InsRest(b.trk, b.blk, noteRec(1000, 10)));
        ASSERT_TRUE(b.e.InsRest(b.trk, b.blk, rest));
        EXPECT_EQ(b.block()->GetTimeEnd(), 4000U);
        const POSITION pos = b.block()->GetHeadPos();
        EXPECT_FALSE(b.e.SetEvnt(b.trk, b.blk, pos, noteRec(1000, 10))) << "it does not become a note";
        ASSERT_TRUE(b.e.SetLocation(b.trk, b.blk, pos, 1200));
        rest.time = 1200;
        ASSERT_TRUE(b.e.SetEvnt(b.trk, b.blk, pos, rest));
        EXPECT_EQ(b.at(pos).GetTime(), 240U);
        b.block()->playState().playState = PlayState::playing;
        ASSERT_TRUE(b.e.DelRest(b.trk, b.blk, pos));
        EXPECT_EQ(b.block()->playState().playState, PlayState::notSetUp);
        EXPECT_TRUE(b.transport.playing) << "it runs on at once";
    }
    EXPECT_EQ(b.block()->GetNum(), 0U);
    EXPECT_EQ(b.e.GetUndoRedoCount(), 0);
    const auto& codes = b.view.codes;
    EXPECT_TRUE(std::count(codes.begin(), codes.end(), hint::insRest));
    EXPECT_TRUE(std::count(codes.begin(), codes.end(), hint::delEvnt));
}

TEST(Events, RecordingLeavesTheTransportAlone)
{
    Bench b;
    b.transport.playing = true;
    ASSERT_TRUE(b.e.RecEvnt(b.trk, b.blk, noteRec(0, 2400)));
    expectUndoable(b.e, [&] {
        ASSERT_TRUE(b.e.RecEvnt(b.trk, b.blk, noteRec(0, 100)));
        EXPECT_TRUE(b.transport.playing);
        ASSERT_TRUE(b.e.RecSetEvnt(b.trk, b.blk, b.block()->GetTailPos(), noteRec(top + 7, 9000, 61)));
        EXPECT_TRUE(b.transport.playing);
    });
    EXPECT_EQ(b.block()->GetTimeEnd(), 3360U) << "an insertion grows the block, overwriting does not";
    EXPECT_EQ(b.e.GetBlkTimeEnd(2, 0), 9600U + 2400);
    EXPECT_EQ(b.at(b.block()->GetTailPos()).GetTime(), 0U);

    b.view.codes.clear();
    const POSITION quick = CEditor::RealRecEvnt(b.block(), noteRec(0, 9000));
    ASSERT_TRUE(quick);
    EXPECT_EQ(b.block()->GetTailPos(), quick);
    EXPECT_TRUE(b.view.codes.empty());
    EXPECT_FALSE(CEditor::RealRecEvnt(List<CBlk>::get(b.ghost), noteRec(9600, 1)));
    EXPECT_FALSE(b.e.RecEvnt(b.ghostTrk, b.ghost, noteRec(9600, 1)));
    ASSERT_TRUE(b.e.RecEvnt(b.trk, b.blk, noteRec(latest - 1, latest)));
    EXPECT_EQ(b.block()->GetTimeEnd(), latest) << "ends stop at the end of time";
}

TEST(Events, NotesOfOnePitchJoin)
{
    Bench b;
    const POSITION early = b.put(noteRec(1000, 100));
    const POSITION late = b.put(noteRec(1200, 300));
    const POSITION other = b.put(noteRec(1200, 300, 61));
    EXPECT_FALSE(b.e.NoteApp(b.trk, b.blk, early, late));
    EXPECT_FALSE(b.e.NoteApp(b.trk, b.blk, other, early));
    EXPECT_FALSE(b.e.NoteApp(b.trk, b.blk, early, early));
    EXPECT_FALSE(b.e.NoteApp(b.ghostTrk, b.ghost, late, early));
    expectUndoable(b.e, [&] { ASSERT_TRUE(b.e.NoteApp(b.trk, b.blk, late, early)); });
    EXPECT_EQ(b.at(early).GetGateTime(), 500U);
    const POSITION inner = b.put(noteRec(1100, 10));
    ASSERT_TRUE(b.e.NoteApp(b.trk, b.blk, inner, early));
    EXPECT_EQ(b.at(early).GetGateTime(), 500U) << "an inner note changes nothing";
    EXPECT_EQ(b.block()->GetNum(), 2U);
}

TEST(Events, NotesDivideStrictlyInside)
{
    Bench b;
    const POSITION note = b.put(noteRec(1000, 100));
    for (const std::uint32_t t : {999U, 1000U, 1100U, 1101U}) EXPECT_FALSE(b.e.NoteDiv(b.trk, b.blk, note, t)) << t;
    EXPECT_FALSE(b.e.NoteDiv(b.ghostTrk, b.ghost, note, 9700));
    expectUndoable(b.e, [&] { ASSERT_TRUE(b.e.NoteDiv(b.trk, b.blk, note, 1001)); });
    EXPECT_EQ(b.at(note).GetGateTime(), 1U);
    EXPECT_EQ(b.at(note->next).GetTime(), 41U);
    EXPECT_EQ(b.at(note->next).GetGateTime(), 99U);
    EXPECT_EQ(b.at(note->next).GetPost2(), 100);

    const POSITION endless = b.put(noteRec(latest - 10, 100));
    ASSERT_TRUE(b.e.NoteDiv(b.trk, b.blk, endless, latest));
    EXPECT_EQ(b.at(endless->next).GetGateTime(), 90U);
}

} // namespace
} // namespace tessaro::test
