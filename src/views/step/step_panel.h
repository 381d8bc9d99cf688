// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/step/step_chooser.h"

#include <QAction>
#include <QWidget>

#include <array>
#include <functional>

class QLabel;
class QSpinBox;

namespace tessaro {

class Icons;
class UiText;

/// The strip that chooses the next note of step input: its length as a picture, dotted, in three or in five, velocity
/// and duration; and a button for a rest. Its keys work while it is seen.
class StepPanel : public QWidget {
public:
    /// All outlive the panel.
    StepPanel(StepChooser& chooser, const Icons& icons, const UiText& text, QWidget* parent = nullptr);

    std::function<void()> onRest;

    void retranslate();

    [[nodiscard]] QAction& length(int number) { return m_lengths[static_cast<std::size_t>(number)]; }
    [[nodiscard]] QAction& kind(StepKind kind) { return m_kinds[static_cast<std::size_t>(kind) - 1]; }
    [[nodiscard]] QAction& rest() { return m_rest; }
    [[nodiscard]] QSpinBox& velocityBox() const { return *m_velocity; }
    [[nodiscard]] QSpinBox& durationBox() const { return *m_duration; }

private:
    void showChoice();

    StepChooser& m_chooser;
    const UiText& m_text;
    std::array<QAction, StepChooser::lengths> m_lengths;
    std::array<QAction, 3> m_kinds; ///< dotted, triplet, quintuplet; none checked is plain
    QAction m_rest;
    // Children of the panel.
    QLabel* m_velocityName;
    QSpinBox* m_velocity;
    QLabel* m_durationName;
    QSpinBox* m_duration;
};

} // namespace tessaro
