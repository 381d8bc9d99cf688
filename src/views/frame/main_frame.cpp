// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/main_frame.h"

#include "core/doc/recovery.h"
#include "core/doc/tr9app.h"
#include "core/doc/tr9doc.h"
#include "core/edit/hint_board.h"
#include "core/ports/settings_store.h"
#include "realtime/transport/note_audition.h"
#include "realtime/transport/realtime_messages.h"
#include "views/frame/child_factory.h"
#include "views/frame/editor_windows.h"
#include "views/frame/panel_dock.h"
#include "views/frame/song_news.h"
#include "views/frame/user_settings.h"
#include "views/frame/window_placement.h"
#include "views/frame/window_user.h"
#include "views/history/history_panel.h"
#include "views/recovery/recovery_panel.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/theme/theme.h"
#include "views/tracks/track_frame.h"
#include "views/transport/transport_bar.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QVBoxLayout>

namespace tessaro {
namespace {

constexpr int copyInterval = 1000; ///< in ms, between two looks whether a copy of unsaved work is due
constexpr QSize usualSize(1280, 800);

/// The local file that is dragged; empty for anything else.
QString draggedFile(const QMimeData* data)
{
    return data->urls().size() == 1 ? data->urls().front().toLocalFile() : QString();
}

} // namespace

CMainFrame::CMainFrame(const FrameParts& parts)
    : m_parts(parts)
    , m_actions(*this, parts.icons, parts.text)
    , m_view(*this, parts.icons, parts.text)
    , m_notes(parts.document.GetEditor())
    , m_viewParts(viewParts())
    , m_edits(*this, m_viewParts)
    , m_files(*this, m_parts)
    , m_setup(*this, m_parts)
{
    setWindowIcon(m_parts.icons.picture(QStringLiteral("tessaro")));
    setAcceptDrops(true);
    m_grid.load(m_parts.store);
    m_menus.emplace(*menuBar(), FrameMenus::Commands{m_actions, m_view, m_edits}, m_parts.text);
    m_keys.emplace(*this, *m_menus, m_parts.store, m_parts.text);
    layOut();
    connectActions();
    connectWindows();
    connectSettings();
    connectFiles();
    connectPanel();

    connect(&m_copyTimer, &QTimer::timeout, this, [this] {
        if (!m_status->busy()) m_parts.document.KeepCopy();
    });
    m_copyTimer.start(copyInterval);

    m_parts.user.setWindow(this);
    m_parts.user.onStatus = [this](const QString& sentence) { m_status->setNews(sentence); };
    m_parts.panel.recorder().setSelection(trkSelection());
    editor().addObserver(this);
    retranslate();
    showState();
    m_follower->refresh();
    m_devices->show();
}

CMainFrame::~CMainFrame()
{
    if (m_parts.document.IsRecording()) m_parts.panel.Stop(); // a take works on our selection
    editor().removeObserver(this);
    m_parts.panel.recorder().setSelection(nullptr);
    m_parts.user.setWindow(nullptr);
    m_parts.user.onStatus = nullptr;
    // The child windows work with what is ours.
    m_view.setActive(nullptr);
    m_follower.reset();
    m_windowCommands.reset();
    delete m_windows;
}

ViewParts CMainFrame::viewParts()
{
    return {
        .editor = editor(),
        .panel = m_parts.panel,
        .store = m_parts.store,
        .user = m_parts.user,
        .text = m_parts.text,
        .icons = m_parts.icons,
        .actions = m_view,
        .clipboard = m_parts.clipboard,
        .audition = m_parts.audition,
        .notes = m_notes,
        .grid = m_grid,
        .open = [this](WindowKind kind, int track, std::uint32_t tick) { m_windowCommands->show(kind, track, tick); },
        .portNames = [this] { return DeviceControl::portNames(m_parts); },
        .isLocked = [this] { return isLocked(); },
        .listSettings = &m_parts.app.GetListSettings(),
        .edit = [this](EverydayEdit edit) { return &m_edits[edit]; }};
}

CEditor& CMainFrame::editor() const { return m_parts.document.GetEditor(); }

void CMainFrame::layOut()
{
    auto* body = new QWidget(this);
    FrameActions& a = m_actions;
    m_bar = new TransportBar(m_parts.icons, {a.top,        a.rewind,      a.play,          a.stop,    a.record,
                                             a.forward,    a.fastForward, a.end,           a.tempoUp, a.tempoDown,
                                             a.tempoReset, a.transposeUp, a.transposeDown, a.loop,    a.metronome,
                                             a.midiChase,  a.viewChase,   a.midiSync,      a.undo,    a.redo},
                             m_parts.text);
    m_panelDock = new PanelDock(*this, m_bar, m_parts.store);
    m_status = new StatusLine(m_parts.icons);
    auto tracks = std::make_unique<CTrackFrame>(m_viewParts);
    m_tracks = tracks.get();
    m_windows = new EditorWindows(
        std::move(tracks), [this](WindowKind kind, int track) { return makeChild(m_viewParts, kind, track); },
        m_parts.store, m_parts.icons,
        ChildDock::Commands{&m_actions.floating, &m_actions.maximise, &m_actions.closeWindow});
    m_recovery = new RecoveryPanel(m_parts.icons, m_parts.text, body);

    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_recovery);
    layout->addWidget(m_windows, 1);
    setCentralWidget(body);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(m_status, 1);
    setContextMenuPolicy(Qt::NoContextMenu); // of the docks
    resize(usualSize);
}

void CMainFrame::connectActions()
{
    const auto on = [this](QAction& action, auto work) { connect(&action, &QAction::triggered, this, work); };
    on(m_actions.newSong, [this] { m_files.newSong(); });
    on(m_actions.open, [this] { m_files.askAndOpen(); });
    on(m_actions.save, [this] { m_files.save(); });
    on(m_actions.saveAs, [this] { m_files.saveAs(); });
    on(m_actions.undo, [this] { undo(&CEditor::UndoNode); });
    on(m_actions.redo, [this] { undo(&CEditor::RedoNode); });
    on(m_actions.exportMidi, [this] { m_files.exportMidi(); });
    on(m_actions.trackUp, [this] { m_tracks->moveTrack(-1); });
    on(m_actions.trackDown, [this] { m_tracks->moveTrack(1); });
    on(m_actions.quit, [this] { close(); });
    on(m_actions.keys, [this] { m_keys->show(); });
    on(m_actions.about, [this] {
        QMessageBox::about(this, m_parts.text.plain(TextId::commandAbout),
                           m_parts.text(TextId::aboutText).arg(QStringLiteral(TESSARO_VERSION)));
    });
    connect(&m_menus->recent(), &QMenu::aboutToShow, this, [this] { m_files.fillRecentMenu(m_menus->recent()); });
    connect(&m_menus->windows(), &QMenu::aboutToShow, this, [this] { m_windowCommands->fill(m_menus->windows()); });
}

void CMainFrame::connectWindows()
{
    m_windowCommands.emplace(*m_windows, *m_tracks, m_viewParts, m_actions);
    m_windowCommands->fill(m_menus->windows());
    m_windows->onActive = [this] {
        m_view.setActive(m_windows->isSuspended() ? nullptr : m_windows->active());
        m_edits.refresh();
        m_windowCommands->refresh();
    };
    m_windows->onActive();
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] { m_view.refresh(); });
    m_tracks->onArmed = [this](int, bool on) { armed(on); };
    m_tracks->onOpenSong = [this] { m_actions.open.trigger(); };
}

void CMainFrame::connectPanel()
{
    m_transport.emplace(m_parts, m_actions, *m_bar);
    m_transport->isBusy = [this] { return m_status->busy(); };
    m_transport->blksToLoop = [this] { return m_windowCommands->chosenBlks(); };
    m_follower.emplace(m_parts, PanelFollower::Places{m_actions, *m_bar, *m_tracks, *m_windows, *m_status});
    m_transport->onDone = [this] { m_follower->stateChanged(); };
    m_follower->onState = [this] { panelChanged(); };
    m_keyboard.emplace(*this, m_parts, m_actions.keyboard);
    m_steps.emplace(*this, m_parts, m_actions.stepStrip);
}

void CMainFrame::connectSettings()
{
    const auto on = [this](QAction& action, auto work) { connect(&action, &QAction::triggered, this, work); };
    m_choices.emplace(m_parts, m_actions, *m_panelDock);
    m_choices->onLanguage = [this] { retranslate(); };
    m_devices.emplace(m_parts, *m_status);
    m_devices->isBusy = [this] { return m_status->busy() || m_setup.isSystemSetupShown(); };
    m_setup.isBusy = [this] { return m_status->busy(); };
    m_setup.portNames = m_viewParts.portNames;
    on(m_actions.systemSetup, [this] {
        m_setup.systemSetup();
        m_keyboard->devicesChanged();
    });
    on(m_actions.recordSettings, [this] { m_setup.recordSettings(); });
    on(m_actions.metronomeSettings, [this] { m_setup.metronomeSettings(); });
}

// Files

void CMainFrame::connectFiles()
{
    m_files.isBusy = [this] { return m_status->busy(); };
    m_files.onBefore = [this] { m_tracks->finishEditing(); };
    m_files.onOpened = [this] { announceSong(); };
    m_files.onSaved = [this](const QString& path) {
        m_status->setNews(m_parts.text(TextId::songSaved).arg(QFileInfo(path).fileName()));
    };
    m_files.onExported = [this](const QString& path) {
        m_status->setNews(m_parts.text(TextId::songExported).arg(QFileInfo(path).fileName()));
    };
    m_recoveries.emplace(m_parts, RecoveryControl::Places{*m_recovery, m_files, *m_status});
    m_recoveries->onDone = [this] {
        if (!focusWidget()) focusSong();
    };
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event)
{
    if (!draggedFile(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* event)
{
    const QString file = draggedFile(event->mimeData());
    if (file.isEmpty()) return;
    event->acceptProposedAction();
    openFile(file);
}

// The song

void CMainFrame::songLeaves()
{
    m_parts.panel.Stop();
    m_parts.audition.stop();
    m_notes.clear();
    m_windows->closeChildren();
    m_windows->suspend();
}

void CMainFrame::songReplaced()
{
    m_notes.clear();
    m_parts.panel.SetTop();
    m_status->setNews({});
    m_windows->songReplaced();
    showState();
    m_view.refresh();
    m_follower->refresh();
    if (!m_recovery->isAncestorOf(focusWidget())) focusSong();
}

void CMainFrame::songToTop()
{
    m_parts.panel.SetTop();
    m_parts.panel.Top();
}

void CMainFrame::setSyncMode(int mode) { m_parts.panel.SetSyncMode(static_cast<unsigned>(mode)); }

void CMainFrame::focusSong()
{
    if (!m_windows->isAncestorOf(focusWidget())) m_windows->activate(*m_windows->active());
}

void CMainFrame::onHint(const HintObserver*, int code, CEditor*)
{
    switch (code) {
    case hint::sysSetupChng:
        m_devices->show();
        m_keyboard->devicesChanged();
        m_tracks->refreshRows();
        break;
    case hint::dispReq:
        showState();
        if (!m_status->busy()) m_follower->refresh();
        break;
    default: break;
    }
}

void CMainFrame::undo(bool (CEditor::*step)())
{
    if (m_status->busy()) return;
    (editor().*step)();
    showState();
}

void CMainFrame::showState()
{
    showTitle();
    const auto title = [this](bool (CEditor::*isThere)(std::string&) const) -> std::optional<QString> {
        std::string found;
        return (editor().*isThere)(found) ? std::optional(utf8Text(found)) : std::nullopt;
    };
    m_actions.setHistory(title(&CEditor::IsEnableUndo), title(&CEditor::IsEnableRedo));
    m_windowCommands->history().refresh();
}

void CMainFrame::showTitle()
{
    const QString path = QString::fromStdString(m_parts.document.GetPathName());
    const QFileInfo file(path);
    const bool unnamed = path.isEmpty();
    m_bar->setSongName(unnamed ? m_parts.text(TextId::songUntitled) : file.completeBaseName());
    setWindowTitle(
        QStringLiteral("%1[*] - Tessaro").arg(unnamed ? m_parts.text(TextId::songUntitled) : file.fileName()));
    setWindowModified(m_parts.document.IsModified());
}

/// Says in the status line what came in, unless something more important stands there.
void CMainFrame::announceSong()
{
    const QString news = loadedNews(editor(), m_parts.text);
    if (!news.isEmpty() && m_status->news().isEmpty()) m_status->setNews(news);
}

// Recording

/// The panel's buttons stand as they should already.
void CMainFrame::panelChanged()
{
    const bool possible = !m_parts.document.IsRecording();
    m_actions.setEditing(possible);
    m_menus->recent().setEnabled(possible);
    m_windowCommands->setEditing(possible);
    m_view.refresh();
}

bool CMainFrame::isLocked() const { return m_status->busy() || m_parts.document.IsRecording(); }

void CMainFrame::armed(bool on)
{
    m_parts.app.UpdateMidiThru();
    m_follower->stateChanged();
    if (on && m_keyboard->offer()) m_status->setNews(m_parts.text(TextId::keyboardNoInput));
}

// The child windows

TrkSelection* CMainFrame::trkSelection() const { return m_tracks ? &m_tracks->selection() : nullptr; }

// The window

void CMainFrame::handle(const Message& message)
{
    if (m_parts.messages.handle(message)) {
        if (message.id == msg::recordError) m_status->setNews(m_parts.text(TextId::midiReceiveError));
        return;
    }
    if (message.id == msg::devicesChanged) m_devices->changed(message);
}

void CMainFrame::showInPlace()
{
    const auto stood = loadPlacement(m_parts.store, PlacedWindow::main, screen()->size());
    if (stood) {
        setGeometry(stood->place);
        if (stood->maximised) setWindowState(windowState() | Qt::WindowMaximized);
    } else {
        resize(usualSize.boundedTo(screen()->availableSize()));
    }
    m_windowCommands->restore(UserSettings(m_parts.store).opensLastWindows());
    show();
    m_panelDock->restorePlace();
    m_choices->showPanelPlace();
    m_windows->resume();
    announceSong();
}

void CMainFrame::closeEvent(QCloseEvent* event)
{
    if (m_parts.document.IsRecording()) m_parts.panel.Stop(); // a take is complete before anything is asked
    if (!m_files.leaveSong()) {
        event->ignore();
        return;
    }
    m_parts.panel.Stop();
    savePlacement(m_parts.store, PlacedWindow::main, {isMaximized() ? normalGeometry() : geometry(), isMaximized()},
                  screen()->size());
    m_panelDock->savePlace();
    m_windowCommands->save();
    m_grid.save(m_parts.store);
    event->accept();
}

void CMainFrame::retranslate()
{
    m_parts.theme.setJapanese(m_parts.text.language() == Language::japanese);
    m_actions.retranslate();
    m_bar->retranslate();
    m_panelDock->setWindowTitle(m_parts.text(TextId::controlPanel));
    m_keyboard->retranslate();
    m_steps->retranslate();
    m_menus->retranslate();
    m_view.retranslate();
    m_edits.retranslate();
    m_windows->retranslate();
    m_windowCommands->retranslate();
    m_keys->retranslate();
    m_recoveries->retranslate();
    showTitle();
}

} // namespace tessaro
