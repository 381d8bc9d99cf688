// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/piano_view.h"

#include "views/keyboard/piano_keys.h"
#include "views/roll/note_text.h"
#include "views/theme/colours.h"

#include <QPainter>

#include <algorithm>

namespace tessaro {
namespace {

constexpr int keysLeft = 44; ///< of the column; the names of the keys that have room stand before
constexpr int blackLength = 46;

bool isC(int key) { return key % 12 == 0; }
/// Whether the white key above touches this white key.
bool touchesAbove(int key) { return key % 12 == 4 || key % 12 == 11; }

/// Of the interface, to fit a row.
QFont rowFont(QFont font, int rowHeight)
{
    font.setPixelSize(std::clamp(rowHeight - 3, 8, 11));
    return font;
}

} // namespace

CPianoView::CPianoView(const ViewParts& parts) : CRollView(parts)
{
    for (int key = 0; key < RollScale::keys; ++key) {
        m_names.emplace_back(keyName(key));
        m_names.back().setTextFormat(Qt::PlainText);
    }
}

QString CPianoView::keyText(int key) const { return keyName(key); }

QColor CPianoView::rowColour(int key) const
{
    const QColor base = palette().color(QPalette::Base);
    return PianoKeys::isBlack(key % 12) ? blend(palette().color(QPalette::Text), base, 0.055) : base;
}

bool CPianoView::hasLineBelow(int key) const { return isC(key) || key % 12 == 5; }

QRect CPianoView::noteRect(const NoteInView& note) const
{
    const int left = scale().x(note.start);
    const int right = std::min(scale().x(note.end), width() + 8);
    return {left, scale().y(note.key), std::max(right - left, 2), scale().rowHeight()};
}

void CPianoView::paintNoteText(QPainter& painter, const QRect& rect, const NoteInView& note, const QColor& colour) const
{
    if (painter.font().pixelSize() != rowFont(font(), scale().rowHeight()).pixelSize())
        painter.setFont(rowFont(font(), scale().rowHeight()));
    painter.setPen(colour);
    const int lift = (rect.height() - painter.fontMetrics().height()) / 2;
    painter.drawStaticText(rect.left() + 4, rect.top() + lift, m_names[note.key]);
}

void CPianoView::paintColumn(QPainter& painter, const QRect& area, int held) const
{
    const bool dark = isDark(palette());
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const QColor white = dark ? blend(text, base, 0.82) : base;
    const QColor black = dark ? base : blend(text, base, 0.85);
    const QColor line = dark ? blend(text, base, 0.45) : palette().color(QPalette::Mid);
    const QColor name = palette().color(QPalette::PlaceholderText);
    const QColor accent = palette().color(QPalette::Highlight);
    const int height = scale().rowHeight();
    painter.fillRect(area, palette().window());
    painter.setFont(rowFont(font(), height));
    const int first = std::max(scale().row(area.top()) - 1, 0);
    const int last = std::min(scale().row(area.bottom()) + 1, scale().rows() - 1);
    const int bottom = scale().yOfRow(scale().rows() - 1) + height;
    painter.fillRect(keysLeft, area.top(), RollScale::left - keysLeft, std::min(bottom, area.bottom() + 1) - area.top(),
                     white);
    for (int row = first; row <= last; ++row) {
        const int key = scale().keyOfRow(row);
        const int y = scale().yOfRow(row);
        const int pitch = key % 12;
        if (PianoKeys::isBlack(pitch)) {
            painter.fillRect(keysLeft, y + height / 2, RollScale::left - keysLeft, 1, line); // between white keys
            painter.fillRect(keysLeft, y, blackLength, height, key == held ? accent : black);
        } else {
            if (key == held) painter.fillRect(keysLeft, y, RollScale::left - keysLeft, height, accent);
            if (touchesAbove(key)) painter.fillRect(keysLeft, y, RollScale::left - keysLeft, 1, line);
        }
        if (!isC(key) && height < 12 && key != held) continue;
        painter.setPen(isC(key) ? text : name);
        painter.drawText(QRect(0, y, keysLeft - 6, height), Qt::AlignRight | Qt::AlignVCenter, keyName(key));
        painter.setPen(Qt::NoPen);
    }
    painter.fillRect(keysLeft, area.top(), 1, area.height(), line);
}

} // namespace tessaro
