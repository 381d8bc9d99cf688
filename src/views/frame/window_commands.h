// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <functional>

class QMenu;

namespace tessaro {

class ChildDock;
class EditToolBar;
class EditorWindows;
class FrameActions;
class HistoryPanel;
class SettingsStore;
class UiText;
class ViewActions;
struct ViewParts;

/// The commands on child windows, and the panels that stand among them: the history and the bar of tools.
class WindowCommands : public QObject {
public:
    /// All outlive this object, but the windows, which may go before it.
    WindowCommands(EditorWindows& windows, const ViewParts& parts, FrameActions& actions);

    /// The track that a new window is for.
    std::function<int()> currentTrack;

    /// Fills the menu of windows with the commands and the list of those that are open.
    void fill(QMenu& menu);
    /// The song may be edited, or must not be.
    void setEditing(bool possible);
    void refresh();
    void retranslate();
    void save();
    void restore(bool samePlaces);

    [[nodiscard]] HistoryPanel& history() const { return *m_history; }
    [[nodiscard]] ChildDock& historyDock() const { return *m_historyDock; }
    [[nodiscard]] EditToolBar& toolBar() const { return *m_toolBar; }

private:
    void showSwitches();

    EditorWindows& m_windows;
    const ViewParts& m_parts;
    FrameActions& m_actions;
    // Children of the windows.
    HistoryPanel* m_history;
    ChildDock* m_historyDock;
    EditToolBar* m_toolBar;
};

} // namespace tessaro
