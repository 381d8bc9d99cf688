// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/messages.h"
#include "core/ports/hint_observer.h"
#include "realtime/transport/cnp_window.h"
#include "views/frame/frame_actions.h"
#include "views/frame/status_line.h"
#include "views/tracks/lights.h"
#include "views/tracks/note_starts.h"
#include "views/tracks/track_list_model.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QStackedWidget;

namespace tessaro {

class CEditor;
class CTR9App;
class CTR9Doc;
class EmptyHint;
class Icons;
class RealtimeMessages;
class SettingsStore;
class Smc;
class Theme;
class TrackPane;
class TransportBar;
class UiText;
class WindowUser;

/// What the main window works with; everything outlives it.
struct FrameParts {
    CTR9App& app;
    CTR9Doc& document;
    CCnpWindow& panel;
    Smc& smc;
    RealtimeMessages& messages;
    SettingsStore& store;
    WindowUser& user;
    UiText& text;
    Theme& theme;
    const Icons& icons;
    std::function<QString()> deviceSentence; ///< which sound and MIDI ways are in use
};

/// The one main window: commands, the transport strip, the tracks beside the overview of the song, the status line.
/// It shows the document's song and follows the editor's hints and the control panel; edits go to the editor.
/// User interface thread.
class CMainFrame : public QMainWindow, public HintObserver, public CnpObserver {
public:
    explicit CMainFrame(const FrameParts& parts);
    ~CMainFrame() override;

    /// Opens a song file; a failure has been told, and a new song stands.
    bool openFile(const QString& path);
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
    void followPlay(int milliseconds);

    [[nodiscard]] StatusLine& statusLine() const { return *m_status; }
    [[nodiscard]] TrackPane& trackPane() const { return *m_pane; }
    [[nodiscard]] TransportBar& transportBar() const { return *m_bar; }
    [[nodiscard]] FrameActions& actions() { return m_actions; }
    [[nodiscard]] TrackListModel& trackModel() { return m_table; }

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

    void stateChanged() override;
    void locationShown(std::uint32_t tick) override;
    void textShown(const std::string& text) override;
    void tempoShown(int tempo) override;
    void timerWanted(bool on) override;
    void busy(bool on) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void layOut();
    void connectActions();
    void connectChoices();
    void connectTracks();
    void refreshSong();
    void refreshRows();
    void showPosition(std::uint32_t tick);
    void showTitle();
    void showDevices();
    void announceSong();
    void askForFile();
    void fillRecentMenu();
    void toggleLoop();
    void markLoop(std::uint32_t start, std::uint32_t end);
    void setMute(int track, bool on);
    void setSolo(int track, bool on);
    void retranslate();
    [[nodiscard]] CEditor& editor() const;
    [[nodiscard]] QString portName(int port) const;

    FrameParts m_parts;
    FrameActions m_actions;
    TrackListModel m_table;
    Lights m_lights;
    std::vector<NoteStarts> m_starts; ///< beside the rows of the table
    bool m_countingIn = false;        ///< the location box shows a count instead of a place
    std::uint32_t m_lightTick = 0;    ///< the first tick whose notes have not been looked at
    QTimer m_panelTimer;
    QTimer m_followTimer;
    QTimer m_refreshTimer; ///< once, behind a burst of hints
    QTimer m_deviceTimer;
    QElapsedTimer m_sinceFollow;
    // Children of the window.
    TransportBar* m_bar = nullptr;
    QStackedWidget* m_stack = nullptr;
    EmptyHint* m_empty = nullptr;
    TrackPane* m_pane = nullptr;
    StatusLine* m_status = nullptr;
};

} // namespace tessaro
