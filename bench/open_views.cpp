// SPDX-License-Identifier: GPL-3.0-or-later
// From a file of 1,000,000 notes on 100 tracks to what can be seen in the main window, 1920 x 1080: how long it takes,
// which part of it is what, and how much memory the program then holds.
#include "files/recognise.h"
#include "large_song.h"
#include "song_loader.h"
#include "window_program.h"

#include <benchmark/benchmark.h>
namespace {

using namespace tessaro;

constexpr std::uint32_t tracks = 100;

struct Files {
    bench::WindowProgram window;
    bench::Paintings paintings;
    std::string path;

    Files(std::uint32_t notes, std::uint8_t kind)
    {
        std::vector<std::uint8_t> bytes = bench::largeSong(notes, tracks + 1);
        if (kind == filekind::native) bytes = native(std::move(bytes));
        path = window.write(kind == filekind::native ? "song.TQM" : "song.mid", bytes);
    }

private:
    static std::vector<std::uint8_t> native(std::vector<std::uint8_t> midi)
    {
        struct Sink final : ByteSink {
            bool write(std::span<const std::uint8_t> more) override
            {
                bytes.insert(bytes.end(), more.begin(), more.end());
                return true;
            }
            std::vector<std::uint8_t> bytes;
        } sink;
        midi.resize(midi.size() + 16);
        bench::SongLoader loader;
        if (!loader.load(midi) || !loader.save(filekind::native, sink)) std::abort();
        return std::move(sink.bytes);
    }
};

/// Into the window that stands.
void open(benchmark::State& state, std::uint8_t kind)
{
    Files files(static_cast<std::uint32_t>(state.range(0)), kind);
    files.window.start();
    files.paintings.all();
    CMainFrame& frame = files.window.program().frame();
    if (frame.size() != bench::windowSize) state.SkipWithError("the window has another size");
    bench::Least all;
    bench::Least load;
    bench::Least paint;
    bench::Least rest;
    for (auto _ : state) {
        const bench::Duration loading = bench::timed([&] { frame.openFile(QString::fromStdString(files.path)); });
        const bench::Duration painting = bench::timed([&] { files.paintings.first(); });
        rest.add(bench::timed([&] { files.paintings.all(); }));
        load.add(loading);
        paint.add(painting);
        bench::Duration both = loading;
        both += painting;
        all.add(both);
        state.SetIterationTime(both.wall / 1000);
        state.PauseTiming();
        state.counters["RSS MB"] = bench::residentMegabytes();
        files.window.program().app().OnFileNew();
        files.paintings.all();
        state.ResumeTiming();
    }
    state.counters["least wall"] = all().wall;
    state.counters["least cpu"] = all().cpu;
    state.counters["load"] = load().cpu;
    state.counters["first paint"] = paint().cpu;
    state.counters["all pictures"] = rest().cpu;
}

/// The program starts with it, all child windows that stood open included: the track window alone.
void start(benchmark::State& state, std::uint8_t kind)
{
    Files files(static_cast<std::uint32_t>(state.range(0)), kind);
    bench::Least all;
    for (auto _ : state) {
        const bench::Duration duration = bench::timed([&] {
            files.window.start(files.path);
            files.paintings.first();
        });
        all.add(duration);
        state.SetIterationTime(duration.wall / 1000);
        state.PauseTiming();
        files.window.stop();
        state.ResumeTiming();
    }
    state.counters["least wall"] = all().wall;
    state.counters["least cpu"] = all().cpu;
}

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->ArgName("notes")->Arg(10'000)->Arg(1'000'000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(open, native, filekind::native)->Apply(sizes);
BENCHMARK_CAPTURE(open, midi, filekind::smf1)->Apply(sizes);
BENCHMARK_CAPTURE(start, native, filekind::native)->Apply(sizes);
BENCHMARK_CAPTURE(start, midi, filekind::smf1)->Apply(sizes);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.warning=false");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
