// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/panel_dock.h"

#include "core/ports/settings_store.h"
#include "views/frame/window_placement.h"
#include "views/widgets/dock_grip.h"

#include <QMainWindow>
#include <QScreen>

namespace tessaro {
namespace {

constexpr const char* section = "User Settings";
constexpr const char* placeKey = "Control Panel Place";
constexpr int dropBelow = 120; ///< of the first window of its own, below the top of the main window

} // namespace

PanelDock::PanelDock(QMainWindow& window, QWidget* panel, SettingsStore& store)
    : QDockWidget(&window)
    , m_window(window)
    , m_store(store)
{
    setObjectName(QStringLiteral("controlPanel"));
    setAllowedAreas(Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
    setFeatures(DockWidgetMovable | DockWidgetFloatable | DockWidgetVerticalTitleBar);
    setTitleBarWidget(new DockGrip(this));
    setWidget(panel);
    window.addDockWidget(Qt::TopDockWidgetArea, this);
}

PanelPlace PanelDock::place() const
{
    if (isFloating()) return PanelPlace::floating;
    return m_window.dockWidgetArea(const_cast<PanelDock*>(this)) == Qt::BottomDockWidgetArea ? PanelPlace::bottom
                                                                                             : PanelPlace::top;
}

void PanelDock::setPlace(PanelPlace place)
{
    if (place == this->place()) return;
    if (place == PanelPlace::floating) {
        const QPoint corner = m_window.mapToGlobal(QPoint(0, dropBelow));
        setFloating(true);
        move(corner);
        resize(sizeHint().boundedTo(screen()->availableSize()));
        return;
    }
    setFloating(false);
    m_window.addDockWidget(place == PanelPlace::bottom ? Qt::BottomDockWidgetArea : Qt::TopDockWidgetArea, this);
}

void PanelDock::restorePlace()
{
    const int place = m_store.getInt(section, placeKey, 0);
    if (place == static_cast<int>(PanelPlace::bottom)) setPlace(PanelPlace::bottom);
    if (place != static_cast<int>(PanelPlace::floating)) return;
    const auto stood = loadPlacement(m_store, PlacedWindow::panel, screen()->size());
    if (!stood) return;
    setFloating(true);
    setGeometry(stood->place);
}

void PanelDock::savePlace() const
{
    m_store.setInt(section, placeKey, static_cast<int>(place()));
    if (!isFloating()) return;
    savePlacement(m_store, PlacedWindow::panel, {.place = geometry()}, screen()->size());
}

} // namespace tessaro
