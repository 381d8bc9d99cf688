// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/held_action.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QShortcutEvent>

namespace tessaro {
namespace {

constexpr int firstPause = 400; // ms
constexpr int pause = 100;

} // namespace

HeldAction::HeldAction()
{
    setAutoRepeat(false); // the timer repeats, not the keyboard
    connect(&m_timer, &QTimer::timeout, this, [this] { repeat(); });
}

void HeldAction::press(Qt::KeyboardModifiers modifiers)
{
    if (m_held || !isEnabled()) return;
    m_held = true;
    m_modifiers = modifiers;
    if (m_repeats) m_timer.start(firstPause);
    if (onHold) onHold(m_modifiers);
}

void HeldAction::repeat()
{
    if (!m_held) return;
    m_timer.setInterval(pause);
    if (onHold) onHold(m_modifiers);
}

void HeldAction::release()
{
    if (!m_held) return;
    m_held = false;
    m_timer.stop();
    if (m_key != 0) QCoreApplication::instance()->removeEventFilter(this);
    m_key = 0;
    if (onRelease) onRelease();
}

bool HeldAction::event(QEvent* event)
{
    if (event->type() != QEvent::Shortcut) return QAction::event(event);
    const QKeyCombination pressed = static_cast<QShortcutEvent*>(event)->key()[0];
    const Qt::KeyboardModifiers own = shortcut()[0].keyboardModifiers();
    if (!m_held) {
        m_key = pressed.key();
        QCoreApplication::instance()->installEventFilter(this);
        press(pressed.keyboardModifiers() & ~own);
    }
    return true;
}

bool HeldAction::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationDeactivate || event->type() == QEvent::WindowDeactivate) {
        release();
    } else if (event->type() == QEvent::KeyRelease) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == m_key && !key->isAutoRepeat()) release();
    }
    return QAction::eventFilter(watched, event);
}

} // namespace tessaro
