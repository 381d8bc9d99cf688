// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/play_bench.h"
#include "realtime/rec/step_input.h"

#include <gtest/gtest.h>

#include <array>

namespace tessaro::test {
namespace {

using Notes = std::vector<std::array<std::uint32_t, 3>>; // tick, key, gate; block by block
using Spans = std::vector<std::array<std::uint32_t, 2>>;

struct Palette final : StepPalette {
    std::uint32_t ticks = 480;
    int duration = 90;
    std::vector<bool> shown;
    [[nodiscard]] std::uint32_t step() const override { return ticks; }
    [[nodiscard]] int GetVolocity() const override { return 77; }
    [[nodiscard]] int GetDuration() const override { return duration; }
    void showForInput(bool on) override { shown.push_back(on); }
};

struct StepBench : PlayBench {
    StepBench()
    {
        block(1).SetTimeEnd(960);
        editor.SetTrkTypePrivate(2, trktype::wave);
        editor.SetTrkRec(2, true); // no track for notes
        editor.SetTrkTypePrivate(3, trktype::midi);
        editor.SetTrkRec(3, true);
        bind();
        input.setPalette(&palette);
    }
    ~StepBench() { input.end(); }

    void receive(int status, int key, int velocity = 40)
    {
        LoomRingEntry entry;
        entry.status = static_cast<std::uint8_t>(status);
        entry.data1 = static_cast<std::uint8_t>(key);
        entry.data2 = static_cast<std::uint8_t>(velocity);
        input.received(entry);
    }
    /// "c" presses a key, "C" releases it; "-" is a rest.
    void keys(const std::string& text)
    {
        for (const char c : text)
            if (c == '-')
                input.rest();
            else
                receive(std::isupper(c) ? 0x80 : 0x90, std::tolower(c));
    }
    [[nodiscard]] Notes notes() const
    {
        Notes found;
        for (const CBlk* blk = trk().blocks().head(); blk; blk = List<CBlk>::next(blk))
            for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) {
                EXPECT_EQ(e->GetPost2(), 77);
                found.push_back({blk->GetTimeTop() + e->GetTime(), e->GetPost1(), e->GetGateTime()});
            }
        return found;
    }
    [[nodiscard]] Spans spans() const
    {
        Spans found;
        for (const CBlk* blk = trk().blocks().head(); blk; blk = List<CBlk>::next(blk))
            found.push_back({blk->GetTimeTop(), blk->GetTimeEnd()});
        return found;
    }
    [[nodiscard]] const CTrk& trk() const { return *editor.song().trk(3); }

    Palette palette;
    StepInput input{smc, strings};
};

TEST(StepInput, KeysHeldTogetherAreAChord)
{
    const std::tuple<const char*, Notes, std::uint32_t> cases[] = {
        {"acCA", {{0, 'c', 432}, {0, 'a', 432}}, 480},
        {"aAbB--cC", {{0, 'a', 432}, {480, 'b', 432}, {1920, 'c', 432}}, 2400},
        {"acAgCG", {{0, 'c', 432}, {0, 'g', 432}}, 480}, // a new key makes those released before it forgotten
        {"AaabABA", {{0, 'a', 432}, {0, 'b', 432}, {0, 'a', 432}}, 480}, // a release without its press is nothing
    };
    for (const auto& [keys, notes, tick] : cases) {
        StepBench b;
        ASSERT_TRUE(b.input.begin(0, {}));
        b.keys(keys);
        EXPECT_EQ(b.notes(), notes) << keys;
        EXPECT_EQ(b.input.tick(), tick) << keys;
    }
    StepBench b;
    b.palette.ticks = b.palette.duration = 1;
    ASSERT_TRUE(b.input.begin(7, {}));
    b.receive(0x92, 'a');
    b.receive(0x83, 'a'); // another key
    b.receive(0xB2, 'a');
    EXPECT_EQ(b.notes(), Notes{});
    b.receive(0x92, 'a', 0);
    EXPECT_EQ(b.notes(), (Notes{{7, 'a', 1}}));
    EXPECT_EQ(b.trk().blocks().head()->GetRealBlk()->events().head()->GetStatus(), 0x92);
}

TEST(StepInput, TheLoopTakesTheStepBackFromItsEnd)
{
    StepBench b;
    ASSERT_TRUE(b.input.begin(960, {true, 240, 1920}));
    b.keys("aAbB"); // to 1440, to what would be 1920
    EXPECT_EQ(b.input.tick(), 240U);
    b.keys("cC---");
    EXPECT_EQ(b.input.tick(), 240U);
    b.input.setTick(1920);
    b.keys("-dD");
    EXPECT_EQ(b.notes(), (Notes{{240, 'c', 432}, {2400, 'd', 432}, {960, 'a', 432}, {1440, 'b', 432}}));
    EXPECT_EQ(b.spans(), (Spans{{240, 2832}, {960, 2880}})) << "no note is moved to the top of a block";
    b.input.end();
    b.keys("aA-");
    EXPECT_EQ(b.notes().size(), 4U);
    EXPECT_EQ(b.smc.smcGetPlayCount(), 2880U);
    EXPECT_EQ(b.palette.shown, (std::vector<bool>{true, false}));
}

TEST(StepInput, FindsItsBlockAnewAndMakesEachChordAStep)
{
    StepBench b;
    const POSITION trk = b.editor.GetTrkPos(3);
    b.editor.OpenUndoNode("ghost"); // takes no notes
    b.editor.BlkGhost(b.editor.GetTrkPos(1), b.editor.GetBlkPos(1, 0), trk, 0);
    EXPECT_FALSE(b.input.begin(480, {})) << "while another step is open";
    b.editor.CloseUndoNode();
    ASSERT_TRUE(b.input.begin(480, {}));
    b.keys("acAC");
    EXPECT_EQ(b.spans(), (Spans{{0, 960}, {480, 2400}}));
    std::string title;
    ASSERT_TRUE(b.editor.IsEnableUndo(title));
    EXPECT_EQ(title, "Insert event");
    b.editor.UndoNode();
    ASSERT_TRUE(b.editor.IsEnableUndo(title));
    EXPECT_EQ(title, "New block");
    EXPECT_EQ(b.notes(), Notes{});
    EXPECT_NE(b.input.GetRecBlk(trk), nullptr);
    b.editor.UndoNode(2);
    EXPECT_EQ(b.input.GetRecBlk(trk), nullptr);

    b.editor.OpenUndoNode("another");
    b.keys("xX");
    EXPECT_EQ(b.input.tick(), 960U) << "what cannot be a step is not entered";
    b.editor.CloseUndoNode();
    b.editor.InitUndoNode(); // what was undone is gone for good
    b.editor.RemoveScratch();
    b.keys("bBcC");
    EXPECT_EQ(b.notes(), (Notes{{960, 'b', 432}, {1440, 'c', 432}}));
    EXPECT_EQ(b.spans(), (Spans{{960, 2880}}));
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 2);
    b.input.end();
    ASSERT_TRUE(b.input.begin(2400, {}));
    EXPECT_EQ(b.editor.GetUndoRedoCount(), 2) << "a block stands there";
    b.keys("dD");
    b.input.setTick(2880);
    b.keys("eE");
    EXPECT_EQ(b.spans(), (Spans{{960, 3312}})) << "it grows";
    b.input.end();
    b.editor.SetTrkRec(3, false);
    EXPECT_FALSE(b.input.begin(0, {}));
}

} // namespace
} // namespace tessaro::test
