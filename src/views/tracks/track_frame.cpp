// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_frame.h"

#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "realtime/transport/cnp_window.h"
#include "views/clipboard/song_clipboard.h"
#include "views/editors/view_actions.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/tracks/trk_blk_prop_page.h"
#include "views/tracks/trk_blk_view.h"
#include "views/tracks/trk_pram_view.h"
#include "views/tracks/trk_prop_page.h"
#include "views/widgets/empty_hint.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace tessaro {
namespace {

constexpr int takeInterval = 100;             ///< ms between two drawings of what is being recorded
constexpr std::uint32_t longestStep = 960;    ///< ticks between two looks at the lights, unless the position jumped
constexpr std::uint32_t startsAStep = 200000; ///< notes that one step of following play may look through
constexpr int busyInterval = 100;             ///< ms to wait while the song is being made
constexpr int prefsWidth = 400;
constexpr int rowHeightStep = 12;
constexpr const char* condition = "View Condition";

using C = ViewCommand;

} // namespace

CTrackFrame::CTrackFrame(const ViewParts& parts, QWidget* parent)
    : ChildFrame(parent)
    , m_parts(parts)
    , m_table(parts.text)
    , m_tracks(parts.editor, parts.text)
{
    m_startsStale.fill(true);
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
    m_prams = new CTrkPramView(m_table);
    m_blks = new CTrkBlkView(m_parts);
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
                                           C::tickLeft, C::tickRight, C::longer,     C::shorter};
    m_parts.actions.listen(*m_blks, keys);
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
    case hint::soloMute:
    case hint::trkCh:
    case hint::trkPort:
    case hint::allTrkPort: refreshRows(); return;
    case hint::blkNew:
    case hint::blkMove:
    case hint::blkDel:
    case hint::blkApp:
    case hint::blkDiv:
    case hint::blkMerge:
    case hint::addBlk:
    case hint::blkReal:
    case hint::blkUpdate:
    case hint::trkArrange: m_startsStale.fill(true); break;
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
    m_startsStale[static_cast<std::size_t>(Song::numberOf(trk))] = true;
    if (m_blks->painter().isLinked(*List<CBlk>::get(blk))) m_startsStale.fill(true);
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
    finishEditing();
    m_startsStale.fill(true);
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
    showLights(now, milliseconds);
    m_takeAge += milliseconds;
    if (m_takeAge >= takeInterval) showTakes(now);
}

void CTrackFrame::showLights(std::uint32_t now, int milliseconds)
{
    if (now < m_lightTick || now - m_lightTick > longestStep) m_lightTick = now; // it jumped
    m_lights.fade(milliseconds);
    std::uint32_t looked = 0;
    for (const TrackRow& row : m_table.rows()) {
        const auto track = static_cast<std::size_t>(row.track);
        if (!row.sounding || !row.used) continue;
        if (m_startsStale[track] && looked < startsAStep) {
            m_starts[track] = NoteStarts(*m_parts.editor.song().trk(row.track));
            looked += m_starts[track].count();
            m_startsStale[track] = false;
        }
        if (const int loudest = m_starts[track].loudest(m_lightTick, now + 1); loudest > 0)
            m_lights.strike(row.track, loudest);
    }
    m_lightTick = now + 1;
    m_table.setLights(m_lights);
}

void CTrackFrame::clearLights()
{
    m_lights.clear();
    m_table.setLights(m_lights);
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
    if (m_parts.isLocked()) return;
    auto* page = new CTrkPropPage(m_parts.editor, m_tracks, m_parts.text,
                                  m_parts.portNames ? m_parts.portNames() : QStringList(), track, this);
    const QRect row = m_prams->visualRect(m_table.index(track - 1, static_cast<int>(TrackColumn::name)));
    page->openAt({m_prams->viewport()->mapToGlobal(row.topLeft()), row.size()}, page->name());
}

void CTrackFrame::showBlk(const BlkRef& blk)
{
    if (m_parts.isLocked()) return;
    auto* page = new CTrkBlkPropPage(m_parts.editor, m_blks->commands(), m_parts.text, blk, this);
    m_blks->reveal(blk);
    const QRect place = m_blks->placeOf(blk).intersected(m_blks->viewport()->rect());
    page->openAt({m_blks->viewport()->mapToGlobal(place.topLeft()), place.size()}, page->name());
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

bool CTrackFrame::can(ViewCommand command) const
{
    const BlkCommands& commands = m_blks->commands();
    const bool any = !selection().empty();
    const bool free = !m_parts.isLocked();
    switch (command) {
    case C::copy:
    case C::selectNone:
    case C::selectSiblings:
    case C::zoomToSelection: return any;
    case C::cut:
    case C::remove:
    case C::duplicate:
    case C::duplicateLinked:
    case C::nudgeLeft:
    case C::nudgeRight:
    case C::tickLeft:
    case C::tickRight:
    case C::nudgeUp:
    case C::nudgeDown: return any && free;
    case C::longer:
    case C::shorter:
    case C::divideBlocks:
    case C::linkBlocks: return free && commands.anyReal();
    case C::mergeBlocks: return free && selection().count() > 1;
    case C::realiseBlock: return free && commands.anyGhost();
    case C::showSource: return commands.anyGhost();
    case C::paste: return free && m_parts.clipboard.holds(SongClipboard::Format::blks);
    case C::properties:
    case C::newBlock: return free;
    case C::selectAll:
    case C::invertSelection:
    case C::zoomToSong: return !isEmpty();
    case C::zoomIn: return m_blks->geometry().zoom() > TrkGeometry::leastZoom;
    case C::zoomOut: return m_blks->geometry().zoom() < TrkGeometry::mostZoom;
    case C::zoomInRows: return m_blks->geometry().rowHeight() < TrkGeometry::mostRowHeight;
    case C::zoomOutRows: return m_blks->geometry().rowHeight() > TrkGeometry::leastRowHeight;
    default: return false;
    }
}

void CTrackFrame::run(ViewCommand command)
{
    if (!can(command)) return;
    BlkCommands& commands = m_blks->commands();
    switch (command) {
    case C::cut:
        if (m_parts.clipboard.copyBlks(selection().blks())) commands.remove(TextId::undoBlockCut);
        break;
    case C::copy: m_parts.clipboard.copyBlks(selection().blks()); break;
    case C::paste: paste(); break;
    case C::remove: commands.remove(); break;
    case C::duplicate: made(commands.duplicate(DropKind::copy)); break;
    case C::duplicateLinked: made(commands.duplicate(DropKind::relink)); break;
    case C::selectAll: commands.selectAll(); break;
    case C::selectNone: selection().trkInitSel(); break;
    case C::invertSelection: commands.invert(); break;
    case C::properties: properties(); break;
    case C::nudgeLeft: made(commands.nudge(-1, 0)); break;
    case C::nudgeRight: made(commands.nudge(1, 0)); break;
    case C::nudgeUp: made(commands.nudge(0, -1)); break;
    case C::nudgeDown: made(commands.nudge(0, 1)); break;
    case C::tickLeft: commands.nudgeTicks(-1); break;
    case C::tickRight: commands.nudgeTicks(1); break;
    case C::longer: commands.lengthen(1); break;
    case C::shorter: commands.lengthen(-1); break;
    case C::newBlock: newBlock(); break;
    case C::divideBlocks: commands.divide(m_parts.panel.GetLocation()); break;
    case C::linkBlocks: commands.link(); break;
    case C::mergeBlocks: commands.merge(); break;
    case C::realiseBlock: commands.realise(); break;
    case C::showSource: made(commands.selectSources()); break;
    case C::selectSiblings: commands.selectSiblings(); break;
    case C::zoomIn: m_blks->zoomBy(1); break;
    case C::zoomOut: m_blks->zoomBy(-1); break;
    case C::zoomInRows: m_blks->setRowHeight(m_blks->geometry().rowHeight() + rowHeightStep); break;
    case C::zoomOutRows: m_blks->setRowHeight(m_blks->geometry().rowHeight() - rowHeightStep); break;
    case C::zoomToSong: m_blks->zoomToSong(); break;
    case C::zoomToSelection: m_blks->zoomToSelection(); break;
    default: break;
    }
    tellChanged();
}

/// Brings into sight what an edit has made or moved.
void CTrackFrame::made(bool done)
{
    if (const auto blks = selection().blks(); done && !blks.empty()) {
        m_blks->reveal(blks.front());
        setCurrentTrack(Song::numberOf(blks.front().trk));
    }
}

void CTrackFrame::paste()
{
    const auto blks = m_parts.clipboard.pasteBlks(currentTrack(), m_parts.panel.GetLocation());
    if (blks.empty()) return;
    selection().setBlks(blks);
    m_blks->reveal(blks.front());
}

/// One bar on the current track, at the play position or behind what stands there.
void CTrackFrame::newBlock()
{
    const BarLines bars(m_parts.editor.maps().meas());
    std::uint32_t top = m_blks->barAtPosition();
    if (const CTrk* trk = m_parts.editor.song().trk(currentTrack()))
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk))
            if (blk->GetTimeTop() <= top && blk->GetTimeEnd() > top) top = bars.after(blk->GetTimeEnd() - 1);
    made(m_blks->commands().create(currentTrack(), top, bars.after(top)));
}

void CTrackFrame::properties()
{
    const auto blks = selection().blks();
    if (blks.empty() || m_prams->hasFocus())
        showTrack(currentTrack());
    else
        showBlk(blks.back());
}

/// A block's events once, however often it is selected; those of a ghost through its source, where they can change.
std::vector<EvntRef> CTrackFrame::selectedEvnts() const
{
    struct Timed {
        std::uint32_t time;
        int track;
        EvntRef ref;
    };
    std::vector<Timed> found;
    std::unordered_set<const CRealBlk*> seen;
    for (BlkRef at : selection().blks()) {
        const CBlk* blk = List<CBlk>::get(at.blk);
        if (!seen.insert(blk->GetRealBlk()).second) continue;
        if (blk->GetType() == blktype::ghost && !m_parts.editor.SrchSrcBlk(at.trk, at.blk, at.trk, at.blk)) continue;
        blk = List<CBlk>::get(at.blk);
        const int track = Song::numberOf(at.trk);
        for (POSITION evnt = blk->GetHeadPos(); evnt; evnt = evnt->next)
            found.push_back({blk->GetTimeTop() + List<CEvnt>::get(evnt)->GetTime(), track, {at.trk, at.blk, evnt}});
    }
    std::ranges::stable_sort(found, {}, [](const Timed& t) { return std::pair(t.time, t.track); });
    std::vector<EvntRef> refs;
    refs.reserve(found.size());
    for (const Timed& timed : found) refs.push_back(timed.ref);
    return refs;
}

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
    store.setInt(condition, "Trk Zoom", static_cast<int>(std::lround(m_blks->geometry().zoom())));
    store.setInt(condition, "Trk Row Height", m_blks->geometry().rowHeight());
    store.setInt(condition, "Trk Split Column", m_splitter->sizes().value(0, prefsWidth));
}

void CTrackFrame::restoreState()
{
    const SettingsStore& store = m_parts.store;
    if (const int zoom = store.getInt(condition, "Trk Zoom", -1); zoom != -1) m_blks->setZoom(zoom);
    m_blks->setRowHeight(store.getInt(condition, "Trk Row Height", TrkGeometry::usualRowHeight));
    const int left = store.getInt(condition, "Trk Split Column", prefsWidth);
    m_splitter->setSizes({std::max(left, m_prams->minimumWidth()), std::max(width() - left, 4 * prefsWidth)});
}

} // namespace tessaro
