// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/grid_commands.h"

#include "views/roll/grid.h"

namespace tessaro::grid_commands {

bool can(const Grid& grid, ViewCommand command)
{
    switch (command) {
    case ViewCommand::gridFree: return true;
    case ViewCommand::gridFiner: return !grid.isFree() && grid.canRefine(1);
    case ViewCommand::gridCoarser: return !grid.isFree() && grid.canRefine(-1);
    default: return false;
    }
}

bool isOn(const Grid& grid, ViewCommand command) { return command == ViewCommand::gridFree && grid.isFree(); }

bool run(Grid& grid, ViewCommand command)
{
    switch (command) {
    case ViewCommand::gridFree: grid.setFree(!grid.isFree()); return true;
    case ViewCommand::gridFiner: grid.refine(1); return true;
    case ViewCommand::gridCoarser: grid.refine(-1); return true;
    default: return false;
    }
}

} // namespace tessaro::grid_commands
