// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_view.h"

#include "core/edit/editor.h"
#include "views/editors/evnt_kinds.h"
#include "views/editors/view_actions.h"
#include "views/roll/roll_paint.h"
#include "views/roll/roll_pointer.h"
#include "views/roll/roll_scrolling.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace tessaro {
namespace {

constexpr int edgeInterval = 30; ///< milliseconds from one step of scrolling at the edge to the next
constexpr std::uint8_t columnVelocity = 100;

} // namespace

CRollView::CRollView(const ViewParts& parts)
    : m_parts(parts)
    , m_commands(parts.editor, parts.notes, parts.text.strings())
    , m_gesture({parts.editor, parts.notes, m_commands, parts.grid, m_scale, m_selection})
    , m_ruler(parts, m_scale)
    , m_painter(parts, m_scale, *this, *this)
    , m_sound(parts.audition)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    m_gesture.onHear = [this](std::uint8_t key, std::uint8_t velocity) {
        if (m_audition) m_sound.hold(m_track, key, velocity);
    };
    m_gesture.onHush = [this] { m_sound.stop(); };
    m_parts.actions.listen(*this,
                           {ViewCommand::remove, ViewCommand::nudgeLeft, ViewCommand::nudgeRight, ViewCommand::tickLeft,
                            ViewCommand::tickRight, ViewCommand::nudgeUp, ViewCommand::nudgeDown, ViewCommand::octaveUp,
                            ViewCommand::octaveDown, ViewCommand::longer, ViewCommand::shorter});
    retranslate();
}

CRollView::~CRollView() = default;

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

void CRollView::centreRows()
{
    rescale([this](RollScale& scale) {
        const int row = roll_scrolling::middleRow(m_parts.notes, scale, m_track, middleKey());
        const int middle = (2 * row + 1) * scale.rowHeight() / 2;
        scale.setScroll(middle - (scale.height() - RollScale::ruler) / 2);
    });
    m_isCentred = true;
}

void CRollView::reveal(std::uint32_t tick)
{
    startAtPage(tick);
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
    m_sound.stop();
}

void CRollView::sound(std::uint8_t key, std::uint8_t velocity)
{
    if (m_audition) m_sound.play(m_track, key, velocity);
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
    startAtPage(tick);
}

void CRollView::startAtPage(std::uint32_t tick)
{
    rescale([&](RollScale& scale) { scale.setStart(roll_scrolling::startOfPage(m_parts.editor, scale, tick)); });
}

std::uint32_t CRollView::songEnd() const { return m_parts.editor.GetTimeEnd(); }

void CRollView::followHint(int code, const CEditor& editor)
{
    if (m_selection.follow(code, editor)) m_selectionStale = true;
    if (m_held == Held::rows && !m_isBusy) endGesture();
    paintSoon();
}

void CRollView::refresh()
{
    contentChanged();
    if (std::exchange(m_selectionStale, false) && onSelection) onSelection();
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

bool CRollView::isMidi() const { return takesNotes(m_parts.editor, m_track); }

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
        painter.setClipRect(area);
        paintSong(painter, area);
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

void CRollView::paintSong(QPainter& painter, const QRect& area)
{
    m_painter.paint(painter, area, m_track, m_shadows);
    paintGesture(painter);
    if (!isMidi())
        m_painter.paintSentence(painter, rowsArea(), TextId::rollNotMidi);
    else if (!hasNotes() && !m_gesture.drawn())
        m_painter.paintSentence(painter, rowsArea(), emptySentence());
}

void CRollView::forEachShown(TickRange span, int low, int high, const NoteVisit& visit) const
{
    m_gesture.forEachNote(span.from, span.to, low, high, visit);
}

void CRollView::paintGesture(QPainter& painter) const
{
    if (const auto band = m_gesture.band()) {
        const int left = m_scale.x(band->span.from);
        const int top = m_scale.yOfRow(band->firstRow);
        const QRect place(left, top, m_scale.x(band->span.to) - left,
                          m_scale.yOfRow(band->lastRow) + m_scale.rowHeight() - top);
        paintBand(painter, place, palette().color(QPalette::Highlight));
    }
    if (m_held == Held::nothing && underMouse() && tool() == EditTool::divide)
        if (const auto cut = m_gesture.cutAt(m_pointer))
            painter.fillRect(m_scale.x(*cut), m_scale.yOfRow(m_scale.row(m_pointer.y())) - 2, 1,
                             m_scale.rowHeight() + 4, recordColour(palette()));
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
        m_sound.stop();
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
        m_sound.stop();
    }
    paintSoon();
}

void CRollView::moveColumn(int y)
{
    const int key = m_scale.key(y);
    if (key == m_heldKey) return;
    m_heldKey = key;
    if (isMidi()) m_sound.hold(m_track, static_cast<std::uint8_t>(key), columnVelocity);
    update();
}

void CRollView::scrollAtEdge()
{
    rescale([this](RollScale& scale) { roll_scrolling::stepTowards(scale, rowsArea(), m_pointer); });
    QMouseEvent move(QEvent::MouseMove, m_pointer, mapToGlobal(m_pointer), Qt::NoButton, Qt::LeftButton, m_pointerKeys);
    moveRows(move);
    update();
}

void CRollView::wheelEvent(QWheelEvent* event)
{
    rescale([event](RollScale& scale) {
        roll_scrolling::turnWheel(scale, event->position().toPoint(), event->angleDelta(), event->modifiers());
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
    if (event->type() == QEvent::WindowDeactivate) m_sound.stop();
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
    m_sound.stop();
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
        shape = roll_pointer::cursorOver(tool(), m_gesture.hit(gesturePoint(at)));
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
        values = roll_pointer::valuesAt(m_parts.editor, m_scale.time(at.x()), note);
        values.key = keyText(note ? note->key : m_scale.key(at.y()));
    } else if (at.x() < RollScale::left && at.y() >= RollScale::ruler) {
        values.key = keyText(m_scale.key(at.y()));
    }
    onPointed(values);
}

} // namespace tessaro
