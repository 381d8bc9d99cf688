// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_view.h"

#include "core/edit/editor.h"
#include "realtime/transport/note_audition.h"
#include "views/editors/view_actions.h"
#include "views/roll/grid.h"
#include "views/roll/note_text.h"
#include "views/roll/roll_paint.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"
#include "views/transport/location_text.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaro {
namespace {

constexpr int lineRoom = 6;      ///< pixels between lines of one kind
constexpr int textHeight = 12;   ///< of rows whose notes are named
constexpr int textWidth = 28;    ///< of notes that are named
constexpr int edgeInterval = 30; ///< milliseconds from one step of scrolling at the edge to the next
constexpr int soundTime = 250;   ///< milliseconds of a note that is only to be heard
constexpr std::uint8_t columnVelocity = 100;

/// Events of this hint come by the thousand in one step, which tells its end.
bool isSingle(int code) { return code == hint::evntChng || (code >= hint::locationChng && code <= hint::insRest); }

} // namespace

CRollView::CRollView(const ViewParts& parts)
    : m_parts(parts)
    , m_commands(parts.editor, parts.notes, parts.text.strings())
    , m_gesture({parts.editor, parts.notes, m_commands, parts.grid, m_scale, m_selection})
    , m_ruler(parts, m_scale)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    m_gesture.onHear = [this](std::uint8_t key, std::uint8_t velocity) {
        if (m_audition) hear(key, velocity);
    };
    m_gesture.onHush = [this] { hush(); };
    m_parts.actions.listen(*this,
                           {ViewCommand::remove, ViewCommand::nudgeLeft, ViewCommand::nudgeRight, ViewCommand::tickLeft,
                            ViewCommand::tickRight, ViewCommand::nudgeUp, ViewCommand::nudgeDown, ViewCommand::octaveUp,
                            ViewCommand::octaveDown, ViewCommand::longer, ViewCommand::shorter});
    retranslate();
}

CRollView::~CRollView() { hush(); }

// What is shown

void CRollView::setTrack(int track)
{
    cancelRows();
    m_track = track;
    m_gesture.setTrack(track);
    m_selection.clear();
    m_notesRevision = 0;
    contentChanged();
    centreRows();
    selectionChanged();
}

/// The row in the middle of the notes in sight, or else of all notes of the track.
int CRollView::middleRow() const
{
    const auto middleOf = [this](TickRange span) {
        int first = m_scale.rows();
        int last = -1;
        for (int row = 0; row < m_scale.rows(); ++row) {
            if (!m_parts.notes.noteAt(m_track, span.from, span.to, m_scale.keyOfRow(row))) continue;
            first = std::min(first, row);
            last = row;
        }
        return last < 0 ? -1 : (first + last) / 2;
    };
    if (m_track > 0)
        for (const TickRange span : {m_scale.span(), TickRange{0, tick::latest}})
            if (const int row = middleOf(span); row >= 0) return row;
    const int row = m_scale.rowOfKey(middleKey());
    return row < 0 ? m_scale.rows() / 2 : row;
}

void CRollView::centreRows()
{
    rescale([this](RollScale& scale) {
        const int middle = (2 * middleRow() + 1) * scale.rowHeight() / 2;
        scale.setScroll(middle - (scale.height() - RollScale::ruler) / 2);
    });
    m_isCentred = true;
}

void CRollView::reveal(std::uint32_t tick)
{
    rescale([&](RollScale& scale) { scale.setStart(startOfPage(tick)); });
    centreRows();
}

void CRollView::songReplaced()
{
    endGesture();
    m_position = 0;
    m_scale.setStart(0);
    setTrack(m_track);
}

void CRollView::retranslate()
{
    setAccessibleName(m_parts.text(TextId::rollNotes));
    update();
}

void CRollView::selectionChanged()
{
    m_selectionStale = false;
    update();
    if (onSelection) onSelection();
}

void CRollView::setShadows(bool on)
{
    m_shadows = on;
    update();
}

void CRollView::setAudition(bool on)
{
    m_audition = on;
    hush();
}

void CRollView::hear(std::uint8_t key, std::uint8_t velocity)
{
    m_isHeard = true;
    m_parts.audition.start(m_track, key, velocity);
}

void CRollView::hush()
{
    if (std::exchange(m_isHeard, false)) m_parts.audition.stop();
}

void CRollView::sound(std::uint8_t key, std::uint8_t velocity)
{
    if (!m_audition) return;
    hear(key, velocity);
    QTimer::singleShot(soundTime, this, [this] {
        if (m_held == Held::nothing) hush();
    });
}

void CRollView::setPosition(std::uint32_t tick, bool follow)
{
    if (tick != m_position) {
        update(positionStrip(m_position));
        m_position = tick;
        update(positionStrip(m_position));
    }
    if (follow && m_held == Held::nothing) showTick(tick);
}

void CRollView::showTick(std::uint32_t tick)
{
    const TickRange seen = m_scale.span();
    if (tick >= seen.from && tick < seen.to) return;
    rescale([&](RollScale& scale) { scale.setStart(startOfPage(tick)); });
}

/// The bar line before the tick, as far as both fit into the view.
std::uint32_t CRollView::startOfPage(std::uint32_t tick) const
{
    const TickRange seen = m_scale.span();
    _EDT_MEAS place;
    m_parts.editor.TimeToMeas(tick, place);
    const std::uint32_t bar = m_parts.editor.MeasToTime({place.meas - 1, 0, 0});
    return tick - bar < seen.to - seen.from ? bar : tick;
}

std::uint32_t CRollView::songEnd() const { return m_parts.editor.GetTimeEnd(); }

void CRollView::followHint(int code, const CEditor& editor)
{
    if (m_selection.follow(code, editor)) m_selectionStale = true;
    if (m_held == Held::rows && !m_isBusy) endGesture();
    if (code == hint::dispReq || code == hint::trkType) contentChanged();
    if (m_selectionStale && !isSingle(code) && code != hint::blkMove) tellSelection();
    paintSoon();
}

void CRollView::tellSelection()
{
    m_selectionStale = false;
    if (onSelection) onSelection();
}

void CRollView::paintSoon()
{
    if (m_isStale) return;
    m_isStale = true;
    update();
}

void CRollView::scaleChanged()
{
    update();
    if (onScale) onScale();
}

EditTool CRollView::tool() const { return m_parts.actions.tool(); }

QColor CRollView::noteColour() const { return trackColour(m_track, palette()); }

bool CRollView::isMidi() const
{
    const CTrk* track = m_parts.editor.song().trk(m_track);
    return track && m_track > 0 && track->GetType() != trktype::wave;
}

bool CRollView::hasNotes()
{
    if (m_notesRevision == m_parts.notes.revision()) return m_hasNotes;
    m_notesRevision = m_parts.notes.revision();
    m_hasNotes = false;
    const CTrk* track = m_parts.editor.song().trk(m_track);
    for (const CBlk* blk = track ? track->blocks().head() : nullptr; blk && !m_hasNotes; blk = List<CBlk>::next(blk))
        m_hasNotes = blk->GetNum() != 0;
    return m_hasNotes;
}

// Painting

QRect CRollView::rowsArea() const
{
    return {RollScale::left, RollScale::ruler, width() - RollScale::left, height() - RollScale::ruler};
}

QRect CRollView::positionStrip(std::uint32_t tick) const { return {m_scale.x(tick) - 8, 0, 17, height()}; }

void CRollView::paintEvent(QPaintEvent* event)
{
    m_isStale = false;
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    const QRect area = event->rect().intersected(rowsArea());
    if (!area.isEmpty()) {
        const TickRange span{m_scale.time(area.left()), m_scale.time(area.right() + 1) + 1};
        int low = 127;
        int high = 0;
        for (int row = m_scale.row(area.top()); row <= m_scale.row(area.bottom()); ++row) {
            low = std::min<int>(low, m_scale.keyOfRow(row));
            high = std::max<int>(high, m_scale.keyOfRow(row));
        }
        painter.setClipRect(area);
        paintRows(painter, area);
        paintLines(painter, area);
        paintBlks(painter, area, span);
        if (m_shadows) paintShadows(painter, span, low, high);
        paintNotes(painter, span, low, high);
        paintGesture(painter);
        paintSentence(painter);
        painter.setClipping(false);
    }
    if (event->rect().top() < RollScale::ruler) m_ruler.paint(painter, *this);
    m_ruler.paintLoop(painter, *this);
    const QRect column(0, RollScale::ruler, RollScale::left, height() - RollScale::ruler);
    if (event->rect().intersects(column)) {
        painter.setClipRect(column);
        paintColumn(painter, event->rect().intersected(column), m_heldKey);
        painter.setClipping(false);
        painter.fillRect(column.right(), 0, 1, height(), palette().mid());
    }
    m_ruler.paintPosition(painter, *this, m_position);
}

void CRollView::paintRows(QPainter& painter, const QRect& area)
{
    const QColor line = blend(palette().color(QPalette::Mid), palette().color(QPalette::Base), 0.7);
    painter.fillRect(area, palette().color(QPalette::Window));
    for (int row = m_scale.row(area.top()); row <= m_scale.row(area.bottom()); ++row) {
        const int key = m_scale.keyOfRow(row);
        const int y = m_scale.yOfRow(row);
        painter.fillRect(area.left(), y, area.width(), m_scale.rowHeight(), rowColour(key));
        if (hasLineBelow(key)) painter.fillRect(area.left(), y + m_scale.rowHeight() - 1, area.width(), 1, line);
    }
}

void CRollView::paintLines(QPainter& painter, const QRect& area)
{
    const auto room = static_cast<std::uint32_t>(std::ceil(lineRoom * m_scale.zoom()));
    const auto grid = [this](std::uint32_t top) {
        return m_parts.grid.isFree() ? 0U : m_parts.grid.step(m_parts.editor, top);
    };
    timeMarks(m_parts.editor, m_scale.time(area.left()), m_scale.time(area.right()) + 1, room, grid, m_marks);
    const QColor base = palette().color(QPalette::Base);
    const QColor dark = palette().color(QPalette::Text);
    constexpr std::pair<TimeMark::Rank, double> ranks[] = {
        {TimeMark::Rank::grid, 0.07}, {TimeMark::Rank::beat, 0.16}, {TimeMark::Rank::bar, 0.34}};
    for (const auto& [rank, share] : ranks) {
        m_rects.clear();
        for (const TimeMark& mark : m_marks)
            if (mark.rank == rank) m_rects.emplace_back(m_scale.x(mark.tick), area.top(), 1, area.height());
        fillAll(painter, m_rects, blend(dark, base, share));
    }
}

void CRollView::paintBlks(QPainter& painter, const QRect& area, TickRange span) const
{
    const QColor colour = noteColour();
    const QColor outside = withAlpha(palette().color(QPalette::Text), 0.06);
    int covered = area.left(); // up to here the ground is that of blocks, or drawn as outside of them
    m_parts.notes.forEachBlk(m_track, span.from, span.to, [&](const BlkInView& at) {
        const int left = m_scale.x(at.start);
        const int right = m_scale.x(at.end);
        if (left > covered) painter.fillRect(covered, area.top(), left - covered, area.height(), outside);
        covered = std::max(covered, right);
        const bool isGhost = at.blk->GetType() == blktype::ghost;
        if (isGhost)
            painter.fillRect(QRect(left, area.top(), right - left, area.height()),
                             QBrush(withAlpha(colour, 0.22), Qt::BDiagPattern));
        painter.fillRect(left, RollScale::ruler, right - left, 3,
                         isGhost ? QBrush(colour, Qt::Dense4Pattern) : QBrush(colour));
        const QColor bound = withAlpha(colour, 0.75);
        if (at.start >= m_scale.start()) painter.fillRect(left, area.top(), 1, area.height(), bound);
        painter.fillRect(right - 1, area.top(), 1, area.height(), bound);
    });
    if (covered <= area.right())
        painter.fillRect(covered, area.top(), area.right() + 1 - covered, area.height(), outside);
}

void CRollView::paintShadows(QPainter& painter, TickRange span, int low, int high)
{
    const QColor base = palette().color(QPalette::Base);
    for (int track = 1; track < trackCount; ++track) {
        const CTrk* other = m_parts.editor.song().trk(track);
        if (track == m_track || other->GetType() != trktype::midi || !other->blocks().head()) continue;
        m_rects.clear();
        m_parts.notes.forEachNote(track, span.from, span.to, low, high, [this](const NoteInView& note) {
            if (m_scale.rowOfKey(note.key) >= 0) m_rects.push_back(noteRect(note).adjusted(0, 1, 0, -1));
        });
        fillAll(painter, m_rects, blend(trackColour(track, palette()), base, 0.28));
    }
}

void CRollView::paintNotes(QPainter& painter, TickRange span, int low, int high)
{
    m_looks.begin(noteColour(), palette());
    const bool hasRoom = m_scale.rowHeight() >= textHeight;
    forEachShown(span, low, high, [&](const NoteInView& note, bool isSelected) {
        if (m_scale.rowOfKey(note.key) < 0) return;
        const QRect rect = noteRect(note);
        m_looks.add(note, rect, isSelected, hasRoom && rect.width() >= textWidth);
    });
    m_looks.paint(painter);
    for (const NoteLooks::Named& named : m_looks.named()) paintNoteText(painter, named.rect, named.note, named.text);
    painter.setPen(Qt::NoPen);
}

void CRollView::forEachShown(TickRange span, int low, int high, const NoteVisit& visit) const
{
    m_gesture.forEachNote(span.from, span.to, low, high, visit);
}

void CRollView::paintGesture(QPainter& painter) const
{
    const QColor accent = palette().color(QPalette::Highlight);
    if (const auto band = m_gesture.band()) {
        const int left = m_scale.x(band->span.from);
        const int top = m_scale.yOfRow(band->firstRow);
        const QRect place(left, top, m_scale.x(band->span.to) - left,
                          m_scale.yOfRow(band->lastRow) + m_scale.rowHeight() - top);
        painter.fillRect(place, withAlpha(accent, 0.15));
        painter.setPen(accent);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(place.adjusted(0, 0, -1, -1));
        painter.setPen(Qt::NoPen);
    }
    if (m_held == Held::nothing && underMouse() && tool() == EditTool::divide)
        if (const auto cut = m_gesture.cutAt(m_pointer))
            painter.fillRect(m_scale.x(*cut), m_scale.yOfRow(m_scale.row(m_pointer.y())) - 2, 1,
                             m_scale.rowHeight() + 4, recordColour(palette()));
}

void CRollView::paintSentence(QPainter& painter)
{
    if (isMidi() && (hasNotes() || m_gesture.drawn())) return;
    const QString sentence = m_parts.text(isMidi() ? emptySentence() : TextId::rollNotMidi);
    const QRect place = rowsArea();
    const QRect box =
        fontMetrics().boundingRect(place.adjusted(32, 0, -32, 0), Qt::AlignCenter | Qt::TextWordWrap, sentence);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(withAlpha(palette().color(QPalette::Base), 0.9));
    painter.drawRoundedRect(box.adjusted(-16, -12, 16, 12), 8, 8);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(box, Qt::AlignCenter | Qt::TextWordWrap, sentence);
    painter.setPen(Qt::NoPen);
}

// The mouse

void CRollView::mousePressEvent(QMouseEvent* event)
{
    m_pointer = event->position().toPoint();
    m_pointerKeys = event->modifiers();
    if (event->button() != Qt::LeftButton || m_held != Held::nothing) return;
    if (m_pointer.x() < RollScale::left) {
        if (m_pointer.y() < RollScale::ruler) return;
        m_held = Held::column;
        moveColumn(m_pointer.y());
    } else if (m_pointer.y() < RollScale::ruler) {
        m_held = Held::ruler;
        m_ruler.press(m_pointer.x());
    } else if (isMidi() && !m_parts.isLocked()) {
        m_held = Held::rows;
        m_isBusy = true;
        pressRows(*event);
        m_isBusy = false;
        selectionChanged();
    }
}

void CRollView::mouseMoveEvent(QMouseEvent* event)
{
    m_pointer = event->position().toPoint();
    m_pointerKeys = event->modifiers();
    switch (m_held) {
    case Held::nothing: showCursor(m_pointer); break;
    case Held::column: moveColumn(m_pointer.y()); break;
    case Held::rows:
        moveRows(*event);
        if (rowsArea().contains(m_pointer))
            m_edgeTimer.stop();
        else if (!m_edgeTimer.isActive())
            m_edgeTimer.start(edgeInterval, this);
        update();
        break;
    case Held::ruler:
        m_ruler.move(m_pointer.x(), m_pointerKeys);
        update();
        break;
    }
    point(m_pointer);
}

void CRollView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    m_pointer = event->position().toPoint();
    m_edgeTimer.stop();
    const Held held = std::exchange(m_held, Held::nothing);
    switch (held) {
    case Held::nothing: break;
    case Held::column:
        hush();
        m_heldKey = -1;
        update();
        break;
    case Held::rows:
        m_isBusy = true;
        releaseRows(*event);
        m_isBusy = false;
        selectionChanged();
        break;
    case Held::ruler:
        m_ruler.release(m_pointer.x(), event->modifiers());
        update();
        break;
    }
    showCursor(m_pointer);
    point(m_pointer);
}

void CRollView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    const bool isNote = rowsArea().contains(at) && m_gesture.hit(gesturePoint(at));
    if (event->button() == Qt::LeftButton && isNote && tool() == EditTool::select && onProperties)
        onProperties();
    else
        mousePressEvent(event);
}

void CRollView::pressRows(QMouseEvent& event)
{
    const QPoint at = event.position().toPoint();
    m_shift = gesturePoint(at) - at;
    m_gesture.press(tool(), at + m_shift, event.modifiers());
}

void CRollView::moveRows(QMouseEvent& event)
{
    m_gesture.move(event.position().toPoint() + m_shift, event.modifiers());
}

void CRollView::releaseRows(QMouseEvent& event)
{
    m_gesture.release(event.position().toPoint() + m_shift, event.modifiers());
}

void CRollView::cancelRows() { m_gesture.cancel(); }

void CRollView::endGesture()
{
    if (m_held == Held::rows) {
        m_held = Held::nothing;
        m_edgeTimer.stop();
        cancelRows();
    } else if (m_held == Held::ruler) {
        m_held = Held::nothing;
        m_ruler.cancel();
    } else if (m_held == Held::column) {
        m_held = Held::nothing;
        m_heldKey = -1;
        hush();
    }
    paintSoon();
}

void CRollView::moveColumn(int y)
{
    const int key = m_scale.key(y);
    if (key == m_heldKey) return;
    m_heldKey = key;
    if (isMidi()) hear(static_cast<std::uint8_t>(key), columnVelocity);
    update();
}

void CRollView::scrollAtEdge()
{
    const QRect area = rowsArea();
    const auto beyond = [](int at, int low, int high) { return at < low ? at - low : at > high ? at - high : 0; };
    const int across = std::clamp(beyond(m_pointer.x(), area.left(), area.right()), -40, 40);
    const int down = std::clamp(beyond(m_pointer.y(), area.top(), area.bottom()), -20, 20);
    rescale([&](RollScale& scale) {
        const auto ticks = static_cast<std::int64_t>(across * scale.zoom());
        scale.setStart(tick::shifted(scale.start(), ticks));
        scale.setScroll(scale.scroll() + down);
    });
    QMouseEvent move(QEvent::MouseMove, m_pointer, mapToGlobal(m_pointer), Qt::NoButton, Qt::LeftButton, m_pointerKeys);
    moveRows(move);
    update();
}

void CRollView::wheelEvent(QWheelEvent* event)
{
    const QPoint at = event->position().toPoint();
    const QPoint turn = event->angleDelta();
    const double steps = (turn.y() != 0 ? turn.y() : turn.x()) / 120.0;
    const Qt::KeyboardModifiers keys = event->modifiers();
    rescale([&](RollScale& scale) {
        if ((keys & Qt::ControlModifier) && (keys & Qt::ShiftModifier)) {
            scale.zoomRowsAt(at.y(), scale.rowHeight() + (steps > 0 ? 1 : -1));
        } else if (keys & Qt::ControlModifier) {
            scale.zoomAt(std::max(at.x(), RollScale::left), scale.zoom() * std::pow(1.25, -steps));
        } else if (turn.x() != 0 || (keys & Qt::ShiftModifier)) {
            scale.setStart(tick::shifted(scale.start(), static_cast<std::int64_t>(-steps * 60 * scale.zoom())));
        } else {
            scale.setScroll(scale.scroll() - static_cast<int>(std::lround(steps * 3 * scale.rowHeight())));
        }
    });
    event->accept();
}

void CRollView::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_held != Held::nothing || !rowsArea().contains(event->pos())) return;
    if (const auto hit = m_gesture.hit(gesturePoint(event->pos())); hit && !m_selection.contains(hit->note.ref)) {
        m_selection.clear();
        m_selection.add(hit->note.ref);
        selectionChanged();
    }
    if (onMenu) onMenu(event->globalPos());
}

// Other events

bool CRollView::event(QEvent* event)
{
    // Escape ends what the mouse began before it is a command of the window.
    if (event->type() == QEvent::ShortcutOverride && m_held != Held::nothing
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        event->accept();
    if (event->type() == QEvent::WindowDeactivate) hush();
    return QWidget::event(event);
}

void CRollView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_held != Held::nothing)
        endGesture();
    else
        QWidget::keyPressEvent(event);
}

void CRollView::resizeEvent(QResizeEvent*)
{
    m_scale.resize(width(), height());
    if (m_isCentred) centreRows();
    scaleChanged();
}

void CRollView::leaveEvent(QEvent*)
{
    if (onPointed) onPointed({});
    update();
}

void CRollView::focusOutEvent(QFocusEvent* event)
{
    update();
    QWidget::focusOutEvent(event);
}

void CRollView::hideEvent(QHideEvent* event)
{
    endGesture();
    hush();
    QWidget::hideEvent(event);
}

void CRollView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_edgeTimer.timerId())
        scrollAtEdge();
    else
        QWidget::timerEvent(event);
}

void CRollView::showCursor(QPoint at)
{
    Qt::CursorShape shape = Qt::ArrowCursor;
    if (rowsArea().contains(at)) {
        const auto hit = m_gesture.hit(gesturePoint(at));
        const bool grabs = tool() == EditTool::select || tool() == EditTool::pencil;
        if (grabs && hit)
            shape = hit->zone == RollGesture::Zone::body ? Qt::ArrowCursor : Qt::SizeHorCursor;
        else if (tool() == EditTool::velocity && hit)
            shape = Qt::SizeVerCursor;
        else if (tool() != EditTool::select)
            shape = Qt::CrossCursor;
        if (tool() == EditTool::divide) update();
    }
    if (cursor().shape() != shape) setCursor(shape);
}

void CRollView::point(QPoint at)
{
    if (!onPointed) return;
    NoteStatus::Values values;
    if (rowsArea().contains(at)) {
        std::optional<NoteInView> note = m_gesture.drawn();
        if (!note)
            if (const auto hit = m_gesture.hit(gesturePoint(at))) note = hit->note;
        const std::uint32_t time = note ? note->start : m_scale.time(at.x());
        _EDT_MEAS place;
        m_parts.editor.TimeToMeas(time, place);
        values.place = utf8Text(locationText(place));
        values.key = keyText(note ? note->key : m_scale.key(at.y()));
        if (note) {
            _EDT_MEASINFO measure;
            m_parts.editor.GetMeasInfo(place.meas, measure);
            values.length = lengthText(note->end - note->start, std::max(measure.beatClock, 1U));
            values.velocity = QString::number(note->velocity);
        }
    } else if (at.x() < RollScale::left && at.y() >= RollScale::ruler) {
        values.key = keyText(m_scale.key(at.y()));
    }
    onPointed(values);
}

} // namespace tessaro
