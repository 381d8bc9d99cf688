// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_blk_view.h"

#include "core/edit/editor.h"
#include "core/ports/settings_store.h"
#include "realtime/transport/cnp_window.h"
#include "views/editors/view_actions.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"
#include "views/transport/location_text.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

constexpr int edge = 16;               ///< pixels from the border where a drag scrolls
constexpr int autoScrollInterval = 40; ///< ms
constexpr int rowsAWheelStep = 3;
constexpr int wheelPixels = 120; ///< to the side
constexpr int drumChannel = 9;

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

} // namespace

CTrkBlkView::CTrkBlkView(const ViewParts& parts, QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_parts(parts)
    , m_blks(parts.editor)
    , m_selection(parts.editor)
    , m_commands(parts.editor, parts.text, m_selection, [this] { return locked(); })
    , m_gesture(parts.editor, m_geometry, m_blks, m_selection)
    , m_painter({parts.editor, m_geometry, m_blks, m_selection, m_gesture, parts.icons})
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    m_clickTimer.setSingleShot(true);
    connect(&m_clickTimer, &QTimer::timeout, this, [this] {
        m_gesture.timeout();
        stale();
    });
    connect(&m_scrollTimer, &QTimer::timeout, this, [this] { autoScroll(); });
    connect(horizontalScrollBar(), &QAbstractSlider::actionTriggered, this, [this](int action) { stepPages(action); });
    readColours();
}

BarLines CTrkBlkView::bars() const { return BarLines(m_parts.editor.maps().meas()); }

// What is shown

void CTrkBlkView::stale()
{
    if (std::exchange(m_stale, true)) return;
    viewport()->update();
}

void CTrkBlkView::setPosition(std::uint32_t tick, bool follow)
{
    if (tick != m_painter.position) {
        viewport()->update(m_painter.strip(m_painter.position));
        m_painter.position = tick;
        viewport()->update(m_painter.strip(tick));
    }
    if (!follow || m_gesture.active() || m_pan) return;
    const int x = m_geometry.windowX(tick);
    if (x < 0 || x >= m_geometry.size().width() - 1) setOrigin(bars().before(tick));
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
    m_scroll.reset(
        static_cast<int>(std::min<std::uint32_t>(bars().number(m_parts.editor.GetTimeEnd()) + 1, MeasScroll::most)));
    m_geometry.setOrigin(0);
    m_geometry.setScrollY(0);
    scrolled();
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
    stale();
}

void CTrkBlkView::paintEvent(QPaintEvent* event)
{
    m_stale = false;
    if (m_parts.editor.IsPrgDlg()) return; // the song may stand between two states: the last picture stays
    QPainter painter(viewport());
    m_painter.paint(painter, event->rect(), {palette(), font(), devicePixelRatioF()});
    if (m_painter.unfinished()) QTimer::singleShot(0, this, [this] { stale(); });
}

// Scrolling and zoom

void CTrkBlkView::resizeEvent(QResizeEvent*)
{
    m_geometry.setSize(viewport()->size());
    m_geometry.setScrollY(m_geometry.scrollY());
    showScroll();
}

void CTrkBlkView::showScroll()
{
    m_showingScroll = true;
    const BarLines lines = bars();
    const auto measures = [&](std::uint32_t tick) {
        return static_cast<int>(std::min<std::uint32_t>(lines.number(tick), MeasScroll::most));
    };
    m_scroll.grow(measures(m_parts.editor.GetTimeEnd()) + 1);
    m_scroll.follow(measures(m_geometry.origin()));
    QScrollBar& across = *horizontalScrollBar();
    across.setRange(0, m_scroll.range());
    across.setPageStep(std::max(1, measures(m_geometry.times().to) - m_scroll.at()));
    across.setValue(m_scroll.at());
    QScrollBar& down = *verticalScrollBar();
    down.setRange(0, m_geometry.mostScrollY());
    down.setPageStep(m_geometry.size().height() - TrkGeometry::rulerHeight);
    down.setSingleStep(m_geometry.rowHeight());
    down.setValue(m_geometry.scrollY());
    m_showingScroll = false;
}

void CTrkBlkView::scrolled()
{
    showScroll();
    stale();
}

void CTrkBlkView::stepPages(int action)
{
    QScrollBar& bar = *horizontalScrollBar();
    const auto step = [&](int measure) {
        bar.setMaximum(m_scroll.range());
        bar.setSliderPosition(measure);
    };
    switch (action) {
    case QAbstractSlider::SliderSingleStepAdd: step(m_scroll.lines(1)); break;
    case QAbstractSlider::SliderSingleStepSub: step(m_scroll.lines(-1)); break;
    case QAbstractSlider::SliderPageStepAdd: step(m_scroll.pages(1, bar.pageStep())); break;
    case QAbstractSlider::SliderPageStepSub: step(m_scroll.pages(-1, bar.pageStep())); break;
    default: step(m_scroll.thumb(bar.sliderPosition()));
    }
}

void CTrkBlkView::scrollContentsBy(int, int)
{
    if (m_showingScroll) return;
    if (horizontalScrollBar()->value() != m_scroll.at()
        || bars().number(m_geometry.origin()) != static_cast<std::uint32_t>(m_scroll.at()))
        m_geometry.setOrigin(bars().top(static_cast<std::uint32_t>(horizontalScrollBar()->value())));
    m_geometry.setScrollY(verticalScrollBar()->value());
    scrolled();
}

void CTrkBlkView::setOrigin(std::int64_t tick)
{
    m_geometry.setOrigin(
        static_cast<std::uint32_t>(std::clamp<std::int64_t>(tick, 0, bars().top(MeasScroll::most - 1))));
    scrolled();
}

void CTrkBlkView::setZoom(double ticksAPixel)
{
    m_geometry.setZoom(ticksAPixel);
    scrolled();
}

void CTrkBlkView::zoomBy(double steps)
{
    m_geometry.zoomBy(steps, m_geometry.size().width() / 2);
    scrolled();
    if (onZoom) onZoom();
}

void CTrkBlkView::setRowHeight(int pixels)
{
    m_geometry.setRowHeight(pixels);
    scrolled();
    if (onZoom) onZoom();
}

void CTrkBlkView::zoomToSong()
{
    m_geometry.fit(0, std::max(m_parts.editor.GetTimeEnd(), bars().top(4)));
    scrolled();
    if (onZoom) onZoom();
}

void CTrkBlkView::zoomToSelection()
{
    if (const auto span = m_commands.span()) m_geometry.fit(span->from, span->to);
    scrolled();
    if (onZoom) onZoom();
}

QRect CTrkBlkView::placeOf(const BlkRef& ref) const
{
    const CBlk& blk = *List<CBlk>::get(ref.blk);
    return m_geometry.toWindow(m_geometry.blkRect(Song::numberOf(ref.trk), blk.GetTimeTop(), blk.GetTimeEnd()));
}

void CTrkBlkView::reveal(const BlkRef& blk)
{
    m_geometry.reveal(m_geometry.toSong(placeOf(blk)));
    scrolled();
}

void CTrkBlkView::reveal(int track)
{
    const int x = m_geometry.toSong(QPoint(0, 0)).x();
    m_geometry.reveal(QRect(x + TrkGeometry::leftMargin, m_geometry.y(track), 1, m_geometry.rowHeight()));
    scrolled();
}

std::uint32_t CTrkBlkView::barAtPosition() const { return bars().before(m_parts.panel.GetLocation()); }

void CTrkBlkView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const QPoint turned = event->angleDelta();
    const double steps = (turned.y() ? turned.y() : turned.x()) / 120.0;
    if (event->modifiers() & Qt::ControlModifier) {
        m_geometry.zoomBy(steps, static_cast<int>(event->position().x()));
        scrolled();
        if (onZoom) onZoom();
    } else if ((event->modifiers() & Qt::ShiftModifier) || std::abs(turned.x()) > std::abs(turned.y())) {
        setOrigin(m_geometry.origin() - std::llround(steps * wheelPixels * m_geometry.zoom()));
    } else {
        m_geometry.setScrollY(m_geometry.scrollY() - static_cast<int>(steps * rowsAWheelStep * m_geometry.rowHeight()));
        scrolled();
    }
}

void CTrkBlkView::pan(QPoint at)
{
    const QPoint moved = at - m_pan->from;
    m_geometry.setScrollY(m_pan->scrollY - moved.y());
    setOrigin(m_pan->origin - std::llround(moved.x() * m_geometry.zoom()));
}

void CTrkBlkView::autoScroll()
{
    if (!m_gesture.active()) {
        m_scrollTimer.stop();
        return;
    }
    const auto beyond = [](int at, int low, int high) { return at < low ? at - low : std::max(at - high, 0); };
    const QSize size = m_geometry.size();
    const bool rows = m_gesture.zoneAt(m_pointer, m_parts.actions.tool()) != BlkGesture::Zone::ruler;
    const int dx = std::clamp(beyond(m_pointer.x(), edge, size.width() - edge), -2 * edge, 2 * edge);
    const int dy = rows ? std::clamp(beyond(m_pointer.y(), TrkGeometry::rulerHeight + edge / 2, size.height() - edge),
                                     -2 * edge, 2 * edge)
                        : 0;
    if (dx == 0 && dy == 0) return;
    m_geometry.setScrollY(m_geometry.scrollY() + dy);
    setOrigin(m_geometry.origin() + std::llround(dx * m_geometry.zoom()));
    m_gesture.move(m_pointer, QApplication::keyboardModifiers());
}

// The mouse

void CTrkBlkView::mousePressEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    QToolTip::hideText();
    if (event->button() == Qt::MiddleButton) {
        m_pan = Pan{at, m_geometry.origin(), m_geometry.scrollY()};
        viewport()->setCursor(Qt::ClosedHandCursor);
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
    if (m_pan) {
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
    if (event->button() == Qt::MiddleButton) m_pan.reset();
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
    m_pan.reset();
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
    const CTrk& trk = *List<CTrk>::get(ref.trk);
    if (trk.GetType() == trktype::wave) {
        if (onProperties) onProperties(ref);
    } else if (m_parts.open) {
        m_parts.open(trk.GetCh() == drumChannel ? WindowKind::drum : WindowKind::piano, Song::numberOf(ref.trk),
                     List<CBlk>::get(ref.blk)->GetTimeTop());
    }
}

void CTrkBlkView::toolChanged() { showCursor(viewport()->mapFromGlobal(QCursor::pos())); }

void CTrkBlkView::showCursor(QPoint at)
{
    const auto drawn = [this](const char* icon, int x, int y) {
        return QCursor(m_parts.icons.icon(QString::fromLatin1(icon)).pixmap(QSize(24, 24), devicePixelRatioF()), x, y);
    };
    const EditTool tool = m_parts.actions.tool();
    const BlkGesture::Zone zone = m_gesture.zoneAt(at, tool);
    if (zone == BlkGesture::Zone::ruler)
        viewport()->setCursor(Qt::ArrowCursor);
    else if (zone == BlkGesture::Zone::loopHandle || zone == BlkGesture::Zone::blkEnd)
        viewport()->setCursor(Qt::SizeHorCursor);
    else if (tool == EditTool::pencil)
        viewport()->setCursor(drawn("pencil", 3, 21));
    else if (tool == EditTool::eraser)
        viewport()->setCursor(drawn("eraser", 6, 20));
    else if (tool == EditTool::divide)
        viewport()->setCursor(drawn("divide", 12, 12));
    else if (tool == EditTool::join)
        viewport()->setCursor(drawn("join", 12, 12));
    else
        viewport()->setCursor(Qt::ArrowCursor);
}

// Tips and menu

bool CTrkBlkView::event(QEvent* event)
{
    // Escape ends what the mouse began before it is a command of the window.
    if (event->type() == QEvent::ShortcutOverride && (m_gesture.active() || m_pan)
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
        QToolTip::showText(event.globalPos(), tipOf(*blk), viewport(), placeOf(*blk));
    else
        QToolTip::hideText();
}

QString CTrkBlkView::tipOf(const BlkRef& ref)
{
    const CBlk& blk = *List<CBlk>::get(ref.blk);
    const auto place = [this](std::uint32_t tick) {
        _EDT_MEAS at;
        m_parts.editor.TimeToMeas(tick, at);
        return utf8Text(locationText(at));
    };
    QString tip = m_parts.text(TextId::tipBlock)
                      .arg(songText(m_parts.editor.GetBlkName(ref.trk, ref.blk)), place(blk.GetTimeTop()),
                           place(blk.GetTimeEnd()));
    if (const int links = m_painter.links(blk); links > 1)
        tip += '\n' + m_parts.text(TextId::tipBlockLinked).arg(links);
    return tip;
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
    fillMenu(menu, blk.has_value());
    menu.exec(viewport()->mapToGlobal(at));
}

void CTrkBlkView::fillMenu(QMenu& menu, bool onBlk) const
{
    using C = ViewCommand;
    const auto add = [&](std::initializer_list<C> commands) {
        for (const C command : commands) menu.addAction(&m_parts.actions[command]);
    };
    if (!onBlk) {
        add({C::newBlock, C::paste});
        menu.addSeparator();
        add({C::selectAll, C::zoomToSong});
        return;
    }
    add({C::properties});
    menu.addSeparator();
    add({C::cut, C::copy, C::paste, C::remove});
    menu.addSeparator();
    add({C::duplicate, C::duplicateLinked, C::divideBlocks, C::linkBlocks, C::mergeBlocks});
    menu.addSeparator();
    add({C::realiseBlock, C::showSource, C::selectSiblings});
    menu.addSeparator();
    add({C::zoomToSelection});
}

// Keys

void CTrkBlkView::keyPressEvent(QKeyEvent* event)
{
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    switch (plain ? event->key() : 0) {
    case Qt::Key_Escape:
        if (m_gesture.active() || m_pan)
            endGesture();
        else if (!m_selection.empty())
            m_selection.trkInitSel();
        else
            event->ignore();
        stale();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (const auto blks = m_selection.blks(); !blks.empty()) openNotes(blks.front());
        return;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (m_selection.empty()) selectBeside(event->key() == Qt::Key_Right ? 1 : -1);
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (onTrack)
            onTrack(std::clamp(m_painter.currentTrack + (event->key() == Qt::Key_Down ? 1 : -1), 1, TrkGeometry::rows));
        reveal(m_painter.currentTrack);
        return;
    default: QAbstractScrollArea::keyPressEvent(event);
    }
}

/// The block behind or before the selected one of the current track; without one, the block at the play position or
/// next to it.
void CTrkBlkView::selectBeside(int step)
{
    CTrk* trk = m_parts.editor.song().trk(m_painter.currentTrack);
    if (!trk || trk->IsEmpty()) return;
    CBlk* found = nullptr;
    if (const auto blks = m_selection.blks(); !blks.empty() && blks.back().trk == trk) {
        CBlk* from = List<CBlk>::get(blks.back().blk);
        found = step > 0 ? List<CBlk>::next(from) : List<CBlk>::prev(from);
        if (!found) found = from;
    } else {
        const std::uint32_t now = m_parts.panel.GetLocation();
        for (found = trk->blocks().head(); List<CBlk>::next(found) && found->GetTimeEnd() <= now;)
            found = List<CBlk>::next(found);
    }
    const BlkRef ref{trk, found};
    m_selection.setBlks({{ref}});
    reveal(ref);
}

void CTrkBlkView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) stale();
}

} // namespace tessaro
