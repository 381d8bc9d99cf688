// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/fault_label.h"

#include <QLineEdit>

#include <algorithm>

namespace tessaro {
namespace {

constexpr int margin = 6;
constexpr int gap = 4;

} // namespace

void FaultLabel::say(const QString& sentence, QLineEdit& line)
{
    line.setAccessibleDescription(sentence);
    end();
    if (sentence.isEmpty()) return;
    QWidget& room = *line.parentWidget();
    m_label = new QLabel(sentence, &room);
    m_label->setMargin(margin);
    m_label->setAutoFillBackground(true);
    m_label->setBackgroundRole(QPalette::ToolTipBase);
    m_label->setForegroundRole(QPalette::ToolTipText);
    m_label->setFrameShape(QFrame::Box);
    m_label->adjustSize();
    QObject::connect(&line, &QObject::destroyed, m_label, [label = m_label.data()] { label->deleteLater(); });
    const QRect place = line.geometry();
    const bool isBelow = place.bottom() + gap + m_label->height() <= room.height();
    m_label->move(std::max(0, std::min(place.left(), room.width() - m_label->width())),
                  isBelow ? place.bottom() + gap : place.top() - gap - m_label->height());
    m_label->show();
}

} // namespace tessaro
