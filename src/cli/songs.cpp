// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that look into a song without playing it.
#include "base/manual_clock.h"
#include "cli/commands.h"
#include "cli/console_user.h"
#include "cli/dump.h"
#include "cli/info.h"
#include "cli/player.h"
#include "cli/simulated_ports.h"

namespace tessaro::cli {

namespace {

int lookInto(const std::string& file, void (*print)(CEditor&, std::uint8_t, std::FILE*))
{
    ManualClock clock;
    SimulatedPorts ports;
    ConsoleUser user(file);
    Player player(clock, ports, user);
    if (!player.open(file)) return exitFailure;
    print(player.editor(), player.doc().GetFileKind(), stdout);
    return exitSuccess;
}

} // namespace

int runInfo(const std::string& file) { return lookInto(file, printInfo); }

int runDump(const std::string& file) { return lookInto(file, dumpSong); }

} // namespace tessaro::cli
