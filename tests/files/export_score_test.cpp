// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/export_rig.h"
#include "files/smf_bytes.h"
#include "files/smf_out/score_playout.h"

#include <gtest/gtest.h>

#include <map>

namespace tessaro::test {
namespace {

/// Links are the metas of 8 bytes whose last byte numbers the entry.
struct FakeLinks final : ScoreLinks {
    bool any() const override { return true; }
    bool isScoreLink(const CEvnt& e) const override { return e.isMeta(0x7F) && e.GetSzData() == 8; }
    void appendTempos(const CEvnt&, std::uint32_t, std::vector<ScoreTempo>&) const override {}
    void copyEntry(const CEvnt&, CEvnt&) override {}
    void removeScratch() override {}
    void clear() override {}
    bool load(std::span<const std::uint8_t>) override { return true; }
    bool save(ByteSink&) const override { return true; }
};

struct FakePlayout final : ScorePlayout {
    bool SetRep(CEditor&, std::vector<RepeatJump>& out) override
    {
        out = jumps;
        return legal;
    }
    void SetColl(CEditor&) override { tops.clear(); }
    void SetCollLocation(int trk, std::uint32_t top) override { tops.emplace_back(trk, top); }
    int ChkColl(int, std::uint32_t time, std::uint8_t) override
    {
        const auto span = octaves.find(time);
        return span == octaves.end() ? 0 : span->second;
    }
    [[nodiscard]] bool isTempoMark(const CEvnt& link) const override { return link.payload()[7] == tempoMark; }
    void appendEvnts(int, const CEvnt& link, std::uint32_t time, std::vector<ScoreEvnt>& out) override
    {
        for (const CEvnt* e = entries[link.payload()[7]]; e; e = List<CEvnt>::next(e))
            out.push_back({time + e->GetTime(), e});
    }

    bool legal = true;
    std::vector<RepeatJump> jumps;
    std::map<std::uint32_t, int> octaves; ///< by tick
    std::map<int, const CEvnt*> entries;  ///< first of the events that an entry sounds
    int tempoMark = -1;
    std::vector<std::pair<int, std::uint32_t>> tops;
};

void addLink(CRealBlk& real, std::uint32_t time, std::uint8_t entry)
{
    addMeta(real, time, 0x7F, Bytes{0x43, 0, 0, 0, 0, 0, 0, entry});
}

TEST(ExportScore, RepeatsAreWrittenOut)
{
    ExportRig rig;
    CRealBlk& real = rig.blk(1);
    for (std::uint8_t i = 0; i < 4; ++i) addShort(real, i * 10U, 0xD0, {i});
    addShort(real, 40, 0x90, {60, 1}, 25);
    FakePlayout score;
    score.jumps = {{20, 10}, {20, 30}, {50, 40}, {45, 45}};
    // 0 to 20, 10 to 20, 30 to 50, 40 to 45; the note keeps its length each time.
    EXPECT_EQ(rig.save(1, score), smf0({0,  0xD0, 0,  10, 0xD0, 1,    10, 0xD0, 1,  10,   0xD0, 3, 10, 0x90, 60,   1,
                                        10, 0x90, 60, 1,  15,   0x90, 60, 0,    10, 0x90, 60,   0, 0,  0xFF, 0x2F, 0}));

    score.legal = false;
    const Bytes plain = rig.save(1);
    EXPECT_EQ(rig.save(1, score), plain);
    EXPECT_EQ(rig.user.sentences,
              std::vector<std::string>{"Illegal repeat event location !!!!\nrepeat events are not expand"});
    rig.save(2, score);
    EXPECT_EQ(rig.user.sentences.size(), 2U) << "once a save";
}

TEST(ExportScore, NotesUnderOctaveLinesSoundTwice)
{
    ExportRig rig;
    rig.trk(1).SetTranspose(10);
    CRealBlk& real = rig.blk(1, 100);
    addShort(real, 0, 0x90, {110, 1});
    addShort(real, 10, 0x90, {50, 2});
    addBody(real, 10, 0x60, {50, 3}, 0, {0xF7});
    addShort(real, 20, 0x90, {50, 4});
    FakePlayout score;
    score.octaves = {{100, 12}, {110, -12}};
    EXPECT_EQ(rig.save(1, score),
              smf0({100, 0x90, 120, 1,    0, 0x90, 120,  1,                                 // an octave up folds back
                    5,   0xF0, 1,   0xF7, 5, 0x90, 60,   2, 0, 0x90, 48, 2, 0, 0x90, 60, 3, // the last one sounds once
                    10,  0x90, 60,  4,    0, 0xFF, 0x2F, 0}));
    EXPECT_EQ(score.tops, (std::vector<std::pair<int, std::uint32_t>>{{0, 0}, {1, 100}}));
}

TEST(ExportScore, LinksGiveWhatTheirEntriesSound)
{
    FakeLinks links;
    ExportRig rig(&links);
    CRealBlk& entry = *rig.editor.NewAddTailRealBlk();
    addMeta(entry, 0, 0x51, Bytes{6, 0, 0});
    addShort(entry, 0, 0x90, {60, 1}, 5);
    addShort(entry, 20, 0x90, {62, 2}, 5);
    addLink(rig.master(), 0, 1);
    addMeta(rig.master(), 0, 0x01, "m");
    CRealBlk& real = rig.blk(2);
    addShort(real, 10, 0xB0, {7, 1});
    addLink(real, 10, 0);
    addShort(real, 10, 0xB0, {7, 2});
    addShort(real, 15, 0xB0, {7, 3});
    FakePlayout score;
    score.entries = {{0, entry.events().head()}, {1, entry.events().head()}};
    score.tempoMark = 1;

    const Bytes text{0, 0xFF, 0x01, 1, 'm'};
    const Bytes tempo{0xFF, 0x51, 3, 6, 0, 0};
    const Bytes tail{0, 0xB1, 7, 2, 5, 0x91, 60, 0, 0, 0xB1, 7, 3, 15, 0x91, 62, 2, 5, 0x91, 62, 0, 0, 0xFF, 0x2F, 0};
    // In one chunk the master's tempo mark is left out.
    EXPECT_EQ(rig.save(1, score), smf0(join({text, {10, 0xB1, 7, 1, 0}, tempo, {0, 0x91, 60, 1}, tail})));
    // With a chunk for each track all tempos go to the first one, and nothing else of that mark.
    EXPECT_EQ(rig.save(2, score),
              smf1({join({text, {0}, tempo, {10}, tempo, {0, 0xFF, 0x2F, 0}}),
                    join({{0, 0xFF, 0x7F, 4, 0x43, 0, 1, 0, 10, 0xB1, 7, 1, 0, 0x91, 60, 1}, tail})}));
    // A score that plays nothing out leaves its links silent.
    NullScorePlayout silent;
    EXPECT_EQ(rig.save(1, silent),
              smf0(join({text, {10, 0xB1, 7, 1, 0, 0xB1, 7, 2, 5, 0xB1, 7, 3, 0, 0xFF, 0x2F, 0}})));
}

} // namespace
} // namespace tessaro::test
