// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/editor_windows.h"

#include "core/ports/settings_store.h"

#include <QApplication>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

constexpr const char* section = "Window Placement";
constexpr const char* childrenKey = "Children";    ///< kind:number:track of each
constexpr const char* stateKey = "Children State"; ///< where they stand
constexpr double usualShare = 0.55;                ///< of the height, for the first child window
constexpr int usualPanelWidth = 220;

QString dockName(WindowKind kind, int number)
{
    return QStringLiteral("child%1-%2").arg(static_cast<int>(kind)).arg(number);
}

/// Null outside of child windows.
ChildFrame* childAround(QWidget* widget)
{
    while (widget && !dynamic_cast<ChildFrame*>(widget)) widget = widget->parentWidget();
    return static_cast<ChildFrame*>(widget);
}

} // namespace

EditorWindows::EditorWindows(std::unique_ptr<ChildFrame> tracks, Maker maker, SettingsStore& store, const Icons& icons,
                             const ChildDock::Commands& commands)
    : m_maker(std::move(maker))
    , m_store(store)
    , m_icons(icons)
    , m_commands(commands)
    , m_tracks(tracks.release())
    , m_active(m_tracks)
{
    setWindowFlags(Qt::Widget);
    setDockOptions(AllowNestedDocks | AllowTabbedDocks);
    setDocumentMode(true);
    setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
    setContextMenuPolicy(Qt::NoContextMenu);
    setCentralWidget(m_tracks);
    m_tracks->restoreState();
    m_tracks->onChanged = [this] {
        if (m_active == m_tracks && onActive) onActive();
    };
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { focusMoved(now); });
    connect(this, &QMainWindow::tabifiedDockWidgetActivated, this, [](QDockWidget* dock) {
        if (dock) static_cast<ChildDock*>(dock)->takeFocus();
    });
}

EditorWindows::~EditorWindows()
{
    disconnect(qApp, nullptr, this, nullptr);
    for (ChildFrame* frame : windows()) frame->onChanged = nullptr;
}

// Which windows there are

std::vector<ChildFrame*> EditorWindows::windows() const
{
    std::vector<ChildFrame*> all{m_tracks};
    for (const Child& child : m_children) all.push_back(child.frame);
    return all;
}

EditorWindows::Child* EditorWindows::find(const ChildFrame* frame)
{
    const auto found = std::ranges::find(m_children, frame, &Child::frame);
    return found == m_children.end() ? nullptr : &*found;
}

int EditorWindows::freeNumber(WindowKind kind) const
{
    const auto isTaken = [&](int number) {
        return std::ranges::any_of(m_children,
                                   [&](const Child& c) { return c.frame->kind() == kind && c.number == number; });
    };
    int number = 1;
    while (isTaken(number)) ++number;
    return number;
}

ChildFrame* EditorWindows::showing(WindowKind kind, int track) const
{
    const std::vector<ChildFrame*> all = windows();
    const auto found = std::ranges::find_if(all, [&](const ChildFrame* frame) {
        return frame->kind() == kind
            && (kind == WindowKind::track || kind == WindowKind::masterTrack || frame->track() == track);
    });
    return found == all.end() ? nullptr : *found;
}

ChildFrame* EditorWindows::open(WindowKind kind, int track)
{
    endMaximised();
    ChildFrame* frame = showing(kind, track);
    if (!frame) {
        const Child* child = make(kind, track, freeNumber(kind));
        if (!child) return nullptr;
        place(*child->dock);
        frame = child->frame;
    }
    activate(*frame);
    return frame;
}

ChildFrame* EditorWindows::show(WindowKind kind, int track)
{
    if (!showing(kind, track)) {
        const auto last = std::find_if(m_children.rbegin(), m_children.rend(),
                                       [&](const Child& child) { return child.frame->kind() == kind; });
        if (last != m_children.rend()) last->frame->setTrack(track);
    }
    return open(kind, track);
}

EditorWindows::Child* EditorWindows::make(WindowKind kind, int track, int number)
{
    std::unique_ptr<ChildFrame> made = m_maker(kind, track);
    if (!made) return nullptr;
    ChildFrame* frame = made.release();
    auto* dock = new ChildDock(dockName(kind, number), frame, m_icons, m_commands);
    dock->onClosed = [this, dock] { remove(*dock); };
    dock->onMaximise = [this, frame] {
        activate(*frame);
        maximiseActive();
    };
    frame->onChanged = [this, frame] {
        if (Child* child = find(frame)) showTitle(*child);
        if (m_active == frame && onActive) onActive();
    };
    m_children.push_back({dock, frame, number});
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    frame->restoreState();
    showTitle(m_children.back());
    return &m_children.back();
}

/// As a tab of the last one that is docked; the first below the tracks.
void EditorWindows::place(ChildDock& dock)
{
    std::vector<ChildDock*> docked = dockedChildren();
    std::erase(docked, &dock);
    if (docked.empty())
        resizeDocks({&dock}, {static_cast<int>(height() * usualShare)}, Qt::Vertical);
    else
        tabifyDockWidget(docked.back(), &dock);
    dock.show();
}

ChildDock& EditorWindows::addPanel(const QString& name, QWidget* panel, const QAction& command)
{
    auto* dock = new ChildDock(name, panel, m_icons, {nullptr, nullptr, &command});
    addDockWidget(Qt::RightDockWidgetArea, dock);
    resizeDocks({dock}, {usualPanelWidth}, Qt::Horizontal);
    dock->hide();
    m_panels.push_back(dock);
    return *dock;
}

void EditorWindows::remove(ChildDock& dock)
{
    const auto found = std::ranges::find(m_children, &dock, &Child::dock);
    if (found == m_children.end()) return;
    const Child child = *found;
    m_children.erase(found);
    child.frame->onChanged = nullptr;
    child.frame->saveState();
    if (m_active == child.frame) setActive(m_children.empty() ? *m_tracks : *m_children.back().frame);
    endMaximised();
    removeDockWidget(child.dock);
    child.dock->deleteLater();
    activate(*m_active);
}

// The active one

void EditorWindows::focusMoved(QWidget* now)
{
    ChildFrame* frame = childAround(now);
    if (frame == m_tracks) setActive(*m_tracks);
    if (Child* child = find(frame)) {
        child->dock->noteFocus(now);
        setActive(*frame);
    }
}

void EditorWindows::setActive(ChildFrame& frame)
{
    if (m_active == &frame) return;
    m_active = &frame;
    for (const Child& child : m_children) child.dock->setActive(child.frame == m_active);
    if (onActive) onActive();
}

void EditorWindows::activate(ChildFrame& window)
{
    if (isMaximised() && &window != m_active) endMaximised();
    if (Child* child = find(&window)) {
        child->dock->show();
        child->dock->raise();
        setActive(window);
        child->dock->takeFocus();
    } else {
        setActive(window);
        focusInto(window);
    }
}

void EditorWindows::activateNext(int step)
{
    const std::vector<ChildFrame*> all = windows();
    const int count = static_cast<int>(all.size());
    const int at = static_cast<int>(std::ranges::find(all, m_active) - all.begin());
    activate(*all[static_cast<std::size_t>((at + step + count) % count)]);
}

void EditorWindows::showTitle(Child& child) { child.dock->setTitle(child.frame->title()); }

// Where they stand

std::vector<ChildDock*> EditorWindows::dockedChildren() const
{
    std::vector<ChildDock*> docked;
    for (const Child& child : m_children)
        if (!child.dock->isFloating()) docked.push_back(child.dock);
    return docked;
}

void EditorWindows::closeActive()
{
    if (const Child* child = find(m_active)) child->dock->close();
}

void EditorWindows::floatActive()
{
    endMaximised();
    const Child* child = find(m_active);
    if (!child) return;
    child->dock->setFloating(!child->dock->isFloating());
    activate(*child->frame);
}

void EditorWindows::tile()
{
    endMaximised();
    ChildFrame& active = *m_active; // the keys wander while docks are hidden
    const std::vector<ChildDock*> docks = dockedChildren();
    for (ChildDock* dock : docks) removeDockWidget(dock);
    const auto count = docks.size();
    const auto columns = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(count))));
    for (std::size_t i = 0; i < count; ++i) {
        if (i == 0)
            addDockWidget(Qt::BottomDockWidgetArea, docks[i]);
        else if (i < columns)
            splitDockWidget(docks[i - 1], docks[i], Qt::Horizontal);
        else
            splitDockWidget(docks[i - columns], docks[i], Qt::Vertical);
        docks[i]->show();
    }
    const QList<QDockWidget*> firstRow(docks.begin(), docks.begin() + static_cast<std::ptrdiff_t>(columns));
    if (count > 1) resizeDocks(firstRow, QList<int>(firstRow.size(), 100), Qt::Horizontal);
    if (count > 0) resizeDocks({docks[0]}, {static_cast<int>(height() * usualShare)}, Qt::Vertical);
    activate(active);
}

void EditorWindows::tabTogether()
{
    endMaximised();
    const std::vector<ChildDock*> docks = dockedChildren();
    for (std::size_t i = 1; i < docks.size(); ++i) tabifyDockWidget(docks[0], docks[i]);
    activate(*m_active);
}

void EditorWindows::maximiseActive()
{
    if (isMaximised()) {
        endMaximised();
        return;
    }
    const Child* child = find(m_active);
    if (child && child->dock->isFloating()) {
        child->dock->setWindowState(child->dock->windowState() ^ Qt::WindowMaximized);
        return;
    }
    m_beforeMaximised = QMainWindow::saveState();
    for (const Child& other : m_children)
        if (other.frame != m_active && !other.dock->isFloating()) other.dock->hide();
    for (ChildDock* panel : m_panels)
        if (!panel->isFloating()) panel->hide();
    m_tracks->setVisible(m_active == m_tracks);
    if (onActive) onActive();
}

void EditorWindows::endMaximised()
{
    if (!isMaximised()) return;
    ChildFrame& active = *m_active;
    m_tracks->show();
    QMainWindow::restoreState(std::exchange(m_beforeMaximised, {}));
    activate(active);
    if (onActive) onActive();
}

// The song

void EditorWindows::setPosition(std::uint32_t tick, bool follow)
{
    for (ChildFrame* frame : windows()) frame->setPosition(tick, follow);
}

void EditorWindows::retranslate()
{
    m_tracks->retranslate();
    for (Child& child : m_children) {
        child.frame->retranslate();
        showTitle(child);
    }
}

void EditorWindows::suspend()
{
    m_isSuspended = true;
    for (ChildFrame* frame : windows()) frame->setUpdatesEnabled(false);
    if (onActive) onActive();
}

void EditorWindows::songReplaced()
{
    for (ChildFrame* frame : windows()) {
        frame->songReplaced();
        frame->setUpdatesEnabled(true);
    }
    m_isSuspended = false;
    if (onActive) onActive();
    for (Child& child : m_children) showTitle(child);
}

// What is remembered

void EditorWindows::saveArrangement()
{
    endMaximised();
    QStringList list;
    for (const Child& child : m_children) {
        child.frame->saveState();
        list << QStringLiteral("%1:%2:%3")
                    .arg(static_cast<int>(child.frame->kind()))
                    .arg(child.number)
                    .arg(child.frame->track());
    }
    m_tracks->saveState();
    m_store.setString(section, childrenKey, list.join(QLatin1Char(' ')).toStdString());
    const QByteArray state = QMainWindow::saveState();
    m_store.setBinary(
        section, stateKey,
        {reinterpret_cast<const std::uint8_t*>(state.constData()), static_cast<std::size_t>(state.size())});
}

void EditorWindows::restoreArrangement(bool samePlaces)
{
    const QString list = QString::fromStdString(m_store.getString(section, childrenKey, ""));
    for (const QString& entry : list.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList parts = entry.split(QLatin1Char(':'));
        if (parts.size() != 3) continue;
        const auto kind = static_cast<WindowKind>(parts[0].toInt());
        const int track = std::clamp(parts[2].toInt(), 0, 100);
        const int number = parts[1].toInt();
        if (kind != WindowKind::track && number > 0)
            if (const Child* child = make(kind, track, number); child && !samePlaces) place(*child->dock);
    }
    if (!samePlaces) return;
    const std::vector<std::uint8_t> state = m_store.getBinary(section, stateKey);
    QMainWindow::restoreState(
        QByteArray(reinterpret_cast<const char*>(state.data()), static_cast<qsizetype>(state.size())));
}

} // namespace tessaro
