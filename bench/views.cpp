// SPDX-License-Identifier: GPL-3.0-or-later
// What a frame of the child windows costs, painted to an image of 1920 x 1080 while they scroll and zoom, against the
// notes in sight and the notes in the song; and how long it takes from a song in memory to the first painting.
#include "views/parts_fixture.h"
#include "views/theme/theme.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/trk_blk_view.h"

#include <QApplication>
#include <QImage>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

using namespace tessaro;

constexpr int tracks = 100;
constexpr std::uint32_t chord = 240; ///< ticks from one chord of three notes to the next
constexpr std::uint32_t blkLength = 16 * 1920;

/// So many notes on 100 tracks, in blocks of 16 bars.
struct LargeSong : PartsFixture {
    explicit LargeSong(std::int64_t count)
    {
        const auto each = static_cast<std::uint32_t>(count / tracks);
        for (int track = 1; track <= tracks; ++track) {
            CBlk* blk = nullptr;
            for (std::uint32_t n = 0; n < each; ++n) {
                const std::uint32_t time = n / 3 * chord;
                if (!blk || time >= blk->GetTimeEnd()) blk = &addBlock(track, time, time + blkLength);
                addNote(*blk, time, static_cast<int>(36 + n / 3 * 7 % 48 + n % 3 * 4), 228);
            }
        }
        bind();
    }
    [[nodiscard]] std::int64_t notesIn(const TrkGeometry& geometry) const
    {
        const TrkGeometry::Span span = geometry.times();
        const QRect shown({0, 0}, geometry.size());
        std::int64_t found = 0;
        for (int track = geometry.firstTrack(shown); track <= geometry.lastTrack(shown); ++track)
            for (const CBlk* blk = editor.song().trk(track)->blocks().head(); blk; blk = List<CBlk>::next(blk))
                for (const CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
                    found +=
                        blk->GetTimeTop() + e->GetTime() >= span.from && blk->GetTimeTop() + e->GetTime() < span.to;
        return found;
    }
};

struct TrackWindow {
    CTrackFrame frame;
    QImage image{1920, 1080, QImage::Format_RGB32};

    explicit TrackWindow(const ViewParts& parts) : frame(parts)
    {
        frame.resize(1920 + 600, 1080 + 100);
        frame.ensurePolished();
        frame.grab(); // lays it out
        frame.resize(frame.width() + 1920 - view().viewport()->width(),
                     frame.height() + 1080 - view().viewport()->height());
    }
    CTrkBlkView& view() { return frame.blkView(); }
    void paint() { view().viewport()->render(&image); }
};

/// The song is made once for each size.
LargeSong& songOf(std::int64_t notes)
{
    static std::unique_ptr<LargeSong> song;
    static std::int64_t size = 0;
    if (size != notes) {
        song = nullptr;
        song = std::make_unique<LargeSong>(notes);
        size = notes;
    }
    return *song;
}

void report(benchmark::State& state, TrackWindow& window, const LargeSong& song)
{
    state.counters["in view"] = static_cast<double>(song.notesIn(window.view().geometry()));
    state.counters["frames/s"] = benchmark::Counter(1, benchmark::Counter::kIsIterationInvariantRate);
}

/// A bar a frame, there and back.
void scrollTracks(benchmark::State& state)
{
    LargeSong& song = songOf(state.range(0));
    TrackWindow window(song.parts);
    window.view().setZoom(static_cast<double>(state.range(1)));
    const std::uint32_t end = song.editor.GetTimeEnd();
    std::uint32_t at = 0;
    for (auto _ : state) {
        at = (at + 1920) % std::max(end / 2, 1921U);
        window.view().setPosition(at, false);
        window.view().setOrigin(at);
        window.paint();
    }
    window.view().setOrigin(0);
    report(state, window, song);
}

/// In by steps from all to a bar, and out again.
void zoomTracks(benchmark::State& state)
{
    LargeSong& song = songOf(state.range(0));
    TrackWindow window(song.parts);
    window.view().setZoom(TrkGeometry::mostZoom);
    double step = 1;
    for (auto _ : state) {
        window.view().zoomBy(step);
        window.view().setOrigin(0);
        const double zoom = window.view().geometry().zoom();
        if (zoom <= TrkGeometry::leastZoom) step = -1;
        if (zoom >= TrkGeometry::mostZoom) step = 1;
        window.paint();
    }
    window.view().setZoom(TrkGeometry::mostZoom);
    report(state, window, song); // with all that fits in sight
}

/// From the song in memory to what can be seen.
void firstPaintTracks(benchmark::State& state)
{
    LargeSong& song = songOf(state.range(0));
    for (auto _ : state) {
        TrackWindow window(song.parts);
        window.view().setZoom(TrkGeometry::mostZoom);
        window.paint();
    }
}

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->ArgNames({"notes", "zoom"})->Unit(benchmark::kMillisecond);
    for (const std::int64_t notes : {10000, 100000, 1000000})
        for (const std::int64_t zoom : {6, 48, 384}) bench->Args({notes, zoom});
}

BENCHMARK(scrollTracks)->Apply(sizes);
BENCHMARK(zoomTracks)->ArgName("notes")->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(firstPaintTracks)
    ->ArgName("notes")
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
