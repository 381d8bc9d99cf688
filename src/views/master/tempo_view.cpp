// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/tempo_view.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "realtime/transport/cnp_window.h"
#include "views/editors/command_buttons.h"
#include "views/editors/view_actions.h"
#include "views/list/cell_parse.h"
#include "views/list/list_view.h"
#include "views/roll/grid.h"
#include "views/text/ui_text.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

constexpr int wheelNotch = 120;
constexpr int edgeInterval = 30; ///< milliseconds
constexpr int mostEdge = 40;     ///< pixels to go on at a time
constexpr int lineWidth = 88;    ///< of a tempo
constexpr double zoomStep = 1.25;

QString beatsText(double beats) { return QString::number(beats, 'f', 2); }

} // namespace

TempoView::TempoView(const ViewParts& parts, CListVw& list, QWidget* parent)
    : QWidget(parent)
    , m_parts(parts)
    , m_list(list)
    , m_edits(parts.editor, list.edits())
    , m_gesture({parts.editor, m_evnts, parts.grid, m_scale, list.selection(), m_edits, list.edits(),
                 [this](std::span<const EvntRef> refs) { m_list.select(refs); },
                 [this](const MasterFlag& flag) { return m_painter.flagWidth(flag); }})
    , m_painter(parts, {m_scale, m_evnts, m_gesture, list}, *this)
    , m_line(list, parts.text, *this)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    m_parts.actions.listen(*this, {ViewCommand::remove, ViewCommand::insertEvent, ViewCommand::nudgeLeft,
                                   ViewCommand::nudgeRight, ViewCommand::nudgeUp, ViewCommand::nudgeDown,
                                   ViewCommand::octaveUp, ViewCommand::octaveDown, ViewCommand::tickLeft,
                                   ViewCommand::tickRight, ViewCommand::openEditor, ViewCommand::editCell});
    retranslate();
}

void TempoView::retranslate()
{
    setAccessibleName(m_parts.text(TextId::masterCurve));
    update();
}

// The song

void TempoView::markStale()
{
    m_stale = true;
    m_line.songChanged();
    cancel();
    update();
}

void TempoView::catchUp()
{
    if (!m_stale || m_parts.editor.IsPrgDlg()) return;
    m_stale = false;
    m_evnts.build(m_parts.editor);
    m_scale.setTempos(m_evnts.slowest(), m_evnts.fastest());
}

void TempoView::cancel()
{
    m_isDown = false;
    m_edgeTimer.stop();
    if (m_gesture.mode() != MasterGesture::Mode::none) m_gesture.cancel();
}

std::uint32_t TempoView::songEnd() const { return m_parts.editor.GetTimeEnd(); }

void TempoView::setPosition(std::uint32_t tick, bool follow)
{
    if (tick == m_position) return;
    for (const std::uint32_t at : {m_position, tick}) update(m_scale.x(at) - 1, 0, 3, height());
    m_position = tick;
    const int x = m_scale.x(tick);
    const bool isFree = m_gesture.mode() == MasterGesture::Mode::none && !m_line.line();
    if (follow && isFree && (x < TempoScale::left || x >= m_scale.width())) scrollTo(tick);
}

void TempoView::paintEvent(QPaintEvent*)
{
    if (m_parts.editor.IsPrgDlg()) return; // the song may stand between two states: the last picture stays
    catchUp();
    QPainter painter(this);
    m_painter.paint(painter, m_position);
}

// The scale

/// The mouse goes on with what it holds, in the picture as it is now.
void TempoView::changed()
{
    m_line.close();
    if (m_gesture.isUnderWay()) m_gesture.move(m_pointer, m_pointerKeys);
    update();
    if (onScaleChanged) onScaleChanged();
}

void TempoView::scrollTo(std::uint32_t tick)
{
    m_scale.setStart(tick);
    changed();
}

void TempoView::zoom(double factor)
{
    const int middle = (TempoScale::left + m_scale.width()) / 2;
    const int at = m_scale.x(m_position);
    m_scale.zoomAt(at > TempoScale::left && at < m_scale.width() ? at : middle, m_scale.zoom() / factor);
    changed();
}

void TempoView::fitSong()
{
    m_scale.showSpan({0, songEnd()});
    changed();
}

void TempoView::fitSelection()
{
    const std::vector<EvntRef> refs = m_list.selection().inOrder();
    if (refs.empty()) return;
    m_scale.showSpan({timeOf(refs.front()), timeOf(refs.back())});
    changed();
}

void TempoView::resizeEvent(QResizeEvent*)
{
    m_scale.resize(width(), height());
    changed();
}

void TempoView::wheelEvent(QWheelEvent* event)
{
    const QPoint turned = event->angleDelta();
    if (event->modifiers() & Qt::ControlModifier) {
        const double factor = std::pow(zoomStep, -static_cast<double>(turned.y()) / wheelNotch);
        m_scale.zoomAt(static_cast<int>(event->position().x()), m_scale.zoom() * factor);
    } else {
        const int along = turned.x() != 0 ? turned.x() : turned.y();
        m_scale.setStart(tick::shifted(m_scale.start(), -static_cast<std::int64_t>(along * m_scale.zoom() / 2)));
    }
    changed();
    event->accept();
}

void TempoView::scrollAtEdge()
{
    const int x = m_pointer.x();
    const int beyond = x < TempoScale::left ? x - TempoScale::left : std::max(x - width() + 1, 0);
    const int pixels = std::clamp(beyond, -mostEdge, mostEdge);
    m_scale.setStart(tick::shifted(m_scale.start(), static_cast<std::int64_t>(pixels * m_scale.zoom())));
    changed();
}

void TempoView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_edgeTimer.timerId())
        scrollAtEdge();
    else
        QWidget::timerEvent(event);
}

// The mouse

QString TempoView::pointed(QPoint at) const
{
    if (at.x() < TempoScale::left) return {};
    const std::uint32_t time = m_gesture.snapped(m_scale.time(at.x()), {});
    const QString place = m_list.cells().placeText(time);
    if (at.y() < TempoScale::curveTop) return place;
    if (const auto hit = m_gesture.hit(at); hit && hit->isTempo)
        return QStringLiteral("%1    %2").arg(m_list.cells().placeText(hit->time), beatsText(hit->beats));
    const bool isDrawing = m_parts.actions.tool() != EditTool::select || m_gesture.mode() == MasterGesture::Mode::draw;
    return QStringLiteral("%1    %2")
        .arg(place, beatsText(isDrawing ? m_scale.beats(at.y()) : m_evnts.beatsAt(m_scale.time(at.x()))));
}

void TempoView::mousePressEvent(QMouseEvent* event)
{
    m_line.close();
    setFocus();
    m_pointer = event->position().toPoint();
    m_pointerKeys = event->modifiers();
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    if (m_pointer.y() < TempoScale::ruler) {
        if (m_pointer.x() >= TempoScale::left)
            m_parts.panel.SetLocation(static_cast<long>(m_gesture.snapped(m_scale.time(m_pointer.x()), m_pointerKeys)));
        return;
    }
    catchUp();
    m_isDown = true;
    m_gesture.press(isLocked() ? EditTool::select : m_parts.actions.tool(), m_pointer, m_pointerKeys);
    update();
}

void TempoView::mouseMoveEvent(QMouseEvent* event)
{
    catchUp();
    m_pointer = event->position().toPoint();
    m_pointerKeys = event->modifiers();
    m_gesture.move(m_pointer, m_pointerKeys);
    const bool isBeyond = m_pointer.x() < TempoScale::left || m_pointer.x() >= width();
    if (!m_isDown || !m_gesture.isUnderWay() || !isBeyond)
        m_edgeTimer.stop();
    else if (!m_edgeTimer.isActive())
        m_edgeTimer.start(edgeInterval, this);
    if (m_gesture.mode() != MasterGesture::Mode::none) update();
    setCursor(m_gesture.hit(m_pointer) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (onPointed) onPointed(pointed(m_pointer));
}

void TempoView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_isDown) return;
    m_isDown = false;
    m_edgeTimer.stop();
    if (isLocked())
        m_gesture.cancel();
    else
        m_gesture.release(event->position().toPoint(), event->modifiers());
    update();
}

void TempoView::mouseDoubleClickEvent(QMouseEvent* event)
{
    cancel();
    catchUp();
    const QPoint at = event->position().toPoint();
    if (event->button() != Qt::LeftButton || isLocked() || at.x() < TempoScale::left || at.y() < TempoScale::ruler)
        return;
    if (const auto hit = m_gesture.hit(at)) {
        openLine(hit->evnt, hit->time, at.y());
    } else if (TempoScale::lane(at.y()) >= 0) {
        insertAt(at, event->modifiers());
    } else if (m_parts.actions.tool() == EditTool::select) {
        const std::uint32_t time = m_gesture.snapped(m_scale.time(at.x()), event->modifiers());
        const TempoPoint point{time, std::round(m_scale.beats(at.y())), nullptr};
        m_edits.drawTempos({&point, 1}, {time, tick::later(time, 1)});
    }
}

void TempoView::leaveEvent(QEvent*)
{
    if (onPointed) onPointed({});
}

void TempoView::hideEvent(QHideEvent* event)
{
    cancel();
    QWidget::hideEvent(event);
}

// The menu

void TempoView::fillMenu(QMenu& menu, QPoint at)
{
    catchUp();
    if (const auto hit = m_gesture.hit(at); hit && !m_list.selection().contains(m_evnts.ref(hit->evnt))) {
        const EvntRef one[] = {m_evnts.ref(hit->evnt)};
        m_list.select(one);
    }
    if (at.x() >= TempoScale::left && at.y() >= TempoScale::ruler) {
        const int lane = TempoScale::lane(at.y());
        const EvntKind kind = lane < 0 ? EvntKind::tempo : MasterEvnts::kindOfLane(static_cast<FlagLane>(lane));
        const QString flag = m_parts.text(TextId::insertFlagHere).arg(kindName(kind, m_parts.text));
        QAction* insert = menu.addAction(lane < 0 ? m_parts.text(TextId::insertTempoHere) : flag);
        insert->setEnabled(!isLocked());
        connect(insert, &QAction::triggered, this, [this, at] { insertAt(at, {}); });
        menu.addSeparator();
    }
    using enum ViewCommand;
    addCommands(menu, m_parts.actions, {cut, copy, paste, remove, duplicate, properties});
    addCommands(menu, m_parts.actions, {toolSelect, toolPencil, toolLine, toolCurve, toolEraser});
    addCommands(menu, m_parts.actions, {selectAll, selectNone, zoomToSelection});
}

void TempoView::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_gesture.mode() != MasterGesture::Mode::none) return;
    QMenu menu;
    fillMenu(menu, event->pos());
    m_parts.actions.refresh();
    menu.exec(event->globalPos());
}

// Typing

QRect TempoView::linePlace(std::uint32_t time, int y) const
{
    const int lane = TempoScale::lane(y);
    const int x = m_scale.x(time);
    if (lane < 0) return {x, y - TempoScale::laneHeight / 2 - 1, lineWidth, TempoScale::laneHeight + 2};
    return {x, TempoScale::yOfLane(lane), TempoScale::longestFlag, TempoScale::laneHeight + 2};
}

void TempoView::openLine(POSITION evnt, std::uint32_t time, int y)
{
    m_line.open(linePlace(time, y), m_evnts.ref(evnt));
}

bool TempoView::openSelected()
{
    catchUp();
    const std::vector<EvntRef> refs = m_list.selection().inOrder();
    if (refs.empty() || isLocked()) return false;
    const std::uint32_t time = timeOf(refs.front());
    const TickRange seen = m_scale.span();
    if (time < seen.from || time >= seen.to) return false;
    const POSITION evnt = refs.front().evnt;
    for (const TempoPoint& point : m_evnts.tempos(time, tick::later(time, 1)))
        if (point.evnt == evnt) return openLine(evnt, time, m_scale.y(point.beats)), true;
    for (const MasterFlag& flag : m_evnts.flags(time, tick::later(time, 1)))
        if (flag.evnt == evnt) return openLine(evnt, time, TempoScale::yOfLane(flag.lane)), true;
    return false;
}

/// Types the value of a new event; that of a tempo which stands there already.
void TempoView::insertAt(QPoint at, Qt::KeyboardModifiers keys)
{
    catchUp();
    const int lane = TempoScale::lane(at.y());
    std::uint32_t time = m_gesture.snapped(m_scale.time(at.x()), keys);
    if (lane < 0) {
        if (const auto there = m_evnts.tempos(time, tick::later(time, 1)); !there.empty())
            return openLine(there.front().evnt, time, m_scale.y(there.front().beats));
        EvntDraft draft = newEvnt(EvntKind::tempo, time, 0);
        draft.data = tempoBytes(microsecondsOf(std::round(m_scale.beats(at.y()))));
        return m_line.open(linePlace(time, at.y()), std::move(draft));
    }
    const EvntKind kind = MasterEvnts::kindOfLane(static_cast<FlagLane>(lane));
    if (kind == EvntKind::signature) { // which belongs to a measure
        _EDT_MEAS measure;
        m_parts.editor.TimeToMeas(m_scale.time(at.x()), measure);
        time = m_parts.editor.MeasToTime({measure.meas - 1, 0, 0});
    }
    m_line.open(linePlace(time, at.y()), newEvnt(kind, time, 0));
}

// Keys

void TempoView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (m_gesture.mode() == MasterGesture::Mode::none) m_list.select({});
    cancel();
    update();
}

bool TempoView::event(QEvent* event)
{
    const bool isBusy = m_gesture.mode() != MasterGesture::Mode::none || !m_list.selection().empty();
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape
        && isBusy) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

} // namespace tessaro
