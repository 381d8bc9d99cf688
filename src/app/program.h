// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/file_ops.h"
#include "base/message_queue.h"
#include "core/doc/autosave.h"
#include "core/doc/tr9app.h"
#include "core/doc/tr9doc.h"
#include "core/edit/carried_score.h"
#include "core/ports/progress.h"
#include "files/song_formats.h"
#include "realtime/loom/loom.h"
#include "realtime/play/smc.h"
#include "realtime/transport/cnp_window.h"
#include "realtime/transport/devices.h"
#include "realtime/transport/note_audition.h"
#include "realtime/transport/realtime_messages.h"
#include "realtime/transport/song_transport.h"
#include "views/clipboard/song_clipboard.h"
#include "views/frame/main_windows.h"
#include "views/frame/window_user.h"
#include "views/text/toolkit_texts.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/theme/theme.h"

#include <QSocketNotifier>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>

namespace tessaro {

class TypedKeys;

/// The folders that the program works with.
struct ProgramFolders {
    std::string appDirectory; ///< with a slash at its end
    std::string lockFolder;   ///< empty for no mark of a running instance
    QString icons;
    std::string recovery; ///< for copies of unsaved songs; empty to keep none
};

/// All objects of the window program, wired. The clock and the devices come from outside and outlive it, so the same
/// wiring plays in real and in simulated time.
class Program {
public:
    /// `typedKeys` is the input that the computer's keyboard plays, null for none.
    Program(Clock& clock, MidiSystem& midi, ProfileStore& store, Strings& strings, const ProgramFolders& folders,
            std::function<QString()> deviceSentence, TypedKeys* typedKeys = nullptr);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Starts, with or without a song; false ends the process.
    bool start(const CommandLine& commandLine);

    [[nodiscard]] CMainFrame& frame() { return *m_windows.frame(); }
    [[nodiscard]] CCnpWindow& panel() { return m_panel; }
    [[nodiscard]] CTR9Doc& document() { return m_document; }
    [[nodiscard]] CTR9App& app() { return m_app; }
    [[nodiscard]] MessageQueue& queue() { return m_queue; }
    [[nodiscard]] WindowUser& user() { return m_user; }
    [[nodiscard]] UiText& text() { return m_text; }
    [[nodiscard]] Theme& theme() { return m_theme; }

private:
    UiText m_text;
    ToolkitTexts m_toolkitTexts;
    Theme m_theme;
    Icons m_icons;
    ProfileStore m_wsIni;
    WindowUser m_user;
    MainWindows m_windows;
    MessageQueue m_queue;
    QSocketNotifier m_queueNotifier;

    SystemFiles m_disk;
    Loom m_loom;
    Smc m_smc;
    SongTransport m_transport;
    CCnpWindow m_panel;
    NoMciPlayer m_media;
    RealtimeMessages m_messages;
    Devices m_devices;

    SongFormats m_files;
    NullWaveLengths m_waveLengths;
    NullWaveOutput m_waveOutput;
    CarriedScore m_score;
    const std::string m_recoveryFolder;
    std::unique_ptr<Autosave> m_autosave; ///< null when no copies are kept
    CTR9Doc m_document;
    SongClipboard m_clipboard;
    QTimer m_endTimer; ///< for ends of notes that their port did not take
    NoteAudition m_audition;
    CTR9App m_app;
};

} // namespace tessaro
