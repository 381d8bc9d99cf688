// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/commands.h"
#include "cli/console_user.h"
#include "cli/message_lines.h"
#include "cli/offline_run.h"
#include "cli/position.h"
#include "cli/simulated_ports.h"
#include "cli/track_list.h"

#include <numeric>

namespace tessaro::cli {

namespace {

struct Loop {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

/// None for places that are no places of the song; a loop of equal points where none is wanted.
std::optional<Loop> loopOf(const std::vector<std::string>& places, const CEditor& editor)
{
    if (places.empty()) return Loop{};
    const std::optional<PlayRange> range = PlayRange::of(places[0], places[1], editor);
    if (!range) return std::nullopt;
    return Loop{range->from, range->to.value_or(range->from)};
}

void setSwitches(CEditor& editor, const SimulateOptions& options)
{
    const std::vector<int> muted = tracksOf(options.mute).value_or(std::vector<int>());
    for (const int trk : muted) editor.SetTrkMute(trk, true);
    if (options.solo != 0) editor.SetTrkSolo(options.solo, true);
    editor.SetTrkOnOff();
}

} // namespace

int runSimulate(const SimulateOptions& options)
{
    ManualClock clock;
    SimulatedPorts ports;
    ConsoleUser user(options.file);
    MessageLines lines(stdout);
    Player player(clock, ports, user, &lines);
    if (!player.open(options.file)) return exitFailure;
    const std::optional<PlayRange> range = PlayRange::of(options.from, options.to, player.editor());
    const std::optional<Loop> loop = loopOf(options.loop, player.editor());
    if (!range || !loop) return exitUsage;

    std::vector<std::int32_t> drivers(player.portCount());
    std::iota(drivers.begin(), drivers.end(), 0);
    if (!player.startEngine(drivers)) return exitFailure;
    setSwitches(player.editor(), options);

    Smc& smc = player.smc();
    smc.smcLocateQuiet(range->from, !options.noChase);
    smc.smcSetLoopStart(loop->start);
    std::optional<std::int64_t> ticks;
    if (smc.smcSetLoopEnd(loop->end); loop->end != loop->start)
        ticks = range->to.value_or(player.editor().GetTimeEnd());
    else if (range->to)
        ticks = std::int64_t{*range->to} - range->from;
    lines.startAt(clock.now());
    smc.smcPlayStart();
    runOffline(player, clock, ticks);
    return exitSuccess;
}

} // namespace tessaro::cli
