// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/commands/key_field.h"

#include <QKeyEvent>

namespace tessaro {
namespace {

bool isModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta
        || key == Qt::Key_AltGr || key == Qt::Key_unknown || key == 0;
}

/// Keys that move through the window in place of being taken.
bool isForWindow(const QKeyEvent& key)
{
    const bool plain = !(key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    return plain
        && (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab || key.key() == Qt::Key_Return
            || key.key() == Qt::Key_Enter);
}

QKeySequence sequence(const QKeyEvent& key)
{
    Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    // A sign that needs Shift, as "+" does, is named by itself.
    if (key.key() < Qt::Key_Escape && !QChar(key.key()).isLetterOrNumber() && key.key() != Qt::Key_Space)
        modifiers &= ~Qt::ShiftModifier;
    return QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(key.key())));
}

} // namespace

KeyField::KeyField(QWidget* parent) : QLineEdit(parent)
{
    setReadOnly(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

void KeyField::setKey(const QKeySequence& key)
{
    if (key == m_key) return;
    m_key = key;
    setText(key.toString(QKeySequence::NativeText));
    if (onKey) onKey();
}

bool KeyField::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && !isForWindow(static_cast<QKeyEvent&>(*event))) {
        event->accept(); // it is to be noted, not obeyed
        return true;
    }
    return QLineEdit::event(event);
}

void KeyField::keyPressEvent(QKeyEvent* event)
{
    if (isForWindow(*event)) {
        event->ignore();
        return;
    }
    event->accept();
    const bool plain = event->modifiers() == Qt::NoModifier;
    if (plain && (event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Escape)) {
        if (m_key.isEmpty() && event->key() == Qt::Key_Escape) event->ignore();
        setKey({});
    } else if (!isModifier(event->key())) {
        setKey(sequence(*event));
    }
}

} // namespace tessaro
