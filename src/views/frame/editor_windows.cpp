// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/editor_windows.h"

#include "views/frame/window_arrangement.h"

#include <QApplication>

#include <algorithm>

namespace tessaro {
namespace {

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
    : DockArea(tracks.get(), icons)
    , m_maker(std::move(maker))
    , m_store(store)
    , m_icons(icons)
    , m_commands(commands)
    , m_tracks(tracks.release())
    , m_active(m_tracks)
{
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
    for (const Child& child : m_children) disconnect(child.dock, nullptr, this, nullptr);
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
    connect(dock, &QDockWidget::visibilityChanged, this, [this, frame](bool visible) { setShown(frame, visible); });
    m_children.push_back({dock, frame, number});
    add(*dock);
    frame->restoreState();
    showTitle(m_children.back());
    return &m_children.back();
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
    take(*child.dock);
    child.dock->deleteLater();
    activate(*m_active);
}

/// Right now: they must not hear of another song.
void EditorWindows::closeChildren()
{
    endMaximised();
    const bool hadFocus = childAround(QApplication::focusWidget());
    setActive(*m_tracks);
    for (const Child& child : std::exchange(m_children, {})) {
        child.frame->onChanged = nullptr;
        child.frame->saveState();
        take(*child.dock);
        delete child.dock;
    }
    if (hadFocus) activate(*m_tracks);
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
    tileDocks();
    activate(active);
}

void EditorWindows::tabTogether()
{
    endMaximised();
    tabDocks();
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
    maximise(child ? child->dock : nullptr);
    if (onActive) onActive();
}

void EditorWindows::endMaximised()
{
    if (!isMaximised()) return;
    ChildFrame& active = *m_active;
    endMaximise();
    m_tracks->setPosition(m_position, m_follow);
    activate(active);
    if (onActive) onActive();
}

// The song

void EditorWindows::setPosition(std::uint32_t tick, bool follow)
{
    m_position = tick;
    m_follow = follow;
    if (m_tracks->isVisible()) m_tracks->setPosition(tick, follow);
    for (const Child& child : m_children)
        if (child.isShown) child.frame->setPosition(tick, follow);
}

/// A window that comes into sight has missed where the song is.
void EditorWindows::setShown(ChildFrame* frame, bool shown)
{
    Child* child = find(frame);
    if (!child || child->isShown == shown) return;
    child->isShown = shown;
    if (shown) frame->setPosition(m_position, m_follow);
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
    WindowArrangement kept;
    for (const Child& child : m_children) {
        child.frame->saveState();
        kept.windows.push_back({child.frame->kind(), child.number, child.frame->track()});
        if (child.frame == m_active) kept.active = static_cast<int>(kept.windows.size());
    }
    m_tracks->saveState();
    kept.tracks = {m_tracks->geometry(), isMaximised()};
    kept.places = places();
    tessaro::saveArrangement(m_store, kept, screen()->size());
}

void EditorWindows::restoreArrangement()
{
    const auto kept = loadArrangement(m_store, screen()->size());
    if (!kept) {
        place(*make(WindowKind::piano, 1, 1)->dock);
        return;
    }
    for (std::size_t i = 0; i < kept->windows.size(); ++i) {
        const auto& [kind, number, track] = kept->windows[i];
        const Child* child = make(kind, track, number);
        if (!child) continue;
        if (kept->places.isEmpty()) place(*child->dock);
        if (kept->active == static_cast<int>(i) + 1) setActive(*child->frame);
    }
    QMainWindow::restoreState(kept->places);
    m_wasMaximised = kept->tracks.maximised;
}

void EditorWindows::resume()
{
    activate(*m_active);
    if (std::exchange(m_wasMaximised, false)) maximiseActive();
}

} // namespace tessaro
