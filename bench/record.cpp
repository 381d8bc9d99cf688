// SPDX-License-Identifier: GPL-3.0-or-later
// What one received message costs the window while a take runs, with and without its journal.
#include "base/manual_clock.h"
#include "base/strings.h"
#include "core/doc/profile_store.h"
#include "core/edit/editor.h"
#include "core/ports/take_keeper.h"
#include "no_document.h"
#include "realtime/loom/loom.h"
#include "realtime/loom/midi_system.h"
#include "realtime/play/smc.h"
#include "realtime/transport/cnp_window.h"

#include <benchmark/benchmark.h>

#include <array>
#include <filesystem>

namespace {

using namespace tessaro;

constexpr std::size_t burst = 512;

/// One input, which the benchmark plays.
class OneInput final : public MidiSystem {
public:
    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override { return {}; }
    [[nodiscard]] std::vector<std::string> inputs() const override { return {"in"}; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t) override { return nullptr; }
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t, MidiInSink& to, std::size_t) override
    {
        sink = &to;
        return std::make_unique<In>();
    }

    MidiInSink* sink = nullptr;

private:
    struct In final : MidiIn {};
};

/// Keeps the entries that are to be taken in.
struct Owner final : MessageTarget {
    std::vector<const LoomRingEntry*> entries;
    bool post(const Message& message) noexcept override
    {
        if (message.id == msg::data) entries.push_back(reinterpret_cast<const LoomRingEntry*>(message.lParam));
        return true;
    }
    void send(const Message&) override {}
};

struct Keeper final : TakeKeeper {
    std::string path;
    std::string beginTake() override { return path; }
    void endTake() override {}
};

void receive(benchmark::State& state)
{
    ManualClock clock;
    OneInput midi;
    Owner owner;
    Keeper keeper;
    const std::string journal =
        (std::filesystem::temp_directory_path() / ("tessaro-bench-" + std::to_string(clock.now().count()))).string();
    if (state.range(0) != 0) keeper.path = journal;
    ProfileStore settings{std::string{}};
    NullUser user;
    Strings strings{Language::english};
    Loom loom{clock, midi};
    Smc smc{{loom, clock, settings, settings, user, strings}};
    CCnpWindow panel{{smc, clock, settings, user, strings}};
    bench::NoDocument document;
    bench::NoFiles files;
    QuietPorts quiet;
    CEditor editor{quiet.with(document, files)};
    panel.setMainFrame(&owner);
    panel.recorder().setKeeper(&keeper);
    smc.startEngine();
    smc.setInPort(0, 8192);
    smc.smcBindSong(&editor);
    for (int track = 1; track <= 16; ++track) editor.SetTrkRec(track, true);
    panel.ShortCutRECClicked();
    panel.Start();
    clock.sleepFor(std::chrono::milliseconds{100});

    std::uint8_t value = 0;
    std::size_t count = 0;
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t i = 0; i < burst; i += 16) {
            for (std::uint8_t channel = 0; channel < 16; ++channel) {
                const auto on = static_cast<std::uint8_t>((value & 1U) == 0 ? 0x90U : 0x80U);
                const std::array<std::uint8_t, 3> note{static_cast<std::uint8_t>(on | channel), 60, 100};
                midi.sink->received(note, clock.now());
            }
            ++value;
            clock.sleepFor(std::chrono::milliseconds{5});
        }
        clock.sleepFor(std::chrono::milliseconds{20});
        const auto start = std::chrono::steady_clock::now();
        for (const LoomRingEntry* entry : owner.entries) panel.received(*entry);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(took.count());
        count += owner.entries.size();
        owner.entries.clear();
        panel.recorder().passed(smc.smcGetPlayCount(), {});
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(count));
    panel.Stop();
    smc.smcBindSong(nullptr);
    smc.stopEngine();
    std::filesystem::remove(journal);
}

BENCHMARK(receive)->ArgName("journal")->Arg(0)->Arg(1)->UseManualTime()->Iterations(400);

} // namespace

BENCHMARK_MAIN();
