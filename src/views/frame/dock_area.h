// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>

#include <vector>

class QAction;

namespace tessaro {

class ChildDock;
class Icons;

/// Where docks stand around a widget in the middle: as tabs, side by side, or one alone over the whole area; panels at
/// the right. Docks are children of the area.
class DockArea : public QMainWindow {
public:
    /// Takes the middle over; icons outlive the area.
    DockArea(QWidget* middle, const Icons& icons);

    /// Takes a panel over that docks like the windows, at the right side and hidden at first. The command
    /// shows and hides it.
    ChildDock& addPanel(const QString& name, QWidget* panel, const QAction& command);

    [[nodiscard]] bool isMaximised() const { return !m_beforeMaximised.isEmpty(); }
    [[nodiscard]] QMenu* createPopupMenu() override { return nullptr; }

protected:
    void add(ChildDock& dock);
    /// As a tab of the last one that is docked; the first below the middle.
    void place(ChildDock& dock);
    void take(ChildDock& dock);
    /// The docked ones in rows below the middle, in a square as far as that goes.
    void tileDocks();
    void tabDocks();
    /// All but this dock give way; null for the middle.
    void maximise(const ChildDock* dock);
    void endMaximise();

    /// As they are while none is maximised.
    [[nodiscard]] QByteArray places() const { return isMaximised() ? m_beforeMaximised : saveState(); }

private:
    [[nodiscard]] QList<ChildDock*> docked() const;
    [[nodiscard]] int firstHeight() const;

    const Icons& m_icons;
    std::vector<ChildDock*> m_docks;
    std::vector<ChildDock*> m_panels;
    QByteArray m_beforeMaximised; ///< empty while none is
};

} // namespace tessaro
