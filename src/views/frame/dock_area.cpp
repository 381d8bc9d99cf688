// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/dock_area.h"

#include "views/frame/child_dock.h"

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

constexpr double usualShare = 0.55; ///< of the height, for the first dock
constexpr int usualPanelWidth = 220;

} // namespace

DockArea::DockArea(QWidget* middle, const Icons& icons) : m_icons(icons)
{
    setWindowFlags(Qt::Widget);
    setDockOptions(AllowNestedDocks | AllowTabbedDocks);
    setDocumentMode(true);
    setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
    setContextMenuPolicy(Qt::NoContextMenu);
    setCentralWidget(middle);
}

ChildDock& DockArea::addPanel(const QString& name, QWidget* panel, const QAction& command)
{
    auto* dock = new ChildDock(name, panel, m_icons, {nullptr, nullptr, &command});
    addDockWidget(Qt::RightDockWidgetArea, dock);
    resizeDocks({dock}, {usualPanelWidth}, Qt::Horizontal);
    dock->hide();
    m_panels.push_back(dock);
    return *dock;
}

void DockArea::add(ChildDock& dock)
{
    m_docks.push_back(&dock);
    addDockWidget(Qt::BottomDockWidgetArea, &dock);
}

void DockArea::take(ChildDock& dock)
{
    std::erase(m_docks, &dock);
    removeDockWidget(&dock);
}

QList<ChildDock*> DockArea::docked() const
{
    QList<ChildDock*> docks;
    std::ranges::copy_if(m_docks, std::back_inserter(docks), [](const ChildDock* dock) { return !dock->isFloating(); });
    return docks;
}

/// Also before the main window shows, as it is laid out then.
int DockArea::firstHeight() const { return static_cast<int>(window()->height() * usualShare); }

void DockArea::place(ChildDock& dock)
{
    QList<ChildDock*> others = docked();
    others.removeOne(&dock);
    if (others.isEmpty())
        resizeDocks({&dock}, {firstHeight()}, Qt::Vertical);
    else
        tabifyDockWidget(others.back(), &dock);
    dock.show();
}

void DockArea::tileDocks()
{
    const QList<ChildDock*> docks = docked();
    for (ChildDock* dock : docks) removeDockWidget(dock);
    const auto columns = static_cast<qsizetype>(std::ceil(std::sqrt(static_cast<double>(docks.size()))));
    for (qsizetype i = 0; i < docks.size(); ++i) {
        if (i == 0)
            addDockWidget(Qt::BottomDockWidgetArea, docks[i]);
        else if (i < columns)
            splitDockWidget(docks[i - 1], docks[i], Qt::Horizontal);
        else
            splitDockWidget(docks[i - columns], docks[i], Qt::Vertical);
        docks[i]->show();
    }
    if (docks.isEmpty()) return;
    const QList<QDockWidget*> firstRow(docks.begin(), docks.begin() + columns);
    resizeDocks(firstRow, QList<int>(columns, 100), Qt::Horizontal);
    resizeDocks({docks[0]}, {firstHeight()}, Qt::Vertical);
}

void DockArea::tabDocks()
{
    const QList<ChildDock*> docks = docked();
    for (qsizetype i = 1; i < docks.size(); ++i) tabifyDockWidget(docks[0], docks[i]);
}

void DockArea::maximise(const ChildDock* dock)
{
    m_beforeMaximised = saveState();
    const auto giveWay = [dock](ChildDock* other) {
        if (other != dock && !other->isFloating()) other->hide();
    };
    std::ranges::for_each(m_docks, giveWay);
    std::ranges::for_each(m_panels, giveWay);
    centralWidget()->setVisible(!dock);
}

void DockArea::endMaximise()
{
    centralWidget()->show();
    restoreState(std::exchange(m_beforeMaximised, {}));
}

} // namespace tessaro
