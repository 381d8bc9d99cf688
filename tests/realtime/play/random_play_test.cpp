// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/literal_player.h"
#include "realtime/play/module_model.h"
#include "realtime/play/random_song.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessaro::test {
namespace {

constexpr std::uint32_t songLength = 8000;

class RandomPlay : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RandomPlay, SendsWhatTheLongWayTells)
{
    Dice dice{GetParam()};
    PlayBench bench;
    makeRandomSong(bench, dice, songLength);
    bench.bind();
    const std::uint32_t from = dice.oneIn(3) ? 0 : dice.below(songLength);
    std::uint32_t loopStart = dice.below(songLength);
    std::uint32_t loopEnd = dice.oneIn(3) ? loopStart : from + 1 + dice.below(2000);
    if (dice.oneIn(3) && loopEnd > 200) loopStart = loopEnd - 1 - dice.below(200);

    bench.smc.smcLocateQuiet(from, true);
    bench.smc.smcSetLoopStart(loopStart);
    bench.smc.smcSetLoopEnd(loopEnd);
    bench.take();
    bench.smc.smcPlayStart();
    bench.run(std::chrono::seconds{dice.between(1, 20)});
    const std::int64_t played = bench.loom.ticksPlayed();

    LiteralPlayer literal{bench.editor, from, loopStart, loopEnd};
    const std::vector<LiteralPlayer::Out> expected = literal.steps(static_cast<unsigned>(played) + 2);
    std::vector<LiteralPlayer::Out> got;
    for (const Heard& h : bench.take())
        if (h.tick) got.push_back({*h.tick, h.port, h.bytes});
    ASSERT_LE(got.size(), expected.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        ASSERT_EQ(got[i].tick, expected[i].tick) << i;
        ASSERT_EQ(got[i].bytes, expected[i].bytes) << i << " at " << got[i].tick;
        ASSERT_EQ(got[i].port, expected[i].port) << i;
    }
    LiteralPlayer shorter{bench.editor, from, loopStart, loopEnd};
    if (bench.smc.smcPlayStatus()) {
        EXPECT_GE(got.size(), shorter.steps(static_cast<unsigned>(played)).size()) << "nothing is missing";
    }
}

TEST_P(RandomPlay, ChaseBringsModulesWhereTheSongWouldHave)
{
    Dice dice{GetParam()};
    PlayBench bench;
    makeRandomSong(bench, dice, songLength);
    bench.bind();
    const std::uint32_t target = dice.between(1, songLength + 100);
    bench.smc.smcLocateQuiet(target, true);
    bench.run(std::chrono::milliseconds{10});

    struct Item {
        std::uint32_t time;
        int port;
        std::vector<std::uint8_t> bytes;
    };
    std::vector<Item> items;
    for (int track = 0; track < trackCount; ++track) {
        const CTrk& trk = *bench.editor.song().trk(track);
        for (const CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            _EDT_EVNT e;
            for (POSITION pos = blk->GetHeadPos(); blk->GetNextEvnt(pos, e);) {
                const auto add = [&](std::uint8_t kind, std::vector<std::uint8_t> data) {
                    data.insert(data.begin(), kind == 0xF0 ? kind : static_cast<std::uint8_t>(kind | trk.GetCh()));
                    items.push_back({blk->GetTimeTop() + e.time, trk.GetPort(), std::move(data)});
                };
                const std::uint8_t kind = e.status & 0xF0U;
                const std::uint8_t msb = kind == 0x10 ? 99 : 101;
                if (kind == 0x10 || kind == 0x20) {
                    add(0xB0, {msb, e.post1});
                    add(0xB0, {static_cast<std::uint8_t>(msb - 1), e.post2});
                    add(0xB0, {6, e.post3});
                    add(0xB0, {38, e.post4});
                } else if (kind == 0x30) {
                    add(0xB0, {0, e.post1});
                    add(0xB0, {32, e.post2});
                    add(0xC0, {e.post3});
                } else if (kind == 0xC0 || kind == 0xD0) {
                    add(kind, {e.post1});
                } else if (kind == 0xA0 || kind == 0xB0 || kind == 0xE0) {
                    add(kind, {e.post1, e.post2});
                } else if (e.status == 0xF0) {
                    add(0xF0, {e.data, e.data + e.szData});
                }
            }
        }
    }
    std::stable_sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.time < b.time; });
    Modules played;
    for (const Item& item : items)
        if (item.time < target) played.take(item.port, item.bytes);
    Modules chased;
    for (const Heard& h : bench.take()) {
        EXPECT_FALSE(h.isNoteOn());
        EXPECT_FALSE(h.tick.has_value());
        chased.take(h.port, h.bytes);
    }
    for (int port = 0; port < 2; ++port) {
        for (std::size_t channel = 0; channel < 16; ++channel) {
            // Which parameter stays selected is no part of a sound; what was entered is.
            ModuleChannel& a = played.ports[port][channel];
            ModuleChannel& b = chased.ports[port][channel];
            a.registered = b.registered = true;
            EXPECT_EQ(a.controls, b.controls) << port << ' ' << channel;
            EXPECT_EQ(a.parameters, b.parameters) << port << ' ' << channel;
            EXPECT_EQ(a.voice, b.voice) << port << ' ' << channel;
            EXPECT_EQ(std::tie(a.bend, a.pressure, a.poly), std::tie(b.bend, b.pressure, b.poly));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Songs, RandomPlay, testing::Range(1U, 61U));

} // namespace
} // namespace tessaro::test
