// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/real_clock.h"
#include "cli/commands.h"
#include "platform/platform_midi.h"

#include <cstdio>
#include <vector>

namespace tessaro::cli {

namespace {

void printList(const char* title, const std::vector<std::string>& names)
{
    std::printf("%s:\n", title);
    for (std::size_t i = 0; i < names.size(); ++i) std::printf("  %zu %s\n", i, names[i].c_str());
}

} // namespace

int runDevices()
{
    RealClock clock;
    PlatformMidi midi(clock);
    printList("MIDI out", midi.outputs());
    printList("MIDI in", midi.inputs());
    printList("wave in", midi.waveInputs());
    printList("wave out", midi.waveOutputs());
    return exitSuccess;
}

} // namespace tessaro::cli
