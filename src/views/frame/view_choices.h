// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <functional>

namespace tessaro {

class FrameActions;
class PanelDock;
struct FrameParts;

/// The commands that choose how the windows look and stand: appearance, language, the control panel's place, and
/// whether the start opens the windows of the last time. The store keeps what was chosen.
class ViewChoices : public QObject {
public:
    /// Actions, dock and parts outlive this object.
    ViewChoices(const FrameParts& parts, FrameActions& actions, PanelDock& dock);

    /// Another language was chosen.
    std::function<void()> onLanguage;

    /// Checks the place where the panel is.
    void showPanelPlace();

private:
    FrameActions& m_actions;
    PanelDock& m_dock;
};

} // namespace tessaro
