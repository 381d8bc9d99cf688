// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/record_button.h"

#include "views/theme/colours.h"

#include <QPainter>

namespace tessaro {

void RecordButton::setState(State state)
{
    if (state == m_state) return;
    m_state = state;
    update();
}

ToolButton::Colours RecordButton::colours() const
{
    const QColor red = recordColour(palette());
    const QColor button = palette().color(QPalette::Button);
    switch (m_state) {
    case State::off: return {button, isEnabled() ? red : palette().color(QPalette::ButtonText)};
    case State::armed: return {blend(red, button, 0.2), red};
    case State::recording: return {red, palette().color(QPalette::Base)};
    }
    return {};
}

void RecordButton::paintEvent(QPaintEvent* event)
{
    ToolButton::paintEvent(event);
    if (m_state != State::armed) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(recordColour(palette()), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(3, 3, -3, -3), 4, 4);
}

} // namespace tessaro
