// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/step_control.h"

#include "realtime/transport/cnp_window.h"
#include "views/frame/frame_parts.h"
#include "views/step/step_panel.h"
#include "views/text/ui_text.h"

#include <QDockWidget>
#include <QMainWindow>

namespace tessaro {

StepControl::StepControl(QMainWindow& window, const FrameParts& parts, QAction& toggle)
    : m_parts(parts)
    , m_dock(new QDockWidget(&window))
    , m_panel(new StepPanel(m_chooser, parts.icons, parts.text, m_dock))
{
    m_dock->setObjectName(QStringLiteral("stepInput"));
    m_dock->setAllowedAreas(Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
    m_dock->setWidget(m_panel);
    window.addDockWidget(Qt::BottomDockWidgetArea, m_dock);
    m_dock->hide();
    m_panel->onRest = [this] {
        CCnpWindow& panel = m_parts.panel;
        if (panel.IsStepRec() && panel.recorder().state() == RecState::recording) panel.SpaceKey();
    };
    m_chooser.onInput = [this](bool on) {
        if (on || !m_openedByPerson) m_dock->setVisible(on);
    };
    connect(&toggle, &QAction::triggered, this, [this](bool on) {
        m_openedByPerson = on;
        m_dock->setVisible(on);
    });
    connect(m_dock->toggleViewAction(), &QAction::toggled, this, [this, &toggle](bool open) {
        toggle.setChecked(open);
        if (!open) m_openedByPerson = false;
    });
    m_parts.panel.recorder().setPalette(&m_chooser);
}

StepControl::~StepControl() { m_parts.panel.recorder().setPalette(nullptr); }

void StepControl::retranslate()
{
    m_dock->setWindowTitle(m_parts.text(TextId::stepTitle));
    m_panel->retranslate();
}

} // namespace tessaro
