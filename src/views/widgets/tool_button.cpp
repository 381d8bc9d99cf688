// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/tool_button.h"

#include "views/theme/colours.h"
#include "views/theme/icons.h"

#include <QAction>
#include <QPainter>

namespace tessaro {

ToolButton::ToolButton(const Icons& icons, QString icon, QAction& action, QWidget* parent)
    : QAbstractButton(parent)
    , m_icons(icons)
    , m_icon(std::move(icon))
    , m_action(action)
{
    setFocusPolicy(Qt::TabFocus);
    connect(&action, &QAction::changed, this, [this] { follow(); });
    connect(this, &QAbstractButton::clicked, &action, [&action] { action.trigger(); });
    follow();
}

void ToolButton::setIconName(const QString& name)
{
    m_icon = name;
    update();
}

void ToolButton::follow()
{
    const QString name = m_action.iconText();
    const QString keys = m_action.shortcut().toString(QKeySequence::NativeText);
    setToolTip(keys.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, keys));
    setAccessibleName(name);
    setEnabled(m_action.isEnabled());
    setCheckable(m_action.isCheckable());
    setChecked(m_action.isChecked());
    update();
}

void ToolButton::enterEvent(QEnterEvent* event)
{
    update();
    QAbstractButton::enterEvent(event);
}

void ToolButton::leaveEvent(QEvent* event)
{
    update();
    QAbstractButton::leaveEvent(event);
}

void ToolButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette colours = palette();
    const QRectF place = QRectF(rect()).adjusted(2, 2, -2, -2);
    const bool on = isCheckable() && m_action.isChecked();

    QColor back = colours.color(QPalette::Button);
    if (on) back = colours.color(QPalette::Highlight);
    if (isDown())
        back = blend(colours.color(QPalette::Text), back, 0.2);
    else if (underMouse() && isEnabled())
        back = blend(colours.color(QPalette::Text), back, 0.1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(back);
    painter.drawRoundedRect(place, 5, 5);
    if (hasFocus()) {
        painter.setPen(QPen(colours.color(on ? QPalette::Text : QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(place.adjusted(-1, -1, 1, 1), 6, 6);
    }
    const QPointF middle = place.center();
    m_icons.draw(painter, m_icon, QRectF(middle.x() - 10, middle.y() - 10, 20, 20),
                 colours.color(on ? QPalette::HighlightedText : QPalette::ButtonText));
}

} // namespace tessaro
