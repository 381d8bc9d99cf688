// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/note_looks.h"

#include "views/roll/roll_paint.h"
#include "views/theme/colours.h"

#include <QPalette>

#include <algorithm>

namespace tessaro {

void NoteLooks::begin(const QColor& track, const QPalette& palette)
{
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    for (int shade = 0; shade < shades; ++shade) {
        const double strength = (shade + 1.0) / shades;
        Look& plain = m_looks[static_cast<std::size_t>(shade)];
        plain.fill = blend(track, base, 0.3 + 0.7 * strength);
        plain.edge = blend(text, track, 0.3);
        Look& linked = m_looks[static_cast<std::size_t>(shades + shade)];
        linked.fill = blend(track, base, 0.08 + 0.2 * strength);
        linked.edge = blend(track, base, 0.6);
    }
    Look& selected = m_looks[2 * shades];
    selected.fill = blend(text, track, 0.78);
    selected.edge = text;
    for (Look& look : m_looks) {
        look.text = contrast(look.fill, text) > contrast(look.fill, base) ? text : base;
        look.rects.clear();
    }
    m_named.clear();
}

void NoteLooks::add(const NoteInView& note, const QRect& rect, bool isSelected, bool isNamed)
{
    const int shade = std::min(note.velocity * shades / 128, shades - 1);
    Look& look = m_looks[static_cast<std::size_t>(isSelected ? 2 * shades : note.isGhost ? shades + shade : shade)];
    look.rects.push_back(rect);
    if (isNamed) m_named.push_back({rect, note, look.text});
}

void NoteLooks::paint(QPainter& painter)
{
    for (const Look& look : m_looks) {
        fillAll(painter, look.rects, look.edge);
        m_rects.clear();
        for (const QRect& rect : look.rects)
            if (rect.width() > 2) m_rects.push_back(rect.adjusted(1, 1, -1, -1));
        fillAll(painter, m_rects, look.fill);
        // Where notes lie one over the other it is still to be seen that each has a start.
        for (QRect& rect : m_rects) rect.setRect(rect.left() - 1, rect.top(), 1, rect.height());
        fillAll(painter, m_rects, look.edge);
    }
}

} // namespace tessaro
