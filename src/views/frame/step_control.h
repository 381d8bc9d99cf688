// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/step/step_chooser.h"

#include <QObject>

class QAction;
class QDockWidget;
class QMainWindow;

namespace tessaro {

class StepPanel;
struct FrameParts;

/// The strip of step input: it shows itself when step input begins, and goes with it unless the person had opened it.
class StepControl : public QObject {
public:
    /// `toggle` opens and closes the strip. All outlive this object.
    StepControl(QMainWindow& window, const FrameParts& parts, QAction& toggle);
    ~StepControl() override;

    void retranslate();
    [[nodiscard]] StepChooser& chooser() { return m_chooser; }
    [[nodiscard]] StepPanel& panel() const { return *m_panel; }

private:
    const FrameParts& m_parts;
    StepChooser m_chooser;
    bool m_openedByPerson = false;
    // Children of the window.
    QDockWidget* m_dock;
    StepPanel* m_panel;
};

} // namespace tessaro
