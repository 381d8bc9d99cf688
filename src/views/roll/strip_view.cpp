// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/strip_view.h"

#include "core/edit/editor.h"
#include "views/editors/evnt_kinds.h"
#include "views/editors/view_actions.h"
#include "views/roll/note_text.h"
#include "views/roll/roll_paint.h"
#include "views/roll/roll_view.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace tessaro {
namespace {

constexpr int head = 5; ///< pixels of the square at an event's value
constexpr int lineRoom = 6;
constexpr int labelMargin = 8;

} // namespace

StripView::StripView(const ViewParts& parts, CRollView& view)
    : m_parts(parts)
    , m_view(view)
    , m_commands(parts.editor, parts.notes, view.commands())
    , m_gesture({parts.editor, parts.notes, m_commands, parts.grid, view.scale(), view.selection()})
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    m_parts.actions.listen(*this, {ViewCommand::remove, ViewCommand::nudgeLeft, ViewCommand::nudgeRight,
                                   ViewCommand::tickLeft, ViewCommand::tickRight});
    retranslate();
}

const RollScale& StripView::time() const { return m_view.scale(); }

void StripView::setTrack(int track)
{
    m_track = track;
    m_isDown = false;
    m_gesture.setTrack(track);
    update();
}

void StripView::setKind(const StripKind& kind)
{
    m_gesture.cancel();
    m_gesture.setScale({kind, 0, height()});
    update();
}

void StripView::setName(const QString& name)
{
    m_name = name;
    update();
}

void StripView::endGesture()
{
    if (m_isBusy || m_gesture.mode() == StripGesture::Mode::none) return;
    m_isDown = false;
    m_gesture.cancel();
    update();
}

QRect StripView::positionStrip() const { return {time().x(m_position) - 1, 0, 3, height()}; }

void StripView::setPosition(std::uint32_t tick)
{
    update(positionStrip());
    m_position = tick;
    update(positionStrip());
}

void StripView::retranslate()
{
    setAccessibleName(m_parts.text(TextId::stripArea));
    update();
}

QString StripView::valueText(int value) const
{
    return QString::number(kind().what == StripKind::What::pitchBend ? value - kind().rest() : value);
}

// Painting

void StripView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    const QRect area = event->rect().intersected(QRect(RollScale::left, 0, width() - RollScale::left, height()));
    if (!area.isEmpty()) {
        painter.setClipRect(area);
        painter.fillRect(area, palette().base());
        paintLines(painter, area);
        // Values and heads reach a little beyond their ticks.
        const TickRange span{time().time(area.left() - head), time().time(area.right() + head) + 1};
        if (!kind().isVelocity()) paintHeld(painter, area, span);
        paintValues(painter, span);
        paintGesture(painter);
        painter.setClipping(false);
    }
    if (event->rect().left() < RollScale::left) paintColumn(painter);
    if (m_position >= time().start())
        painter.fillRect(QRectF(time().x(m_position) - 0.5, 0, 2, height()), palette().highlight());
}

void StripView::paintLines(QPainter& painter, const QRect& area)
{
    std::vector<TimeMark> marks;
    timeMarks(m_parts.editor, time().time(area.left()), time().time(area.right()) + 1,
              static_cast<std::uint32_t>(lineRoom * time().zoom()), {}, marks);
    const QColor base = palette().color(QPalette::Base);
    for (const TimeMark& mark : marks)
        painter.fillRect(time().x(mark.tick), area.top(), 1, area.height(),
                         blend(palette().color(QPalette::Text), base, mark.rank == TimeMark::Rank::bar ? 0.28 : 0.12));
    for (const int value : {kind().least(), (kind().most() + 1) / 2, kind().most()})
        painter.fillRect(area.left(), scale().y(value), area.width(), 1,
                         blend(palette().color(QPalette::Mid), base, 0.6));
}

/// What stays in force from one event to the next.
void StripView::paintHeld(QPainter& painter, const QRect& area, TickRange span)
{
    m_points.clear();
    if (const auto before = m_parts.notes.valueBefore(m_track, kind(), span.from))
        m_points.push_back({span.from, before->value});
    m_parts.notes.forEachValue(m_track, kind(), span.from, span.to, [this](const ValueInView& value) {
        if (const auto shown = m_gesture.shown(value)) m_points.push_back({shown->time, shown->value});
    });
    std::ranges::stable_sort(m_points, {}, &StripPoint::time); // of several blocks, or being moved
    m_rects.clear();
    const int ground = scale().y(kind().what == StripKind::What::pitchBend ? kind().rest() : kind().least());
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        const int left = time().x(m_points[i].time);
        const int right = i + 1 < m_points.size() ? time().x(m_points[i + 1].time) : area.right() + 1;
        const int y = scale().y(m_points[i].value);
        const auto [top, bottom] = std::minmax(y, ground);
        if (right > left) m_rects.emplace_back(left, top, std::min(right, width()) - left, bottom - top + 1);
    }
    fillAll(painter, m_rects, blend(trackColour(m_track, palette()), palette().color(QPalette::Base), 0.22));
}

void StripView::paintValues(QPainter& painter, TickRange span)
{
    const QColor base = palette().color(QPalette::Base);
    const QColor colour = trackColour(m_track, palette());
    m_looks[plain].colour = colour;
    m_looks[linked].colour = blend(colour, base, 0.45);
    m_looks[selected].colour = blend(palette().color(QPalette::Text), colour, 0.78);
    for (Look& look : m_looks) look.rects.clear();
    const int floor = scale().y(kind().least());
    const int stem = kind().isVelocity() ? 3 : 1;
    m_parts.notes.forEachValue(m_track, kind(), span.from, span.to, [&](const ValueInView& value) {
        const auto shown = m_gesture.shown(value);
        if (!shown) return;
        const int x = time().x(shown->time);
        const int y = scale().y(shown->value);
        Look& look = m_looks[m_view.selection().contains(value.ref) ? selected : value.isGhost ? linked : plain];
        look.rects.emplace_back(x, y, stem, floor - y + 1);
        look.rects.emplace_back(x - 1, y - head / 2, head, head);
    });
    for (const Look& look : m_looks) fillAll(painter, look.rects, look.colour);
}

void StripView::paintGesture(QPainter& painter) const
{
    const QColor accent = palette().color(QPalette::Highlight);
    const auto span = m_gesture.span();
    if (span && m_gesture.mode() == StripGesture::Mode::band) {
        const auto [low, high] = m_gesture.bandValues();
        const QRect place(QPoint(time().x(span->from), scale().y(high)), QPoint(time().x(span->to), scale().y(low)));
        paintBand(painter, place, accent);
    } else if (span && m_gesture.mode() == StripGesture::Mode::erase) {
        painter.fillRect(QRect(time().x(span->from), 0, time().x(span->to) - time().x(span->from), height()),
                         withAlpha(recordColour(palette()), 0.15));
    }
    const StripPath& path = m_gesture.path();
    if (path.empty()) return;
    QPolygonF line;
    const int left = time().x(path.first());
    const int right = std::min(time().x(path.last()), width());
    for (int x = left; x <= right; ++x)
        line << QPointF(
            x, scale().y(static_cast<int>(path.valueAt(std::clamp(time().time(x), path.first(), path.last())))));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(accent, 2));
    painter.drawPolyline(line);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
}

void StripView::paintColumn(QPainter& painter) const
{
    const QRect column(0, 0, RollScale::left, height());
    painter.fillRect(column, palette().window());
    painter.fillRect(column.right(), 0, 1, height(), palette().mid());
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    painter.setFont(small);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int line = QFontMetrics(small).height();
    const int labels = QFontMetrics(small).horizontalAdvance(QStringLiteral("-8192")) + labelMargin;
    painter.drawText(QRect(labelMargin, 4, RollScale::left - labels - labelMargin, height() - 8),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_name);
    int free = 0;
    for (const int value : {kind().most(), (kind().most() + 1) / 2, kind().least()}) {
        const int y = std::clamp(scale().y(value) - line / 2, 0, height() - line);
        if (y < free) continue;
        free = y + line;
        painter.drawText(QRect(0, y, RollScale::left - labelMargin, line), Qt::AlignRight | Qt::AlignVCenter,
                         valueText(value));
    }
    painter.setPen(Qt::NoPen);
}

// The mouse

void StripView::mousePressEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    if (event->button() != Qt::LeftButton || at.x() < RollScale::left || m_parts.isLocked()) return;
    if (!takesNotes(m_parts.editor, m_track)) return;
    m_isDown = m_isBusy = true;
    m_gesture.press(m_parts.actions.tool(), at, event->modifiers());
    m_isBusy = false;
    m_view.selectionChanged();
    update();
}

void StripView::mouseMoveEvent(QMouseEvent* event)
{
    m_gesture.move(event->position().toPoint(), event->modifiers());
    if (m_gesture.mode() != StripGesture::Mode::none) update();
    point(event->position().toPoint());
}

void StripView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_isDown) return;
    m_isDown = false;
    m_isBusy = true;
    m_gesture.release(event->position().toPoint(), event->modifiers());
    m_isBusy = false;
    m_view.selectionChanged();
    update();
}

void StripView::wheelEvent(QWheelEvent* event)
{
    // The same as above the strip, apart from rows.
    if ((event->modifiers() & Qt::ShiftModifier) || (event->modifiers() & Qt::ControlModifier)
        || event->angleDelta().x())
        QApplication::sendEvent(&m_view, event);
}

void StripView::contextMenuEvent(QContextMenuEvent* event)
{
    if (!m_isDown && onMenu) onMenu(event->globalPos());
}

// Other events

bool StripView::event(QEvent* event)
{
    // Escape ends what the mouse began before it is a command of the window.
    if (event->type() == QEvent::ShortcutOverride && m_gesture.mode() != StripGesture::Mode::none
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        event->accept();
    return QWidget::event(event);
}

void StripView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_gesture.mode() != StripGesture::Mode::none) {
        m_isDown = false;
        m_gesture.cancel();
        update();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void StripView::resizeEvent(QResizeEvent*) { m_gesture.setScale({kind(), 0, height()}); }

void StripView::leaveEvent(QEvent*)
{
    if (onPointed) onPointed({});
}

void StripView::point(QPoint at)
{
    if (!onPointed) return;
    NoteStatus::Values values;
    if (at.x() >= RollScale::left) {
        const auto hit = m_gesture.hit(at);
        values.place = placeText(m_parts.editor, hit ? hit->time : time().time(at.x()));
        values.velocity =
            valueText(hit && m_gesture.mode() == StripGesture::Mode::none ? hit->value : scale().value(at.y()));
    }
    onPointed(values);
}

} // namespace tessaro
