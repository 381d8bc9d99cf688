// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/tempo_view.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "realtime/transport/cnp_window.h"
#include "views/editors/view_actions.h"
#include "views/list/cell_parse.h"
#include "views/list/list_view.h"
#include "views/roll/grid.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"
#include "views/widgets/keeps_key.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

constexpr int labelRoom = 56;    ///< pixels from one number of the ruler to the next
constexpr int leastLines = 8;    ///< pixels from line to line
constexpr int longestFlag = 160; ///< pixels
constexpr int wheelNotch = 120;
constexpr double zoomStep = 1.25;
constexpr TextId laneNames[TempoScale::lanes] = {TextId::laneSignatures, TextId::laneKeys, TextId::laneMarkers,
                                                 TextId::laneTexts};

QString beatsText(double beats) { return QString::number(beats, 'f', 2); }

} // namespace

TempoView::TempoView(const ViewParts& parts, CListVw& list, QWidget* parent)
    : QWidget(parent)
    , m_parts(parts)
    , m_list(list)
    , m_edits(parts.editor, list.edits())
    , m_gesture({parts.editor, m_evnts, parts.grid, m_scale, list.selection(), m_edits, list.edits(),
                 [this](std::span<const EvntRef> refs) { m_list.select(refs); },
                 [this](const MasterFlag& flag) { return flagWidth(flag); }})
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    m_parts.actions.listen(*this, {ViewCommand::remove, ViewCommand::insertEvent, ViewCommand::nudgeLeft,
                                   ViewCommand::nudgeRight, ViewCommand::nudgeUp, ViewCommand::nudgeDown,
                                   ViewCommand::octaveUp, ViewCommand::octaveDown, ViewCommand::tickLeft,
                                   ViewCommand::tickRight});
    retranslate();
}

QLineEdit* TempoView::line() const { return m_line; }

void TempoView::retranslate()
{
    setAccessibleName(m_parts.text(TextId::masterCurve));
    update();
}

void TempoView::markStale()
{
    m_stale = true;
    if (m_gesture.mode() != MasterGesture::Mode::none) m_gesture.cancel();
    update();
}

void TempoView::refresh()
{
    m_stale = false;
    m_evnts.build(m_parts.editor);
    m_scale.setTempos(m_evnts.slowest(), m_evnts.fastest());
}

void TempoView::changed()
{
    closeLine();
    update();
    if (onScaleChanged) onScaleChanged();
}

std::uint32_t TempoView::songEnd() const { return m_parts.editor.GetTimeEnd(); }

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

void TempoView::setPosition(std::uint32_t tick, bool follow)
{
    if (tick == m_position) return;
    for (const std::uint32_t at : {m_position, tick}) update(m_scale.x(at) - 1, 0, 3, height());
    m_position = tick;
    const int x = m_scale.x(tick);
    if (follow && m_gesture.mode() == MasterGesture::Mode::none && (x < TempoScale::left || x >= m_scale.width()))
        scrollTo(tick);
}

// Painting --------------------------------------------------------------------------------------------------

QString TempoView::flagText(const MasterFlag& flag) const
{
    const CEvnt& event = *List<CEvnt>::get(flag.evnt);
    const EvntKindInfo& info = infoOf(kindOf(event));
    const bool isText = info.value1 == CellForm::none;
    return m_list.cells().shown(event, flag.time, isText ? ListColumn::data : ListColumn::value1);
}

int TempoView::flagWidth(const MasterFlag& flag) const
{
    return std::min(fontMetrics().horizontalAdvance(flagText(flag)) + 14, longestFlag);
}

void TempoView::paintEvent(QPaintEvent*)
{
    if (m_parts.editor.IsPrgDlg()) return;
    if (m_stale) refresh();
    QPainter painter(this);
    paintGround(painter);
    painter.save();
    painter.setClipRect(TempoScale::left, 0, width() - TempoScale::left, height());
    paintFlags(painter);
    paintCurve(painter);
    if (const auto band = m_gesture.band()) {
        QColor fill = palette().color(QPalette::Highlight);
        painter.setPen(fill);
        fill.setAlpha(40);
        painter.setBrush(fill);
        painter.drawRect(*band);
    }
    paintRuler(painter);
    if (const int x = m_scale.x(m_position); x >= TempoScale::left)
        painter.fillRect(x, 0, 1, height(), palette().color(QPalette::Highlight));
    painter.restore();
}

void TempoView::paintGround(QPainter& painter)
{
    const QPalette& colours = palette();
    const QColor base = colours.color(QPalette::Base);
    painter.fillRect(rect(), base);
    const TickRange span = m_scale.span();
    timeMarks(
        m_parts.editor, span.from, span.to, static_cast<std::uint32_t>(leastLines * m_scale.zoom()),
        [this](std::uint32_t tick) { return m_parts.grid.isFree() ? 0 : m_parts.grid.step(m_parts.editor, tick); },
        m_marks);
    const QColor text = colours.color(QPalette::Text);
    for (const TimeMark& mark : m_marks) {
        const double share = mark.rank == TimeMark::Rank::bar ? 0.2 : mark.rank == TimeMark::Rank::beat ? 0.09 : 0.05;
        painter.fillRect(m_scale.x(mark.tick), TempoScale::ruler, 1, height(), blend(text, base, share));
    }
    painter.fillRect(0, 0, TempoScale::left, height(), colours.window());
    painter.fillRect(0, 0, width(), TempoScale::ruler, colours.window());
    const QColor line = colours.color(QPalette::Mid);
    for (int lane = 0; lane <= TempoScale::lanes; ++lane)
        painter.fillRect(0, TempoScale::yOfLane(lane), width(), 1, line);
    painter.fillRect(TempoScale::left - 1, 0, 1, height(), line);

    painter.setPen(colours.color(QPalette::PlaceholderText));
    for (int lane = 0; lane < TempoScale::lanes; ++lane) {
        const QRect place(8, TempoScale::yOfLane(lane), TempoScale::left - 16, TempoScale::laneHeight);
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(m_parts.text(laneNames[lane]), Qt::ElideRight, place.width()));
    }
    const int step = m_scale.lineStep();
    const int first = static_cast<int>(std::ceil(m_scale.slowest() / step)) * step;
    for (int beats = first; beats <= m_scale.fastest(); beats += step) {
        const int y = m_scale.y(beats);
        painter.fillRect(TempoScale::left, y, width(), 1, blend(text, base, 0.06));
        painter.drawText(QRect(8, y - 10, TempoScale::left - 16, 20), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(beats));
    }
}

void TempoView::paintRuler(QPainter& painter) const
{
    int free = TempoScale::left;
    for (const TimeMark& mark : m_marks) {
        if (mark.rank != TimeMark::Rank::bar) continue;
        const int x = m_scale.x(mark.tick);
        painter.fillRect(x, TempoScale::ruler - 6, 1, 6, palette().color(QPalette::Mid));
        if (x < free) continue;
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(QRect(x + 4, 0, labelRoom, TempoScale::ruler), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::number(mark.measure));
        free = x + labelRoom;
    }
}

void TempoView::paintFlags(QPainter& painter) const
{
    const QColor accent = palette().color(QPalette::Highlight);
    const QColor base = palette().color(QPalette::Base);
    const TickRange span = m_scale.span();
    const auto reach = static_cast<std::uint32_t>(longestFlag * m_scale.zoom());
    painter.setRenderHint(QPainter::Antialiasing);
    for (const MasterFlag& flag : m_evnts.flags(span.from > reach ? span.from - reach : 0, span.to)) {
        const bool isSelected = m_list.selection().contains(m_evnts.ref(flag.evnt));
        std::uint32_t time = flag.time;
        if (isSelected) time = tick::shifted(time, m_gesture.flagTicks());
        const int width = flagWidth(flag);
        const QRect place(m_scale.x(time), TempoScale::yOfLane(flag.lane) + 3, width - 2, TempoScale::laneHeight - 5);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isSelected ? accent : blend(accent, base, 0.18));
        painter.drawRoundedRect(place, 3, 3);
        painter.fillRect(place.left(), place.top(), 2, place.height(), accent);
        painter.setPen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        const QRect room = place.adjusted(6, 0, -4, 0);
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(flagText(flag), Qt::ElideRight, room.width()));
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

/// Steps from point to point; the first one is already in force at the left margin.
void TempoView::paintSteps(QPainter& painter, const std::vector<TempoPoint>& points, const QColor& colour,
                           bool fill) const
{
    QColor below = colour;
    below.setAlpha(28);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const int from = std::max(m_scale.x(points[i].time), TempoScale::left);
        const bool isLast = i + 1 == points.size();
        const int to = isLast ? (fill ? width() : from) : std::min(m_scale.x(points[i + 1].time), width());
        const int y = m_scale.y(points[i].beats);
        if (fill && to > from) painter.fillRect(from, y, to - from, height() - y, below);
        painter.fillRect(from, y - 1, std::max(to - from, 0), 2, colour);
        if (isLast) continue;
        const int next = m_scale.y(points[i + 1].beats);
        painter.fillRect(to, std::min(y, next), 1, std::abs(next - y), colour);
    }
}

void TempoView::paintCurve(QPainter& painter) const
{
    painter.setClipRect(TempoScale::left, TempoScale::curveTop + 1, width(), height());
    const TickRange span = m_scale.span();
    std::vector<TempoPoint> points{{span.from, m_evnts.beatsAt(span.from), nullptr}};
    const auto reach = static_cast<std::uint32_t>(width() * m_scale.zoom());
    const auto tempos = m_gesture.mode() == MasterGesture::Mode::drag
                          ? m_evnts.tempos()
                          : m_evnts.tempos(span.from, tick::later(span.to, reach / 16));
    for (const TempoPoint& point : tempos)
        if (const auto shown = m_gesture.shown(point)) points.push_back(*shown);
    std::stable_sort(points.begin() + 1, points.end(),
                     [](const TempoPoint& a, const TempoPoint& b) { return a.time < b.time; });
    const QColor accent = palette().color(QPalette::Highlight);
    paintSteps(painter, points, accent, true);

    painter.setRenderHint(QPainter::Antialiasing);
    for (const TempoPoint& point : points) {
        if (!point.evnt || point.time < span.from) continue;
        const bool isSelected = m_list.selection().contains(m_evnts.ref(point.evnt));
        const QPointF middle(m_scale.x(point.time) + 0.5, m_scale.y(point.beats));
        painter.setPen(QPen(accent, 1.5));
        painter.setBrush(isSelected ? palette().color(QPalette::Text) : palette().color(QPalette::Base));
        painter.drawEllipse(middle, isSelected ? 4.5 : 3.5, isSelected ? 4.5 : 3.5);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (const std::vector<TempoPoint> drawn = m_gesture.drawn(); !drawn.empty())
        paintSteps(painter, drawn, palette().color(QPalette::Text), false);
    painter.setClipRect(TempoScale::left, 0, width(), height());
}

// Mouse and keys --------------------------------------------------------------------------------------------

void TempoView::resizeEvent(QResizeEvent*)
{
    m_scale.resize(width(), height());
    changed();
}

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
    closeLine();
    setFocus();
    const QPoint at = event->position().toPoint();
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    if (at.y() < TempoScale::ruler) {
        if (at.x() >= TempoScale::left)
            m_parts.panel.SetLocation(static_cast<long>(m_gesture.snapped(m_scale.time(at.x()), event->modifiers())));
        return;
    }
    if (m_stale) refresh();
    const EditTool tool = isLocked() ? EditTool::select : m_parts.actions.tool();
    m_gesture.press(tool, at, event->modifiers());
    update();
}

void TempoView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_stale) refresh();
    const QPoint at = event->position().toPoint();
    m_gesture.move(at, event->modifiers());
    if (m_gesture.mode() != MasterGesture::Mode::none) update();
    const auto hit = m_gesture.hit(at);
    setCursor(hit ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (onPointed) onPointed(pointed(at));
}

void TempoView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    if (isLocked())
        m_gesture.cancel();
    else
        m_gesture.release(event->position().toPoint(), event->modifiers());
    update();
}

void TempoView::mouseDoubleClickEvent(QMouseEvent* event)
{
    m_gesture.cancel();
    const QPoint at = event->position().toPoint();
    if (event->button() != Qt::LeftButton || isLocked() || at.x() < TempoScale::left || at.y() < TempoScale::ruler)
        return;
    const auto hit = m_gesture.hit(at);
    const int lane = TempoScale::lane(at.y());
    Typed typed;
    QRect place(0, lane < 0 ? at.y() - 12 : TempoScale::yOfLane(lane), lane < 0 ? 88 : longestFlag,
                TempoScale::laneHeight + 2);
    if (hit) {
        typed.ref = m_evnts.ref(hit->evnt);
        const EvntKindInfo& info = infoOf(kindOf(*List<CEvnt>::get(hit->evnt)));
        typed.column = info.value1 == CellForm::none ? ListColumn::data : ListColumn::value1;
        place.moveLeft(m_scale.x(hit->time));
    } else if (lane < 0) {
        if (m_parts.actions.tool() != EditTool::select) return;
        const std::uint32_t time = m_gesture.snapped(m_scale.time(at.x()), event->modifiers());
        const TempoPoint point[] = {{time, std::round(m_scale.beats(at.y())), nullptr}};
        m_edits.drawTempos(point);
        return;
    } else {
        const EvntKind kind = MasterEvnts::kindOfLane(static_cast<FlagLane>(lane));
        std::uint32_t time = m_gesture.snapped(m_scale.time(at.x()), event->modifiers());
        if (kind == EvntKind::signature) { // which belongs to a measure
            _EDT_MEAS measure;
            m_parts.editor.TimeToMeas(m_scale.time(at.x()), measure);
            time = m_parts.editor.MeasToTime({measure.meas - 1, 0, 0});
        }
        typed.draft = newEvnt(kind, time, 0);
        typed.column = infoOf(kind).value1 == CellForm::none ? ListColumn::data : ListColumn::value1;
        place.moveLeft(m_scale.x(time));
    }
    openLine(place, std::move(typed));
}

void TempoView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        const bool isUnderWay = m_gesture.mode() != MasterGesture::Mode::none;
        m_gesture.cancel();
        if (!isUnderWay) m_list.select({});
        update();
        return;
    }
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_F2;
    if (opens && m_list.can(ViewCommand::properties)) {
        m_list.setFocus();
        m_list.run(ViewCommand::properties);
        return;
    }
    QWidget::keyPressEvent(event);
}

void TempoView::leaveEvent(QEvent*)
{
    if (onPointed) onPointed({});
}

void TempoView::wheelEvent(QWheelEvent* event)
{
    const QPoint turned = event->angleDelta();
    if (event->modifiers() & Qt::ControlModifier) {
        const double factor = std::pow(zoomStep, -static_cast<double>(turned.y()) / wheelNotch);
        m_scale.zoomAt(static_cast<int>(event->position().x()), m_scale.zoom() * factor);
        changed();
    } else {
        const int along = turned.x() != 0 ? turned.x() : turned.y();
        m_scale.setStart(tick::shifted(m_scale.start(), -static_cast<std::int64_t>(along * m_scale.zoom() / 2)));
        changed();
    }
    event->accept();
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

// Typing ----------------------------------------------------------------------------------------------------

void TempoView::openLine(const QRect& place, Typed typed)
{
    closeLine();
    m_typed = std::move(typed);
    CEvnt fresh;
    if (!m_typed.ref.evnt) fresh.Set(m_typed.draft.record());
    const CEvnt& event = m_typed.ref.evnt ? *List<CEvnt>::get(m_typed.ref.evnt) : fresh;
    m_line = new QLineEdit(this);
    m_line->setText(m_list.cells().typed(event, 0, m_typed.column));
    m_line->setAccessibleName(kindName(kindOf(event), m_parts.text));
    m_line->setPlaceholderText(m_line->accessibleName());
    m_line->selectAll();
    m_line->installEventFilter(this);
    QRect at = place;
    at.setHeight(std::max(at.height(), m_line->sizeHint().height()));
    at.moveLeft(std::clamp(at.left(), TempoScale::left, std::max(width() - at.width(), TempoScale::left)));
    at.moveBottom(std::min(at.bottom(), height() - 1));
    m_line->setGeometry(at);
    m_line->show();
    m_line->setFocus();
    connect(m_line, &QLineEdit::textEdited, this, [this] { m_fault.end(); });
}

void TempoView::closeLine()
{
    m_fault.end();
    if (!m_line) return;
    m_line->removeEventFilter(this);
    m_line->hide();
    m_line->deleteLater();
    m_line = nullptr;
}

/// One step: the new event comes with its value.
void TempoView::takeLine()
{
    CEvnt fresh;
    if (!m_typed.ref.evnt) fresh.Set(m_typed.draft.record());
    const CEvnt& event = m_typed.ref.evnt ? *List<CEvnt>::get(m_typed.ref.evnt) : fresh;
    const EvntKind kind = kindOf(event);
    const auto parsed = m_list.cells().parse(m_line->text(), event, m_typed.column);
    if (const auto* fault = std::get_if<CellFault>(&parsed)) {
        m_fault.say(fault->sentence, *m_line);
        return;
    }
    const bool isModified = m_line->isModified();
    const CellChange change = std::get<CellChange>(parsed);
    Typed typed = std::move(m_typed);
    closeLine();
    setFocus();
    if (typed.ref.evnt) {
        const EvntRef one[] = {typed.ref};
        if (isModified) m_list.edits().change(one, typed.column, change, kind);
        return;
    }
    applyChange(change, typed.column, typed.draft);
    if (const auto made = m_list.edits().insert(0, std::move(typed.draft))) m_list.goTo(*made);
}

bool TempoView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_line) return QWidget::eventFilter(watched, event);
    if (keepsKey(event)) return true;
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            takeLine();
            return true;
        }
        if (key == Qt::Key_Escape) {
            closeLine();
            setFocus();
            return true;
        }
    }
    if (event->type() == QEvent::FocusOut) closeLine();
    return QWidget::eventFilter(watched, event);
}

} // namespace tessaro
