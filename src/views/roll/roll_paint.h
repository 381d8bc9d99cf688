// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPainter>

#include <vector>

namespace tessaro {

/// With a painter that has no pen: many rectangles of one colour.
inline void fillAll(QPainter& painter, const std::vector<QRect>& rects, const QColor& colour)
{
    painter.setBrush(colour);
    painter.drawRects(rects.data(), static_cast<int>(rects.size()));
}

/// 0 is not to be seen, 1 covers what lies below.
[[nodiscard]] inline QColor withAlpha(QColor colour, double alpha)
{
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

/// The frame of a band that selects.
inline void paintBand(QPainter& painter, const QRect& place, const QColor& accent)
{
    painter.fillRect(place, withAlpha(accent, 0.15));
    painter.setPen(accent);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    painter.setPen(Qt::NoPen);
}

} // namespace tessaro
