// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ports/take_keeper.h"
#include "realtime/rec/record_bench.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

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

struct Stroke {
    int at; ///< milliseconds behind the start, which are ticks; below 0 before it
    Bytes bytes;
};

/// Plays while the song runs from `top`, at one tick a millisecond, and stops.
void perform(RecordBench& bench, const std::vector<Stroke>& strokes, int stopAt)
{
    int now = 0;
    bool playing = false;
    const auto runTo = [&](int at) {
        if (at >= 0 && !std::exchange(playing, true)) bench.smc.smcPlayStart();
        if (at > now) bench.run(std::chrono::milliseconds(at - now));
        now = std::max(now, at);
    };
    for (const Stroke& stroke : strokes) {
        runTo(stroke.at);
        bench.play(stroke.bytes);
    }
    runTo(stopAt);
    bench.smc.smcPlayStop();
    bench.end();
}

struct Case {
    const char* what;
    std::vector<std::uint8_t> channels; ///< of the armed tracks, 1 and on
    int punchIn;
    int punchOut; ///< 0 for no punch
    std::vector<Stroke> strokes;
    std::vector<std::string> recorded; ///< on each track
};

TEST(Recorder, EdgesOfATake)
{
    const Case cases[] = {
        {"what comes at the start tick is before the take, and held notes begin there",
         {0},
         0,
         0,
         {{-1, {0x90, 60, 100}},
          {-1, {0x90, 62, 100}},
          {-1, {0x80, 62, 0}},
          {-1, {0xE0, 1, 2}},
          {-1, {0xD0, 9}},
          {-1, {0xC0, 5}},
          {200, {0x80, 60, 0}}},
         {"0:C0,5,0+0 0:90,60,100+200 0:E0,1,2+0 "}},
        {"without anything behind the start nothing waits", {0}, 0, 0, {{-1, {0x90, 60, 100}}}, {""}},
        {"one armed channel takes all",
         {0},
         0,
         0,
         {{100, {0x95, 60, 100}}, {150, {0x95, 60, 0}}},
         {"100:95,60,100+50 "}},
        {"several take their own, the first track of a channel",
         {1, 0, 1},
         0,
         0,
         {{100, {0xB0, 7, 1}}, {110, {0xB1, 7, 2}}, {120, {0xB2, 7, 3}}},
         {"110:B1,7,2+0 ", "100:B0,7,1+0 ", "none"}},
        {"held notes end with the take",
         {0},
         0,
         0,
         {{100, {0x90, 60, 1}}, {500, {0x90, 61, 1}}},
         {"100:90,60,1+400 500:90,61,1+1 "}},
        {"a punch keeps notes outside of it away, cuts those in it, and lets the rest through",
         {0},
         1200,
         1300,
         {{100, {0x90, 60, 1}},
          {150, {0x80, 60, 0}},
          {160, {0xB0, 7, 1}},
          {200, {0x90, 61, 1}},
          {350, {0x80, 61, 0}},
          {400, {0x90, 62, 1}}},
         {"160:B0,7,1+0 200:90,61,1+100 "}},
        {"a punch just behind the start begins with what is held",
         {0},
         1050,
         1300,
         {{-1, {0x90, 60, 1}}, {20, {0x90, 61, 1}}, {100, {0x80, 60, 0}}},
         {"50:90,60,1+50 "}},
        {"a punch that ends before it begins is none",
         {0},
         1300,
         1300,
         {{100, {0x90, 60, 1}}, {150, {0x80, 60, 0}}},
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
        if (c.punchOut) bench.settings.setInt("System", "Real Rec Mode", 2);
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
        bench.pump(take * 30U); // the rest comes when the next take has begun
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
        perform(bench, {{-1, {0x90, 60, 5}}, {100, {0x81, 3, 4}}, {120, {0xE1, 1, 2}}, {300, {0x91, 61, 7}}}, 400);
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
