// SPDX-License-Identifier: GPL-3.0-or-later
// What a frame of the piano roll and of the drum grid costs at 1920 x 1080 while they scroll and zoom: it goes with the
// notes in view, not with those of the song. The notes are spread over 100 tracks, with the shadows of all others, or
// stand on one.
#include "views/drum/drum_view.h"
#include "views/parts_fixture.h"
#include "views/roll/piano_view.h"
#include "views/theme/theme.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

using namespace tessaro;

constexpr QSize frameSize(1920, 1080);
constexpr std::uint32_t chordStep = 240;

/// Chords of three eighths, the blocks sixteen measures long.
struct Song : PartsFixture {
    std::uint32_t end = 0;

    Song(std::int64_t count, int tracks)
    {
        constexpr std::int64_t blkNotes = 16 * 8 * 3;
        for (int track = 1; track <= tracks; ++track) {
            const std::int64_t share = count / tracks;
            for (std::int64_t done = 0; done < share; done += blkNotes) {
                const auto top = static_cast<std::uint32_t>(done / 3 * chordStep);
                CBlk& blk = addBlock(track, top, top + 16 * 1920);
                for (std::int64_t i = 0; i < std::min(blkNotes, share - done); ++i) addChordNote(blk, done + i, track);
                end = std::max(end, top + 16 * 1920);
            }
        }
        bind();
    }

private:
    static void addChordNote(CBlk& blk, std::int64_t n, int track)
    {
        _EDT_EVNT rec;
        rec.status = status::note;
        rec.time = static_cast<std::uint32_t>(n / 3 % (16 * 8) * chordStep);
        rec.post1 = static_cast<std::uint8_t>(36 + (n / 3 * 7 + n % 3 * 4 + track) % 60);
        rec.post2 = static_cast<std::uint8_t>(1 + n * 31 % 127);
        rec.gateTime = 228;
        CEvnt* evnt = nullptr;
        blk.GetRealBlk()->NewAddTail(&evnt);
        evnt->Set(rec);
    }
};

template <class View>
void paint(benchmark::State& state)
{
    const int tracks = static_cast<int>(state.range(1));
    Song song(state.range(0), tracks);
    View view(song.parts);
    view.setTrack(1);
    view.setShadows(tracks > 1);
    view.resize(frameSize);
    QImage image(frameSize, QImage::Format_ARGB32_Premultiplied);
    view.render(&image); // builds the tables
    double zoom = 4;
    std::uint32_t start = song.end / 2;
    for (auto _ : state) {
        start = (start + 1111) % (song.end / 2 + 1);
        zoom = zoom >= RollScale::mostZoom ? RollScale::leastZoom : zoom * 1.07;
        view.rescale([&](RollScale& scale) {
            scale.setZoom(zoom);
            scale.setStart(start);
        });
        QPainter painter(&image);
        view.render(&painter);
    }
    view.rescale([](RollScale& scale) { scale.setZoom(RollScale::mostZoom); });
    std::int64_t seen = 0; // at the most
    const TickRange span = view.scale().span();
    const auto [first, last] = view.scale().visibleRows();
    const int low = view.scale().keyOfRow(last);
    const int high = view.scale().keyOfRow(first);
    for (int track = 1; track <= tracks; ++track)
        song.notes.forEachNote(track, span.from, span.to, low, high, [&seen](const NoteInView&) { ++seen; });
    state.counters["in view"] = static_cast<double>(seen);
    state.counters["frames/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void sizes(benchmark::internal::Benchmark* bench)
{
    for (const std::int64_t notes : {10'000, 100'000, 1'000'000})
        for (const std::int64_t tracks : {1, 100}) bench->Args({notes, tracks});
    bench->ArgNames({"notes", "tracks"})->Unit(benchmark::kMillisecond);
}

BENCHMARK(paint<CPianoView>)->Name("piano roll")->Apply(sizes);
BENCHMARK(paint<CDrumView>)->Name("drum grid")->Apply(sizes);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    Theme theme;
    theme.setAppearance(Appearance::dark);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
