// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/commands/command_list.h"

#include <QAction>

#include <algorithm>

namespace tessaro {

void CommandList::add(std::string id, TextId group, TextId name, QAction& action)
{
    m_commands.push_back({std::move(id), group, name, &action, action.shortcuts()});
}

void CommandList::addFixed(TextId group, TextId name, const QKeySequence& key)
{
    m_commands.push_back({{}, group, name, nullptr, {key}});
}

void CommandList::arrange(std::initializer_list<TextId> groups)
{
    const auto place = [&](const Command& command) {
        return std::ranges::find(groups, command.group) - groups.begin();
    };
    std::ranges::stable_sort(m_commands, {}, place);
}

const Command* CommandList::find(std::string_view id) const
{
    const auto found = std::ranges::find(m_commands, id, &Command::id);
    return found == m_commands.end() ? nullptr : &*found;
}

} // namespace tessaro
