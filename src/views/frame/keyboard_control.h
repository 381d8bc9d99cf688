// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/keyboard/key_catcher.h"
#include "views/keyboard/typed_keyboard.h"

#include <QObject>

class QAction;
class QDockWidget;
class QMainWindow;

namespace tessaro {

class KeyboardPanel;
struct FrameParts;

/// The computer's keyboard as a MIDI input: the panel with its keys, and the input driver that they play. While the
/// panel is open this driver is the input, in the place of the one that the settings name.
class KeyboardControl : public QObject {
public:
    /// `toggle` opens and closes the panel. All outlive this object.
    KeyboardControl(QMainWindow& window, const FrameParts& parts, QAction& toggle);
    ~KeyboardControl() override;

    void setOpen(bool open);
    [[nodiscard]] bool isOpen() const;
    /// A track waits for notes: where nothing else is there to play on, the panel opens, unless the person closed it.
    /// True when it did.
    bool offer();
    /// The settings' devices have been opened anew.
    void devicesChanged();
    void retranslate();

    [[nodiscard]] TypedKeyboard& keyboard() { return m_keyboard; }
    [[nodiscard]] KeyboardPanel& panel() const { return *m_panel; }

private:
    void follow(bool open);
    void takeInput();
    void giveInputBack();
    void showWhoHasKeys();
    /// Of the keys in the list of inputs; -1 for none.
    [[nodiscard]] int driver() const;

    const FrameParts& m_parts;
    QAction& m_toggle;
    TypedKeyboard m_keyboard;
    KeyCatcher m_catcher;
    bool m_hasInput = false;  ///< in the place of another one
    bool m_dismissed = false; ///< the person closed the panel
    // Children of the window.
    QDockWidget* m_dock;
    KeyboardPanel* m_panel;
};

} // namespace tessaro
