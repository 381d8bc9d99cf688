// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace tessaro {

class TypedKeyboard;

/// Lets the computer's keys play while it is on: plain letters, digits and signs are notes and no commands, wherever
/// the focus is in the windows of the program. Space, Escape, the keys with names and those with Ctrl, Alt or Meta stay
/// what they are. It gives way to a line that text is typed into, to dialogs and to opened menus. All notes end when it
/// goes off, or the windows lose the focus.
class KeyCatcher : public QObject {
public:
    /// Both outlive it. `window` is the main window.
    KeyCatcher(TypedKeyboard& keyboard, const QWidget& window);
    ~KeyCatcher() override;

    void setOn(bool on);
    /// Whether keys are notes at this moment.
    [[nodiscard]] bool hasKeys() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool isNote(const QKeyEvent& event) const;
    void play(const QKeyEvent& event);

    TypedKeyboard& m_keyboard;
    const QWidget& m_window;
    bool m_on = false;
};

} // namespace tessaro
