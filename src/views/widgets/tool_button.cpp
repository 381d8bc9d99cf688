// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/tool_button.h"

#include "views/theme/colours.h"
#include "views/theme/icons.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace tessaro {

QString shortcutNames(const QAction& action)
{
    return QKeySequence::listToString(action.shortcuts(), QKeySequence::NativeText)
        .replace(QLatin1String("; "), QLatin1String(", "));
}

ToolButton::ToolButton(const Icons& icons, QString icon, QAction& action, QWidget* parent)
    : QAbstractButton(parent)
    , m_action(action)
    , m_icons(icons)
    , m_icon(std::move(icon))
{
    setFocusPolicy(Qt::TabFocus);
    connect(&action, &QAction::changed, this, [this] { follow(); });
    connect(this, &QAbstractButton::clicked, this, [this] { act(); });
    follow();
}

void ToolButton::setIconName(const QString& name)
{
    m_icon = name;
    update();
}

void ToolButton::setFace(const QString& word)
{
    m_face = word;
    update();
}

void ToolButton::setSize(QSize size, int iconSize)
{
    m_size = size;
    m_iconSize = iconSize;
    updateGeometry();
}

void ToolButton::act() { m_action.trigger(); }

ToolButton::Colours ToolButton::colours() const
{
    const QPalette& roles = palette();
    if (isCheckable() && m_action.isChecked())
        return {roles.color(QPalette::Highlight), roles.color(QPalette::HighlightedText)};
    return {roles.color(QPalette::Button), roles.color(QPalette::ButtonText)};
}

void ToolButton::follow()
{
    const QString name = m_action.iconText();
    const QString keys = shortcutNames(m_action);
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
    const QColor text = palette().color(QPalette::Text);
    const QRectF place = QRectF(rect()).adjusted(2, 2, -2, -2);
    const double round = std::min(5.0, place.height() / 4);
    auto [back, mark] = colours();
    if (isDown())
        back = blend(text, back, 0.2);
    else if (underMouse() && isEnabled())
        back = blend(text, back, 0.1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(back);
    painter.drawRoundedRect(place, round, round);
    if (hasFocus()) {
        const bool on = isCheckable() && m_action.isChecked();
        painter.setPen(QPen(on ? text : palette().color(QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(place.adjusted(-1, -1, 1, 1), round + 1, round + 1);
    }
    if (m_face.isEmpty()) {
        const QPointF middle = place.center();
        m_icons.draw(painter, m_icon,
                     QRectF(middle.x() - m_iconSize / 2.0, middle.y() - m_iconSize / 2.0, m_iconSize, m_iconSize),
                     mark);
        return;
    }
    QFont face = font();
    face.setPointSizeF(face.pointSizeF() * 0.9);
    face.setBold(true);
    painter.setFont(face);
    painter.setPen(mark);
    painter.drawText(place, Qt::AlignCenter, m_face);
}

// HeldButton

HeldButton::HeldButton(const Icons& icons, QString icon, HeldAction& action, QWidget* parent)
    : ToolButton(icons, std::move(icon), action, parent)
    , m_held(&action)
{
}

void HeldButton::mousePressEvent(QMouseEvent* event)
{
    ToolButton::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) m_held->press(event->modifiers());
}

void HeldButton::mouseReleaseEvent(QMouseEvent* event)
{
    ToolButton::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) m_held->release();
}

void HeldButton::hideEvent(QHideEvent* event)
{
    if (m_held) m_held->release();
    ToolButton::hideEvent(event);
}

} // namespace tessaro
