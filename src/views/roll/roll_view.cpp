// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_view.h"

#include "core/edit/editor.h"
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
    : RollSheet(parts)
    , m_commands(parts.editor, parts.notes, parts.text.strings())
    , m_gesture({parts.editor, parts.notes, m_commands, parts.grid, scale(), m_selection})
    , m_sound(parts.audition)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    m_gesture.onHear = [this](std::uint8_t key, std::uint8_t velocity) {
        if (m_audition) m_sound.hold(track(), key, velocity);
    };
    m_gesture.onHush = [this] { m_sound.stop(); };
    parts.actions.listen(*this,
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
    showTrack(track);
    m_gesture.setTrack(track);
    m_selection.clear();
    contentChanged();
    centreRows();
    selectionChanged();
}

void CRollView::songReplaced()
{
    endGesture();
    RollSheet::setPosition(0);
    rescale([](RollScale& scale) { scale.setStart(0); });
    setTrack(track());
}

void CRollView::retranslate()
{
    setAccessibleName(parts().text(TextId::rollNotes));
    update();
}

void CRollView::selectionChanged()
{
    m_selectionStale = false;
    update();
    if (onSelection) onSelection();
}

void CRollView::setAudition(bool on)
{
    m_audition = on;
    m_sound.stop();
}

void CRollView::sound(std::uint8_t key, std::uint8_t velocity)
{
    if (m_audition) m_sound.play(track(), key, velocity);
}

void CRollView::setPosition(std::uint32_t tick, bool follow)
{
    RollSheet::setPosition(tick);
    if (follow && m_held == Held::nothing) showTick(tick);
}

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

EditTool CRollView::tool() const { return parts().actions.tool(); }

// Painting

void CRollView::forEachShown(TickRange span, int low, int high, const NoteVisit& visit) const
{
    m_gesture.forEachNote(span.from, span.to, low, high, visit);
}

void CRollView::paintGesture(QPainter& painter) const
{
    if (const auto band = m_gesture.band()) {
        const int left = scale().x(band->span.from);
        const int top = scale().yOfRow(band->firstRow);
        const QRect place(left, top, scale().x(band->span.to) - left,
                          scale().yOfRow(band->lastRow) + scale().rowHeight() - top);
        paintBand(painter, place, palette().color(QPalette::Highlight));
    }
    if (m_held == Held::nothing && underMouse() && tool() == EditTool::divide)
        if (const auto cut = m_gesture.cutAt(m_pointer))
            painter.fillRect(scale().x(*cut), scale().yOfRow(scale().row(m_pointer.y())) - 2, 1,
                             scale().rowHeight() + 4, recordColour(palette()));
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
        ruler().press(m_pointer.x());
    } else if (isMidi() && !parts().isLocked()) {
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
        ruler().move(m_pointer.x(), m_pointerKeys);
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
        setHeldKey(-1);
        break;
    case Held::rows:
        m_isBusy = true;
        releaseRows(*event);
        m_isBusy = false;
        selectionChanged();
        break;
    case Held::ruler:
        ruler().release(m_pointer.x(), event->modifiers());
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
        ruler().cancel();
    } else if (m_held == Held::column) {
        m_held = Held::nothing;
        setHeldKey(-1);
        m_sound.stop();
    }
    paintSoon();
}

void CRollView::moveColumn(int y)
{
    const int key = scale().key(y);
    if (key == heldKey()) return;
    setHeldKey(key);
    if (isMidi()) m_sound.hold(track(), static_cast<std::uint8_t>(key), columnVelocity);
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
        values = roll_pointer::valuesAt(parts().editor, scale().time(at.x()), note);
        values.key = keyText(note ? note->key : scale().key(at.y()));
    } else if (at.x() < RollScale::left && at.y() >= RollScale::ruler) {
        values.key = keyText(scale().key(at.y()));
    }
    onPointed(values);
}

} // namespace tessaro
