// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/number_display.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace tessaro {

NumberDisplay::NumberDisplay(QString widest, QWidget* parent) : QWidget(parent), m_widest(std::move(widest))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::NoFocus);
    chooseFonts();
}

void NumberDisplay::setCaption(const QString& caption)
{
    m_caption = caption;
    setAccessibleName(caption);
    updateGeometry();
    update();
}

void NumberDisplay::setValue(const QString& value)
{
    if (value == m_value) return;
    m_value = value;
    setAccessibleDescription(value);
    update();
}

void NumberDisplay::chooseFonts()
{
    m_captionFont = font();
    m_captionFont.setPointSizeF(font().pointSizeF() * 0.85);
    m_valueFont = font();
    m_valueFont.setPointSizeF(font().pointSizeF() * 1.6);
    const QFontMetrics metrics(m_valueFont);
    m_figure = 0;
    for (char c = '0'; c <= '9'; ++c) m_figure = std::max(m_figure, metrics.horizontalAdvance(QLatin1Char(c)));
    updateGeometry();
}

int NumberDisplay::cellWidth(QChar c) const
{
    return c.isDigit() ? m_figure : QFontMetrics(m_valueFont).horizontalAdvance(c) + 2;
}

int NumberDisplay::textWidth(const QString& text) const
{
    int width = 0;
    for (const QChar c : text) width += cellWidth(c);
    return width;
}

QSize NumberDisplay::sizeHint() const
{
    const int width = std::max(textWidth(m_widest), QFontMetrics(m_captionFont).horizontalAdvance(m_caption));
    return {width + 4, QFontMetrics(m_captionFont).height() + QFontMetrics(m_valueFont).height()};
}

void NumberDisplay::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange) chooseFonts();
    QWidget::changeEvent(event);
}

void NumberDisplay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const int captionHeight = QFontMetrics(m_captionFont).height();
    painter.setFont(m_captionFont);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(QRect(0, 0, width() - 1, captionHeight), Qt::AlignRight | Qt::AlignVCenter, m_caption);

    painter.setFont(m_valueFont);
    int x = std::max(0, width() - textWidth(m_value));
    for (const QChar c : m_value) {
        const int cell = cellWidth(c);
        painter.setPen(palette().color(c.isDigit() ? QPalette::WindowText : QPalette::PlaceholderText));
        painter.drawText(QRect(x, captionHeight, cell, height() - captionHeight), Qt::AlignCenter, QString(c));
        x += cell;
    }
}

} // namespace tessaro
