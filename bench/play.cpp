// SPDX-License-Identifier: GPL-3.0-or-later
// How much faster than real time a song of 4 minutes on 16 channels goes through feeder and engine on the manual clock.
#include "base/manual_clock.h"
#include "base/strings.h"
#include "core/doc/profile_store.h"
#include "core/edit/editor.h"
#include "no_document.h"
#include "realtime/loom/loom.h"
#include "realtime/loom/midi_system.h"
#include "realtime/loom/send_observer.h"
#include "realtime/play/smc.h"

#include <benchmark/benchmark.h>

namespace {

using namespace tessaro;

constexpr std::uint32_t songBeats = 480; // 4 minutes at 120 beats a minute
constexpr double songSeconds = 240;

class OneOutput final : public MidiSystem {
public:
    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override { return {"out"}; }
    [[nodiscard]] std::vector<std::string> inputs() const override { return {}; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t) override { return std::make_unique<Out>(); }
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t, MidiInSink&, std::size_t) override { return nullptr; }

private:
    struct Out final : MidiOut {
        bool send(std::span<const std::uint8_t>, Nanos) noexcept override { return true; }
    };
};

class Counter final : public SendObserver {
public:
    std::size_t count = 0;
    void sent(const SentMessage&) noexcept override { ++count; }
};

/// 16 tracks of a block every 8 beats, each beat of a track with `notes` notes and a controller.
void fill(CEditor& editor, std::uint32_t notes)
{
    for (int track = 1; track <= 16; ++track) {
        for (std::uint32_t top = 0; top < songBeats * 480; top += 8 * 480) {
            editor.NewBlk(track, top);
            CBlk& blk = *editor.song().trk(track)->blocks().tail();
            for (std::uint32_t beat = 0; beat < 8; ++beat) {
                for (std::uint32_t n = 0; n < notes; ++n) {
                    _EDT_EVNT note;
                    note.status = 0x90;
                    note.time = beat * 480 + n * 480 / notes;
                    note.post1 = static_cast<std::uint8_t>(36 + (beat * 5 + n) % 48);
                    note.post2 = 100;
                    note.gateTime = 200;
                    blk.GetRealBlk()->InsEvnt(note);
                }
                _EDT_EVNT bend;
                bend.status = 0xE0;
                bend.time = beat * 480 + 7;
                bend.post2 = 64;
                blk.GetRealBlk()->InsEvnt(bend);
            }
            blk.SetTimeEnd(top + 8 * 480);
        }
    }
    editor.InitMeasInfo();
    editor.InitTimeInfo();
}

void playSong(benchmark::State& state)
{
    ManualClock clock;
    OneOutput midi;
    Counter counter;
    ProfileStore settings{std::string{}};
    NullUser user;
    Strings strings{Language::english};
    Loom loom{clock, midi};
    Smc smc{{loom, clock, settings, settings, user, strings}};
    loom.setSendObserver(&counter);
    bench::NoDocument document;
    bench::NoFiles files;
    QuietPorts quiet;
    CEditor editor{quiet.with(document, files)};
    fill(editor, static_cast<std::uint32_t>(state.range(0)));
    smc.startEngine();
    const std::int32_t drivers[] = {0};
    smc.setOutPorts(drivers, 8192, 2000);
    smc.smcBindSong(&editor);

    for (auto _ : state) {
        counter.count = 0;
        smc.smcLocateQuiet(0, true);
        smc.smcPlayStart();
        while (loom.getLoomQueplying()) clock.sleepFor(std::chrono::seconds{1});
        smc.smcPlayStop();
    }
    state.counters["messages"] = static_cast<double>(counter.count);
    state.counters["times_real"] =
        benchmark::Counter(songSeconds * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
    smc.smcBindSong(nullptr);
    smc.stopEngine();
}

BENCHMARK(playSong)->Arg(1)->Arg(4)->Arg(16)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
