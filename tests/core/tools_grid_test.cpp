// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of time: quantise, move, humanise.
#include "core/tools/humanise.h"
#include "core/tools/quantise.h"
#include "core/tools/shift.h"
#include "tools_song.h"

namespace tessaro {
namespace {

using test::ToolsSong;
using What = QuantiseSettings::What;
using Side = QuantiseSettings::Side;

GridLength ticks(std::uint32_t length)
{
    return [length](const _EDT_MEASINFO&) { return length; };
}

GridLength beats()
{
    return [](const _EDT_MEASINFO& meas) { return meas.beatClock; };
}

TEST(GridLines, FindTheNearestLineOfEachMeasure)
{
    struct Case {
        std::uint32_t length;
        int swing;
        std::uint32_t time;
        std::uint32_t nearest;
        std::uint32_t after;
    };
    // 4/4 from 0, 7/8 from 1920, 3/4 from 3600.
    const Case cases[] = {
        {480, 0, 0, 0, 0},
        {480, 0, 240, 0, 480},
        {480, 0, 241, 480, 480},
        {480, 0, 1919, 1920, 1920},
        {480, 0, 3361, 3360, 3600},
        {480, 0, 3500, 3600, 3600}, // a short last step
        {5, 0, 2, 0, 5},
        {5, 0, 3, 5, 5},
        {0, 0, 77, 77, 77},
        {240, 100, 240, 320, 320},
        {240, 100, 160, 0, 320},
        {240, 100, 161, 320, 320},
        {240, 50, 250, 280, 280},
        {240, 100, 410, 480, 480},
        {240, 100, 399, 320, 480},
        {480, 100, 3370, 3520, 3520},
        {9600, 0, 1000, 1920, 1920},
        {9600, 0, 900, 0, 1920},
    };
    ToolsSong song;
    song.sign(1920, 7, 3);
    song.sign(3600, 3, 2);
    for (const Case& c : cases) {
        GridLines lines(song.editor, ticks(c.length), c.swing);
        EXPECT_EQ(lines.nearest(c.time), c.nearest) << c.length << ' ' << c.swing << ' ' << c.time;
        EXPECT_EQ(lines.atOrAfter(c.time), c.after) << c.length << ' ' << c.swing << ' ' << c.time;
    }
    EXPECT_EQ(GridLines(song.editor, beats()).length(2000), 240U);
}

TEST(Quantise, MovesStartsAndEndsByWhatIsAskedFor)
{
    struct Case {
        QuantiseSettings settings;
        std::uint32_t time, gate; ///< before
        std::uint32_t newTime, newGate;
    };
    const GridLength quarter = ticks(480);
    const Case cases[] = {
        {{.grid = quarter}, 500, 100, 480, 100},
        {{.grid = quarter, .what = What::ends}, 500, 300, 500, 460},
        {{.grid = quarter, .what = What::ends}, 500, 100, 500, 460}, // its line is the next one
        {{.grid = quarter, .what = What::both}, 500, 720, 480, 960},
        {{.grid = quarter, .strength = 50}, 520, 100, 500, 100},
        {{.grid = quarter, .strength = 0}, 520, 100, 520, 100},
        {{.grid = quarter, .reach = 25}, 540, 100, 480, 100},
        {{.grid = quarter, .reach = 25}, 541, 100, 541, 100},
        {{.grid = quarter, .reach = 25, .side = Side::far}, 540, 100, 540, 100},
        {{.grid = quarter, .reach = 25, .side = Side::far}, 541, 100, 480, 100},
        {{.grid = quarter, .swing = 100}, 500, 100, 640, 100},
        {{.grid = quarter}, 100, 100, 480, 100}, // the line before stands in front of the block
    };
    for (const Case& c : cases) {
        ToolsSong song;
        const EvntRef note = song.note(song.block(1, 90, 4000), c.time, 60, c.gate);
        song.edit(quantise(song.editor, song.all(), c.settings));
        EXPECT_EQ(song.time(note), c.newTime) << c.time << ' ' << c.gate;
        EXPECT_EQ(song.event(note).GetGateTime(), c.newGate) << c.time << ' ' << c.gate;
    }
}

TEST(Quantise, PutsEveryStartOnTheGridAndKeepsTheOrder)
{
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        ToolsSong song;
        test::Dice dice(seed);
        song.sign(1920 * dice.between(1, 3), static_cast<std::uint8_t>(dice.between(2, 7)), dice.byteBelow(4));
        song.scatter(dice, 120);
        const std::uint32_t length = dice.between(1, 40) * 40;
        const std::vector<EvntRef> refs = song.all();
        std::vector<std::uint32_t> before;
        for (const EvntRef& ref : refs) before.push_back(song.time(ref));
        test::expectUndoable(song.editor,
                             [&] { apply(song.editor, quantise(song.editor, refs, {.grid = ticks(length)})); });
        GridLines lines(song.editor, ticks(length));
        for (std::size_t i = 0; i < refs.size(); ++i) {
            const std::uint32_t time = song.time(refs[i]);
            EXPECT_EQ(lines.nearest(time), time);
            for (std::size_t j = 0; j < i; ++j) {
                if (before[j] <= before[i] && refs[j].blk == refs[i].blk) {
                    EXPECT_LE(song.time(refs[j]), time);
                }
            }
        }
        EXPECT_EQ(quantise(song.editor, refs, {.grid = ticks(length)}).count(), 0U);
        EXPECT_EQ(quantise(song.editor, refs, {.grid = ticks(length), .strength = 0, .swing = 70}).count(), 0U);
        for (const EvntState& moved : quantise(song.editor, refs, {.grid = ticks(length), .swing = 60}).changes) {
            _EDT_MEAS at;
            song.editor.TimeToMeas(song.time(moved.ref), at);
            const std::uint32_t top = song.editor.MeasToTime({at.meas - 1, 0, 0});
            EXPECT_EQ((song.time(moved.ref) - top) / length % 2, 1U); // off-beats alone
        }
    }
}

TEST(Shift, GoesAsFarAsTheFirstBlockLets)
{
    ToolsSong song;
    song.sign(1920, 7, 3);
    CBlk& blk = song.block(1, 1000, 6000);
    const EvntRef first = song.note(blk, 2000, 60, 100);
    const EvntRef last = song.note(blk, 5900, 60, 100);
    song.edit(shift(song.editor, song.all(), {.bars = 1, .beats = 1, .ticks = -3}));
    EXPECT_EQ(song.time(first), 2000 + 1680 + 240 - 3U);
    EXPECT_EQ(blk.GetTimeEnd(), 6000 + 1680 + 240 - 3U);
    song.edit(shift(song.editor, song.all(), {.bars = -100}));
    EXPECT_EQ(song.time(first), 1000U);
    EXPECT_EQ(song.time(last), 4900U);
    EXPECT_EQ(shift(song.editor, song.all(), {.beats = -1}).count(), 0U);

    // Signatures stay without a word, tempos go.
    std::vector<EvntRef> masters = song.all(0);
    const EditPlan plan = shift(song.editor, masters, {.ticks = 10});
    EXPECT_EQ(plan.considered, 1U);
    EXPECT_EQ(plan.count(), 1U);
}

TEST(Humanise, StraysWithinItsRanges)
{
    ToolsSong song;
    test::Dice dice(3);
    song.scatter(dice, 200);
    const std::vector<EvntRef> refs = song.all();
    const HumaniseSettings settings{.time = 20, .velocity = 30, .gate = 60, .seed = 7};
    const EditPlan plan = humanise(refs, settings);
    EXPECT_EQ(plan.changes, humanise(refs, settings).changes);
    EXPECT_GT(plan.count(), 190U);
    for (const EvntState& to : plan.changes) {
        const CEvnt& e = song.event(to.ref);
        EXPECT_LE(std::abs(std::int64_t{to.time} - song.time(to.ref)), 20);
        EXPECT_LE(std::abs(to.value - e.GetPost2()), 30);
        EXPECT_GE(to.value, 1);
        EXPECT_GE(to.time, List<CBlk>::get(to.ref.blk)->GetTimeTop());
        EXPECT_GE(to.gate, 1U);
        EXPECT_LE(std::abs(std::int64_t{to.gate} - e.GetGateTime()), 60);
    }
    test::expectUndoable(song.editor, [&] { apply(song.editor, plan); });
    EXPECT_EQ(humanise(refs, {.time = 0, .velocity = 0, .gate = 0}).count(), 0U);
}

} // namespace
} // namespace tessaro
