// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/dock_grip.h"

#include <QPainter>

namespace tessaro {

DockGrip::DockGrip(QWidget* dock) : QWidget(dock) { setCursor(Qt::SizeAllCursor); }

void DockGrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Dark));
    const double middle = height() / 2.0;
    for (int row = -2; row <= 2; ++row)
        for (const double x : {4.0, 8.0}) painter.drawEllipse(QPointF(x + 0.5, middle + 5.0 * row), 1.1, 1.1);
}

} // namespace tessaro
