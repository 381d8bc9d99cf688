// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"

#include <initializer_list>

class QMenu;

namespace tessaro {

struct CommandButton {
    ViewCommand command;
    const char* icon;
};

/// Buttons of commands side by side, for the tool bar of a child window. The caller owns them, and may add more to
/// their layout.
[[nodiscard]] QWidget* commandButtons(const ViewParts& parts, std::initializer_list<CommandButton> buttons);
/// Adds commands to a context menu, and a line below them.
void addCommands(QMenu& menu, ViewActions& actions, std::initializer_list<ViewCommand> commands);

} // namespace tessaro
