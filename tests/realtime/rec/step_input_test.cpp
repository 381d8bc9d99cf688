// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/play_bench.h"
#include "realtime/rec/step_input.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

struct Palette final : StepPalette {
    std::uint32_t ticks = 480;
    int duration = 90;
    std::vector<bool> shown;
    [[nodiscard]] std::uint32_t step() const override { return ticks; }
    [[nodiscard]] int GetVolocity() const override { return 77; }
    [[nodiscard]] int GetDuration() const override { return duration; }
    void showForInput(bool on) override { shown.push_back(on); }
};

/// Tick, key and gate of a note.
struct Note {
    std::uint32_t tick;
    int key;
    std::uint32_t gate;
    bool operator==(const Note&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Note& n)
    {
        return out << n.tick << ':' << n.key << ':' << n.gate;
    }
};
using Notes = std::vector<Note>;
using Spans = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

struct StepBench : PlayBench {
    StepBench()
    {
        editor.SetTrkTypePrivate(trk, trktype::midi);
        editor.SetTrkRec(trk, true);
        bind();
        input.setPalette(&palette);
    }
    ~StepBench() { input.end(); }

    /// "c" presses a key, "C" releases it; "-" is a rest.
    void keys(const std::string& text, std::uint8_t channel = 0)
    {
        for (const char c : text) {
            LoomRingEntry entry;
            entry.data1 = static_cast<std::uint8_t>(std::tolower(c));
            entry.status = static_cast<std::uint8_t>((std::isupper(c) ? 0x80 : 0x90) | channel);
            entry.data2 = 40;
            if (c == '-')
                input.rest();
            else
                input.received(entry);
        }
    }
    [[nodiscard]] Notes notes() const
    {
        Notes found;
        for (const CBlk* blk = blks().head(); blk; blk = List<CBlk>::next(blk))
            for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
                EXPECT_EQ(e->GetPost2(), 77);
                found.push_back({blk->GetTimeTop() + e->GetTime(), e->GetPost1(), e->GetGateTime()});
            }
        return found;
    }
    [[nodiscard]] Spans spans() const
    {
        Spans found;
        for (const CBlk* blk = blks().head(); blk; blk = List<CBlk>::next(blk))
            found.emplace_back(blk->GetTimeTop(), blk->GetTimeEnd());
        return found;
    }
    [[nodiscard]] const List<CBlk>& blks() const { return editor.song().trk(trk)->blocks(); }
    [[nodiscard]] int steps() const { return editor.GetUndoRedoCount(); }

    static constexpr int trk = 3;
    Palette palette;
    StepInput input{smc, strings};
};

TEST(StepInput, KeysHeldTogetherAreAChord)
{
    struct Case {
        const char* keys;
        Notes notes;
        std::uint32_t tick;
    };
    const Case cases[] = {
        {"aA", {{0, 'a', 432}}, 480},
        {"acCA", {{0, 'c', 432}, {0, 'a', 432}}, 480},
        {"aAbB--cC", {{0, 'a', 432}, {480, 'b', 432}, {1920, 'c', 432}}, 2400},
        {"acAgCG", {{0, 'c', 432}, {0, 'g', 432}}, 480}, // a new key makes those released before it forgotten
        {"aaAA", {{0, 'a', 432}, {0, 'a', 432}}, 480},
        {"AabABA", {{0, 'a', 432}, {0, 'b', 432}}, 480}, // a release without its press is nothing
        {"ab", {}, 0},
    };
    for (const Case& c : cases) {
        StepBench b;
        ASSERT_TRUE(b.input.begin(0, {}));
        b.keys(c.keys);
        EXPECT_EQ(b.notes(), c.notes) << c.keys;
        EXPECT_EQ(b.input.tick(), c.tick) << c.keys;
    }

    StepBench b;
    b.palette.ticks = 1;
    b.palette.duration = 1;
    ASSERT_TRUE(b.input.begin(7, {}));
    b.keys("a", 2);
    b.keys("A", 3); // another key
    b.keys("x", 2);
    LoomRingEntry quiet;
    for (const int status : {0xB2, 0xE2, 0x92}) { // a Note On without velocity is a release
        quiet.status = static_cast<std::uint8_t>(status);
        quiet.data1 = 'x';
        b.input.received(quiet);
    }
    EXPECT_EQ(b.notes(), Notes{});
    b.keys("A", 2);
    EXPECT_EQ(b.notes(), (Notes{{7, 'x', 1}, {7, 'a', 1}}));
    EXPECT_EQ(b.blks().head()->GetRealBlk()->events().head()->GetStatus(), 0x92);
}

TEST(StepInput, TheLoopTakesTheStepBackFromItsEnd)
{
    StepBench b;
    ASSERT_TRUE(b.input.begin(960, {true, 240, 1920}));
    b.keys("a");
    b.keys("A");  // to 1440
    b.keys("bB"); // would be 1920
    EXPECT_EQ(b.input.tick(), 240U);
    b.keys("cC---"); // 720, 1200, 1680, 240
    EXPECT_EQ(b.input.tick(), 240U);
    b.input.setTick(1920);
    b.keys("-dD");
    EXPECT_EQ(b.input.tick(), 2880U) << "behind the loop it goes on";
    EXPECT_EQ(b.notes(), (Notes{{240, 'c', 432}, {2400, 'd', 432}, {960, 'a', 432}, {1440, 'b', 432}}));
    EXPECT_EQ(b.spans(), (Spans{{240, 2832}, {960, 2880}})) << "no note is moved to the top of a block";

    b.input.end();
    EXPECT_EQ(b.smc.smcGetPlayCount(), 2880U);
    EXPECT_EQ(b.palette.shown, (std::vector<bool>{true, false}));
    b.keys("aA-");
    EXPECT_EQ(b.notes().size(), 4U);
}

TEST(StepInput, WritesIntoTheBlockThatStandsThere)
{
    StepBench b;
    b.block(StepBench::trk, 0).SetTimeEnd(960);
    ASSERT_TRUE(b.input.begin(480, {}));
    EXPECT_EQ(b.steps(), 0) << "no block was needed";
    EXPECT_EQ(b.input.GetRecBlk(b.editor.GetTrkPos(StepBench::trk)), b.blks().head());
    EXPECT_EQ(b.input.GetRecBlk(b.editor.GetTrkPos(1)), nullptr);
    b.keys("aAbB");
    EXPECT_EQ(b.spans(), (Spans{{0, 1392}})) << "it grows";
    EXPECT_EQ(b.steps(), 2);

    // A ghost takes no notes.
    StepBench g;
    g.block(1, 0).SetTimeEnd(960);
    g.editor.OpenUndoNode("ghost");
    g.editor.BlkGhost(g.editor.GetTrkPos(1), g.editor.GetBlkPos(1, 0), g.editor.GetTrkPos(StepBench::trk), 0);
    g.editor.CloseUndoNode();
    ASSERT_TRUE(g.input.begin(480, {}));
    EXPECT_EQ(g.spans(), (Spans{{0, 960}, {480, 2400}}));
}

TEST(StepInput, EachChordIsAStepAndUndoMayTakeItsBlock)
{
    StepBench b;
    ASSERT_TRUE(b.input.begin(480, {}));
    EXPECT_EQ(b.spans(), (Spans{{480, 2400}}));
    std::string title;
    ASSERT_TRUE(b.editor.IsEnableUndo(title));
    EXPECT_EQ(title, "New block");
    b.keys("acAC");
    ASSERT_TRUE(b.editor.IsEnableUndo(title));
    EXPECT_EQ(title, "Insert event");
    EXPECT_EQ(b.steps(), 2);
    b.editor.UndoNode();
    EXPECT_EQ(b.notes(), Notes{});
    b.editor.UndoNode();
    EXPECT_EQ(b.spans(), Spans{});
    EXPECT_EQ(b.input.GetRecBlk(b.editor.GetTrkPos(StepBench::trk)), nullptr);

    b.editor.OpenUndoNode("another"); // what was undone is gone for good
    b.editor.CloseUndoNode();
    b.editor.InitUndoNode();
    b.editor.RemoveScratch();
    b.keys("bB");
    EXPECT_EQ(b.notes(), (Notes{{960, 'b', 432}}));
    EXPECT_EQ(b.spans(), (Spans{{960, 2880}}));
    EXPECT_EQ(b.steps(), 1) << "the block comes and goes with its chord";
    b.editor.UndoNode();
    EXPECT_EQ(b.spans(), Spans{});
}

TEST(StepInput, WhatCannotBeAStepIsNotEntered)
{
    StepBench b;
    ASSERT_TRUE(b.input.begin(0, {}));
    b.editor.OpenUndoNode("another");
    b.keys("aA");
    b.editor.CloseUndoNode();
    EXPECT_EQ(b.notes(), Notes{});
    EXPECT_EQ(b.input.tick(), 0U);
    b.keys("cC");
    EXPECT_EQ(b.notes(), (Notes{{0, 'c', 432}})) << "the one before is not kept";
    b.input.end();

    b.editor.OpenUndoNode("another");
    EXPECT_FALSE(b.input.begin(9600, {}));
    b.editor.CloseUndoNode();
    b.editor.SetTrkRec(StepBench::trk, false);
    EXPECT_FALSE(b.input.begin(0, {}));
    b.editor.SetTrkTypePrivate(2, trktype::wave);
    b.editor.SetTrkRec(2, true);
    EXPECT_FALSE(b.input.begin(0, {}));
    b.smc.smcBindSong(nullptr);
    EXPECT_FALSE(b.input.begin(0, {}));
    EXPECT_EQ(b.palette.shown, (std::vector<bool>{true, false}));
}

} // namespace
} // namespace tessaro::test
