// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/messages.h"
#include "core/ports/hint_observer.h"
#include "views/frame/file_commands.h"
#include "views/frame/frame_actions.h"
#include "views/frame/frame_parts.h"
#include "views/frame/keyboard_control.h"
#include "views/frame/panel_follower.h"
#include "views/frame/setup_commands.h"
#include "views/frame/status_line.h"
#include "views/frame/step_control.h"
#include "views/frame/track_commands.h"
#include "views/frame/transport_commands.h"
#include "views/tracks/track_list_model.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>
#include <optional>

namespace tessaro {

class CEditor;
class EmptyHint;
class PanelDock;
class RecoveryList;
class RecoveryPanel;
class TrackPane;
class TransportBar;

/// The one main window: commands, the transport strip, the tracks beside the overview of the song, the status line.
/// It shows the document's song and follows the editor's hints and the control panel; edits go to the editor.
/// User interface thread.
class CMainFrame : public QMainWindow, public HintObserver {
public:
    explicit CMainFrame(const FrameParts& parts);
    ~CMainFrame() override;

    /// Opens a song file; a failure has been told, and a new song stands. The song at hand stays when the user wants
    /// to keep it.
    bool openFile(const QString& path) { return m_files.open(path); }
    /// As the stop button.
    void stopPlay();
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
    void offerRecovery(std::unique_ptr<RecoveryList> songs);
    /// Shows name, mark and history as they are by now.
    void showState();

    [[nodiscard]] FileCommands& files() { return m_files; }
    [[nodiscard]] RecoveryPanel& recoveryPanel() const { return *m_recovery; }
    [[nodiscard]] StatusLine& statusLine() const { return *m_status; }
    [[nodiscard]] TrackPane& trackPane() const { return *m_pane; }
    [[nodiscard]] TransportBar& transportBar() const { return *m_bar; }
    [[nodiscard]] PanelDock& panelDock() const { return *m_panelDock; }
    [[nodiscard]] KeyboardControl& keyboard() { return *m_keyboard; }
    [[nodiscard]] StepControl& steps() { return *m_steps; }
    [[nodiscard]] FrameActions& actions() { return m_actions; }
    [[nodiscard]] TrackListModel& trackModel() { return m_table; }

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void layOut();
    void connectActions();
    void connectPanel();
    void connectChoices();
    void connectTracks();
    void connectFiles();
    void refreshSong();
    void refreshRows();
    /// Whether the song has nothing to show or to play.
    [[nodiscard]] bool isEmpty() const;
    void panelChanged();
    void showTitle();
    void focusSong();
    void showDevices();
    void announceSong();
    void arm(int track, bool on);
    void showPanelPlace();
    void undo(bool (CEditor::*step)());
    /// Swaps the track of the current row with the one above, -1, or below, 1.
    void moveTrack(int step);
    void openRecovered(std::size_t index);
    void discardRecovered(std::size_t index);
    void showRecovery();
    void retranslate();
    [[nodiscard]] CEditor& editor() const;
    [[nodiscard]] QStringList portNames() const;

    FrameParts m_parts;
    FrameActions m_actions;
    FileCommands m_files;
    SetupCommands m_setup;
    TrackCommands m_tracks;
    std::unique_ptr<RecoveryList> m_recoverable; ///< null when nothing is offered
    TrackListModel m_table;
    std::uint32_t m_leastEnd = 0; ///< of the overview, for a take that grows behind the song's end
    QTimer m_refreshTimer;        ///< once, behind a burst of hints
    QTimer m_deviceTimer;
    QTimer m_copyTimer; ///< for copies of unsaved work
    // Children of the window.
    TransportBar* m_bar = nullptr;
    PanelDock* m_panelDock = nullptr;
    EmptyHint* m_empty = nullptr;
    TrackPane* m_pane = nullptr;
    StatusLine* m_status = nullptr;
    RecoveryPanel* m_recovery = nullptr;
    // What works on them.
    std::optional<TransportCommands> m_transport;
    std::optional<PanelFollower> m_follower;
    std::optional<KeyboardControl> m_keyboard;
    std::optional<StepControl> m_steps;
};

} // namespace tessaro
