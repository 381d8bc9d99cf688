// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QWidget>

class QLabel;
class QSpinBox;

namespace tessaro {

class Icons;
class KeyboardView;
class TypedKeyboard;
class UiText;

/// The piano keys of the computer's keyboard, with octave and velocity.
class KeyboardPanel : public QWidget {
public:
    /// All outlive the panel.
    KeyboardPanel(TypedKeyboard& keyboard, const Icons& icons, const UiText& text, QWidget* parent = nullptr);

    void retranslate();
    /// Octave, velocity and keys as they are by now.
    void refresh();

    [[nodiscard]] KeyboardView& view() const { return *m_view; }
    [[nodiscard]] QSpinBox& velocityBox() const { return *m_velocity; }

private:
    TypedKeyboard& m_keyboard;
    const UiText& m_text;
    QAction m_octaveDown;
    QAction m_octaveUp;
    // Children of the panel.
    QLabel* m_octaveName;
    QLabel* m_octave;
    QLabel* m_velocityName;
    QSpinBox* m_velocity;
    KeyboardView* m_view;
};

} // namespace tessaro
