// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/keyboard_control.h"

#include "core/doc/tr9app.h"
#include "core/ports/devices.h"
#include "realtime/transport/typed_keys.h"
#include "views/frame/frame_parts.h"
#include "views/keyboard/keyboard_panel.h"
#include "views/keyboard/keyboard_view.h"
#include "views/text/ui_text.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>

namespace tessaro {

KeyboardControl::KeyboardControl(QMainWindow& window, const FrameParts& parts, QAction& toggle)
    : m_parts(parts)
    , m_toggle(toggle)
    , m_catcher(m_keyboard, window)
    , m_dock(new QDockWidget(&window))
    , m_panel(new KeyboardPanel(m_keyboard, parts.icons, parts.text, m_dock))
{
    m_dock->setObjectName(QStringLiteral("keyboard"));
    m_dock->setAllowedAreas(Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
    m_dock->setWidget(m_panel);
    window.addDockWidget(Qt::BottomDockWidgetArea, m_dock);
    m_dock->hide();
    m_toggle.setEnabled(m_parts.typedKeys != nullptr);
    m_keyboard.onMessage = [this](std::span<const std::uint8_t> message) {
        if (m_parts.typedKeys) m_parts.typedKeys->send(message);
    };
    m_keyboard.onChanged = [this] { m_panel->refresh(); };
    connect(&m_toggle, &QAction::triggered, this, [this](bool on) {
        m_dismissed = !on;
        setOpen(on);
    });
    connect(m_dock->toggleViewAction(), &QAction::toggled, this, [this](bool open) { follow(open); });
    connect(qApp, &QApplication::focusChanged, this, [this] { showWhoHasKeys(); });
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this] { showWhoHasKeys(); });
}

KeyboardControl::~KeyboardControl()
{
    m_catcher.setOn(false);
    m_keyboard.onChanged = nullptr;
}

bool KeyboardControl::isOpen() const { return !m_dock->isHidden(); }

void KeyboardControl::setOpen(bool open)
{
    if (m_parts.typedKeys) m_dock->setVisible(open);
}

bool KeyboardControl::offer()
{
    const int input = m_parts.app.GetMidiIn();
    const bool other = input != driver() && input < static_cast<int>(m_parts.app.GetMidiInDrvNum());
    if (!m_parts.typedKeys || other || m_dismissed || isOpen()) return false;
    setOpen(true);
    return true;
}

/// The panel was opened or closed, by whatever way.
void KeyboardControl::follow(bool open)
{
    m_toggle.setChecked(open);
    m_dismissed = m_dismissed || !open;
    m_catcher.setOn(open);
    open ? takeInput() : giveInputBack();
    showWhoHasKeys();
}

int KeyboardControl::driver() const
{
    const int count = static_cast<int>(m_parts.app.GetMidiInDrvNum());
    for (int i = 0; m_parts.typedKeys && i < count; ++i)
        if (m_parts.app.GetMidiInDrvName(static_cast<std::uint8_t>(i)) == m_parts.typedKeys->driverName()) return i;
    return -1;
}

void KeyboardControl::takeInput()
{
    const int keys = driver();
    if (keys < 0 || keys == m_parts.app.GetMidiIn()) return;
    m_parts.devices.setInPort(keys, static_cast<std::uint32_t>(m_parts.app.GetSysexSize()));
    m_hasInput = true;
}

void KeyboardControl::giveInputBack()
{
    if (!m_hasInput) return;
    m_hasInput = false;
    m_parts.devices.setInPort(m_parts.app.GetMidiIn(), static_cast<std::uint32_t>(m_parts.app.GetSysexSize()));
}

void KeyboardControl::devicesChanged()
{
    m_hasInput = false;
    m_keyboard.releaseAll();
    if (isOpen()) takeInput();
}

/// One line on how to play, in the title.
void KeyboardControl::showWhoHasKeys()
{
    const bool ours = m_catcher.hasKeys();
    m_panel->view().setHasKeys(ours);
    const TextId how = ours ? TextId::keyboardHint : TextId::keyboardAway;
    m_dock->setWindowTitle(m_parts.text(TextId::keyboardTitle).arg(m_parts.text(how)));
}

void KeyboardControl::retranslate()
{
    m_panel->retranslate();
    showWhoHasKeys();
}

} // namespace tessaro
