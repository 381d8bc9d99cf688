// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/song_overview.h"

#include "views/theme/colours.h"
#include "views/tracks/trk_pram_view.h"

#include <QEvent>
#include <QHelpEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace tessaro {
namespace {

constexpr int rulerHeight = CTrkPramView::headerHeight;
constexpr int blockInset = 3; ///< between the edge of a lane and its blocks
constexpr int noteInset = 3;  ///< between the edge of a block and its notes

/// The notes of a lane as a picture of one device pixel a column.
QImage noteImage(const Miniature& miniature, int width, int height, const QColor& colour)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const int thickness = (height + Miniature::bands - 1) / Miniature::bands;
    const auto parts = static_cast<double>(Miniature::parts) / width;
    for (int x = 0; x < width; ++x) {
        const auto first = static_cast<std::uint32_t>(x * parts);
        const auto last = std::max(first + 1, static_cast<std::uint32_t>((x + 1) * parts));
        const unsigned bands = miniature.bandsIn(first, last);
        for (int band = 0; band < Miniature::bands; ++band) {
            if (!(bands >> band & 1U)) continue;
            const int y = (height - thickness) * (Miniature::bands - 1 - band) / (Miniature::bands - 1);
            for (int line = y; line < y + thickness; ++line) image.setPixelColor(x, line, colour);
        }
    }
    return image;
}

} // namespace

SongOverview::SongOverview(QWidget* parent) : QWidget(parent)
{
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void SongOverview::setSong(const std::vector<TrackRow>& rows, std::vector<Miniature> miniatures, std::uint32_t end,
                           Measures measures)
{
    m_rows = rows;
    m_miniatures = std::move(miniatures);
    m_end = end;
    m_measures = std::move(measures);
    m_takes.clear(); // whose rows may be others
    layOut();
}

void SongOverview::setRows(const std::vector<TrackRow>& rows)
{
    for (std::size_t r = 0; r < rows.size() && r < m_rows.size(); ++r)
        if (rows[r].sounding != m_rows[r].sounding) {
            m_lanes[r] = {};
            update(laneRect(r));
        }
    m_rows = rows;
}

void SongOverview::setPosition(std::uint32_t tick)
{
    if (tick == m_position) return;
    update(positionStrip(m_position));
    m_position = tick;
    update(positionStrip(m_position));
}

void SongOverview::setLoop(const Loop& loop)
{
    if (loop == m_loop) return;
    m_loop = loop;
    update();
}

void SongOverview::setTakes(std::vector<Take> takes)
{
    for (const Take& take : m_takes) update(takeRect(take));
    m_takes = std::move(takes);
    for (const Take& take : m_takes) update(takeRect(take));
}

void SongOverview::setRowHeight(int height)
{
    if (height == m_rowHeight) return;
    m_rowHeight = height;
    layOut();
}

void SongOverview::setScroll(int pixels)
{
    if (pixels == m_scroll) return;
    m_scroll = pixels;
    update();
}

void SongOverview::setCurrentRow(int row)
{
    if (row == m_currentRow) return;
    m_currentRow = row;
    update();
}

QRect SongOverview::laneRect(std::size_t row) const
{
    return {0, rulerHeight + static_cast<int>(row) * m_rowHeight - m_scroll, width(), m_rowHeight};
}

QRect SongOverview::takeRect(const Take& take) const
{
    const SongScale xs = scale();
    const QRect lane = laneRect(take.row);
    const int left = static_cast<int>(xs.x(take.top)) - 2;
    return {left, lane.top(), static_cast<int>(xs.x(take.end)) + 4 - left, lane.height()};
}

QRect SongOverview::positionStrip(std::uint32_t tick) const
{
    return {static_cast<int>(scale().x(tick)) - 8, 0, 17, height()};
}

void SongOverview::layOut()
{
    m_lanes.assign(m_rows.size(), {});
    const int room = fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 12;
    m_marks = m_measures.top ? rulerMarks(scale(), m_measures.count, room, m_measures.top) : std::vector<RulerMark>{};
    update();
}

const QPixmap& SongOverview::lane(std::size_t row)
{
    QPixmap& picture = m_lanes[row];
    if (picture.isNull()) picture = drawLane(row);
    return picture;
}

QPixmap SongOverview::drawLane(std::size_t row) const
{
    const double ratio = devicePixelRatioF();
    QPixmap picture((QSizeF(width(), m_rowHeight) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    if (row >= m_miniatures.size()) return picture;

    const TrackRow& track = m_rows[row];
    const QColor base = palette().color(QPalette::Base);
    const QColor colour = track.sounding ? trackColour(track.track, palette())
                                         : blend(palette().color(QPalette::PlaceholderText), base, 0.5);
    const SongScale xs = scale();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Miniature::Block& block : m_miniatures[row].blocks()) {
        const QRectF place(xs.x(block.top) + 0.5, blockInset + 0.5,
                           std::max(xs.x(block.end) - xs.x(block.top), 3.0) - 1, m_rowHeight - 2 * blockInset - 2);
        painter.setPen(QPen(blend(colour, base, 0.45), 1, block.ghost ? Qt::DashLine : Qt::SolidLine));
        painter.setBrush(blend(colour, base, block.ghost ? 0.10 : 0.20));
        painter.drawRoundedRect(place, 3, 3);
    }
    paintNotes(painter, m_miniatures[row], 0, colour);
    return picture;
}

/// Into the lane whose upper edge is `top`.
void SongOverview::paintNotes(QPainter& painter, const Miniature& notes, int top, const QColor& colour) const
{
    const int inset = blockInset + noteInset;
    const QRectF place(SongScale::margin, top + inset, scale().span(), m_rowHeight - 1 - 2 * inset);
    const QSize pixels = (place.size() * devicePixelRatioF()).toSize();
    painter.drawImage(place, noteImage(notes, pixels.width(), pixels.height(), colour));
}

void SongOverview::paintTake(QPainter& painter, const Take& take) const
{
    const QColor red = recordColour(palette());
    const QColor base = palette().color(QPalette::Base);
    const SongScale xs = scale();
    const QRect lane = laneRect(take.row);
    const QRectF place(xs.x(take.top) + 0.5, lane.top() + blockInset + 0.5,
                       std::max(xs.x(take.end) - xs.x(take.top), 3.0) - 1, lane.height() - 2 * blockInset - 2);
    painter.setPen(QPen(red, 1));
    painter.setBrush(blend(red, base, 0.22));
    painter.drawRoundedRect(place, 3, 3);
    paintNotes(painter, take.notes, lane.top(), red);
}

bool SongOverview::event(QEvent* event)
{
    // The tip belongs to the ruler; over the lanes it would be in the way.
    if (event->type() == QEvent::ToolTip && static_cast<QHelpEvent*>(event)->pos().y() >= rulerHeight) return true;
    return QWidget::event(event);
}

void SongOverview::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().base());
    paintLanes(painter, event->rect());
    paintRuler(painter);
    paintLoop(painter);
    paintPosition(painter);
}

void SongOverview::paintLanes(QPainter& painter, const QRect& area)
{
    painter.save();
    painter.setClipRect(area.intersected(QRect(0, rulerHeight, width(), height())));
    const int total = static_cast<int>(m_rows.size());
    const int first = std::max(0, (area.top() - rulerHeight + m_scroll) / m_rowHeight);
    const int last = std::min(total - 1, (area.bottom() - rulerHeight + m_scroll) / m_rowHeight);
    const QColor line = blend(palette().color(QPalette::Mid), palette().color(QPalette::Base), 0.5);
    for (int row = first; row <= last; ++row) {
        const QRect place = laneRect(static_cast<std::size_t>(row));
        if (row == m_currentRow)
            painter.fillRect(place, blend(palette().color(QPalette::Highlight), palette().color(QPalette::Base), 0.08));
        painter.fillRect(0, place.bottom(), width(), 1, line);
    }
    for (const RulerMark& mark : m_marks)
        if (mark.labelled && mark.x >= area.left() - 1 && mark.x <= area.right() + 1)
            painter.fillRect(QRectF(std::floor(mark.x), rulerHeight, 1, height()), line);
    for (int row = first; row <= last; ++row)
        painter.drawPixmap(laneRect(static_cast<std::size_t>(row)).topLeft(), lane(static_cast<std::size_t>(row)));
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Take& take : m_takes)
        if (area.intersects(takeRect(take))) paintTake(painter, take);
    painter.restore();
}

void SongOverview::paintRuler(QPainter& painter) const
{
    painter.fillRect(0, 0, width(), rulerHeight, palette().window());
    painter.fillRect(0, rulerHeight - 1, width(), 1, palette().mid());
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    painter.setFont(small);
    for (const RulerMark& mark : m_marks) {
        const int x = static_cast<int>(std::floor(mark.x));
        const int length = mark.labelled ? 10 : 4;
        painter.fillRect(x, rulerHeight - 1 - length, 1, length,
                         palette().color(mark.labelled ? QPalette::PlaceholderText : QPalette::Dark));
        if (!mark.labelled) continue;
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(QRect(x + 4, 2, 80, rulerHeight - 8), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::number(mark.measure));
    }
}

void SongOverview::paintLoop(QPainter& painter) const
{
    const SongScale xs = scale();
    double left = xs.x(m_loop.start);
    double right = xs.x(m_loop.end);
    if (const auto span = m_gesture.down() ? m_gesture.span() : std::nullopt) {
        left = span->first;
        right = span->second;
    } else if (!m_loop.on || m_loop.end <= m_loop.start) {
        return;
    }
    QColor accent = palette().color(QPalette::Highlight);
    painter.fillRect(QRectF(left, rulerHeight - 5, right - left, 4), accent);
    accent.setAlphaF(0.07F);
    painter.fillRect(QRectF(left, rulerHeight, right - left, height()), accent);
}

void SongOverview::paintPosition(QPainter& painter) const
{
    if (m_rows.empty()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    const double x = std::floor(scale().x(m_position)) + 0.5;
    const QColor accent = palette().color(QPalette::Highlight);
    painter.fillRect(QRectF(x - 1, rulerHeight - 8, 2, height()), accent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent);
    const QPointF head[] = {{x - 6, rulerHeight - 14.0}, {x + 6, rulerHeight - 14.0}, {x, rulerHeight - 5.0}};
    painter.drawConvexPolygon(head, 3);
}

std::uint32_t SongOverview::snapped(int x, Qt::KeyboardModifiers keys) const
{
    const std::uint32_t tick = scale().tick(x);
    return (keys & Qt::ShiftModifier) || !m_measures.nearest ? tick : m_measures.nearest(tick);
}

void SongOverview::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !m_rows.empty()) m_gesture.press(event->position().toPoint().x());
}

void SongOverview::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_gesture.down()) return;
    m_gesture.move(event->position().toPoint().x());
    update();
}

void SongOverview::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_gesture.down()) return;
    m_gesture.release();
    if (const auto span = m_gesture.span()) {
        const std::uint32_t start = snapped(span->first, event->modifiers());
        const std::uint32_t end = snapped(span->second, event->modifiers());
        if (start < end && onLoop) onLoop(start, end);
    } else if (onLocate) {
        onLocate(snapped(*m_gesture.click(), event->modifiers()));
    }
    m_gesture.cancel();
    update();
}

void SongOverview::resizeEvent(QResizeEvent*) { layOut(); }

void SongOverview::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) layOut();
}

} // namespace tessaro
