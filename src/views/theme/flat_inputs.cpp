// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/theme/flat_inputs.h"

#include "views/theme/colours.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace tessaro {
namespace {

/// A line that stands out from what is around it, though it is no text.
QColor outline(const QPalette& colours)
{
    return blend(colours.color(QPalette::Text), colours.color(QPalette::Base), 0.5);
}

bool isOn(const QStyleOption& button) { return button.state & (QStyle::State_On | QStyle::State_NoChange); }

/// Sets pen and brush for the ground of a check or radio button, and gives the square to draw.
QRectF beginIndicator(const QStyleOption& button, QPainter& painter)
{
    const QPalette& colours = button.palette;
    const bool touched = button.state & (QStyle::State_MouseOver | QStyle::State_Sunken);
    const QColor on = colours.color(QPalette::Highlight);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor line = button.state & QStyle::State_Selected ? colours.color(QPalette::HighlightedText)
                      : isOn(button) || touched               ? on
                                                              : outline(colours);
    painter.setPen(line);
    painter.setBrush(isOn(button) ? on : colours.color(QPalette::Base));
    const double side = std::min(button.rect.width(), button.rect.height()) - 1;
    const QPointF middle = QRectF(button.rect).center();
    return {middle.x() - side / 2, middle.y() - side / 2, side, side};
}

void drawArrow(QPainter& painter, const QRect& place, bool up, const QColor& colour)
{
    const QPointF middle = QRectF(place).center();
    const double tip = up ? -2 : 2;
    const QPointF points[] = {{middle.x() - 3.5, middle.y() - tip / 2},
                              {middle.x(), middle.y() + tip},
                              {middle.x() + 3.5, middle.y() - tip / 2}};
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawConvexPolygon(points, 3);
}

} // namespace

void drawCheckIndicator(const QStyleOption& box, QPainter& painter)
{
    const QRectF place = beginIndicator(box, painter);
    painter.drawRoundedRect(place, 3, 3);
    if (!isOn(box)) return;
    const auto at = [&place](double x, double y) {
        return QPointF(place.left() + x * place.width(), place.top() + y * place.height());
    };
    painter.setPen(QPen(box.palette.color(QPalette::HighlightedText), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const QPointF check[] = {at(0.24, 0.52), at(0.43, 0.71), at(0.76, 0.31)};
    const QPointF dash[] = {at(0.27, 0.5), at(0.73, 0.5)};
    if (box.state & QStyle::State_NoChange)
        painter.drawPolyline(dash, 2);
    else
        painter.drawPolyline(check, 3);
}

void drawRadioIndicator(const QStyleOption& button, QPainter& painter)
{
    const QRectF place = beginIndicator(button, painter);
    painter.drawEllipse(place);
    if (!isOn(button)) return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(button.palette.color(QPalette::HighlightedText));
    painter.drawEllipse(place.center(), place.width() * 0.2, place.height() * 0.2);
}

void drawInputFrame(const QStyleOption& line, QPainter& painter)
{
    const QPalette& colours = line.palette;
    const bool focused = line.state & QStyle::State_HasFocus && line.state & QStyle::State_Enabled;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(focused ? QPen(colours.color(QPalette::Highlight), 2) : QPen(colours.color(QPalette::Mid)));
    painter.setBrush(colours.color(QPalette::Base));
    const double inset = focused ? 1 : 0.5;
    painter.drawRoundedRect(QRectF(line.rect).adjusted(inset, inset, -inset, -inset), 4, 4);
}

void drawSpinBox(const QStyle& style, const QStyleOptionSpinBox& box, QPainter& painter, const QWidget* widget)
{
    const QPalette& colours = box.palette;
    if (box.frame)
        drawInputFrame(box, painter);
    else
        painter.fillRect(box.rect, colours.base());
    if (box.buttonSymbols == QAbstractSpinBox::NoButtons) return;
    const auto drawStep = [&](QStyle::SubControl part, QAbstractSpinBox::StepEnabledFlag step) {
        const QRect place = style.subControlRect(QStyle::CC_SpinBox, &box, part, widget);
        const bool possible = box.stepEnabled & step && box.state & QStyle::State_Enabled;
        const bool touched = possible && box.activeSubControls & part;
        const bool held = touched && box.state & QStyle::State_Sunken;
        const QColor plain = possible ? outline(colours) : colours.color(QPalette::Mid);
        const QColor colour = held ? colours.color(QPalette::Highlight) : colours.color(QPalette::Text);
        drawArrow(painter, place, part == QStyle::SC_SpinBoxUp, touched ? colour : plain);
    };
    painter.setRenderHint(QPainter::Antialiasing);
    drawStep(QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled);
    drawStep(QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled);
}

} // namespace tessaro
