// SPDX-License-Identifier: GPL-3.0-or-later
// What the person waits for when 100,000 of 1,000,000 notes on 100 tracks are edited with all five child windows in
// sight: the edit, its undo and redo, each with the painting behind it.
#include "large_song.h"
#include "views/frame/editor_windows.h"
#include "views/tracks/track_frame.h"
#include "window_program.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

using namespace tessaro;

constexpr std::uint32_t selectionSize = 100'000;
constexpr std::uint32_t tracks = 100;
constexpr int edited = 1;     ///< the one that holds them all
constexpr int blkTracks = 11; ///< of the others hold as many together

struct Song {
    bench::WindowProgram window;
    bench::Paintings paintings;
    ChildFrame* piano = nullptr;

    explicit Song(std::uint32_t notes)
    {
        const std::string path =
            window.write("song.mid", bench::unevenSong(selectionSize, notes - selectionSize, tracks + 1));
        window.start();
        frame().openFile(QString::fromStdString(path));
        for (const WindowKind kind : {WindowKind::eventList, WindowKind::masterTrack, WindowKind::drum})
            frame().windows().open(kind, edited);
        piano = frame().windows().open(WindowKind::piano, edited);
        frame().windows().tile();
        paintings.all();
        const auto seen = [](const ChildFrame* child) { return !child->visibleRegion().isEmpty(); };
        if (frame().size() != bench::windowSize || !std::ranges::all_of(frame().windows().windows(), seen))
            std::abort();
    }
    CMainFrame& frame() { return window.program().frame(); }
    CEditor& editor() { return window.program().document().GetEditor(); }
    ChildFrame& active() { return *frame().windows().active(); }
    /// All notes of one track, in the piano roll.
    void selectNotes()
    {
        frame().windows().activate(*piano);
        piano->run(ViewCommand::selectAll);
        paintings.all();
    }
    /// As many, in blocks of other tracks.
    void selectBlks()
    {
        std::vector<BlkRef> blks;
        for (int track = edited + 1; track <= edited + blkTracks; ++track)
            blks.push_back({editor().GetTrkPos(track), editor().GetHeadBlkPos(track)});
        frame().trackFrame().selection().setBlks(blks);
        frame().windows().activate(frame().trackFrame());
        paintings.all();
    }
};

/// One for all: making it takes longer than most of what is measured. It goes before the application does.
std::unique_ptr<Song>& keptSong()
{
    static std::unique_ptr<Song> kept;
    return kept;
}

Song& song()
{
    if (!keptSong()) keptSong() = std::make_unique<Song>(1'000'000);
    return *keptSong();
}

using Act = void (*)(Song&);
void notes(Song& song) { song.selectNotes(); }
void blocks(Song& song) { song.selectBlks(); }
void move(Song& song) { song.active().run(ViewCommand::nudgeRight); }
void transpose(Song& song) { song.active().run(ViewCommand::nudgeUp); }
void quantise(Song& song) { song.frame().edits().run(EverydayEdit::quantiseAgain); }
void remove(Song& song) { song.active().run(ViewCommand::remove); }
void undo(Song& song) { song.frame().actions().undo.trigger(); }
void redo(Song& song) { song.frame().actions().redo.trigger(); }

struct Phase {
    bench::Least work;
    bench::Least painting;
    bench::Least both;

    double operator()(Song& song, Act act)
    {
        const bench::Duration working = bench::timed([&] { act(song); });
        const bench::Duration paint = bench::timed([&] { song.paintings.all(); });
        bench::Duration sum = working;
        sum += paint;
        work.add(working);
        painting.add(paint);
        both.add(sum);
        return sum.wall;
    }
    void report(benchmark::State& state, const std::string& name) const
    {
        state.counters[name] = both().wall;
        state.counters[name + " cpu"] = both().cpu;
        state.counters[name + " paint"] = painting().cpu;
    }
};

void edit(benchmark::State& state, Act select, Act act)
{
    Song& at = song();
    select(at);
    if (at.active().selectedEvnts().size() < selectionSize) state.SkipWithError("less is selected");
    Phase done;
    Phase undone;
    Phase redone;
    for (auto _ : state) {
        state.SetIterationTime(done(at, act) / 1000);
        state.PauseTiming();
        if (!at.frame().actions().undo.isEnabled()) state.SkipWithError("nothing was done");
        undone(at, undo);
        redone(at, redo);
        undo(at);
        select(at);
        state.ResumeTiming();
    }
    done.report(state, "edit");
    undone.report(state, "undo");
    redone.report(state, "redo");
    state.counters["RSS MB"] = bench::residentMegabytes();
}

#define TESSARO_EDIT(select, name)                                                                                     \
    BENCHMARK_CAPTURE(edit, name##_##select, select, name)                                                             \
        ->Iterations(5)                                                                                                \
        ->UseManualTime()                                                                                              \
        ->Unit(benchmark::kMillisecond)

TESSARO_EDIT(notes, move);
TESSARO_EDIT(notes, transpose);
TESSARO_EDIT(notes, quantise);
TESSARO_EDIT(notes, remove);
TESSARO_EDIT(blocks, quantise);

void selectAll(benchmark::State& state)
{
    Song& at = song();
    Phase done;
    for (auto _ : state) {
        state.PauseTiming();
        at.piano->run(ViewCommand::selectNone);
        at.paintings.all();
        state.ResumeTiming();
        state.SetIterationTime(done(at, [](Song& s) { s.piano->run(ViewCommand::selectAll); }) / 1000);
    }
    done.report(state, "select");
}
BENCHMARK(selectAll)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.warning=false");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    keptSong().reset();
    return 0;
}
