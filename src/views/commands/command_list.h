// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"

#include <QKeySequence>
#include <QList>

#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>

class QAction;

namespace tessaro {

/// Something that a person can ask of the program.
struct Command {
    std::string id; ///< for the settings, for ever
    TextId group;   ///< the title of its menu
    TextId name;
    QAction* action; ///< borrowed; null for a key of one widget, which stays as it is
    QList<QKeySequence> usualKeys;
};

/// All commands of the program, group by group. Once they are arranged commands keep their address.
class CommandList {
public:
    /// The keys that the action has by now are the usual ones.
    void add(std::string id, TextId group, TextId name, QAction& action);
    void addFixed(TextId group, TextId name, const QKeySequence& key);
    /// Puts the groups into this order; within a group all stay as they were added. Before anyone holds a command.
    void arrange(std::initializer_list<TextId> groups);

    [[nodiscard]] const std::deque<Command>& all() const { return m_commands; }
    /// Null for an unknown one.
    [[nodiscard]] const Command* find(std::string_view id) const;

private:
    std::deque<Command> m_commands;
};

} // namespace tessaro
