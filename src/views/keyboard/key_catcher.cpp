// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/keyboard/key_catcher.h"

#include "views/keyboard/typed_keyboard.h"
#include "views/keyboard/typed_layout.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace tessaro {
namespace {

constexpr int firstNamedKey = 0x01000000; ///< Escape, arrows, function keys and their like

/// A number for the key that stays the same until it is let go.
int numberOf(const QKeyEvent& event)
{
    return event.nativeScanCode() != 0 ? static_cast<int>(event.nativeScanCode()) : event.key() + 0x10000;
}

bool takesText(const QWidget* widget)
{
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget)
        || qobject_cast<const QComboBox*>(widget);
}

} // namespace

KeyCatcher::KeyCatcher(TypedKeyboard& keyboard, const QWidget& window) : m_keyboard(keyboard), m_window(window)
{
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive) m_keyboard.releaseAll();
    });
    connect(qApp, &QApplication::focusChanged, this, [this] {
        if (m_on && !hasKeys()) m_keyboard.releaseAll();
    });
}

KeyCatcher::~KeyCatcher() { setOn(false); }

void KeyCatcher::setOn(bool on)
{
    if (on == m_on) return;
    m_on = on;
    if (on) {
        qApp->installEventFilter(this);
    } else {
        qApp->removeEventFilter(this);
        m_keyboard.releaseAll();
    }
}

bool KeyCatcher::hasKeys() const
{
    if (!m_on || QApplication::activeModalWidget() || QApplication::activePopupWidget()) return false;
    const QWidget* active = QApplication::activeWindow();
    const bool ours = active == &m_window || (active && active->parentWidget() == &m_window);
    return ours && !takesText(QApplication::focusWidget());
}

bool KeyCatcher::isNote(const QKeyEvent& event) const
{
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool keypad = event.modifiers() & Qt::KeypadModifier;
    return !command && !keypad && event.key() > Qt::Key_Space && event.key() < firstNamedKey;
}

void KeyCatcher::play(const QKeyEvent& event)
{
    if (event.isAutoRepeat()) return;
    if (const auto semitone = semitoneOfKey(event.nativeScanCode(), event.key()))
        m_keyboard.press(numberOf(event), *semitone);
}

bool KeyCatcher::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (!isNote(key) || !hasKeys()) break;
        event->accept();
        if (event->type() == QEvent::KeyPress) play(key);
        return true;
    }
    case QEvent::KeyRelease:
        if (const auto& key = static_cast<const QKeyEvent&>(*event); !key.isAutoRepeat())
            m_keyboard.release(numberOf(key));
        break;
    default: break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tessaro
