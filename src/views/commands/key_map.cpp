// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/commands/key_map.h"

#include "core/ports/settings_store.h"

#include <QAction>

namespace tessaro {
namespace {

constexpr const char* section = "Keys";
constexpr const char* noKeys = "none";

/// Empty for the usual keys.
std::string storedText(const Command& command)
{
    if (KeyMap::isUsual(command)) return {};
    const QList<QKeySequence> keys = KeyMap::keys(command);
    return keys.isEmpty() ? noKeys : QKeySequence::listToString(keys, QKeySequence::PortableText).toStdString();
}

QList<QKeySequence> fromStored(const std::string& text)
{
    QList<QKeySequence> keys;
    if (text == noKeys) return keys;
    for (const QKeySequence& key :
         QKeySequence::listFromString(QString::fromStdString(text), QKeySequence::PortableText))
        if (!key.isEmpty()) keys << key;
    return keys;
}

} // namespace

KeyMap::KeyMap(const CommandList& commands, SettingsStore& store) : m_commands(commands), m_store(store) { load(); }

void KeyMap::load()
{
    for (const Command& command : m_commands.all()) {
        const std::string text = m_store.getString(section, command.id, "");
        if (!text.empty()) give(command, fromStored(text));
    }
}

QList<QKeySequence> KeyMap::keys(const Command& command) { return command.action->shortcuts(); }

bool KeyMap::isUsual(const Command& command) { return keys(command) == command.usualKeys; }

const Command* KeyMap::owner(const QKeySequence& key) const
{
    for (const Command& command : m_commands.all())
        if (keys(command).contains(key)) return &command;
    return nullptr;
}

void KeyMap::give(const Command& command, const QList<QKeySequence>& keys)
{
    for (const QKeySequence& key : keys) {
        const Command* other = owner(key);
        if (!other || other == &command) continue;
        QList<QKeySequence> left = KeyMap::keys(*other);
        left.removeAll(key);
        other->action->setShortcuts(left);
    }
    command.action->setShortcuts(keys);
}

void KeyMap::save()
{
    for (const Command& command : m_commands.all()) {
        const std::string text = storedText(command);
        if (text != m_store.getString(section, command.id, "")) m_store.setString(section, command.id, text);
    }
}

void KeyMap::setKeys(const Command& command, const QList<QKeySequence>& keys)
{
    give(command, keys);
    save();
}

void KeyMap::reset(const Command& command)
{
    QList<QKeySequence> free;
    for (const QKeySequence& key : command.usualKeys)
        if (const Command* other = owner(key); !other || other == &command) free << key;
    setKeys(command, free);
}

void KeyMap::resetAll()
{
    for (const Command& command : m_commands.all()) command.action->setShortcuts(command.usualKeys);
    save();
}

} // namespace tessaro
