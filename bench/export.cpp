// SPDX-License-Identifier: GPL-3.0-or-later
// What a note costs when a song is written as a standard MIDI file: time should stay flat from small songs to large
// ones, from one track or many, and when all notes sound at once.
#include "large_song.h"
#include "song_loader.h"

#include <benchmark/benchmark.h>

namespace {

using tessaro::bench::SongLoader;

void exportSong(benchmark::State& state, std::vector<std::uint8_t> song, std::uint8_t kind)
{
    song.resize(song.size() + 16);
    SongLoader loader;
    if (!loader.load(song)) state.SkipWithError("the file was refused");
    for (auto _ : state) {
        std::vector<std::uint8_t> file;
        tessaro::VectorSink sink(file);
        if (!loader.save(kind, sink)) state.SkipWithError("the song was not written");
        benchmark::DoNotOptimize(file.data());
    }
    const auto notes = static_cast<double>(state.range(0));
    state.counters["s/note"] =
        benchmark::Counter(notes, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

std::uint32_t notes(const benchmark::State& state) { return static_cast<std::uint32_t>(state.range(0)); }

void exportFormat0(benchmark::State& state) { exportSong(state, tessaro::bench::largeSong(notes(state), 96), 1); }
void exportFormat1(benchmark::State& state) { exportSong(state, tessaro::bench::largeSong(notes(state), 96), 2); }
void exportAllOpen(benchmark::State& state) { exportSong(state, tessaro::bench::allOpenSong(notes(state)), 1); }

} // namespace

BENCHMARK(exportFormat0)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(exportFormat1)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(exportAllOpen)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
