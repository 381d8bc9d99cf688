// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/number_display.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace tessaro {

NumberDisplay::NumberDisplay(QString widest, QWidget* parent, double size)
    : QWidget(parent)
    , m_widest(std::move(widest))
    , m_size(size)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::NoFocus);
    chooseFonts();
}

void NumberDisplay::setCaption(const QString& caption)
{
    if (caption == m_caption) return;
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

void NumberDisplay::setCaptionRole(QPalette::ColorRole role)
{
    m_captionRole = role;
    update();
}

void NumberDisplay::setBanner(const QString& text)
{
    if (text == m_banner) return;
    m_banner = text;
    setAccessibleDescription(text.isEmpty() ? m_value : text);
    update();
}

void NumberDisplay::chooseFonts()
{
    m_captionFont = font();
    m_captionFont.setPointSizeF(font().pointSizeF() * 0.85);
    m_valueFont = font();
    m_valueFont.setPointSizeF(font().pointSizeF() * m_size);
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

int NumberDisplay::captionHeight() const { return m_caption.isEmpty() ? 0 : QFontMetrics(m_captionFont).height(); }

QSize NumberDisplay::sizeHint() const
{
    const int width = std::max(textWidth(m_widest), QFontMetrics(m_captionFont).horizontalAdvance(m_caption));
    return {width + 4, captionHeight() + QFontMetrics(m_valueFont).height()};
}

void NumberDisplay::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange) chooseFonts();
    QWidget::changeEvent(event);
}

void NumberDisplay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!m_banner.isEmpty()) {
        QFont large = m_valueFont;
        large.setPixelSize(height());
        painter.setFont(large);
        painter.setPen(palette().color(QPalette::Link));
        painter.drawText(rect(), Qt::AlignCenter, m_banner);
        return;
    }
    const int top = captionHeight();
    painter.setFont(m_captionFont);
    painter.setPen(palette().color(m_captionRole));
    painter.drawText(QRect(0, 0, width() - 1, top), Qt::AlignRight | Qt::AlignVCenter, m_caption);

    painter.setFont(m_valueFont);
    int x = std::max(0, width() - textWidth(m_value));
    for (const QChar c : m_value) {
        const int cell = cellWidth(c);
        painter.setPen(palette().color(c.isDigit() ? QPalette::WindowText : QPalette::PlaceholderText));
        painter.drawText(QRect(x, top, cell, height() - top), Qt::AlignCenter, QString(c));
        x += cell;
    }
}

} // namespace tessaro
