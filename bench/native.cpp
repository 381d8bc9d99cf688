// SPDX-License-Identifier: GPL-3.0-or-later
// What a note costs when a native song file is opened and when it is saved: time should stay flat from small songs to
// large ones.
#include "files/recognise.h"
#include "large_song.h"
#include "song_loader.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using tessaro::VectorSink;
using tessaro::bench::SongLoader;

void loadSong(SongLoader& loader, const benchmark::State& state)
{
    std::vector<std::uint8_t> buffer = tessaro::bench::largeSong(static_cast<std::uint32_t>(state.range(0)), 96);
    buffer.resize(buffer.size() + 16);
    loader.load(buffer);
}

std::vector<std::uint8_t> saved(SongLoader& loader)
{
    std::vector<std::uint8_t> bytes;
    VectorSink sink(bytes);
    loader.save(tessaro::filekind::native, sink);
    return bytes;
}

void tellNotes(benchmark::State& state)
{
    state.counters["s/note"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void saveNative(benchmark::State& state)
{
    SongLoader loader;
    loadSong(loader, state);
    for (auto _ : state)
        if (saved(loader).empty()) state.SkipWithError("the song was not saved");
    tellNotes(state);
}

void loadNative(benchmark::State& state)
{
    SongLoader source;
    loadSong(source, state);
    const std::vector<std::uint8_t> song = saved(source);
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<std::uint8_t> buffer = song;
        buffer.resize(song.size() + 16);
        auto loader = std::make_unique<SongLoader>();
        state.ResumeTiming();
        if (!loader->load(buffer)) state.SkipWithError("the file was refused");
        state.PauseTiming();
        if (loader->notes() != state.range(0)) state.SkipWithError("notes were lost");
        loader.reset();
        state.ResumeTiming();
    }
    tellNotes(state);
}

} // namespace

BENCHMARK(saveNative)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(loadNative)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
