// SPDX-License-Identifier: GPL-3.0-or-later
// What editing a large selection costs an event: flat in the size of the block and in the length of the history. And
// what collecting unused real blocks costs a block.
#include "core/edit/undo_scope.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace {

using namespace tessaro;

constexpr std::size_t selectionSize = 100000;

struct NoFiles final : SongFiles {
    _EDT_FILE recognise(std::span<std::uint8_t>, std::uint32_t) override { return {}; }
    LoadResult load(const _EDT_FILE&, CEditor&) override { return LoadResult::failed; }
    bool save(std::uint8_t, CEditor&, ByteSink&) override { return false; }
};

struct NoDocument final : DocumentPort {
    void SetModifiedFlag(bool) override {}
    bool IsModified() const override { return false; }
};

struct Bench {
    QuietPorts quiet;
    NoFiles files;
    NoDocument document;
    CEditor editor{quiet.with(document, files)};
};

/// A block of so many notes, chords of three, 100,000 of them selected in the order of a drag or in none.
struct Selection : Bench {
    POSITION trk = editor.GetTrkPos(1);
    POSITION blk = nullptr;
    std::vector<POSITION> notes;
    std::uint32_t length = 0;

    Selection(std::size_t count, bool inOrder)
    {
        editor.NewBlk(1, 0);
        blk = editor.GetHeadBlkPos(1);
        _EDT_EVNT rec;
        rec.status = status::note;
        rec.gateTime = 100;
        for (std::size_t n = 0; n < count; ++n) {
            rec.time = static_cast<std::uint32_t>(n / 3 * 40);
            rec.post1 = static_cast<std::uint8_t>(n % 128);
            editor.NewAddTailEvnt(1, 0, rec);
        }
        length = rec.time;
        List<CBlk>::get(blk)->SetTimeEnd(length + 1000000);
        for (POSITION pos = List<CBlk>::get(blk)->GetHeadPos(); pos; pos = pos->next) notes.push_back(pos);
        std::mt19937 dice(1);
        std::shuffle(notes.begin(), notes.end(), dice);
        notes.resize(std::min(selectionSize, notes.size()));
        if (inOrder)
            std::sort(notes.begin(), notes.end(), [](POSITION a, POSITION b) {
                return List<CEvnt>::get(a)->GetTime() < List<CEvnt>::get(b)->GetTime();
            });
    }

    /// Steps that stay in the history, of 100 changes each.
    void makeHistory(std::int64_t steps)
    {
        for (std::int64_t n = 0; n < steps; ++n) {
            const UndoScope step(editor, "before");
            for (std::size_t i = 0; i < 100; ++i) editor.history().SetUndoEvntChng(trk, blk, notes[i]);
        }
    }
    void deleteAll()
    {
        const UndoScope step(editor, "delete");
        for (const POSITION note : notes) editor.DeleteEvnt(trk, blk, note);
    }
    /// To anywhere in the block.
    void scatter()
    {
        const UndoScope step(editor, "move");
        std::mt19937 dice(2);
        for (const POSITION note : notes)
            editor.SetLocation(trk, blk, note, static_cast<std::uint32_t>(dice() % (length + 1)));
    }
    /// All by one distance, as a drag does.
    void drag(std::uint32_t distance)
    {
        const UndoScope step(editor, "drag");
        for (auto note = notes.rbegin(); note != notes.rend(); ++note)
            editor.SetLocation(trk, blk, *note, List<CEvnt>::get(*note)->GetTime() + distance);
    }
};

/// Times `edit`, its undo or its redo: whatever is not asked for runs with the clock stopped.
enum class Timed { edit, undo, redo };

template <class Edit>
void measure(benchmark::State& state, Timed timed, bool inOrder, Edit edit)
{
    Selection song(static_cast<std::size_t>(state.range(0)), inOrder);
    song.makeHistory(state.range(1));
    const auto run = [&](Timed phase, auto&& call) {
        if (phase == timed) state.ResumeTiming();
        call();
        if (phase == timed) state.PauseTiming();
    };
    for (auto _ : state) {
        state.PauseTiming();
        run(Timed::edit, [&] { edit(song); });
        run(Timed::undo, [&] { song.editor.UndoNode(); });
        run(Timed::redo, [&] { song.editor.RedoNode(); });
        song.editor.UndoNode();
        state.ResumeTiming();
    }
    state.counters["s/event"] =
        benchmark::Counter(static_cast<double>(song.notes.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void removeAll(Selection& song) { song.deleteAll(); }
void scatterAll(Selection& song) { song.scatter(); }
void dragAll(Selection& song) { song.drag(480 * 16); }

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->ArgNames({"events", "steps"})->Unit(benchmark::kMillisecond);
    for (const std::int64_t steps : {1, 1000})
        for (const std::int64_t events : {100000, 1000000}) bench->Args({events, steps});
}

BENCHMARK_CAPTURE(measure, delete_in_order, Timed::edit, true, removeAll)->Apply(sizes);
BENCHMARK_CAPTURE(measure, delete, Timed::edit, false, removeAll)->Apply(sizes);
BENCHMARK_CAPTURE(measure, undo_delete, Timed::undo, false, removeAll)->Apply(sizes);
BENCHMARK_CAPTURE(measure, redo_delete, Timed::redo, false, removeAll)->Apply(sizes);
BENCHMARK_CAPTURE(measure, drag_in_order, Timed::edit, true, dragAll)->Apply(sizes);
BENCHMARK_CAPTURE(measure, undo_drag, Timed::undo, true, dragAll)->Apply(sizes);
BENCHMARK_CAPTURE(measure, scatter, Timed::edit, false, scatterAll)->Apply(sizes);
BENCHMARK_CAPTURE(measure, undo_scatter, Timed::undo, false, scatterAll)->Apply(sizes);
BENCHMARK_CAPTURE(measure, redo_scatter, Timed::redo, false, scatterAll)->Apply(sizes);

/// Every second real block has lost its block.
void removeScratch(benchmark::State& state)
{
    const std::int64_t blocks = state.range(0);
    for (auto _ : state) {
        state.PauseTiming();
        auto song = std::make_unique<Bench>();
        for (std::int64_t n = 0; n < blocks; ++n) {
            song->editor.NewAddTailRealBlk();
            song->editor.NewBlk(1, static_cast<std::uint32_t>(n));
        }
        state.ResumeTiming();
        song->editor.RemoveScratch();
        state.PauseTiming();
        song.reset();
        state.ResumeTiming();
    }
    state.counters["s/block"] = benchmark::Counter(
        static_cast<double>(blocks), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(removeScratch)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
