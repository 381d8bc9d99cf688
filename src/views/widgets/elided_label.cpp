// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/elided_label.h"

#include <QFontMetrics>
#include <QPainter>

namespace tessaro {

ElidedLabel::ElidedLabel(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void ElidedLabel::setText(const QString& text)
{
    if (text == m_text) return;
    m_text = text;
    setToolTip(text);
    setAccessibleName(text);
    updateGeometry();
    update();
}

void ElidedLabel::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

void ElidedLabel::setRole(QPalette::ColorRole role)
{
    m_role = role;
    update();
}

QSize ElidedLabel::sizeHint() const { return {fontMetrics().horizontalAdvance(m_text) + 2, fontMetrics().height()}; }
QSize ElidedLabel::minimumSizeHint() const { return {0, fontMetrics().height()}; }

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(m_role));
    painter.drawText(rect(), static_cast<int>(m_alignment), fontMetrics().elidedText(m_text, Qt::ElideRight, width()));
}

} // namespace tessaro
