// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_command.h"

namespace tessaro {

class Grid;

/// What the commands of child windows do to the grid, which is the same in all of them.
namespace grid_commands {

/// Whether it is a command of the grid and can be run now.
[[nodiscard]] bool can(const Grid& grid, ViewCommand command);
[[nodiscard]] bool isOn(const Grid& grid, ViewCommand command);
/// False for a command of something else.
bool run(Grid& grid, ViewCommand command);

} // namespace grid_commands
} // namespace tessaro
