// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>

namespace tessaro {

class SettingsStore;

/// Where the control panel stands. The numbers are kept.
enum class PanelPlace { top, bottom, floating };

/// The control panel's place in the main window: at its top or bottom, or a window of its own. It is moved by its grip
/// or by a command, and comes back where it stood.
class PanelDock : public QDockWidget {
public:
    /// Takes the panel over. The store outlives the dock.
    PanelDock(QMainWindow& window, QWidget* panel, SettingsStore& store);

    [[nodiscard]] PanelPlace place() const;
    void setPlace(PanelPlace place);
    /// Puts it where it stood when it was saved; a window of its own only on the same screen.
    void restorePlace();
    void savePlace() const;

private:
    QMainWindow& m_window;
    SettingsStore& m_store;
};

} // namespace tessaro
