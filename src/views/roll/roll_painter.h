// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/roll/note_looks.h"
#include "views/roll/roll_looks.h"
#include "views/roll/time_marks.h"

#include <QWidget>

#include <vector>

namespace tessaro {

/// Paints the song in a roll: rows, lines of the grid, the ground of blocks, shadows of other tracks, notes. With
/// painters that have no pen, and the colours of the widget. Costs what lies in the area. Borrows all.
class RollPainter {
public:
    RollPainter(const ViewParts& parts, const RollScale& scale, const RollLooks& looks, const QWidget& widget)
        : m_parts(parts)
        , m_scale(scale)
        , m_looks(looks)
        , m_widget(widget)
    {
    }

    void paint(QPainter& painter, const QRect& area, int track, bool withShadows);
    /// In the middle of the area.
    void paintSentence(QPainter& painter, const QRect& area, TextId sentence) const;

private:
    /// What an area holds.
    struct Sight {
        TickRange span;
        int low = 127; ///< key
        int high = 0;
    };

    void paintRows(QPainter& painter, const QRect& area);
    void paintLines(QPainter& painter, const QRect& area);
    void paintBlks(QPainter& painter, const QRect& area, TickRange span, int track) const;
    void paintShadows(QPainter& painter, const Sight& sight, int track);
    void paintNotes(QPainter& painter, const Sight& sight, int track);

    ViewParts m_parts;
    const RollScale& m_scale;
    const RollLooks& m_looks;
    const QWidget& m_widget;
    // Kept from one painting to the next for their memory.
    std::vector<TimeMark> m_marks;
    NoteLooks m_notes;
    std::vector<QRect> m_rects;
};

} // namespace tessaro
