// SPDX-License-Identifier: GPL-3.0-or-later
// Random performances on random songs, recorded and compared with what a plain scheme makes of the same entries.
#include "realtime/play/random_song.h"
#include "realtime/rec/record_bench.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tessaro::test {

namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t songLength = 6000;

/// A message as a wild player sends it: few keys and channels, so that notes meet each other.
std::vector<std::uint8_t> anyMessage(Dice& dice, bool wide)
{
    const auto channel = dice.byteBelow(wide ? 16 : 3);
    const auto status = [channel](unsigned kind) { return static_cast<std::uint8_t>(kind | channel); };
    const auto key = static_cast<std::uint8_t>(wide ? dice.below(128) : 58 + dice.below(6));
    switch (dice.below(14)) {
    case 0: return {status(0xB0), dice.byteBelow(8), dice.byteBelow(128)};
    case 1: return {status(0xC0), dice.byteBelow(128)};
    case 2: return {status(0xD0), dice.byteBelow(128)};
    case 3: return {status(0xA0), key, dice.byteBelow(128)};
    case 4:
        return {status(0xE0), dice.oneIn(3) ? std::uint8_t{0} : dice.byteBelow(128),
                dice.oneIn(2) ? std::uint8_t{64} : dice.byteBelow(128)};
    case 5: {
        std::vector<std::uint8_t> bytes(2 + dice.below(dice.oneIn(20) ? 3000 : 20), dice.byteBelow(128));
        bytes.front() = 0xF0;
        bytes.back() = 0xF7;
        return bytes;
    }
    case 6:
    case 7: return {status(0x80), key, dice.byteBelow(128)};
    case 8:
    case 9: return {status(0x90), key, 0};
    default: return {status(0x90), key, static_cast<std::uint8_t>(1 + dice.below(127))};
    }
}

void makeSettings(RecordBench& bench, Dice& dice, std::uint32_t top)
{
    const auto set = [&bench](const char* key, int value) { bench.settings.setInt("System", key, value); };
    set("Real Rec Mode", static_cast<int>(dice.below(3)));
    set("Real Rec Block Mode", static_cast<int>(dice.below(2)));
    const int in = static_cast<int>(top) - 300 + static_cast<int>(dice.below(900));
    set("Real Rec Punch In Time", in);
    set("Real Rec Punch Out Time", dice.oneIn(6) ? in : in + static_cast<int>(dice.below(900)));
    std::array<std::uint8_t, 128> drop{};
    for (auto& d : drop) d = dice.oneIn(6);
    if (dice.oneIn(2)) bench.smc.setInFilter(dice.oneIn(2) ? 1U << dice.below(8) : 0, drop);
}

void makeSong(RecordBench& bench, Dice& dice)
{
    makeRandomSong(bench, dice, songLength);
    for (int track = 1; track <= 8; ++track) {
        bench.editor.SetTrkTypePrivate(track, trktype::midi);
        bench.editor.song().trk(track)->SetCh(dice.byteBelow(dice.oneIn(4) ? 16 : 4));
    }
    bench.editor.SetTrkTypePrivate(9, trktype::wave);
    for (int track = 1; track <= 6; ++track) // ghosts are as long as their source
        for (CBlk* blk = bench.editor.song().trk(track)->blocks().head(); blk; blk = List<CBlk>::next(blk))
            if (blk->GetType() == blktype::real) bench.editor.ChkGhostBlkReSize(blk);
    bench.bind();
    bench.smc.smcSetRelativeTempo(static_cast<int>(dice.below(1500)) - 500);
}

void chooseTracks(RecordBench& bench, Dice& dice)
{
    std::vector<int> tracks;
    for (int track = 1; track <= 9; ++track)
        if (dice.oneIn(3)) tracks.push_back(track);
    if (tracks.empty() || tracks.front() == 9) tracks = {1};
    bench.armTracks(tracks);
    for (const int track : tracks) {
        const CTrk& trk = *bench.editor.song().trk(track);
        for (std::uint32_t index = 0; index < trk.GetCount(); ++index) {
            if (!dice.oneIn(3)) continue;
            bench.selection.selectBlk(bench.editor.GetTrkPos(track), trk.GetPos(index));
            bench.told.selected[track].push_back(index);
        }
    }
}

void perform(RecordBench& bench, Dice& dice)
{
    const bool wide = dice.oneIn(4);
    const bool crowded = dice.oneIn(8);
    const auto burst = [&] {
        for (std::uint32_t n = dice.below(crowded ? 40 : 5); n > 0; --n) bench.play(anyMessage(dice, wide));
    };
    for (std::uint32_t n = dice.below(4); n > 0; --n) { // before the song plays
        burst();
        bench.run(10ms);
    }
    bench.smc.smcPlayStart();
    for (std::uint32_t n = dice.between(10, 60); n > 0; --n) {
        burst();
        bench.run(std::chrono::milliseconds(dice.oneIn(3) ? 0 : dice.below(90)));
        if (dice.oneIn(2)) bench.pump(dice.oneIn(3) ? dice.below(4) : 1000);
        if (dice.oneIn(3)) bench.passed(bench.smc.smcGetPlayCount());
    }
    if (!dice.oneIn(4)) bench.smc.smcPlayStop();
}

void tryTake(std::uint32_t seed)
{
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    RecordBench bench;
    bench.user.answer = bench.told.mayDeleteGhosts = dice.oneIn(2);
    makeSong(bench, dice);
    chooseTracks(bench, dice);
    const std::uint32_t top = dice.oneIn(4) ? 0 : dice.below(songLength / 2);
    makeSettings(bench, dice, top);
    LoopRange loop{!dice.oneIn(3), 0, 0};
    loop.start = dice.oneIn(3) ? top : dice.below(top + 300);
    loop.end = std::max(loop.start, top) + 60 + dice.below(1200);

    LiteralSong expected(bench.editor);
    const std::string before = expected.picture();
    ASSERT_TRUE(bench.begin(top, loop));
    perform(bench, dice);
    bench.end();
    EXPECT_EQ(bench.loom.getLoomRecError(), 0);
    EXPECT_EQ(bench.recorder.state(), RecState::idle);
    recordLiterally(expected, bench.told);
    const std::string after = LiteralSong(bench.editor).picture();
    ASSERT_EQ(after, expected.picture());

    bench.pump(); // what was on its way is not recorded again
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(bench.editor.UndoNode());
        ASSERT_EQ(LiteralSong(bench.editor).picture(), before);
        EXPECT_FALSE(bench.editor.UndoNode()) << "a take is one step";
        ASSERT_TRUE(bench.editor.RedoNode());
        ASSERT_EQ(LiteralSong(bench.editor).picture(), after);
    }
}

TEST(TakeProperty, TakesFollowThePlainSchemeAndAreUndoneInOneStep)
{
    const char* wanted = std::getenv("TESSARO_RANDOM_TAKES");
    const std::uint32_t takes = wanted ? static_cast<std::uint32_t>(std::atoi(wanted)) : 60;
    const char* first = std::getenv("TESSARO_RANDOM_SEED");
    const std::uint32_t seed = first ? static_cast<std::uint32_t>(std::atoi(first)) : 1;
    for (std::uint32_t n = 0; n < takes && !testing::Test::HasFatalFailure(); ++n) tryTake(seed + n);
}

} // namespace

} // namespace tessaro::test
