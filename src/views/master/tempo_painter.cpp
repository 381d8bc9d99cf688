// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/tempo_painter.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "views/list/list_view.h"
#include "views/master/master_gesture.h"
#include "views/roll/grid.h"
#include "views/roll/roll_paint.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace tessaro {
namespace {

constexpr int labelRoom = 56; ///< pixels from one number of the ruler to the next
constexpr int leastLines = 8; ///< pixels from line to line
constexpr TextId laneNames[TempoScale::lanes] = {TextId::laneSignatures, TextId::laneKeys, TextId::laneMarkers,
                                                 TextId::laneTexts};

} // namespace

void TempoPainter::paint(QPainter& painter, std::uint32_t position)
{
    const QPalette& colours = m_widget.palette();
    paintGround(painter);
    paintNames(painter);
    paintTempos(painter);
    painter.save();
    painter.setClipRect(TempoScale::left, 0, m_widget.width() - TempoScale::left, m_widget.height());
    paintFlags(painter);
    paintCurve(painter);
    if (const auto band = m_parts.gesture.band()) {
        const QColor accent = colours.color(QPalette::Highlight);
        painter.setPen(accent);
        painter.setBrush(withAlpha(accent, 0.16));
        painter.drawRect(*band);
    }
    paintRuler(painter);
    if (const int x = m_parts.scale.x(position); x >= TempoScale::left)
        painter.fillRect(x, 0, 1, m_widget.height(), colours.color(QPalette::Highlight));
    painter.restore();
}

QString TempoPainter::flagText(const MasterFlag& flag) const
{
    const CEvnt& event = *List<CEvnt>::get(flag.evnt);
    return m_parts.list.cells().shown(event, flag.time, EvntCells::valueColumn(kindOf(event)));
}

int TempoPainter::flagWidth(const MasterFlag& flag) const
{
    return std::min(m_widget.fontMetrics().horizontalAdvance(flagText(flag)) + 14, TempoScale::longestFlag);
}

/// Lines of bars, beats and the grid, and the room of the names.
void TempoPainter::paintGround(QPainter& painter)
{
    const QPalette& colours = m_widget.palette();
    const QColor base = colours.color(QPalette::Base);
    painter.fillRect(m_widget.rect(), base);
    const TickRange span = m_parts.scale.span();
    timeMarks(
        m_view.editor, span.from, span.to, static_cast<std::uint32_t>(leastLines * m_parts.scale.zoom()),
        [this](std::uint32_t tick) { return m_view.grid.isFree() ? 0 : m_view.grid.step(m_view.editor, tick); },
        m_marks);
    const QColor text = colours.color(QPalette::Text);
    for (const TimeMark& mark : m_marks) {
        const double share = mark.rank == TimeMark::Rank::bar ? 0.2 : mark.rank == TimeMark::Rank::beat ? 0.09 : 0.05;
        painter.fillRect(m_parts.scale.x(mark.tick), TempoScale::ruler, 1, m_widget.height(), blend(text, base, share));
    }
    painter.fillRect(0, 0, TempoScale::left, m_widget.height(), colours.window());
    painter.fillRect(0, 0, m_widget.width(), TempoScale::ruler, colours.window());
    const QColor line = colours.color(QPalette::Mid);
    for (int lane = 0; lane <= TempoScale::lanes; ++lane)
        painter.fillRect(0, TempoScale::yOfLane(lane), m_widget.width(), 1, line);
    painter.fillRect(TempoScale::left - 1, 0, 1, m_widget.height(), line);
}

void TempoPainter::paintNames(QPainter& painter) const
{
    painter.setPen(m_widget.palette().color(QPalette::PlaceholderText));
    for (int lane = 0; lane < TempoScale::lanes; ++lane) {
        const QRect place(8, TempoScale::yOfLane(lane), TempoScale::left - 16, TempoScale::laneHeight);
        const QString name = m_view.text(laneNames[lane]);
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                         m_widget.fontMetrics().elidedText(name, Qt::ElideRight, place.width()));
    }
}

void TempoPainter::paintTempos(QPainter& painter) const
{
    const QPalette& colours = m_widget.palette();
    const QColor faint = blend(colours.color(QPalette::Text), colours.color(QPalette::Base), 0.06);
    painter.setPen(colours.color(QPalette::PlaceholderText));
    const int step = m_parts.scale.lineStep();
    const int first = static_cast<int>(std::ceil(m_parts.scale.slowest() / step)) * step;
    for (int beats = first; beats <= m_parts.scale.fastest(); beats += step) {
        const int y = m_parts.scale.y(beats);
        painter.fillRect(TempoScale::left, y, m_widget.width(), 1, faint);
        painter.drawText(QRect(8, y - 10, TempoScale::left - 16, 20), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(beats));
    }
}

void TempoPainter::paintRuler(QPainter& painter) const
{
    int free = TempoScale::left;
    for (const TimeMark& mark : m_marks) {
        if (mark.rank != TimeMark::Rank::bar) continue;
        const int x = m_parts.scale.x(mark.tick);
        painter.fillRect(x, TempoScale::ruler - 6, 1, 6, m_widget.palette().color(QPalette::Mid));
        if (x < free) continue;
        painter.setPen(m_widget.palette().color(QPalette::PlaceholderText));
        painter.drawText(QRect(x + 4, 0, labelRoom, TempoScale::ruler), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::number(mark.measure));
        free = x + labelRoom;
    }
}

void TempoPainter::paintFlags(QPainter& painter) const
{
    const QColor accent = m_widget.palette().color(QPalette::Highlight);
    const QColor base = m_widget.palette().color(QPalette::Base);
    const TickRange span = m_parts.scale.span();
    const auto reach = static_cast<std::uint32_t>(TempoScale::longestFlag * m_parts.scale.zoom());
    painter.setRenderHint(QPainter::Antialiasing);
    for (const MasterFlag& flag : m_parts.evnts.flags(span.from > reach ? span.from - reach : 0, span.to)) {
        const bool isSelected = m_parts.list.selection().contains(m_parts.evnts.ref(flag.evnt));
        std::uint32_t time = flag.time;
        if (isSelected) time = tick::shifted(time, m_parts.gesture.flagTicks());
        const int width = flagWidth(flag);
        const QRect place(m_parts.scale.x(time), TempoScale::yOfLane(flag.lane) + 3, width - 2,
                          TempoScale::laneHeight - 5);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isSelected ? accent : blend(accent, base, 0.18));
        painter.drawRoundedRect(place, 3, 3);
        painter.fillRect(place.left(), place.top(), 2, place.height(), accent);
        painter.setPen(m_widget.palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        const QRect room = place.adjusted(6, 0, -4, 0);
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         m_widget.fontMetrics().elidedText(flagText(flag), Qt::ElideRight, room.width()));
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

/// Steps from point to point; the first one is already in force at the left margin.
void TempoPainter::paintSteps(QPainter& painter, const std::vector<TempoPoint>& points, const QColor& colour,
                              bool fill) const
{
    QColor below = colour;
    below.setAlpha(28);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const int from = std::max(m_parts.scale.x(points[i].time), TempoScale::left);
        const bool isLast = i + 1 == points.size();
        const int to =
            isLast ? (fill ? m_widget.width() : from) : std::min(m_parts.scale.x(points[i + 1].time), m_widget.width());
        const int y = m_parts.scale.y(points[i].beats);
        if (fill && to > from) painter.fillRect(from, y, to - from, m_widget.height() - y, below);
        painter.fillRect(from, y - 1, std::max(to - from, 0), 2, colour);
        if (isLast) continue;
        const int next = m_parts.scale.y(points[i + 1].beats);
        painter.fillRect(to, std::min(y, next), 1, std::abs(next - y), colour);
    }
}

void TempoPainter::paintCurve(QPainter& painter) const
{
    painter.setClipRect(TempoScale::left, TempoScale::curveTop + 1, m_widget.width(), m_widget.height());
    const TickRange span = m_parts.scale.span();
    std::vector<TempoPoint> points{{span.from, m_parts.evnts.beatsAt(span.from), nullptr}};
    const auto reach = static_cast<std::uint32_t>(m_widget.width() * m_parts.scale.zoom());
    const auto tempos = m_parts.gesture.mode() == MasterGesture::Mode::drag
                          ? m_parts.evnts.tempos()
                          : m_parts.evnts.tempos(span.from, tick::later(span.to, reach / 16));
    for (const TempoPoint& point : tempos)
        if (const auto shown = m_parts.gesture.shown(point)) points.push_back(*shown);
    std::stable_sort(points.begin() + 1, points.end(),
                     [](const TempoPoint& a, const TempoPoint& b) { return a.time < b.time; });
    paintSteps(painter, points, m_widget.palette().color(QPalette::Highlight), true);
    paintPoints(painter, points);
    if (const std::vector<TempoPoint> drawn = m_parts.gesture.drawn(); !drawn.empty())
        paintSteps(painter, drawn, m_widget.palette().color(QPalette::Text), false);
    painter.setClipRect(TempoScale::left, 0, m_widget.width(), m_widget.height());
}

void TempoPainter::paintPoints(QPainter& painter, const std::vector<TempoPoint>& points) const
{
    const QPalette& colours = m_widget.palette();
    const std::uint32_t from = m_parts.scale.span().from;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.color(QPalette::Highlight), 1.5));
    for (const TempoPoint& point : points) {
        if (!point.evnt || point.time < from) continue;
        const bool isSelected = m_parts.list.selection().contains(m_parts.evnts.ref(point.evnt));
        const QPointF middle(m_parts.scale.x(point.time) + 0.5, m_parts.scale.y(point.beats));
        painter.setBrush(colours.color(isSelected ? QPalette::Text : QPalette::Base));
        painter.drawEllipse(middle, isSelected ? 4.5 : 3.5, isSelected ? 4.5 : 3.5);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

} // namespace tessaro
