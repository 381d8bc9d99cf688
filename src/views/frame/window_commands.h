// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <QList>
#include <QObject>

#include <cstdint>
#include <vector>

class QAction;
class QMenu;

namespace tessaro {

class CTrackFrame;
class ChildDock;
class EditToolBar;
class EditorWindows;
class FrameActions;
class HistoryPanel;
enum class WindowKind;
struct ViewParts;

/// The commands on child windows, and the panels that stand among them: the history and the bar of tools.
class WindowCommands : public QObject {
public:
    /// All outlive this object, but the windows, which may go before it. `tracks` is the first of them.
    WindowCommands(EditorWindows& windows, CTrackFrame& tracks, const ViewParts& parts, FrameActions& actions);

    /// Raises the window of this kind that shows the track, or opens one, and brings the tick into sight.
    void show(WindowKind kind, int track, std::uint32_t tick);
    /// That of the active window, or of the row with the focus.
    [[nodiscard]] int currentTrack() const;
    /// The blocks that are selected; those of the current track where none is.
    [[nodiscard]] std::vector<POSITION> chosenBlks() const;

    /// Puts the windows that are open at the end of the menu.
    void fill(QMenu& menu);
    /// The song may be edited, or must not be.
    void setEditing(bool possible);
    void refresh();
    void retranslate();
    /// What stands where.
    void save();
    /// Before the main window shows; with those of the last time, or with the track window alone.
    void restore(bool lastWindows);

    [[nodiscard]] HistoryPanel& history() const { return *m_history; }
    [[nodiscard]] ChildDock& historyDock() const { return *m_historyDock; }
    [[nodiscard]] EditToolBar& toolBar() const { return *m_toolBar; }

private:
    void showSwitches();

    EditorWindows& m_windows;
    CTrackFrame& m_tracks;
    const ViewParts& m_parts;
    FrameActions& m_actions;
    QList<QAction*> m_listed; ///< children of the menu
    // Children of the windows.
    HistoryPanel* m_history;
    ChildDock* m_historyDock;
    EditToolBar* m_toolBar;
};

} // namespace tessaro
