// SPDX-License-Identifier: GPL-3.0-or-later
// Small files made by hand, with what each must become. Rounding, block ends, joined system exclusives, ZP, broken
// files and those with too many tracks are compared with the literal rules.
#include "files/importer.h"
#include "files/smf_bytes.h"

#include <gtest/gtest.h>

#include <string>

namespace tessaro::test {

namespace {

const PlainBlock& blockOf(const PlainSong& song, std::size_t track) { return song.tracks.at(track).blocks.at(0); }

std::vector<std::uint32_t> gatesOf(const PlainSong& song)
{
    std::vector<std::uint32_t> gates;
    for (const PlainEvent& e : blockOf(song, 1).events)
        if (e.status >> 4U == 9) gates.push_back(e.gate);
    return gates;
}

using Gates = std::vector<std::uint32_t>;

} // namespace

TEST(Gates, PairNotesWithTheirOffs)
{
    struct Case {
        const char* what;
        Bytes events;
        Gates gates;
    };
    const Case cases[] = {
        {"overlapping notes of one pitch: first in, first out",
         {0, 0x90, 60, 9, 100, 60, 9, 100, 0x80, 60, 0, 100, 60, 0},
         {200, 200}},
        {"a velocity of 0 is an off", {0, 0x90, 60, 9, 50, 60, 0}, {50}},
        {"off in the same tick", {0, 0x90, 60, 9, 0, 0x80, 60, 0}, {1}},
        {"no off: up to the chunk's end, its last delta included", {0, 0x90, 60, 9, 70, 0xFF, 0x2F, 0}, {70}},
        {"no off and nothing behind", {5, 0x90, 60, 9}, {1}},
        {"offs of other pitches and channels",
         {0, 0x90, 60, 9, 10, 0x80, 61, 0, 10, 0x81, 60, 0, 10, 0x80, 60, 0},
         {30}},
        {"offs without a note vanish", {0, 0x80, 60, 0, 9, 0x90, 60, 0, 9, 60, 9, 10, 60, 0}, {10}},
        {"a used off ends a note of pitch 0 that began after its taker",
         {0, 0x90, 60, 9, 10, 0, 9, 10, 60, 0, 10, 0x80, 0, 0},
         {20, 10}},
        {"but none that began before it", {0, 0x90, 0, 9, 10, 60, 9, 10, 60, 0, 10, 0, 0}, {30, 10}},
        {"an off of pitch 0 ends all", {0, 0x90, 0, 9, 10, 0, 9, 10, 0, 0, 10, 0, 9, 5, 0, 0}, {20, 10, 5}},
        {"running status goes on behind metas and sysex",
         {0, 0x90, 60, 9, 5, 0xF0, 1, 0xF7, 5, 0xFF, 6, 0, 5, 60, 0},
         {15}},
    };
    Importer importer;
    for (const Case& c : cases) EXPECT_EQ(c.gates, gatesOf(importer.load(smf0(c.events)))) << c.what;
}

TEST(Format0, SortsEventsToTracks)
{
    Importer importer;
    const PlainSong song = importer.load(smf0({
        0,  0xFF, 0x03, 1,    'n',           // name: stays on the master track
        0,  0xFF, 0x01, 4,    0x43, 0, 1, 7, // port, whatever its type: dropped
        5,  0x99, 36,   9,                   // channel 10
        5,  0xF0, 2,    0x7E, 0xF7,          // sysex of whatever part: track 1
        5,  0xFF, 0x05, 1,    'l',           // lyric: track 1
        5,  0xC9, 3,    5,    0xE9, 1, 2,    // two and three bytes
        5,  0xFF, 0x90, 1,    0,             // no such type: dropped, but the block's end moves
        90, 0xFF, 0x2F, 0,
    }));
    ASSERT_TRUE(song.loaded);
    EXPECT_EQ((std::vector<PlainEvent>{{0, 0, 0xFF, 0, 0, 0x03, {'n'}}}), blockOf(song, 0).events);
    EXPECT_EQ(30U, blockOf(song, 0).end);
    EXPECT_EQ((std::vector<PlainEvent>{{10, 0, 0xF0, 0, 0, 0, {0x7E, 0xF7}}, {15, 0, 0xFF, 0, 0, 0x05, {'l'}}}),
              blockOf(song, 1).events);
    EXPECT_EQ(
        (std::vector<PlainEvent>{{5, 115, 0x99, 36, 9, 0, {}}, {20, 0, 0xC9, 3, 0, 0, {}}, {25, 0, 0xE9, 1, 2, 0, {}}}),
        blockOf(song, 10).events);
    EXPECT_TRUE(song.tracks[2].blocks.empty());
    EXPECT_FALSE(song.tracks[10].transposes);
    EXPECT_EQ(0U, song.tracks[10].port);
    EXPECT_TRUE(song.tracks[1].name.empty());
}

TEST(Format1, GivesEachChannelOfAChunkATrack)
{
    Importer importer;
    const PlainSong song = importer.load(smf1({
        {0, 0xFF, 0x03, 1, 's', 0, 0x92, 60, 9, 10, 60, 0},
        {0, 0xFF, 0x03, 1,    'a', 0, 0xFF, 0x01, 2, 'b', 'c',  0,  0xFF, 0x7F, 4,    0x43, 0,
         1, 2,    0,    0xF0, 0,   0, 0x99, 36,   9, 10,  0x92, 60, 9,    1,    0xFF, 0x01, 0},
        {5, 62, 9},              // the running status of the chunk before
        {0, 0xFF, 0x01, 1, 't'}, // a name and nothing else
        {9, 0xFF, 0x2F, 0},
    }));
    ASSERT_TRUE(song.loaded);
    EXPECT_EQ(1U, blockOf(song, 0).events.size()); // the first chunk's name
    const unsigned channels[] = {2, 9, 2, 2, 0, 0};
    const unsigned ports[] = {0, 2, 2, 0, 0, 0};
    const char* names[] = {"", "bc", "", "", "t", ""};
    for (std::size_t n = 1; n <= 6; ++n) {
        EXPECT_EQ(1U, song.tracks[n].blocks.size()) << n;
        EXPECT_EQ(channels[n - 1], song.tracks[n].channel) << n;
        EXPECT_EQ(ports[n - 1], song.tracks[n].port) << n;
        EXPECT_EQ(names[n - 1], song.tracks[n].name) << n;
        EXPECT_EQ(n != 2, song.tracks[n].transposes) << n;
    }
    EXPECT_TRUE(song.tracks[7].blocks.empty());
    // Sysex and the late text of the chunk are on the track of its first channel.
    EXPECT_EQ(3U, blockOf(song, 2).events.size());
    EXPECT_EQ(0xF0, blockOf(song, 2).events[0].status);
    EXPECT_EQ(11U, blockOf(song, 2).events[2].time);
}

TEST(Import, TellsItsProgress)
{
    Bytes events;
    for (int i = 0; i < 600; ++i) events.insert(events.end(), {0, 0xC0, 1});
    Importer importer;
    importer.load(smf0(events));
    EXPECT_EQ((std::vector<std::uint32_t>{22, 22 + 256 * 3, 22 + 512 * 3}), importer.progress.positions);
    EXPECT_EQ("SMF 0 ﾛｰﾄﾞ中 ...", importer.progress.texts.back());
    importer.load(smf1({{}, {}, {}}));
    EXPECT_EQ((std::vector<std::uint32_t>{0, 1, 2}), importer.progress.positions);
    EXPECT_EQ("SMF 1 ﾛｰﾄﾞ中 ...", importer.progress.texts.back());
    importer.load(SmfBytes().header(0, 1).chunk({}).chunk({}, "ZPIH").chunk({}, "ZPKM").bytes());
    ASSERT_EQ(3U, importer.progress.texts.size());
    EXPECT_EQ("ZP ｶﾗｵｹﾒｯｾｰｼﾞﾛｰﾄﾞ中 ...", importer.progress.texts[2]);
}

TEST(Import, TakesLinearTime)
{
    // Each of these took minutes if a note looked ahead, or a chunk's first channel was searched in vain again.
    Importer importer;
    Bytes open;
    for (int i = 0; i < 200000; ++i) open.insert(open.end(), {1, 0x90, 0, 9, 0, 60, 9});
    for (int i = 0; i < 200000; ++i) open.insert(open.end(), {1, 0x80, 60, 0});
    EXPECT_TRUE(importer.load(smf0(open)).loaded);

    SmfBytes chunks;
    chunks.header(1, 0xFFFF);
    Bytes channels;
    for (std::uint8_t ch = 0; ch < 16; ++ch)
        channels.insert(channels.end(), {0, static_cast<std::uint8_t>(0xC0 | ch), 1});
    for (int i = 0; i < 7; ++i) chunks.chunk(channels);
    for (int i = 7; i < 0xFFFF; ++i) chunks.chunk({0, 0xFF, 1, 0, 0, 0xFF, 1, 0});
    EXPECT_TRUE(importer.load(chunks.bytes()).partial);
}

} // namespace tessaro::test
