// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/commands/key_map.h"
#include "views/frame/frame_menus.h"

#include <QPointer>

namespace tessaro {

class KeysDialog;
class UiText;

/// All commands of the main window with their keys, and the table where they are found and changed.
class KeyCommands {
public:
    /// The keys are as the store holds them from now on. The window owns the table; everything outlives this object.
    KeyCommands(QWidget& window, const FrameMenus& menus, SettingsStore& store, const UiText& text);

    [[nodiscard]] KeyMap& map() { return m_map; }
    /// Opens the table, or raises it.
    KeysDialog& show();
    void retranslate();

private:
    QWidget& m_window;
    const UiText& m_text;
    const CommandList m_list;
    KeyMap m_map;
    QPointer<KeysDialog> m_dialog;
};

} // namespace tessaro
