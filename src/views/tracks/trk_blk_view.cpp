// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_blk_view.h"

#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "realtime/transport/cnp_window.h"
#include "views/editors/view_actions.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/tracks/blk_menu.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace tessaro {
namespace {

constexpr int autoScrollInterval = 40; ///< ms
constexpr int drumChannel = 9;
constexpr int themeBackground = 0x804000; ///< stands for the colour of the theme

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

} // namespace

CTrkBlkView::CTrkBlkView(const ViewParts& parts, QWidget* parent)
    : TrkScrollArea(parts.editor, parent)
    , m_parts(parts)
    , m_blks(parts.editor)
    , m_selection(parts.editor)
    , m_commands(parts.editor, parts.text, m_selection, [this] { return locked(); })
    , m_gesture(parts.editor, m_geometry, m_blks, m_selection)
    , m_painter({parts.editor, m_geometry, m_blks, m_selection, m_gesture, parts.icons})
{
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    m_clickTimer.setSingleShot(true);
    connect(&m_clickTimer, &QTimer::timeout, this, [this] {
        m_gesture.timeout();
        stale();
    });
    connect(&m_scrollTimer, &QTimer::timeout, this, [this] { autoScroll(); });
    readColours();
}

// What is shown

void CTrkBlkView::setPosition(std::uint32_t tick, bool follow)
{
    if (tick != m_painter.position) {
        viewport()->update(m_painter.strip(m_painter.position));
        m_painter.position = tick;
        viewport()->update(m_painter.strip(tick));
    }
    if (follow && !m_gesture.active() && !panning()) turnPageTo(tick);
}

void CTrkBlkView::setLocation(std::uint32_t tick)
{
    if (tick == m_painter.location) return;
    viewport()->update(m_painter.strip(m_painter.location));
    m_painter.location = tick;
    viewport()->update(m_painter.strip(tick));
}

void CTrkBlkView::setLoop(std::uint32_t start, std::uint32_t end, bool on)
{
    const LoopHandles shown = m_gesture.loop();
    if (shown.start == start && shown.end == end && m_painter.loopOn == on) return;
    m_gesture.setLoop(start, end);
    m_painter.loopOn = on;
    stale();
}

void CTrkBlkView::setTakes(std::vector<TrkTake> takes)
{
    if (takes.empty() && m_painter.takes.empty()) return;
    m_painter.takes = std::move(takes);
    stale();
}

void CTrkBlkView::setSounding(const std::array<bool, trackCount>& sounding)
{
    if (sounding == m_painter.sounding) return;
    m_painter.sounding = sounding;
    stale();
}

void CTrkBlkView::setCurrentTrack(int track)
{
    if (track == m_painter.currentTrack) return;
    m_painter.currentTrack = track;
    stale();
}

void CTrkBlkView::follow(int code, CEditor& editor)
{
    m_painter.follow(code, editor);
    stale();
    if (code == hint::dispReq) showScroll();
}

void CTrkBlkView::songReplaced()
{
    m_gesture.abandon();
    endGesture();
    m_blks.clear();
    m_selection.clear();
    m_painter.songReplaced();
    showTop();
}

void CTrkBlkView::selectionChanged()
{
    m_painter.selectionChanged();
    stale();
}

void CTrkBlkView::readColours()
{
    for (std::size_t i = 0; i < m_painter.colours.size(); ++i) {
        const int colour = m_parts.store.getInt("Block Color", "BlockColor" + std::to_string(i), 0);
        m_painter.colours[i] = std::clamp(colour, 0, static_cast<int>(m_painter.colours.size()));
    }
    const int background = m_parts.store.getInt("Track", "Color", themeBackground);
    m_background = background == themeBackground ? QColor() : QColor::fromRgb(static_cast<QRgb>(background));
    stale();
}

void CTrkBlkView::paint(QPainter& painter, const QRect& area)
{
    QPalette colours = palette();
    if (m_background.isValid()) {
        colours.setColor(QPalette::Base, m_background);
        colours.setColor(QPalette::Text, m_background.lightnessF() < 0.5F ? Qt::white : Qt::black);
    }
    m_painter.paint(painter, area, {colours, font(), devicePixelRatioF()});
    if (m_painter.unfinished()) QTimer::singleShot(0, this, [this] { stale(); });
}

void CTrkBlkView::zoomToSelection()
{
    if (const auto span = m_commands.span()) zoomTo(*span);
}

QRect CTrkBlkView::placeOf(const BlkRef& ref) const
{
    const CBlk& blk = *List<CBlk>::get(ref.blk);
    return m_geometry.toWindow(m_geometry.blkRect(Song::numberOf(ref.trk), blk.GetTimeTop(), blk.GetTimeEnd()));
}

void CTrkBlkView::reveal(const BlkRef& blk) { TrkScrollArea::reveal(m_geometry.toSong(placeOf(blk))); }

void CTrkBlkView::autoScroll()
{
    if (!m_gesture.active()) {
        m_scrollTimer.stop();
        return;
    }
    const bool rows = m_gesture.zoneAt(m_pointer, m_parts.actions.tool()) != BlkGesture::Zone::ruler;
    if (scrollAtEdge(m_pointer, rows)) m_gesture.move(m_pointer, QApplication::keyboardModifiers());
}

// The mouse

void CTrkBlkView::mousePressEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    QToolTip::hideText();
    if (event->button() == Qt::MiddleButton) {
        startPan(at);
    } else if (event->button() == Qt::LeftButton) {
        pressed(*event);
    } else if (event->button() == Qt::RightButton && m_gesture.active()) {
        endGesture();
    }
}

void CTrkBlkView::pressed(QMouseEvent& event)
{
    m_pointer = event.position().toPoint();
    m_clickTimer.stop();
    if (!TrkGeometry::isRuler(m_pointer)) {
        if (onTrack) onTrack(m_geometry.track(m_geometry.toSong(m_pointer).y()));
        if (locked()) return;
    }
    perform(m_gesture.press(m_pointer, event.modifiers(), m_parts.actions.tool()));
    if (m_gesture.waits()) m_clickTimer.start(BlkGesture::clickTime);
    if (m_gesture.active()) m_scrollTimer.start(autoScrollInterval);
    stale();
}

void CTrkBlkView::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    if (panning()) {
        pan(at);
    } else if (m_gesture.active()) {
        m_pointer = at;
        m_gesture.move(at, event->modifiers());
        stale();
    } else {
        showCursor(at);
    }
}

void CTrkBlkView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton) endPan();
    if (event->button() == Qt::LeftButton && m_gesture.active()) {
        m_clickTimer.stop();
        m_scrollTimer.stop();
        perform(m_gesture.release(event->position().toPoint(), event->modifiers()));
        stale();
    }
    showCursor(event->position().toPoint());
}

void CTrkBlkView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    const auto blk = m_gesture.blkAt(at);
    const EditTool tool = m_parts.actions.tool();
    if (event->button() != Qt::LeftButton || TrkGeometry::isRuler(at) || event->modifiers()
        || (tool != EditTool::select && !(tool == EditTool::pencil && blk))) {
        mousePressEvent(event);
        return;
    }
    endGesture();
    if (blk) {
        openNotes(*blk);
        return;
    }
    const QPoint place = m_geometry.toSong(at);
    if (locked() || !m_geometry.isRow(place.y())) return;
    const std::uint32_t time = m_geometry.time(place.x());
    m_commands.create(m_geometry.track(place.y()), bars().before(time), bars().after(time));
}

void CTrkBlkView::endGesture()
{
    m_clickTimer.stop();
    m_scrollTimer.stop();
    m_gesture.cancel();
    endPan();
    stale();
}

void CTrkBlkView::perform(const BlkOutcome& outcome)
{
    std::visit(Overloaded{[](std::monostate) {}, [this](const GoTo& go) { locate(go.time); },
                          [this](const MakeLoop& loop) {
                              std::uint32_t start = 0;
                              std::uint32_t end = 0;
                              const bool on = m_parts.panel.GetLoop(start, end);
                              m_parts.panel.SetLoop(loop.start, loop.end);
                              if (!on) m_parts.panel.ShortCutLoopClicked();
                              if (onLoop) onLoop();
                          },
                          [this, &outcome](const auto&) {
                              QApplication::setOverrideCursor(Qt::WaitCursor);
                              m_commands.run(outcome);
                              QApplication::restoreOverrideCursor();
                          }},
               outcome);
}

void CTrkBlkView::locate(std::uint32_t tick)
{
    if (m_parts.editor.IsPrgDlg()) return;
    setLocation(tick);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_parts.panel.SetLocation(static_cast<long>(tick));
    QApplication::restoreOverrideCursor();
}

void CTrkBlkView::openNotes(const BlkRef& ref)
{
    if (List<CTrk>::get(ref.trk)->GetType() != trktype::wave)
        openNotes(Song::numberOf(ref.trk), List<CBlk>::get(ref.blk)->GetTimeTop());
    else if (onProperties)
        onProperties(ref);
}

void CTrkBlkView::openNotes(int track, std::uint32_t tick)
{
    const CTrk* trk = m_parts.editor.song().trk(track);
    if (trk && m_parts.open)
        m_parts.open(trk->GetCh() == drumChannel ? WindowKind::drum : WindowKind::piano, track, tick);
}

void CTrkBlkView::toolChanged() { showCursor(viewport()->mapFromGlobal(QCursor::pos())); }

void CTrkBlkView::showCursor(QPoint at)
{
    struct Drawn {
        EditTool tool;
        const char* icon;
        int x;
        int y;
    };
    static constexpr Drawn cursors[] = {{EditTool::pencil, "pencil", 3, 21},
                                        {EditTool::eraser, "eraser", 6, 20},
                                        {EditTool::divide, "divide", 12, 12},
                                        {EditTool::join, "join", 12, 12}};
    const EditTool tool = m_parts.actions.tool();
    const BlkGesture::Zone zone = m_gesture.zoneAt(at, tool);
    const auto* drawn = std::ranges::find(cursors, tool, &Drawn::tool);
    if (zone == BlkGesture::Zone::loopHandle || zone == BlkGesture::Zone::blkEnd)
        viewport()->setCursor(Qt::SizeHorCursor);
    else if (zone == BlkGesture::Zone::ruler || drawn == std::end(cursors))
        viewport()->setCursor(Qt::ArrowCursor);
    else
        viewport()->setCursor(
            QCursor(m_parts.icons.icon(QString::fromLatin1(drawn->icon)).pixmap(QSize(24, 24), devicePixelRatioF()),
                    drawn->x, drawn->y));
}

// Tips and menu

bool CTrkBlkView::event(QEvent* event)
{
    // Escape ends what the mouse began before it is a command of the window.
    if (event->type() == QEvent::ShortcutOverride && (m_gesture.active() || panning())
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        event->accept();
    return QAbstractScrollArea::event(event);
}

bool CTrkBlkView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        showTip(static_cast<QHelpEvent&>(*event));
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void CTrkBlkView::showTip(QHelpEvent& event)
{
    if (m_gesture.active()) return;
    if (TrkGeometry::isRuler(event.pos()))
        QToolTip::showText(event.globalPos(), m_parts.text(TextId::tipTrackRuler), viewport());
    else if (const auto blk = m_gesture.blkAt(event.pos()))
        QToolTip::showText(event.globalPos(),
                           blkTip(m_parts.editor, m_parts.text, *blk, m_painter.links(*List<CBlk>::get(blk->blk))),
                           viewport(), placeOf(*blk));
    else
        QToolTip::hideText();
}

void CTrkBlkView::contextMenuEvent(QContextMenuEvent* event)
{
    QPoint at = event->pos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        const auto selected = m_selection.blks();
        at = selected.empty()
               ? QPoint(TrkGeometry::leftMargin, m_geometry.y(m_painter.currentTrack) - m_geometry.scrollY())
               : placeOf(selected.front()).center();
    }
    if (TrkGeometry::isRuler(at)) return;
    const auto blk = m_gesture.blkAt(at);
    if (onTrack) onTrack(m_geometry.track(m_geometry.toSong(at).y()));
    if (!blk)
        m_selection.trkInitSel();
    else if (!m_selection.contains(blk->blk))
        m_selection.setBlks({{*blk}});
    m_parts.actions.refresh();
    QMenu menu(this);
    fillBlkMenu(menu, m_parts.actions, blk.has_value());
    menu.exec(viewport()->mapToGlobal(at));
}

// Keys

void CTrkBlkView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape || event->modifiers()) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    if (m_gesture.active() || panning())
        endGesture();
    else if (!m_selection.empty())
        m_selection.trkInitSel();
    else
        event->ignore();
    stale();
}

} // namespace tessaro
