// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/messages.h"
#include "core/ports/hint_observer.h"
#include "views/editors/view_actions.h"
#include "views/editors/view_parts.h"
#include "views/edits/everyday_edits.h"
#include "views/frame/device_control.h"
#include "views/frame/file_commands.h"
#include "views/frame/frame_actions.h"
#include "views/frame/frame_menus.h"
#include "views/frame/frame_parts.h"
#include "views/frame/key_commands.h"
#include "views/frame/keyboard_control.h"
#include "views/frame/panel_follower.h"
#include "views/frame/recovery_control.h"
#include "views/frame/setup_commands.h"
#include "views/frame/status_line.h"
#include "views/frame/step_control.h"
#include "views/frame/transport_commands.h"
#include "views/frame/trk_forwards.h"
#include "views/frame/view_choices.h"
#include "views/frame/window_commands.h"
#include "views/roll/grid.h"
#include "views/roll/note_table.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>
#include <optional>

namespace tessaro {

class CEditor;
class CTrackFrame;
class EditorWindows;
class PanelDock;
class RecoveryList;
class RecoveryPanel;
class TransportBar;

/// The one main window: commands, the transport strip, the child windows, the status line. It shows the document's song
/// and follows the editor's hints and the control panel; edits go to the editor. User interface thread.
class CMainFrame : public QMainWindow, public HintObserver, public TrkForwards {
public:
    explicit CMainFrame(const FrameParts& parts);
    ~CMainFrame() override;

    /// Opens a song file; a failure has been told, and a new song stands. The song at hand stays when the user wants
    /// to keep it.
    bool openFile(const QString& path) { return m_files.open(path); }
    /// The song at hand goes: nothing plays, the windows but the tracks close, and nothing is painted until another one
    /// stands.
    void songLeaves();
    /// Another song stands in the editor; the panel starts afresh.
    void songReplaced();
    /// A new song: everything of the transport at its start.
    void songToTop();
    void setSyncMode(int mode);
    /// Puts the window where it stood, or shows it in the usual size.
    void showInPlace();
    /// A message from the engine or the devices.
    void handle(const Message& message);
    /// Shows where the song is by now, this many milliseconds after the last call.
    void followPlay(int milliseconds) { m_follower->follow(milliseconds); }
    /// Offers the songs that were not saved; nothing for an empty list.
    void offerRecovery(std::unique_ptr<RecoveryList> songs) { m_recoveries->offer(std::move(songs)); }
    /// Shows name, mark and history as they are by now.
    void showState();

    [[nodiscard]] FileCommands& files() { return m_files; }
    [[nodiscard]] RecoveryPanel& recoveryPanel() const { return *m_recovery; }
    [[nodiscard]] StatusLine& statusLine() const { return *m_status; }
    [[nodiscard]] CTrackFrame& trackFrame() const { return *m_tracks; }
    [[nodiscard]] EditorWindows& windows() const { return *m_windows; }
    [[nodiscard]] WindowCommands& windowCommands() { return *m_windowCommands; }
    [[nodiscard]] TransportBar& transportBar() const { return *m_bar; }
    [[nodiscard]] PanelDock& panelDock() const { return *m_panelDock; }
    [[nodiscard]] KeyboardControl& keyboard() { return *m_keyboard; }
    [[nodiscard]] StepControl& steps() { return *m_steps; }
    [[nodiscard]] FrameActions& actions() { return m_actions; }
    [[nodiscard]] ViewActions& viewActions() { return m_view; }
    [[nodiscard]] EverydayEdits& edits() { return m_edits; }
    [[nodiscard]] FrameMenus& menus() { return *m_menus; }
    [[nodiscard]] KeyCommands& keys() { return *m_keys; }

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    [[nodiscard]] TrkSelection* trkSelection() const override;

private:
    [[nodiscard]] ViewParts viewParts();
    void layOut();
    void connectActions();
    void connectWindows();
    void connectPanel();
    void connectSettings();
    void connectFiles();
    void panelChanged();
    void showTitle();
    void focusSong();
    void announceSong();
    void armed(bool on);
    void undo(bool (CEditor::*step)());
    void retranslate();
    /// A take runs, or long work: the song must not be edited.
    [[nodiscard]] bool isLocked() const;
    [[nodiscard]] CEditor& editor() const;

    FrameParts m_parts;
    FrameActions m_actions;
    ViewActions m_view;
    NoteTables m_notes;
    Grid m_grid;
    const ViewParts m_viewParts;
    EverydayEdits m_edits;
    FileCommands m_files;
    SetupCommands m_setup;
    QTimer m_copyTimer; ///< for copies of unsaved work
    // Children of the window.
    TransportBar* m_bar = nullptr;
    PanelDock* m_panelDock = nullptr;
    CTrackFrame* m_tracks = nullptr;
    EditorWindows* m_windows = nullptr;
    StatusLine* m_status = nullptr;
    RecoveryPanel* m_recovery = nullptr;
    // What works on them.
    std::optional<FrameMenus> m_menus;
    std::optional<KeyCommands> m_keys;
    std::optional<DeviceControl> m_devices;
    std::optional<ViewChoices> m_choices;
    std::optional<RecoveryControl> m_recoveries;
    std::optional<WindowCommands> m_windowCommands;
    std::optional<TransportCommands> m_transport;
    std::optional<PanelFollower> m_follower;
    std::optional<KeyboardControl> m_keyboard;
    std::optional<StepControl> m_steps;
};

} // namespace tessaro
