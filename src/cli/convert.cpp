// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file.h"
#include "base/manual_clock.h"
#include "cli/commands.h"
#include "cli/console_user.h"
#include "cli/file_kind.h"
#include "cli/player.h"
#include "cli/simulated_ports.h"
#include "core/doc/app_directory.h"
#include "files/recognise.h"

#include <cstdio>

namespace tessaro::cli {

namespace {

/// Where waves that come with the song are unpacked: a song with waves takes them from there again.
std::string wavesFolder(std::uint8_t kind)
{
    return kind == filekind::nativeWave ? prepareAppDirectory({programFolder(), {}, dataFolder()}) : std::string();
}

} // namespace

int runConvert(const ConvertOptions& options)
{
    const auto kind = fileKindOf(options.kind, options.out);
    if (!kind) {
        std::fprintf(stderr, "tessaro-cli: %s: the ending tells no kind of file; name one with --kind\n",
                     options.out.c_str());
        return exitUsage;
    }
    ManualClock clock;
    SimulatedPorts ports;
    ConsoleUser user(options.file);
    Player player(clock, ports, user, nullptr, wavesFolder(*kind));
    if (!player.open(options.file)) return exitFailure;
    user.setFile(options.out);
    return player.doc().Save(options.out, *kind) ? exitSuccess : exitFailure;
}

} // namespace tessaro::cli
