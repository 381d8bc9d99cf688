// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/widgets/number_field.h"

#include "views/theme/colours.h"
#include "views/widgets/keeps_key.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace tessaro {
namespace {

constexpr int notch = 120; ///< of a wheel, in eighths of a degree

} // namespace

NumberField::NumberField(QString widest, QWidget* parent, double size) : NumberDisplay(std::move(widest), parent, size)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::IBeamCursor);
}

void NumberField::edit()
{
    if (m_line || !isEnabled()) return;
    m_before = QApplication::focusWidget();
    m_line = new QLineEdit(value(), this);
    m_line->setFont(valueFont());
    m_line->setAlignment(Qt::AlignRight);
    m_line->setAccessibleName(accessibleName());
    m_line->setTextMargins(0, 0, 0, 0);
    const int top = captionHeight();
    m_line->setGeometry(0, top, width(), height() - top);
    m_line->installEventFilter(this);
    m_line->selectAll();
    m_line->show();
    m_line->setFocus();
}

void NumberField::take()
{
    if (onTyped && !onTyped(m_line->text().trimmed()))
        m_line->selectAll();
    else
        close();
}

void NumberField::close()
{
    QLineEdit* line = std::exchange(m_line, nullptr);
    if (!line) return;
    line->removeEventFilter(this);
    if (line->hasFocus()) m_before ? m_before->setFocus() : line->clearFocus();
    line->hide();
    line->deleteLater();
    update();
}

bool NumberField::eventFilter(QObject* line, QEvent* event)
{
    if (keepsKey(event)) return true;
    if (event->type() == QEvent::FocusOut && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
        close();
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: take(); return true;
        case Qt::Key_Escape: close(); return true;
        default: break;
        }
    }
    return NumberDisplay::eventFilter(line, event);
}

bool NumberField::event(QEvent* event)
{
    // Space and Home stay commands of the window; Up and Down turn the number.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool own = key->key() == Qt::Key_F2 || key->key() == Qt::Key_Up || key->key() == Qt::Key_Down;
        if (own && key->modifiers() == Qt::NoModifier) {
            event->accept();
            return true;
        }
    }
    return NumberDisplay::event(event);
}

void NumberField::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) edit();
}

void NumberField::wheelEvent(QWheelEvent* event)
{
    m_wheel += event->angleDelta().y();
    if (const int steps = m_wheel / notch; steps != 0 && onTurned && isEnabled()) onTurned(steps);
    m_wheel %= notch;
    event->accept();
}

void NumberField::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2: edit(); return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (onTurned) onTurned(event->key() == Qt::Key_Up ? 1 : -1);
        return;
    default: NumberDisplay::keyPressEvent(event);
    }
}

void NumberField::enterEvent(QEnterEvent* event)
{
    update();
    NumberDisplay::enterEvent(event);
}

void NumberField::leaveEvent(QEvent* event)
{
    update();
    NumberDisplay::leaveEvent(event);
}

void NumberField::paintEvent(QPaintEvent* event)
{
    if (banner().isEmpty() && !m_line && (underMouse() || hasFocus())) {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 1.5) : QPen(Qt::NoPen));
        painter.setBrush(palette().color(QPalette::Base));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, captionHeight() + 0.75, -0.75, -0.75), 3, 3);
    }
    NumberDisplay::paintEvent(event);
}

} // namespace tessaro
