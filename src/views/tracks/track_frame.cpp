// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_frame.h"

#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "realtime/transport/cnp_window.h"
#include "views/editors/stored_zoom.h"
#include "views/editors/view_actions.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/tracks/blk_evnts.h"
#include "views/tracks/trk_blk_view.h"
#include "views/tracks/trk_pram_view.h"
#include "views/widgets/empty_hint.h"

#include <QEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace tessaro {
namespace {

constexpr int takeInterval = 100; ///< ms between two drawings of what is being recorded
constexpr int busyInterval = 100; ///< ms to wait while the song is being made
constexpr int prefsWidth = 400;
constexpr const char* condition = "View Condition";
constexpr const char* zoomName = "Trk";

using C = ViewCommand;

} // namespace

CTrackFrame::CTrackFrame(const ViewParts& parts, QWidget* parent)
    : ChildFrame(parent)
    , m_parts(parts)
    , m_table(parts.text)
    , m_tracks(parts.editor, parts.text)
    , m_lights(parts.editor)
    , m_prams(new CTrkPramView(m_table))
    , m_blks(new CTrkBlkView(m_parts))
    , m_pages(m_parts, m_tracks, m_blks->commands(), *this)
    , m_commands(m_parts, *this)
{
    layOut();
    connectTable();
    m_refresh.setSingleShot(true);
    connect(&m_refresh, &QTimer::timeout, this, [this] { refresh(); });
    m_changed.setSingleShot(true);
    connect(&m_changed, &QTimer::timeout, this, [this] {
        m_parts.actions.refresh();
        if (onChanged) onChanged();
    });
    m_parts.editor.addObserver(this);
    restoreState();
    retranslate();
    songReplaced();
}

CTrackFrame::~CTrackFrame() { m_parts.editor.removeObserver(this); }

void CTrackFrame::layOut()
{
    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_splitter->addWidget(m_prams);
    m_splitter->addWidget(m_blks);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    m_prams->setMinimumWidth(160);
    m_blks->setMinimumWidth(160);
    m_hint = new EmptyHint(m_parts.icons.icon(QStringLiteral("song")), m_blks->viewport());
    m_hint->hide();
    m_blks->viewport()->installEventFilter(this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_splitter, 1);
    setFocusProxy(m_blks);

    const std::initializer_list<C> keys = {C::remove,   C::nudgeLeft, C::nudgeRight, C::nudgeUp, C::nudgeDown,
                                           C::tickLeft, C::tickRight, C::longer,     C::shorter, C::openEditor};
    m_parts.actions.listen(*m_blks, keys);
    m_parts.actions.listen(*m_prams, {C::openEditor, C::editCell, C::armTrack, C::muteTrack, C::soloTrack});
    connect(&m_parts.actions[C::toolSelect], &QAction::toggled, m_blks, [this] { m_blks->toolChanged(); });
    connect(&m_hint->button(), &QPushButton::clicked, this, [this] {
        if (onOpenSong) onOpenSong();
    });
}

void CTrackFrame::connectTable()
{
    m_table.portNames = m_parts.portNames;
    m_table.onRecord = [this](int track, bool on) {
        m_tracks.setRecord(track, on);
        if (onArmed) onArmed(track, on);
    };
    m_table.onMute = [this](int track, bool on) { m_tracks.setMute(track, on); };
    m_table.onSolo = [this](int track, bool on) { m_tracks.setSolo(track, on); };
    m_table.onName = [this](int track, const QString& name) { m_tracks.setName(track, name); };
    m_table.onSetting = [this](int track, TrackColumn what, int value) { m_tracks.setSetting(track, what, value); };
    m_tracks.onChanged = [this] {
        refreshRows();
        if (onChanged) onChanged();
    };

    QScrollBar* left = m_prams->verticalScrollBar();
    QScrollBar* right = m_blks->verticalScrollBar();
    connect(left, &QScrollBar::valueChanged, right, &QScrollBar::setValue);
    connect(right, &QScrollBar::valueChanged, left, &QScrollBar::setValue);
    connect(m_prams->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        m_blks->setCurrentTrack(currentTrack());
        tellChanged();
    });
    m_prams->onProperties = [this](int track) { showTrack(track); };
    m_prams->onMenu = [this](int track, const QPoint& at) { trackMenu(track, at); };
    m_blks->onTrack = [this](int track) { setCurrentTrack(track); };
    m_blks->onProperties = [this](const BlkRef& blk) { showBlk(blk); };
    m_blks->onZoom = [this] { m_prams->setRowHeight(m_blks->geometry().rowHeight()); };
    m_blks->onLoop = [this] { panelChanged(); };
    m_blks->selection().onChanged = [this] {
        m_blks->selectionChanged();
        tellChanged();
    };
}

/// Once behind a burst.
void CTrackFrame::tellChanged()
{
    if (!m_changed.isActive()) m_changed.start(0);
}

QString CTrackFrame::title() const { return m_parts.text(TextId::windowTracks); }

TrkSelection& CTrackFrame::selection() const { return m_blks->selection(); }

// Changes of the song

void CTrackFrame::onHint(const HintObserver*, int code, CEditor*)
{
    m_blks->follow(code, m_parts.editor);
    switch (code) {
    case hint::evntChng:
    case hint::locationChng:
    case hint::insEvnt:
    case hint::delEvnt: startsStale(); return;
    case hint::trkSolo:
    case hint::trkMute:
    case hint::chSolo:
    case hint::chMute:
    case hint::soloMute: refreshRows(); return;
    case hint::trkCh:
    case hint::trkPort:
    case hint::allTrkPort:
        m_pages.close();
        refreshRows();
        return;
    case hint::blkNew:
    case hint::blkMove:
    case hint::blkDel:
    case hint::blkApp:
    case hint::blkDiv:
    case hint::blkMerge:
    case hint::addBlk:
    case hint::blkReal:
    case hint::blkUpdate:
    case hint::trkArrange: m_lights.setAllStale(); [[fallthrough]];
    case hint::blkName:
    case hint::blkReSize:
    case hint::trkType:
    case hint::tsChng:
    case hint::measChng: m_pages.close(); break;
    default: break;
    }
    if (!m_refresh.isActive()) m_refresh.start(0);
}

/// Of the track that the hint names, and of all others that may show the same events.
void CTrackFrame::startsStale()
{
    POSITION trk = nullptr;
    POSITION blk = nullptr;
    m_parts.editor.GetHint(trk, blk);
    if (!trk || !blk) return;
    if (m_blks->painter().isLinked(*List<CBlk>::get(blk)))
        m_lights.setAllStale();
    else
        m_lights.setStale(trk);
}

void CTrackFrame::refresh()
{
    if (m_parts.editor.IsPrgDlg()) {
        m_refresh.start(busyInterval);
        return;
    }
    refreshRows();
    showHint();
    tellChanged();
}

void CTrackFrame::refreshRows()
{
    std::vector<TrackRow> rows = trackRows(m_parts.editor);
    std::array<bool, trackCount> sounding{};
    for (const TrackRow& row : rows) sounding[static_cast<std::size_t>(row.track)] = row.sounding;
    m_blks->setSounding(sounding);
    m_table.setRows(std::move(rows));
}

void CTrackFrame::songReplaced()
{
    m_prams->abandonEditing();
    m_pages.close();
    m_lights.setAllStale();
    clearLights();
    m_blks->songReplaced();
    const std::uint32_t end = m_parts.editor.GetTimeEnd();
    const BarLines bars(m_parts.editor.maps().meas());
    std::uint32_t loopStart = 0;
    std::uint32_t loopEnd = 0;
    if (!m_parts.panel.GetLoop(loopStart, loopEnd) && end > 0) m_parts.panel.SetLoop(0, bars.after(end - 1));
    m_blks->setLocation(m_parts.panel.GetLocation());
    refreshRows();
    if (!m_prams->currentIndex().isValid()) setCurrentTrack(1);
    panelChanged();
    tellChanged();
}

bool CTrackFrame::isEmpty() const { return m_blks->painter().isEmpty(); }

void CTrackFrame::showHint()
{
    m_hint->setVisible(isEmpty() && !m_parts.panel.GetPlayBtn()
                       && m_parts.panel.recorder().state() != RecState::recording);
    placeHint();
}

/// In the middle of the rows, as small as it can be.
void CTrackFrame::placeHint()
{
    const QRect room = m_blks->viewport()->rect().adjusted(8, TrkGeometry::rulerHeight + 8, -8, -8);
    const int width = std::min(room.width(), 640);
    m_hint->resize(width,
                   std::min(room.height(), std::max(m_hint->heightForWidth(width), m_hint->sizeHint().height())));
    m_hint->move(room.center() - m_hint->rect().center());
}

bool CTrackFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) placeHint();
    return ChildFrame::eventFilter(watched, event);
}

// The control panel

void CTrackFrame::setPosition(std::uint32_t tick, bool follow) { m_blks->setPosition(tick, follow); }

void CTrackFrame::panelChanged()
{
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    const bool on = m_parts.panel.GetLoop(start, end);
    m_blks->setLoop(start, end, on);
    if (!m_parts.panel.GetPlayBtn()) m_blks->setLocation(m_parts.panel.GetLocation());
    showTakes(0);
    showHint();
}

void CTrackFrame::followPlay(std::uint32_t now, int milliseconds)
{
    if (m_parts.editor.IsPrgDlg()) return;
    m_lights.follow(m_table.rows(), now, milliseconds);
    m_table.setLights(m_lights.lights());
    m_takeAge += milliseconds;
    if (m_takeAge >= takeInterval) showTakes(now);
}

void CTrackFrame::clearLights()
{
    m_lights.clear();
    m_table.setLights(m_lights.lights());
}

void CTrackFrame::showTakes(std::uint32_t now)
{
    m_takeAge = 0;
    CCnpWindow& panel = m_parts.panel;
    std::vector<TrkTake> takes;
    if (panel.recorder().state() == RecState::recording) {
        const std::uint32_t reached = panel.IsStepRec() ? 0 : std::max(panel.recorder().lastTick(), now);
        for (int track = 1; track < trackCount; ++track)
            if (const CBlk* blk = panel.GetRecBlk(m_parts.editor.GetTrkPos(track)))
                takes.push_back({track, blk, std::max(reached, blk->GetTimeEnd())});
    }
    m_blks->setTakes(std::move(takes));
}

// Rows

int CTrackFrame::currentTrack() const
{
    const QModelIndex current = m_prams->currentIndex();
    return current.isValid() ? m_table.row(current).track : 1;
}

void CTrackFrame::setCurrentTrack(int track)
{
    const QModelIndex current = m_prams->currentIndex();
    const int column = current.isValid() ? current.column() : static_cast<int>(TrackColumn::name);
    m_prams->setCurrentIndex(m_table.index(track - 1, column));
}

void CTrackFrame::moveTrack(int step)
{
    finishEditing();
    const int track = currentTrack();
    const int other = track + step;
    if (m_parts.isLocked() || other < 1 || other >= trackCount) return;
    m_tracks.move(track, other);
    setCurrentTrack(other);
}

void CTrackFrame::finishEditing() { m_prams->finishEditing(); }

void CTrackFrame::showTrack(int track)
{
    const QRect row = m_prams->visualRect(m_table.index(track - 1, static_cast<int>(TrackColumn::name)));
    m_pages.openTrack(track, {m_prams->viewport()->mapToGlobal(row.topLeft()), row.size()});
}

void CTrackFrame::showBlk(const BlkRef& blk)
{
    m_blks->reveal(blk);
    const QRect place = m_blks->placeOf(blk).intersected(m_blks->viewport()->rect());
    m_pages.openBlk(blk, {m_blks->viewport()->mapToGlobal(place.topLeft()), place.size()});
}

void CTrackFrame::trackMenu(int track, const QPoint& at)
{
    QMenu menu(this);
    menu.addAction(m_parts.text(TextId::commandProperties), this, [this, track] { showTrack(track); });
    menu.addSeparator();
    const TrackRow row = m_table.rows()[static_cast<std::size_t>(track - 1)];
    const auto add = [&](TextId name, bool on, auto set) {
        QAction* action = menu.addAction(m_parts.text(name), this, [set, track, on] { set(track, !on); });
        action->setCheckable(true);
        action->setChecked(on);
    };
    add(TextId::commandArm, row.record, m_table.onRecord);
    add(TextId::commandMute, row.mute, m_table.onMute);
    add(TextId::commandSolo, row.solo, m_table.onSolo);
    menu.exec(at);
}

// Commands

void CTrackFrame::run(ViewCommand command)
{
    m_commands.run(command);
    tellChanged();
}

std::vector<EvntRef> CTrackFrame::selectedEvnts() const { return evntsOf(m_parts.editor, selection().blks()); }

// Looks

void CTrackFrame::retranslate()
{
    m_table.retranslate();
    m_prams->fitColumns();
    m_prams->setAccessibleName(m_parts.text(TextId::paneTracks));
    m_blks->setAccessibleName(m_parts.text(TextId::paneBlocks));
    m_hint->setSentence(m_parts.text(TextId::emptyTracks));
    m_hint->button().setText(m_parts.text(TextId::commandOpen));
    setWindowTitle(title());
    placeHint();
}

void CTrackFrame::saveState()
{
    SettingsStore& store = m_parts.store;
    saveZoom(store, zoomName, m_blks->geometry().zoom());
    store.setInt(condition, "Trk Split Column", m_splitter->sizes().value(0, prefsWidth));
    store.setInt(condition, "Trk Split Row", m_blks->geometry().rowHeight());
}

void CTrackFrame::restoreState()
{
    const SettingsStore& store = m_parts.store;
    if (const auto zoom = loadZoom(store, zoomName)) m_blks->setZoom(*zoom);
    m_blks->setRowHeight(store.getInt(condition, "Trk Split Row", TrkGeometry::usualRowHeight));
    const int left = store.getInt(condition, "Trk Split Column", prefsWidth);
    m_splitter->setSizes({std::max(left, m_prams->minimumWidth()), std::max(width() - left, 4 * prefsWidth)});
}

} // namespace tessaro
