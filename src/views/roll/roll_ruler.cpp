// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_ruler.h"

#include "core/edit/editor.h"
#include "realtime/transport/cnp_window.h"
#include "views/roll/grid.h"
#include "views/roll/roll_paint.h"
#include "views/roll/roll_scale.h"
#include "views/roll/time_marks.h"

#include <QWidget>

#include <algorithm>
#include <cstdlib>

namespace tessaro {
namespace {

constexpr int loopGrip = 5; ///< pixels beside the end of a loop
constexpr int markRoom = 8; ///< pixels between lines of one kind

} // namespace

std::optional<std::pair<std::uint32_t, std::uint32_t>> RollRuler::loop() const
{
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    if (!m_parts.panel.GetLoop(start, end) || start >= end) return std::nullopt;
    return std::pair(start, end);
}

std::uint32_t RollRuler::time(int x, Qt::KeyboardModifiers keys) const
{
    const std::uint32_t time = m_scale.time(x);
    return keys & Qt::AltModifier ? time : m_parts.grid.snap(m_parts.editor, time);
}

void RollRuler::press(int x)
{
    const auto isAt = [&](std::uint32_t end) {
        return end >= m_scale.start() && std::abs(x - m_scale.x(end)) <= loopGrip;
    };
    const auto range = loop();
    if (range && isAt(range->second))
        m_fixedEnd = range->first;
    else if (range && isAt(range->first))
        m_fixedEnd = range->second;
    else
        m_gesture.press(x);
}

void RollRuler::move(int x, Qt::KeyboardModifiers keys)
{
    m_gesture.move(x);
    if (!m_fixedEnd) return;
    const std::uint32_t moved = time(x, keys);
    const auto [start, end] = std::minmax(moved, *m_fixedEnd);
    if (start < end) m_parts.panel.SetLoop(start, end);
}

void RollRuler::release(int x, Qt::KeyboardModifiers keys)
{
    const bool isDown = m_gesture.down();
    m_gesture.release();
    if (const auto span = isDown ? m_gesture.span() : std::nullopt) {
        const std::uint32_t start = time(span->first, keys);
        const std::uint32_t end = time(span->second, keys);
        const bool isOn = loop().has_value();
        if (start < end) m_parts.panel.SetLoop(start, end);
        if (start < end && !isOn) m_parts.panel.ShortCutLoopClicked();
    } else if (isDown) {
        m_parts.panel.SetLocation(static_cast<long>(time(x, keys)));
    }
    cancel();
}

void RollRuler::cancel()
{
    m_gesture.cancel();
    m_fixedEnd.reset();
}

void RollRuler::paint(QPainter& painter, const QWidget& widget) const
{
    constexpr int height = RollScale::ruler;
    const QPalette& roles = widget.palette();
    painter.fillRect(0, 0, widget.width(), height, roles.window());
    painter.fillRect(0, height - 1, widget.width(), 1, roles.mid());
    QFont small = widget.font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    painter.setFont(small);
    const int room = QFontMetrics(small).horizontalAdvance(QStringLiteral("0000")) + 8;
    const TickRange seen = m_scale.span();
    std::vector<TimeMark> marks;
    timeMarks(m_parts.editor, seen.from, seen.to, static_cast<std::uint32_t>(markRoom * m_scale.zoom()), {}, marks);
    int free = 0; // where the next number may stand
    for (const TimeMark& mark : marks) {
        const int x = m_scale.x(mark.tick);
        const bool isBar = mark.rank == TimeMark::Rank::bar;
        const int length = isBar ? 10 : 4;
        painter.fillRect(x, height - 1 - length, 1, length,
                         roles.color(isBar ? QPalette::PlaceholderText : QPalette::Dark));
        if (!isBar || x < free) continue;
        free = x + room;
        painter.setPen(roles.color(QPalette::PlaceholderText));
        painter.drawText(QRect(x + 4, 1, room, height - 7), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::number(mark.measure));
        painter.setPen(Qt::NoPen);
    }
    painter.setFont(widget.font());
}

void RollRuler::paintLoop(QPainter& painter, const QWidget& widget) const
{
    int left = 0;
    int right = 0;
    if (const auto span = m_gesture.down() ? m_gesture.span() : std::nullopt) {
        left = std::max(span->first, RollScale::left);
        right = span->second;
    } else if (const auto range = loop()) {
        left = m_scale.x(range->first);
        right = m_scale.x(range->second);
    }
    if (left >= right) return;
    const QColor accent = widget.palette().color(QPalette::Highlight);
    painter.fillRect(left, RollScale::ruler - 5, right - left, 4, accent);
    painter.fillRect(left, RollScale::ruler, right - left, widget.height(), withAlpha(accent, 0.06));
}

void RollRuler::paintPosition(QPainter& painter, const QWidget& widget, std::uint32_t position) const
{
    if (position < m_scale.start()) return;
    constexpr int bottom = RollScale::ruler;
    const double x = m_scale.x(position) + 0.5;
    const QColor accent = widget.palette().color(QPalette::Highlight);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(x - 1, bottom - 8, 2, widget.height()), accent);
    painter.setBrush(accent);
    const QPointF head[] = {{x - 6, bottom - 14.0}, {x + 6, bottom - 14.0}, {x, bottom - 5.0}};
    painter.drawConvexPolygon(head, 3);
}

} // namespace tessaro
