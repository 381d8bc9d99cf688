// SPDX-License-Identifier: GPL-3.0-or-later
// What a note costs when a standard MIDI file is opened: time should stay flat from small songs to large ones,
// and when all notes of one pitch are open at once.
#include "large_song.h"
#include "song_loader.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <memory>

namespace {

using tessaro::bench::SongLoader;

std::size_t heapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

void importSong(benchmark::State& state, const std::vector<std::uint8_t>& song)
{
    const auto notes = static_cast<double>(state.range(0));
    double held = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<std::uint8_t> buffer = song;
        buffer.resize(song.size() + 16);
        auto loader = std::make_unique<SongLoader>();
        const std::size_t before = heapInUse();
        state.ResumeTiming();
        if (!loader->load(buffer)) state.SkipWithError("the file was refused");
        state.PauseTiming();
        held = static_cast<double>(heapInUse() - before);
        if (loader->notes() != state.range(0)) state.SkipWithError("notes were lost");
        loader.reset();
        state.ResumeTiming();
    }
    state.counters["bytes/note"] = held / notes;
    state.counters["s/note"] =
        benchmark::Counter(notes, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void importChunks(benchmark::State& state)
{
    importSong(state, tessaro::bench::largeSong(static_cast<std::uint32_t>(state.range(0)), 96));
}

void importAllOpen(benchmark::State& state)
{
    importSong(state, tessaro::bench::allOpenSong(static_cast<std::uint32_t>(state.range(0))));
}

} // namespace

BENCHMARK(importChunks)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(importAllOpen)->RangeMultiplier(10)->Range(1000, 1000000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
