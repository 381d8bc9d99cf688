// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/key_commands.h"

#include "views/commands/keys_dialog.h"

namespace tessaro {

KeyCommands::KeyCommands(QWidget& window, const FrameMenus& menus, SettingsStore& store, const UiText& text)
    : m_window(window)
    , m_text(text)
    , m_list(menus.commands())
    , m_map(m_list, store)
{
}

KeysDialog& KeyCommands::show()
{
    if (!m_dialog) {
        m_dialog = new KeysDialog(m_map, m_text, &m_window);
        m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
    return *m_dialog;
}

void KeyCommands::retranslate()
{
    if (m_dialog) m_dialog->retranslate();
}

} // namespace tessaro
