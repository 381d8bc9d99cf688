// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/main_frame.h"

#include "core/doc/recovery.h"
#include "core/doc/tr9app.h"
#include "core/doc/tr9doc.h"
#include "core/edit/hint_board.h"
#include "core/ports/settings_store.h"
#include "realtime/transport/realtime_messages.h"
#include "views/frame/panel_dock.h"
#include "views/frame/user_settings.h"
#include "views/frame/window_placement.h"
#include "views/frame/window_user.h"
#include "views/recovery/recovery_panel.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/theme/theme.h"
#include "views/tracks/song_overview.h"
#include "views/tracks/track_list_view.h"
#include "views/tracks/track_pane.h"
#include "views/transport/location_text.h"
#include "views/transport/transport_bar.h"
#include "views/widgets/empty_hint.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>

namespace tessaro {
namespace {

constexpr int busyInterval = 100; // ms
constexpr int deviceInterval = 2000;
constexpr int copyInterval = 1000;                   ///< between two looks whether a copy of unsaved work is due
constexpr std::uint32_t leastMeasures = 8;           ///< that the overview shows
constexpr std::uint32_t longestOverview = 1U << 30U; ///< ticks
constexpr QSize usualSize(1280, 800);
constexpr int listWidth = 460;

/// The local file that is dragged; empty for anything else.
QString draggedFile(const QMimeData* data)
{
    return data->urls().size() == 1 ? data->urls().front().toLocalFile() : QString();
}

} // namespace

CMainFrame::CMainFrame(const FrameParts& parts)
    : m_parts(parts)
    , m_actions(*this, parts.icons, parts.text)
    , m_files(*this, m_parts)
    , m_setup(*this, m_parts)
    , m_tracks(m_parts.document.GetEditor(), parts.text)
    , m_table(parts.text)
{
    setWindowIcon(m_parts.icons.picture(QStringLiteral("tessaro")));
    setAcceptDrops(true);
    layOut();
    m_actions.fillMenuBar(*menuBar());
    connectActions();
    connectChoices();
    connectTracks();
    connectFiles();
    connectPanel();

    connect(&m_deviceTimer, &QTimer::timeout, this, [this] { showDevices(); });
    connect(&m_refreshTimer, &QTimer::timeout, this, [this] {
        if (m_status->busy())
            m_refreshTimer.start(busyInterval);
        else
            refreshSong();
    });
    connect(&m_copyTimer, &QTimer::timeout, this, [this] {
        if (!m_status->busy()) m_parts.document.KeepCopy();
    });
    m_refreshTimer.setSingleShot(true);
    m_deviceTimer.start(deviceInterval);
    m_copyTimer.start(copyInterval);

    m_parts.user.setWindow(this);
    m_parts.user.onStatus = [this](const QString& sentence) { m_status->setNews(sentence); };
    editor().addObserver(this);
    retranslate();
    refreshSong();
    showDevices();
}

CMainFrame::~CMainFrame()
{
    editor().removeObserver(this);
    m_parts.user.setWindow(nullptr);
    m_parts.user.onStatus = nullptr;
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
    m_empty = new EmptyHint(m_parts.icons.icon(QStringLiteral("song")));
    m_pane = new TrackPane(m_table, m_empty);
    m_status = new StatusLine(m_parts.icons);
    m_recovery = new RecoveryPanel(m_parts.icons, m_parts.text, body);

    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_recovery);
    layout->addWidget(m_pane, 1);
    setCentralWidget(body);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(m_status, 1);
    setContextMenuPolicy(Qt::NoContextMenu); // of the docks
    resize(usualSize);
    m_pane->splitter().setSizes({listWidth, usualSize.width() - listWidth});
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
    on(m_actions.trackUp, [this] { moveTrack(-1); });
    on(m_actions.trackDown, [this] { moveTrack(1); });
    on(m_actions.quit, [this] { close(); });
    on(m_actions.systemSetup, [this] {
        m_setup.systemSetup();
        m_keyboard->devicesChanged();
    });
    on(m_actions.recordSettings, [this] { m_setup.recordSettings(); });
    on(m_actions.metronomeSettings, [this] { m_setup.metronomeSettings(); });
    m_setup.isBusy = [this] { return m_status->busy(); };
    m_setup.portNames = [this] { return portNames(); };
    on(m_actions.keys, [this] {
        QMessageBox(QMessageBox::NoIcon, m_parts.text.plain(TextId::commandKeys), m_actions.keyTable(),
                    QMessageBox::Close, this)
            .exec();
    });
    on(m_actions.about, [this] {
        QMessageBox::about(this, m_parts.text.plain(TextId::commandAbout),
                           m_parts.text(TextId::aboutText).arg(QStringLiteral(TESSARO_VERSION)));
    });
    connect(&m_empty->button(), &QPushButton::clicked, &m_actions.open, &QAction::trigger);
    connect(&m_actions.recentMenu(), &QMenu::aboutToShow, this,
            [this] { m_files.fillRecentMenu(m_actions.recentMenu()); });
}

void CMainFrame::connectPanel()
{
    m_transport.emplace(m_parts, m_actions, *m_bar);
    m_transport->isBusy = [this] { return m_status->busy(); };
    m_transport->selectedTrack = [this] {
        const QModelIndex current = m_pane->list().currentIndex();
        return current.isValid() ? m_table.row(current).track : 0;
    };
    m_follower.emplace(m_parts, PanelFollower::Places{m_actions, *m_bar, *m_pane, m_table, *m_status});
    m_transport->onDone = [this] { m_follower->stateChanged(); };
    m_follower->onState = [this] { panelChanged(); };
    m_follower->onLongTake = [this] {
        m_leastEnd = std::min(m_pane->overview().end(), longestOverview) * 2;
        refreshSong();
    };
    m_keyboard.emplace(*this, m_parts, m_actions.keyboard);
    m_steps.emplace(*this, m_parts, m_actions.stepStrip);
}

void CMainFrame::connectChoices()
{
    UserSettings settings(m_parts.store);
    FrameActions::choose(m_actions.appearance, static_cast<int>(settings.appearance()));
    FrameActions::choose(m_actions.language, settings.languageNumber());
    connect(&m_actions.appearance, &QActionGroup::triggered, this, [this](const QAction* action) {
        const auto appearance = static_cast<Appearance>(action->data().toInt());
        UserSettings(m_parts.store).setAppearance(appearance);
        m_parts.theme.setAppearance(appearance);
    });
    connect(&m_actions.panelPlace, &QActionGroup::triggered, this,
            [this](const QAction* action) { m_panelDock->setPlace(static_cast<PanelPlace>(action->data().toInt())); });
    connect(m_panelDock, &PanelDock::topLevelChanged, this, [this] { showPanelPlace(); });
    connect(m_panelDock, &PanelDock::dockLocationChanged, this, [this] { showPanelPlace(); });
    connect(&m_actions.language, &QActionGroup::triggered, this, [this](const QAction* action) {
        UserSettings store(m_parts.store);
        store.setLanguageNumber(action->data().toInt());
        m_parts.text.setLanguage(store.language());
        retranslate();
    });
}

void CMainFrame::connectTracks()
{
    m_table.onRecord = [this](int track, bool on) { arm(track, on); };
    m_table.onMute = [this](int track, bool on) { m_tracks.setMute(track, on); };
    m_table.onSolo = [this](int track, bool on) { m_tracks.setSolo(track, on); };
    m_table.onName = [this](int track, const QString& name) { m_tracks.setName(track, name); };
    m_table.onSetting = [this](int track, TrackColumn what, int value) { m_tracks.setSetting(track, what, value); };
    m_tracks.onChanged = [this] {
        refreshRows();
        showState();
    };
    m_table.portNames = [this] { return portNames(); };
    m_pane->overview().onLocate = [this](std::uint32_t tick) { m_transport->locate(tick); };
    m_pane->overview().onLoop = [this](std::uint32_t start, std::uint32_t end) { m_transport->markLoop(start, end); };
}

// Files

void CMainFrame::connectFiles()
{
    m_files.isBusy = [this] { return m_status->busy(); };
    m_files.onBefore = [this] { m_pane->list().finishEditing(); };
    m_files.onOpened = [this] { announceSong(); };
    m_files.onSaved = [this](const QString& path) {
        m_status->setNews(m_parts.text(TextId::songSaved).arg(QFileInfo(path).fileName()));
    };
    m_recovery->onOpen = [this](std::size_t index) { openRecovered(index); };
    m_recovery->onDiscard = [this](std::size_t index) { discardRecovered(index); };
    m_recovery->onLater = [this] { offerRecovery(nullptr); };
}

void CMainFrame::offerRecovery(std::unique_ptr<RecoveryList> songs)
{
    m_recoverable = std::move(songs);
    showRecovery();
    if (m_recovery->isVisible()) m_recovery->setFocus();
}

void CMainFrame::openRecovered(std::size_t index)
{
    const std::string take = m_recoverable->songs()[index].take;
    const bool open = m_files.recover(*m_recoverable, index);
    if (open && !take.empty() && !m_parts.panel.recorder().restore(take))
        m_status->setNews(m_parts.text(TextId::fileFailed));
    showRecovery();
}

void CMainFrame::discardRecovered(std::size_t index)
{
    const RecoveryLine line = recoveryLine(m_recoverable->songs()[index], m_parts.text);
    if (!m_parts.user.askBox(m_parts.text(TextId::recoveryAskDiscard).arg(line.name, line.time))) return;
    m_recoverable->decline(index);
    showRecovery();
}

void CMainFrame::showRecovery()
{
    if (m_recoverable && m_recoverable->songs().empty()) m_recoverable.reset();
    m_recovery->setSongs(m_recoverable ? m_recoverable->songs() : std::vector<RecoverableSong>());
    if (!m_recoverable && !focusWidget()) focusSong();
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

void CMainFrame::stopPlay() { m_parts.panel.Stop(); }

void CMainFrame::songReplaced()
{
    m_parts.panel.SetTop();
    m_status->setNews({});
    refreshSong();
}

void CMainFrame::songToTop()
{
    m_parts.panel.SetTop();
    m_parts.panel.Top();
}

void CMainFrame::setSyncMode(int mode) { m_parts.panel.SetSyncMode(static_cast<unsigned>(mode)); }

void CMainFrame::refreshSong()
{
    m_refreshTimer.stop();
    const CEditor& song = editor();
    std::vector<TrackRow> rows = trackRows(song);
    if (m_parts.panel.recorder().state() != RecState::recording) m_leastEnd = 0;
    const std::uint32_t end = std::max({song.GetTimeEnd(), song.MeasToTime({leastMeasures, 0, 0}), m_leastEnd});
    std::vector<Miniature> miniatures;
    std::vector<NoteStarts> starts;
    for (const TrackRow& row : rows) {
        miniatures.emplace_back(*song.song().trk(row.track), end);
        starts.emplace_back(*song.song().trk(row.track));
    }
    SongOverview::Measures measures;
    measures.top = [&song](std::uint32_t measure) { return song.MeasToTime({measure, 0, 0}); };
    measures.nearest = [&song](std::uint32_t tick) { return song.GetMeasTime(tick); };
    _EDT_MEAS last;
    song.TimeToMeas(end - 1, last);
    measures.count = last.meas;

    m_pane->overview().setSong(rows, std::move(miniatures), end, std::move(measures));
    m_table.setRows(std::move(rows));
    showState();
    m_follower->setSong(std::move(starts), end);
    if (!m_recovery->isAncestorOf(focusWidget())) focusSong();
}

void CMainFrame::focusSong()
{
    TrackListView& list = m_pane->list();
    if (!list.selectionModel()->hasSelection())
        list.setCurrentIndex(m_table.index(0, static_cast<int>(TrackColumn::name)));
    if (!m_pane->isAncestorOf(focusWidget())) list.setFocus();
}

void CMainFrame::refreshRows()
{
    std::vector<TrackRow> rows = trackRows(editor());
    m_pane->overview().setRows(rows);
    m_table.setRows(std::move(rows));
}

void CMainFrame::onHint(const HintObserver*, int code, CEditor*)
{
    switch (code) {
    case hint::trkSolo:
    case hint::trkMute:
    case hint::chSolo:
    case hint::chMute:
    case hint::soloMute:
    case hint::trkCh:
    case hint::trkPort:
    case hint::allTrkPort: refreshRows(); break;
    case hint::sysSetupChng:
        showDevices();
        m_keyboard->devicesChanged();
        break;
    case hint::dispReq: showState(); [[fallthrough]];
    default:
        if (!m_refreshTimer.isActive()) m_refreshTimer.start(0);
    }
}

void CMainFrame::undo(bool (CEditor::*step)())
{
    if (m_status->busy()) return;
    (editor().*step)();
    showState();
}

void CMainFrame::moveTrack(int step)
{
    m_pane->list().finishEditing();
    const QModelIndex current = m_pane->list().currentIndex();
    const QModelIndex other = current.siblingAtRow(current.row() + step);
    if (m_status->busy() || m_parts.document.IsRecording() || !other.isValid()) return;
    m_tracks.move(m_table.row(current).track, m_table.row(other).track);
    m_pane->list().setCurrentIndex(other);
}

void CMainFrame::showState()
{
    showTitle();
    const auto title = [this](bool (CEditor::*isThere)(std::string&) const) -> std::optional<QString> {
        std::string found;
        return (editor().*isThere)(found) ? std::optional(utf8Text(found)) : std::nullopt;
    };
    m_actions.setHistory(title(&CEditor::IsEnableUndo), title(&CEditor::IsEnableRedo));
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
    const auto used = std::ranges::count_if(m_table.rows(), [](const TrackRow& row) { return row.used; });
    if (used == 0 || !m_status->news().isEmpty()) return;
    const std::uint32_t end = editor().GetTimeEnd();
    _EDT_MEAS last;
    editor().TimeToMeas(end > 0 ? end - 1 : 0, last);
    m_status->setNews(m_parts.text(TextId::songLoaded)
                          .arg(used)
                          .arg(last.meas)
                          .arg(utf8Text(clockText(editor().TimeToMsecond(end)))));
}

void CMainFrame::showPanelPlace()
{
    FrameActions::choose(m_actions.panelPlace, static_cast<int>(m_panelDock->place()));
}

// Recording

/// The panel's buttons stand as they should already.
void CMainFrame::panelChanged()
{
    m_actions.setEditing(!m_parts.document.IsRecording());
    m_pane->showHint(isEmpty());
}

bool CMainFrame::isEmpty() const
{
    const auto used = [](const TrackRow& row) { return row.used; };
    return std::ranges::none_of(m_table.rows(), used) && !m_parts.panel.GetPlayBtn()
        && m_parts.panel.recorder().state() != RecState::recording;
}

void CMainFrame::arm(int track, bool on)
{
    m_tracks.setRecord(track, on);
    m_parts.app.UpdateMidiThru();
    if (on && m_keyboard->offer()) m_status->setNews(m_parts.text(TextId::keyboardNoInput));
}

// The window

void CMainFrame::handle(const Message& message)
{
    if (m_parts.messages.handle(message)) {
        if (message.id == msg::recordError) m_status->setNews(m_parts.text(TextId::midiReceiveError));
        return;
    }
    if (message.id != msg::devicesChanged) return;
    if (m_status->busy() || m_setup.isSystemSetupShown()) {
        QTimer::singleShot(deviceInterval, this, [this, message] { handle(message); });
        return;
    }
    m_parts.app.OnDeviceChange(message.wParam);
    showDevices();
}

void CMainFrame::showDevices() { m_status->setDevices(m_parts.deviceSentence()); }

QStringList CMainFrame::portNames() const
{
    QStringList names;
    for (std::size_t port = 0; port < m_parts.app.GetMidiOutPortNum(); ++port) {
        const std::uint8_t driver = m_parts.app.GetMidiOut(static_cast<std::uint8_t>(port));
        const std::string name = m_parts.app.GetDrvShortName(driver);
        names << (name.empty() ? m_parts.text(TextId::noDevice) : songText(name));
    }
    return names;
}

void CMainFrame::showInPlace()
{
    const QSize desk = screen()->size();
    if (const auto place = loadPlacement(m_parts.store, PlacedWindow::main, desk.width(), desk.height())) {
        setGeometry(QRect(place->left, place->top, place->right - place->left, place->bottom - place->top));
        if (place->maximized) setWindowState(windowState() | Qt::WindowMaximized);
    } else {
        resize(usualSize.boundedTo(screen()->availableSize()));
    }
    show();
    m_panelDock->restorePlace();
    showPanelPlace();
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
    const QSize desk = screen()->size();
    const QRect place = isMaximized() ? normalGeometry() : geometry();
    savePlacement(m_parts.store, PlacedWindow::main,
                  {.left = place.x(),
                   .top = place.y(),
                   .right = place.x() + place.width(),
                   .bottom = place.y() + place.height(),
                   .maximized = isMaximized()},
                  desk.width(), desk.height());
    m_panelDock->savePlace();
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
    m_table.retranslate();
    m_pane->list().fitColumns();
    m_pane->list().setAccessibleName(m_parts.text(TextId::paneTracks));
    m_pane->overview().setAccessibleName(m_parts.text(TextId::paneOverview));
    m_pane->overview().setToolTip(m_parts.text(TextId::tipOverview));
    m_empty->setSentence(m_parts.text(TextId::emptySong));
    m_empty->button().setText(m_parts.text(TextId::commandOpen));
    m_recovery->retranslate();
    showRecovery();
    showTitle();
}

} // namespace tessaro
