// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/commands/command_list.h"

namespace tessaro {

class SettingsStore;

/// The keys of all commands. They stand in the commands' actions; what differs from the usual ones is kept in the
/// store. A key that another command has is only given away when asked for, so that no key means two things.
class KeyMap {
public:
    /// Both outlive this object. Takes over what the store holds.
    KeyMap(const CommandList& commands, SettingsStore& store);

    [[nodiscard]] const CommandList& commands() const { return m_commands; }
    [[nodiscard]] static QList<QKeySequence> keys(const Command& command);
    [[nodiscard]] static bool isUsual(const Command& command);
    /// The command that has the key; null for none.
    [[nodiscard]] const Command* owner(const QKeySequence& key) const;

    /// The command's keys from now on. Another command loses those of them that it has.
    void setKeys(const Command& command, const QList<QKeySequence>& keys);
    /// Back to the usual keys, apart from those that another command was given.
    void reset(const Command& command);
    void resetAll();

private:
    void load();
    void give(const Command& command, const QList<QKeySequence>& keys);
    void save();

    const CommandList& m_commands;
    SettingsStore& m_store;
};

} // namespace tessaro
