// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"

#include <QKeySequence>
#include <QList>

#include <deque>
#include <string>
#include <vector>

class QAction;

namespace tessaro {

/// Something that a person can ask of the program.
struct Command {
    std::string id; ///< for the settings, for ever
    TextId group;   ///< the title of the menu where it stands
    TextId name;
    QAction* action; ///< borrowed
    QList<QKeySequence> usualKeys;
};

/// A menu's title and what stands in it, without what stands in the menus below it.
struct CommandGroup {
    TextId title;
    QList<QAction*> actions;
};

/// All commands of the program, group by group. Once they are arranged commands keep their address.
class CommandList {
public:
    /// The keys that the action has by now are the usual ones.
    void add(std::string id, TextId name, QAction& action);
    /// Puts the commands into these groups, in their order; each stands in one. Before anyone holds a command.
    void arrange(const std::vector<CommandGroup>& groups);

    [[nodiscard]] const std::deque<Command>& all() const { return m_commands; }

private:
    std::deque<Command> m_commands;
};

} // namespace tessaro
