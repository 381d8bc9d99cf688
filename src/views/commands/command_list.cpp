// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/commands/command_list.h"

#include <QAction>

#include <algorithm>
#include <unordered_map>

namespace tessaro {

void CommandList::add(std::string id, TextId name, QAction& action)
{
    m_commands.push_back({std::move(id), {}, name, &action, action.shortcuts()});
}

void CommandList::arrange(const std::vector<CommandGroup>& groups)
{
    struct Place {
        TextId group;
        std::size_t order;
    };
    std::unordered_map<const QAction*, Place> places;
    for (const CommandGroup& group : groups)
        for (const QAction* action : group.actions) places.try_emplace(action, Place{group.title, places.size()});
    for (Command& command : m_commands) command.group = places.at(command.action).group;
    std::ranges::sort(m_commands, {}, [&](const Command& command) { return places.at(command.action).order; });
}

} // namespace tessaro
