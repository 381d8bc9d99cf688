// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of keys, velocities and lengths, and of what stands twice, too dense or on one track.
#include "core/tools/chord_sort.h"
#include "core/tools/double_notes.h"
#include "core/tools/gate_time.h"
#include "core/tools/split.h"
#include "core/tools/thin_out.h"
#include "core/tools/transpose.h"
#include "core/tools/velocity.h"
#include "tools_song.h"

namespace tessaro {
namespace {

using test::ToolsSong;
using Numbers = std::vector<int>;

template <class Value>
Numbers valuesOf(const std::vector<EvntRef>& refs, Value value)
{
    Numbers values;
    for (const EvntRef& ref : refs) values.push_back(static_cast<int>(value(ToolsSong::event(ref))));
    return values;
}

Numbers keys(const std::vector<EvntRef>& refs)
{
    return valuesOf(refs, [](const CEvnt& e) { return e.GetPost1(); });
}
Numbers velocities(const std::vector<EvntRef>& refs)
{
    return valuesOf(refs, [](const CEvnt& e) { return e.GetPost2(); });
}
Numbers gates(const std::vector<EvntRef>& refs)
{
    return valuesOf(refs, [](const CEvnt& e) { return e.GetGateTime(); });
}

TEST(Transpose, MovesAllKeysOrNone)
{
    using By = TransposeSettings::By;
    struct Case {
        TransposeSettings settings;
        Numbers before, after;
    };
    const Case cases[] = {
        {{.steps = 12}, {0, 60, 115}, {12, 72, 127}},
        {{.steps = 13}, {0, 60, 115}, {0, 60, 115}},
        {{.steps = -1}, {0, 60}, {0, 60}},
        {{.by = By::major, .steps = 2}, {60, 62, 64, 65, 67, 69, 71}, {64, 65, 67, 69, 71, 72, 74}},
        {{.by = By::major, .steps = -1}, {60, 61, 71}, {59, 60, 69}},
        {{.by = By::major, .steps = 7, .tonic = 2}, {0, 1, 61, 62}, {12, 13, 73, 74}},
        {{.by = By::minor, .steps = 1, .tonic = 9}, {69, 71, 72, 74, 76, 77, 79}, {71, 72, 74, 76, 77, 79, 81}},
        {{.by = By::major, .steps = -74}, {127}, {0}},
    };
    for (const Case& c : cases) {
        ToolsSong song;
        CBlk& blk = song.block(1, 0, 5000);
        for (std::size_t i = 0; i < c.before.size(); ++i) song.note(blk, static_cast<std::uint32_t>(i), c.before[i]);
        const std::vector<EvntRef> refs = song.all();
        const EditPlan plan = transpose(refs, c.settings);
        song.edit(plan);
        EXPECT_EQ(keys(refs), c.after);
        EXPECT_EQ(plan.fault == PlanFault::keyRange, c.before == c.after);
        EXPECT_EQ(plan.faulty > 0, c.before == c.after);
    }
}

TEST(Transpose, TakesThePressureOfKeysAlongAndLeavesControllers)
{
    ToolsSong song;
    CBlk& blk = song.block(1, 0, 5000);
    song.note(blk, 0, 60);
    song.send(blk, 1, status::polyPressure, 60, 5);
    song.send(blk, 2, status::control, 7, 5);
    song.edit(transpose(song.all(), {.steps = 1}));
    EXPECT_EQ(keys(song.all()), (Numbers{61, 61, 7}));
}

TEST(Velocity, FollowsItsModeWithinBounds)
{
    using Mode = VelocitySettings::Mode;
    struct Case {
        VelocitySettings settings;
        Numbers after;
    };
    const Case cases[] = {
        {{.mode = Mode::add, .amount = 30}, {31, 81, 127, 127}},
        {{.mode = Mode::add, .amount = -60}, {1, 1, 40, 67}},
        {{.mode = Mode::scale, .percent = 150}, {2, 77, 127, 127}},
        {{.mode = Mode::scale, .percent = 0}, {1, 1, 1, 1}},
        {{.mode = Mode::set, .amount = 64}, {64, 64, 64, 64}},
        {{.mode = Mode::compress, .percent = 50, .centre = 51}, {26, 51, 76, 89}},
        {{.mode = Mode::compress, .percent = 0, .centre = 80}, {80, 80, 80, 80}},
        {{.mode = Mode::ramp, .from = 20, .to = 120}, {20, 45, 70, 120}},
        {{.mode = Mode::ramp, .from = 120, .to = 20}, {120, 95, 70, 20}},
    };
    for (const Case& c : cases) {
        ToolsSong song;
        CBlk& blk = song.block(1, 0, 5000);
        song.note(blk, 1000, 60, 100, 1);
        song.note(blk, 1100, 60, 100, 51);
        song.note(blk, 1200, 60, 100, 100);
        song.note(blk, 1400, 60, 100, 127);
        song.edit(changeVelocity(song.all(), c.settings));
        EXPECT_EQ(velocities(song.all()), c.after);
    }
}

TEST(GateTime, FollowsItsModeAndStaysAboveNothing)
{
    using Mode = GateSettings::Mode;
    const GridLength beat = [](const _EDT_MEASINFO& meas) { return meas.beatClock; };
    struct Case {
        GateSettings settings;
        Numbers after;
    };
    const Case cases[] = {
        {{.mode = Mode::add, .ticks = -150, .length = {}}, {1, 50, 1, 350}},
        {{.mode = Mode::scale, .percent = 25, .length = {}}, {25, 50, 25, 125}},
        {{.mode = Mode::set, .percent = 50, .length = beat}, {240, 240, 120, 120}},
        // The first two make a chord, the third begins on its own, the last has no next.
        {{.mode = Mode::legato, .length = {}, .gap = 20}, {1980, 1980, 80, 500}},
        {{.mode = Mode::legato, .length = {}, .gap = -10}, {2010, 2010, 110, 500}},
        {{.mode = Mode::legato, .length = {}, .gap = 480}, {1520, 1520, 1, 500}},
    };
    for (const Case& c : cases) {
        ToolsSong song;
        song.sign(1920, 7, 3);
        CBlk& blk = song.block(1, 0, 5000);
        song.note(blk, 0, 60, 100);
        song.note(blk, 0, 64, 200);
        song.note(blk, 2000, 67, 100);
        song.note(blk, 2100, 67, 500);
        song.note(song.block(2, 0, 5000), 50, 67, 500); // another track is nobody's next
        song.edit(changeGate(song.editor, song.all(), c.settings));
        EXPECT_EQ(gates(song.all(1)), c.after);
    }
}

TEST(ThinOut, KeepsEveryStreamInShape)
{
    struct Case {
        ThinSettings settings;
        Numbers left; ///< times
    };
    // A ramp of a step each 5 ticks to 40, a pause, and a jump.
    const Case cases[] = {
        {{.ticks = 10, .value = 0}, {0, 10, 20, 30, 40, 100, 103}},
        {{.ticks = 12, .value = 0}, {0, 15, 30, 40, 100, 103}},
        {{.ticks = 10, .value = 1}, {0, 5, 10, 15, 20, 25, 30, 35, 40, 100, 103}},
        {{.ticks = 0, .value = 3}, {0, 15, 30, 103}},
        {{.ticks = 0, .value = 0}, {0, 5, 10, 15, 20, 25, 30, 35, 40, 100, 103}},
        {{.ticks = 1000, .value = 4}, {0, 20, 40, 103}},
    };
    for (const Case& c : cases) {
        ToolsSong song;
        CBlk& blk = song.block(1, 0, 5000);
        for (int i = 0; i <= 8; ++i) song.send(blk, static_cast<std::uint32_t>(5 * i), status::pitchBend, 77, 64 + i);
        song.send(blk, 100, status::pitchBend, 77, 72);
        song.send(blk, 103, status::pitchBend, 77, 100);
        song.send(blk, 1, status::pitchBend | 1, 0, 64); // streams of their own
        song.send(blk, 1, status::control, 7, 64);
        song.send(blk, 1, status::control, 11, 64);
        song.note(blk, 2, 60);
        const EditPlan plan = thinOut(song.all(), c.settings);
        if (plan.count() > 0) test::expectUndoable(song.editor, [&] { apply(song.editor, plan); });
        Numbers times;
        for (const EvntRef& ref : song.all())
            if (ToolsSong::event(ref).GetStatus() == status::pitchBend)
                times.push_back(static_cast<int>(ToolsSong::time(ref)));
        EXPECT_EQ(times, c.left) << c.settings.ticks << ' ' << c.settings.value;
        EXPECT_EQ(song.all().size(), c.left.size() + 4);
    }
}

TEST(DoubleNotes, LeaveTheLongest)
{
    ToolsSong song;
    CBlk& blk = song.block(1, 0, 5000);
    song.note(blk, 10, 60, 100, 1);
    song.note(blk, 10, 60, 300, 2);
    song.note(blk, 10, 60, 300, 3);
    song.note(blk, 10, 61, 100, 4);
    song.note(blk, 10, 60, 100, 5, 1);
    song.note(blk, 11, 60, 100, 6);
    song.note(song.block(1, 10, 5000), 10, 60, 50, 7); // in a block of the same track
    song.note(song.block(2, 0, 5000), 10, 60, 50, 8);
    test::expectUndoable(song.editor, [&] { apply(song.editor, removeDoubles(song.all())); });
    EXPECT_EQ(velocities(song.all()), (Numbers{2, 4, 5, 6, 8}));
    EXPECT_EQ(removeDoubles(song.all()).count(), 0U);
}

TEST(ChordSort, OrdersWhatBeginsTogether)
{
    ToolsSong song;
    CBlk& blk = song.block(1, 0, 5000);
    for (const int key : {64, 60, 67}) song.note(blk, 10, key);
    for (const int key : {50, 55}) song.note(blk, 20, key);
    const EditPlan plan = sortChords(song.all());
    EXPECT_EQ(plan.count(), 3U);
    test::expectUndoable(song.editor, [&] { apply(song.editor, plan); });
    EXPECT_EQ(keys(song.all()), (Numbers{60, 64, 67, 50, 55}));
}

TEST(Split, ByPitchGoesToABlockAtTheSamePlace)
{
    ToolsSong song;
    CBlk& blk = song.block(1, 100, 2000);
    for (const int key : {40, 60, 59, 80}) song.note(blk, 200 + static_cast<std::uint32_t>(key), key);
    song.send(blk, 300, status::control, 7, 1);
    std::vector<EvntRef> made;
    test::expectUndoable(song.editor,
                         [&] { made = apply(song.editor, splitByPitch(song.all(), {.key = 60, .track = 5})); });
    EXPECT_EQ(keys(song.all(1)), (Numbers{60, 80, 7}));
    EXPECT_EQ(keys(song.all(5)), (Numbers{40, 59}));
    EXPECT_EQ(made, song.all(5));
    EXPECT_EQ(List<CBlk>::get(song.editor.GetHeadBlkPos(5))->GetTimeTop(), 100U);
    EXPECT_EQ(List<CBlk>::get(song.editor.GetHeadBlkPos(5))->GetTimeEnd(), 2000U);
}

TEST(Split, ByChannelAndByVoiceTakeEmptyTracks)
{
    ToolsSong song;
    CBlk& blk = song.block(1, 0, 2000);
    song.editor.SetTrkCh(1, 2);
    song.editor.SetTrkPort(1, 3);
    song.block(2, 0, 2000);
    song.note(blk, 0, 40, 10, 100, 9);
    song.note(blk, 0, 50, 10, 100, 2);
    song.send(blk, 1, status::control | 9, 7, 1);
    song.send(blk, 1, status::program | 4, 7);
    test::expectUndoable(song.editor, [&] { apply(song.editor, splitByChannel(song.editor, song.all())); });
    EXPECT_EQ(keys(song.all(1)), (Numbers{50}));
    EXPECT_EQ(keys(song.all(3)), (Numbers{40, 7}));
    EXPECT_EQ(song.editor.song().trk(3)->GetCh(), 9);
    EXPECT_EQ(song.editor.song().trk(3)->GetPort(), 3);
    EXPECT_EQ(song.editor.song().trk(4)->GetCh(), 4);

    song.note(blk, 0, 70);
    song.note(blk, 0, 60);
    song.note(blk, 500, 20);
    song.edit(separateChords(song.editor, song.all(1)));
    EXPECT_EQ(keys(song.all(1)), (Numbers{70, 20}));
    EXPECT_EQ(keys(song.all(5)), (Numbers{60}));
    EXPECT_EQ(keys(song.all(6)), (Numbers{50}));
    EXPECT_EQ(song.editor.song().trk(6)->GetCh(), 2);

    for (int track = 7; track < trackCount; ++track) song.block(track, 0, 10);
    song.note(blk, 500, 10);
    const EditPlan plan = separateChords(song.editor, song.all(1));
    EXPECT_EQ(plan.fault, PlanFault::emptyTracks);
    test::expectRefused(song.editor, [&] { return !apply(song.editor, plan).empty(); });
}

TEST(EditPlan, LeavesLinkedBlocksOutAndSaysSoOnce)
{
    ToolsSong song;
    CBlk& blk = song.block(1, 0, 480);
    const EvntRef note = song.note(blk, 0, 60, 100);
    song.note(blk, 10, 60, 100);
    song.edit({});
    ASSERT_TRUE(song.editor.BlkGhost(song.editor.GetTrkPos(1), &blk, song.editor.GetTrkPos(2), 960));
    std::vector<EvntRef> linked;
    for (const EvntRef& ref : song.all(1))
        linked.push_back({song.editor.GetTrkPos(2), song.editor.GetHeadBlkPos(2), ref.evnt});
    test::expectRefused(song.editor, [&] { return !apply(song.editor, transpose(linked, {.steps = 1})).empty(); });
    EXPECT_EQ(song.user.messages, (std::vector<int>{989}));
    linked.push_back(note);
    song.edit(transpose(linked, {.steps = 1}));
    EXPECT_EQ(keys({note}), (Numbers{61}));
    EXPECT_EQ(song.user.messages, (std::vector<int>{989, 989}));
}

TEST(EditPlan, GrowsBlocksAsPartOfTheStep)
{
    ToolsSong song;
    CBlk& blk = song.block(1, 0, 480);
    song.note(blk, 0, 60, 100);
    song.note(blk, 400, 60, 80);
    int hints = 0;
    test::FakeView view;
    view.read = [&](int code, CEditor*) { hints += code == hint::blkReSize; };
    song.editor.addObserver(&view);
    test::expectUndoable(song.editor, [&] {
        apply(song.editor,
              changeGate(song.editor, song.all(), {.mode = GateSettings::Mode::scale, .percent = 400, .length = {}}));
        EXPECT_EQ(hints, 1);
    });
    EXPECT_EQ(blk.GetTimeEnd(), 720U);
    song.editor.removeObserver(&view);
}

} // namespace
} // namespace tessaro
