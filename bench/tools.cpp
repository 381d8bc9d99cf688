// SPDX-License-Identifier: GPL-3.0-or-later
// What the everyday edits of 100,000 selected notes cost, planning and undo included: flat in the size of the song.
#include "core/edit/undo_scope.h"
#include "core/tools/gate_time.h"
#include "core/tools/humanise.h"
#include "core/tools/quantise.h"
#include "core/tools/shift.h"
#include "core/tools/split.h"
#include "core/tools/transpose.h"
#include "no_document.h"

#include <benchmark/benchmark.h>

#include <array>
#include <random>

namespace {

using namespace tessaro;

constexpr std::uint32_t selectionSize = 100000;
constexpr int tracks = 100;

/// Notes on 100 tracks, chords of three off the grid; the same share of each track is selected.
struct Song {
    bench::NoDocument document;
    bench::NoFiles files;
    QuietPorts quiet;
    CEditor editor{quiet.with(document, files)};
    std::vector<EvntRef> selection;

    explicit Song(std::uint32_t notes)
    {
        std::mt19937 dice(1);
        const std::uint32_t stride = notes / selectionSize;
        for (int track = 1; track <= tracks; ++track) {
            editor.SetTrkTypePrivate(track, trktype::midi);
            editor.NewBlk(track, 0);
            const POSITION trk = editor.GetTrkPos(track);
            const POSITION blk = editor.GetHeadBlkPos(trk);
            _EDT_EVNT rec;
            rec.status = status::note;
            rec.post2 = 80;
            rec.gateTime = 100;
            const std::uint32_t count = notes / tracks;
            for (std::uint32_t n = 0; n < count; ++n) {
                rec.time = n / 3 * 120 + static_cast<std::uint32_t>(dice() % 30);
                rec.post1 = static_cast<std::uint8_t>(30 + n % 60);
                List<CBlk>::get(blk)->InsEvnt(rec);
            }
            List<CBlk>::get(blk)->SetTimeEnd(rec.time + 200);
            POSITION evnt = editor.GetHeadEvntPos(trk, blk);
            for (std::uint32_t n = 0; evnt; ++n, evnt = evnt->next)
                if (n % stride == 0) selection.push_back({trk, blk, evnt});
        }
    }
};

GridLength sixteenth()
{
    return [](const _EDT_MEASINFO& meas) { return meas.beatClock / 4; };
}

EditPlan quantised(const Song& song)
{
    return quantise(song.editor, song.selection, {.grid = sixteenth(), .swing = 30});
}
EditPlan quantisedBoth(const Song& song)
{
    return quantise(song.editor, song.selection, {.grid = sixteenth(), .what = QuantiseSettings::What::both});
}
EditPlan humanised(const Song& song)
{
    return humanise(song.selection, {.time = 20, .velocity = 20, .gate = 20, .seed = 1});
}
EditPlan transposed(const Song& song) { return transpose(song.selection, {.steps = 7}); }
EditPlan shifted(const Song& song) { return shift(song.editor, song.selection, {.bars = 2, .ticks = 3}); }
EditPlan legato(const Song& song)
{
    return changeGate(song.editor, song.selection, {.mode = GateSettings::Mode::legato, .length = {}});
}
EditPlan split(const Song& song) { return splitByPitch(song.selection, {.key = 60, .track = 100}); }

using Plan = EditPlan (*)(const Song&);
enum class Timed { edit, undo };

void measure(benchmark::State& state, Timed timed, Plan plan)
{
    Song song(static_cast<std::uint32_t>(state.range(0)));
    const auto run = [&](Timed phase, auto&& call) {
        if (phase == timed) state.ResumeTiming();
        call();
        if (phase == timed) state.PauseTiming();
    };
    for (auto _ : state) {
        state.PauseTiming();
        run(Timed::edit, [&] {
            const UndoScope step(song.editor, "edit");
            apply(song.editor, plan(song));
        });
        run(Timed::undo, [&] { song.editor.UndoNode(); });
        state.ResumeTiming();
    }
}

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->ArgName("notes")->Unit(benchmark::kMillisecond)->Arg(100000)->Arg(1000000);
}

#define TESSARO_EDIT(name)                                                                                             \
    BENCHMARK_CAPTURE(measure, name, Timed::edit, name)->Apply(sizes);                                                 \
    BENCHMARK_CAPTURE(measure, undo_##name, Timed::undo, name)->Apply(sizes)

TESSARO_EDIT(quantised);
TESSARO_EDIT(quantisedBoth);
TESSARO_EDIT(humanised);
TESSARO_EDIT(transposed);
TESSARO_EDIT(shifted);
TESSARO_EDIT(legato);
TESSARO_EDIT(split);

} // namespace

BENCHMARK_MAIN();
