// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/window_commands.h"

#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "realtime/transport/cnp_window.h"
#include "views/editors/view_actions.h"
#include "views/editors/view_parts.h"
#include "views/frame/edit_tool_bar.h"
#include "views/frame/editor_windows.h"
#include "views/frame/frame_actions.h"
#include "views/history/history_panel.h"
#include "views/text/ui_text.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/trk_selection.h"

#include <QMenu>

#include <algorithm>

namespace tessaro {
namespace {

constexpr const char* section = "User Settings";
constexpr const char* toolsKey = "Edit Tools";

} // namespace

WindowCommands::WindowCommands(EditorWindows& windows, CTrackFrame& tracks, const ViewParts& parts,
                               FrameActions& actions)
    : m_windows(windows)
    , m_tracks(tracks)
    , m_parts(parts)
    , m_actions(actions)
    , m_history(new HistoryPanel(parts.editor, parts.text))
    , m_historyDock(&windows.addPanel(QStringLiteral("history"), m_history, actions.history))
    , m_toolBar(new EditToolBar(parts.icons, actions, parts.actions))
{
    windows.addToolBar(Qt::TopToolBarArea, m_toolBar);
    m_history->isLocked = parts.isLocked;
    const auto on = [this](QAction& action, auto work) { connect(&action, &QAction::triggered, this, work); };
    const std::pair<QAction*, WindowKind> opens[] = {{&actions.tracks, WindowKind::track},
                                                     {&actions.piano, WindowKind::piano},
                                                     {&actions.drum, WindowKind::drum},
                                                     {&actions.list, WindowKind::eventList},
                                                     {&actions.master, WindowKind::masterTrack}};
    for (const auto& [action, kind] : opens) on(*action, [this, kind = kind] { m_windows.open(kind, currentTrack()); });
    on(actions.history, [this](bool shown) {
        m_historyDock->setVisible(shown);
        if (!shown) return;
        m_historyDock->raise();
        m_historyDock->takeFocus();
    });
    on(actions.editTools, [this](bool shown) { m_toolBar->setVisible(shown); });
    on(actions.tile, [this] { m_windows.tile(); });
    on(actions.tabs, [this] { m_windows.tabTogether(); });
    on(actions.floating, [this] { m_windows.floatActive(); });
    on(actions.maximise, [this] { m_windows.maximiseActive(); });
    on(actions.nextWindow, [this] { m_windows.activateNext(1); });
    on(actions.previousWindow, [this] { m_windows.activateNext(-1); });
    on(actions.closeWindow, [this] { m_windows.closeActive(); });
    connect(m_historyDock->toggleViewAction(), &QAction::toggled, this, [this] { showSwitches(); });
    connect(m_toolBar->toggleViewAction(), &QAction::toggled, this, [this] { showSwitches(); });
    retranslate();
}

void WindowCommands::show(WindowKind kind, int track, std::uint32_t tick)
{
    ChildFrame* window = m_windows.show(kind, track);
    if (!window) return;
    window->reveal(tick);
    window->setPosition(m_parts.panel.GetLocation(), false);
}

int WindowCommands::currentTrack() const
{
    const int shown = m_windows.active()->track();
    return shown > 0 ? shown : std::max(m_tracks.currentTrack(), 1);
}

std::vector<POSITION> WindowCommands::chosenBlks() const
{
    std::vector<POSITION> blks;
    for (const BlkRef& selected : m_tracks.selection().blks()) blks.push_back(selected.blk);
    const CTrk* trk = blks.empty() ? m_parts.editor.song().trk(currentTrack()) : nullptr;
    for (CBlk* blk = trk ? trk->blocks().head() : nullptr; blk; blk = List<CBlk>::next(blk)) blks.push_back(blk);
    return blks;
}

void WindowCommands::showSwitches()
{
    m_actions.history.setChecked(!m_historyDock->isHidden());
    m_actions.editTools.setChecked(!m_toolBar->isHidden());
    m_actions.maximise.setChecked(m_windows.isMaximised());
}

void WindowCommands::refresh()
{
    showSwitches();
    const bool isChild = m_windows.active() != m_windows.windows().front();
    m_actions.floating.setEnabled(isChild);
    m_actions.closeWindow.setEnabled(isChild);
}

void WindowCommands::fill(QMenu& menu)
{
    qDeleteAll(std::exchange(m_listed, {}));
    int number = 0;
    for (ChildFrame* window : m_windows.windows()) {
        const QString title = window->title().replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction* action = menu.addAction(++number < 10 ? QStringLiteral("&%1  %2").arg(number).arg(title) : title);
        m_listed << action;
        action->setCheckable(true);
        action->setChecked(window == m_windows.active());
        connect(action, &QAction::triggered, this, [this, window] { m_windows.activate(*window); });
    }
}

void WindowCommands::setEditing(bool possible) { m_history->setEnabled(possible); }

void WindowCommands::retranslate()
{
    m_historyDock->setTitle(m_parts.text.plain(TextId::windowHistory));
    m_history->retranslate();
    m_toolBar->setWindowTitle(m_parts.text.plain(TextId::commandEditTools));
}

void WindowCommands::save()
{
    m_windows.saveArrangement();
    m_parts.store.setInt(section, toolsKey, m_toolBar->isHidden() ? 0 : 1);
}

void WindowCommands::restore(bool lastWindows)
{
    if (lastWindows) m_windows.restoreArrangement();
    m_toolBar->setVisible(m_parts.store.getInt(section, toolsKey, 1) != 0);
    refresh();
}

} // namespace tessaro
