// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QTimer>

#include <functional>

namespace tessaro {

/// A command that lasts as long as a button or a key holds it, and may repeat meanwhile. Chosen from a menu it is
/// triggered once, like any other. A key is let go at the latest when the window loses the focus.
class HeldAction : public QAction {
public:
    HeldAction();

    /// It goes down, or repeats; with the modifiers that were held beside its key or button.
    std::function<void(Qt::KeyboardModifiers)> onHold;
    std::function<void()> onRelease;
    void setRepeating(bool on) { m_repeats = on; }

    void press(Qt::KeyboardModifiers modifiers);
    void repeat();
    void release();
    [[nodiscard]] bool isHeld() const { return m_held; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTimer m_timer;
    Qt::KeyboardModifiers m_modifiers;
    int m_key = 0; ///< that holds it; 0 for none
    bool m_repeats = true;
    bool m_held = false;
};

} // namespace tessaro
