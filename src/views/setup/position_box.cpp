// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/position_box.h"

#include "views/text/ui_text.h"

#include <QLineEdit>

namespace tessaro {

PositionBox::PositionBox(const PositionScale& scale, QWidget* parent) : QAbstractSpinBox(parent), m_scale(scale)
{
    connect(this, &QAbstractSpinBox::editingFinished, this, [this] { takeTyped(); });
    setTick(0);
}

void PositionBox::setTick(std::uint32_t tick)
{
    m_tick = tick;
    lineEdit()->setText(utf8Text(m_scale.text(tick)));
}

void PositionBox::set(std::uint32_t tick)
{
    const bool isOther = tick != m_tick;
    setTick(tick);
    if (isOther && onSet) onSet(tick);
}

void PositionBox::takeTyped() { set(m_scale.parse(text().toStdString()).value_or(m_tick)); }

void PositionBox::stepBy(int bars)
{
    takeTyped();
    set(m_scale.moveBars(m_tick, bars));
    selectAll();
}

QSize PositionBox::sizeHint() const
{
    const QSize empty = QAbstractSpinBox::sizeHint();
    return {empty.width() + fontMetrics().horizontalAdvance(QStringLiteral("00000:00:0000")), empty.height()};
}

} // namespace tessaro
