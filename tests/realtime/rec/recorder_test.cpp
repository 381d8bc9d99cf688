// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ports/take_keeper.h"
#include "realtime/rec/record_bench.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>

namespace tessaro::test {

namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

/// The events of a block but for the two that a take begins with: time:status,data,data+gate.
std::string events(const CBlk& blk)
{
    std::string out;
    for (const CEvnt* e = blk.GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
        if (e->isMeta(1) && e->payload().empty()) continue;
        char text[64];
        std::snprintf(text, sizeof text, "%u:%02X,%u,%u+%u ", e->GetTime(), e->GetStatus(), e->GetPost1(),
                      e->GetPost2(), e->GetGateTime());
        out += text;
    }
    return out;
}

/// Plays while the song runs at one tick a millisecond, and stops. Strokes are separated by commas: milliseconds behind
/// the start, or "-" for before it, and bytes in hex.
void perform(RecordBench& bench, const std::string& strokes, int stopAt)
{
    int now = 0;
    const auto runTo = [&](int at) {
        bench.smc.smcPlayStart();
        bench.run(std::chrono::milliseconds(at - std::exchange(now, at)));
    };
    std::istringstream in(strokes);
    for (std::string stroke, at; std::getline(in, stroke, ',');) {
        std::istringstream words(stroke);
        words >> at >> std::hex;
        if (at != "-") runTo(std::stoi(at));
        Bytes bytes;
        for (unsigned byte = 0; words >> byte;) bytes.push_back(static_cast<std::uint8_t>(byte));
        bench.play(bytes);
    }
    runTo(stopAt);
    bench.smc.smcPlayStop();
    bench.end();
}

TEST(Recorder, EdgesOfATake)
{
    struct Case {
        const char* what;
        std::vector<std::uint8_t> channels; ///< of the armed tracks, 1 and on
        int punchIn;
        int punchOut; ///< 0 for no punch
        const char* strokes;
        std::vector<std::string> recorded; ///< on each track
    };
    const std::vector<std::uint8_t> one{0};
    const Case cases[] = {
        {"what comes at the start tick is before the take, and held notes begin there",
         one,
         0,
         0,
         "- 90 3C 64, - 90 3E 64, - 80 3E 0, - E0 1 2, - D0 9, - C0 5, 200 80 3C 0",
         {"0:C0,5,0+0 0:90,60,100+200 0:E0,1,2+0 "}},
        {"without anything behind the start nothing waits", one, 0, 0, "- 90 3C 64", {""}},
        {"one armed channel takes all", one, 0, 0, "100 95 3C 64, 150 95 3C 0", {"100:95,60,100+50 "}},
        {"several take their own, the first track of a channel",
         {1, 0, 1},
         0,
         0,
         "100 B0 7 1, 110 B1 7 2, 120 B2 7 3",
         {"110:B1,7,2+0 ", "100:B0,7,1+0 ", "none"}},
        {"held notes end with the take", one, 0, 0, "100 90 3C 1, 500 90 3D 1", {"100:90,60,1+400 500:90,61,1+1 "}},
        {"a punch keeps notes outside of it away, cuts those in it, and lets the rest through",
         one,
         1200,
         1300,
         "- B0 1 1, 100 90 3C 1, 150 80 3C 0, 160 B0 7 1, 200 90 3D 1, 300 90 3E 1, 350 80 3D 0",
         {"160:B0,7,1+0 200:90,61,1+100 "}},
        {"a punch just behind the start begins with what is held",
         one,
         1120,
         1300,
         "- 90 3C 1, 20 90 3D 1, 200 80 3C 0",
         {"120:90,60,1+80 "}},
        {"a punch at the start leaves out what was before", one, 1000, 1300, "- B0 1 1, 1 B0 2 2", {"1:B0,2,2+0 "}},
        {"a punch that ends before it begins is none",
         one,
         1300,
         1300,
         "100 90 3C 1, 150 80 3C 0",
         {"100:90,60,1+50 "}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RecordBench bench;
        bench.plainTime();
        std::vector<int> tracks;
        for (const std::uint8_t channel : c.channels) {
            tracks.push_back(static_cast<int>(tracks.size()) + 1);
            bench.editor.song().trk(tracks.back())->SetCh(channel);
        }
        bench.armTracks(tracks);
        bench.bind();
        bench.settings.setInt("System", "Real Rec Mode", c.punchOut ? 2 : 0);
        bench.settings.setInt("System", "Real Rec Punch In Time", c.punchIn);
        bench.settings.setInt("System", "Real Rec Punch Out Time", c.punchOut);
        ASSERT_TRUE(bench.begin(1000));
        perform(bench, c.strokes, 500);
        for (std::size_t n = 0; n < c.recorded.size(); ++n) {
            const CTrk& trk = *bench.editor.song().trk(tracks[n]);
            EXPECT_EQ(trk.IsEmpty() ? "none" : events(*trk.blocks().head()), c.recorded[n]);
        }
    }
}

TEST(Recorder, ALoopSizesTheBlockOnceAndPlaysWhatWasRecorded)
{
    RecordBench bench;
    bench.plainTime();
    bench.armTracks({1});
    bench.bind();
    const LoopRange loop{true, 1000, 2000};
    ASSERT_TRUE(bench.begin(1000, loop));
    bench.smc.smcPlayStart();
    const CBlk& blk = *bench.editor.song().trk(1)->blocks().head();
    EXPECT_EQ(bench.recorder.GetRecBlk(bench.editor.GetTrkPos(1)), &blk);
    bench.run(900ms);
    bench.play({0x90, 60, 1});
    bench.run(50ms);
    bench.passed(bench.smc.smcGetPlayCount());
    EXPECT_EQ(blk.GetTimeEnd(), 1000U);
    bench.run(250ms);
    bench.play({0x80, 60, 0});
    bench.run(50ms);
    bench.pump();
    bench.passed(bench.smc.smcGetPlayCount());
    EXPECT_EQ(blk.GetTimeEnd(), 2000U);
    EXPECT_TRUE(bench.smc.running()) << "sizing does not stop the song";
    const auto notesOfOnePass = [&bench] {
        bench.log.heard.clear();
        bench.run(1000ms);
        return std::ranges::count_if(bench.log.heard, [](const Heard& h) { return h.isNoteOn(); });
    };
    EXPECT_EQ(notesOfOnePass(), 1);
    const std::size_t changes = bench.editor.history().node(0)->changes.size();
    bench.passed(1000);
    EXPECT_EQ(bench.editor.history().node(0)->changes.size(), changes) << "sized once";
    bench.end();
    EXPECT_EQ(events(blk), "900:90,60,1+100 ") << "a note held over the wrap lasts to the loop's end";
    EXPECT_EQ(bench.selection.selected.size(), 1U);
    bench.smc.smcLocate(1000, false);
    bench.smc.smcPlayStart();
    EXPECT_EQ(notesOfOnePass(), 1) << "and is heard once";
}

TEST(Recorder, WhatIsOnItsWayAtTheEndIsTakenOnceAndFreedOnce)
{
    RecordBench bench;
    bench.plainTime();
    bench.armTracks({1});
    bench.bind();
    for (int take = 0; take < 4; ++take) {
        ASSERT_TRUE(bench.begin(0));
        bench.smc.smcPlayStart();
        bench.run(20ms);
        for (std::uint8_t n = 0; n < 120; ++n) bench.play({0xB0, n, 1});
        bench.run(20ms);
        bench.pump(static_cast<std::size_t>(take) * 30); // the rest comes when the next take has begun
        for (std::uint8_t n = 120; n < 128; ++n) bench.play({0xB0, n, 1});
        bench.smc.smcPlayStop();
        bench.end();
        bench.ended = false;
        const CBlk& blk = *bench.editor.song().trk(1)->blocks().tail();
        EXPECT_EQ(blk.GetRealBlk()->GetCount(0xB0), 128U);
    }
    bench.run(20ms);
    bench.pump();
    EXPECT_EQ(bench.loom.getLoomRecError(), 0);
    ASSERT_TRUE(bench.recorder.arm(bench.inbox));
    for (int n = 0; n < 599; ++n) {
        bench.play({0xB0, 1, 1});
        bench.run(1ms);
    }
    EXPECT_EQ(bench.loom.getLoomRecError(), 0) << "all entries have been freed";
}

TEST(Recorder, ALongSystemExclusiveComesWhole)
{
    RecordBench bench;
    bench.armTracks({1});
    bench.bind();
    ASSERT_TRUE(bench.begin(0));
    bench.smc.smcPlayStart();
    Bytes bytes(70'000, 0x11);
    bytes.front() = 0xF0;
    bytes.back() = 0xF7;
    bench.run(10ms);
    for (std::size_t at = 0; at < bytes.size(); at += 200) {
        bench.midi.sink->received(std::span{bytes}.subspan(at, std::min<std::size_t>(200, bytes.size() - at)),
                                  bench.clock.now());
        bench.run(4ms);
    }
    bench.end();
    const CEvnt& last = *bench.editor.song().trk(1)->blocks().head()->GetRealBlk()->events().tail();
    EXPECT_EQ(last.GetStatus(), 0xF0);
    EXPECT_EQ(Bytes(last.payload().begin(), last.payload().end()), Bytes(bytes.begin() + 1, bytes.end()));
}

/// Keeps the messages, and the calls of the keeper.
struct Witness final : UserPort, TakeKeeper {
    std::vector<int> messages;
    std::string journal;
    std::string calls;
    CEditor* editor = nullptr;
    void message(int id, MessageKind) override { messages.push_back(id); }
    void sentence(std::string_view, MessageKind) override {}
    bool ask(int) override { return false; }
    bool ask(std::string_view) override { return false; }
    void status(std::string_view) override {}
    std::string beginTake() override
    {
        calls += editor->IsUndoOpen() ? "begins late," : "begins,";
        return journal;
    }
    void endTake() override { calls += editor->IsUndoOpen() ? "ends early," : "ends,"; }
};

TEST(Recorder, RefusesWhatCannotBeRecorded)
{
    RecordBench bench;
    Witness witness;
    witness.editor = &bench.editor;
    Recorder recorder({bench.smc, bench.clock, bench.settings, witness, bench.strings});
    recorder.setKeeper(&witness);
    EXPECT_FALSE(recorder.arm(bench.inbox)) << "no song";
    bench.bind();
    EXPECT_FALSE(recorder.arm(bench.inbox)) << "no armed track";
    bench.editor.SetTrkTypePrivate(1, trktype::wave);
    bench.editor.SetTrkRec(1, true);
    EXPECT_FALSE(recorder.arm(bench.inbox)) << "waves come later";
    bench.armTracks({2});
    bench.settings.setInt("System", "Rec Mode", 1);
    EXPECT_FALSE(recorder.arm(bench.inbox)) << "no steps on waves";
    EXPECT_EQ(witness.messages, (std::vector<int>{992, 992, 991}));
    bench.settings.setInt("System", "Rec Mode", 0);

    ASSERT_TRUE(bench.editor.OpenUndoNode("another"));
    ASSERT_TRUE(recorder.arm(bench.inbox));
    EXPECT_FALSE(recorder.begin(0, {})) << "another step is open";
    EXPECT_FALSE(recorder.IsRecButton());
    bench.editor.CloseUndoNode();
    bench.play({0x90, 60, 1});
    bench.run(20ms);
    EXPECT_TRUE(bench.inbox.waiting.empty()) << "the engine has stopped recording";

    ASSERT_TRUE(recorder.arm(bench.inbox));
    bench.editor.SetTrkRec(2, false);
    EXPECT_FALSE(recorder.begin(0, {})) << "no block";
    EXPECT_EQ(bench.editor.GetUndoRedoCount(), 0);
    EXPECT_EQ(witness.calls, "begins,ends,");
    EXPECT_EQ(witness.messages.size(), 3U);
}

TEST(Recorder, AJournalGivesTheTakeAgain)
{
    const std::string path = std::filesystem::temp_directory_path() / ("take-" + std::to_string(::getpid()));
    std::string recorded;
    {
        RecordBench bench;
        Witness witness;
        witness.editor = &bench.editor;
        witness.journal = path;
        bench.recorder.setKeeper(&witness);
        bench.plainTime();
        bench.armTracks({1, 2});
        bench.editor.song().trk(2)->SetCh(1);
        bench.bind();
        ASSERT_TRUE(bench.begin(480));
        perform(bench, "- 90 3C 5, 100 81 3 4, 120 E1 1 2, 300 91 3D 7", 400);
        EXPECT_EQ(witness.calls, "begins,ends,");
        for (const int track : {1, 2}) recorded += events(*bench.editor.song().trk(track)->blocks().head()) + '/';
    }
    RecordBench bench;
    bench.bind();
    EXPECT_FALSE(bench.recorder.restore(path + "-none"));
    EXPECT_TRUE(bench.recorder.restore(path));
    std::string restored;
    for (const int track : {1, 2}) restored += events(*bench.editor.song().trk(track)->blocks().head()) + '/';
    EXPECT_EQ(restored, "0:90,60,5+300 /120:E1,1,2+0 300:91,61,7+1 /") << "held notes end where the journal ends";
    EXPECT_EQ(recorded, "0:90,60,5+400 /120:E1,1,2+0 300:91,61,7+100 /");
    EXPECT_TRUE(bench.editor.UndoNode());
    EXPECT_EQ(bench.editor.GetTimeEndTrk(), 0U);
    std::filesystem::remove(path);
}

} // namespace

} // namespace tessaro::test
