// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/note_status.h"

#include "views/text/ui_text.h"

#include <QPainter>

#include <algorithm>

namespace tessaro {
namespace {

constexpr int gap = 8;    ///< between a caption and its value
constexpr int space = 20; ///< between one value and the next caption
constexpr int margin = 12;

} // namespace

NoteStatus::NoteStatus(const UiText& text, QWidget* parent) : QWidget(parent), m_text(text) { retranslate(); }

QSize NoteStatus::sizeHint() const { return {400, fontMetrics().height() + 8}; }

void NoteStatus::show(const Values& values)
{
    if (values == m_values) return;
    m_values = values;
    setAccessibleDescription(spoken());
    update();
}

void NoteStatus::setSelected(std::size_t notes)
{
    if (notes == m_selected) return;
    m_selected = notes;
    setAccessibleDescription(spoken());
    update();
}

void NoteStatus::retranslate()
{
    setAccessibleName(m_text(TextId::statusPlace));
    setAccessibleDescription(spoken());
    update();
}

std::array<NoteStatus::Part, 4> NoteStatus::parts() const
{
    return {{{TextId::statusPlace, m_values.place, QLatin1String("0000:00:000")},
             {TextId::statusLength, m_values.length, QLatin1String("000:000")},
             {TextId::statusKey, m_values.key, QLatin1String("C#-1")},
             {TextId::statusVelocity, m_values.velocity, QLatin1String("000")}}};
}

QString NoteStatus::spoken() const
{
    QStringList words;
    for (const Part& part : parts())
        if (!part.value.isEmpty()) words << m_text(part.caption) + QLatin1Char(' ') + part.value;
    if (m_selected != 0) words << m_text(TextId::statusSelected).arg(m_selected);
    return words.join(QLatin1String(", "));
}

void NoteStatus::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(0, 0, width(), 1, palette().mid());
    const int selectedRoom =
        m_selected == 0 ? 0 : fontMetrics().horizontalAdvance(m_text(TextId::statusSelected).arg(m_selected)) + margin;
    int x = margin;
    for (const Part& part : parts()) {
        const QString caption = m_text(part.caption);
        const int captionWidth = fontMetrics().horizontalAdvance(caption);
        const int room =
            std::max(fontMetrics().horizontalAdvance(part.widest), fontMetrics().horizontalAdvance(part.value));
        if (x + captionWidth + gap + room > width() - selectedRoom) break;
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(QRect(x, 0, captionWidth, height()), Qt::AlignVCenter, caption);
        x += captionWidth + gap;
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(QRect(x, 0, room, height()), Qt::AlignVCenter, part.value);
        x += room + space;
    }
    if (m_selected == 0) return;
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(0, 0, -margin, 0), Qt::AlignVCenter | Qt::AlignRight,
                     m_text(TextId::statusSelected).arg(m_selected));
}

} // namespace tessaro
