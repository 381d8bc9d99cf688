// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/roll/note_table.h"

#include <QColor>
#include <QRect>

#include <array>
#include <span>
#include <vector>

class QPainter;
class QPalette;

namespace tessaro {

/// Notes sorted by their look, so that all of one look are drawn at once: shades of the track's colour by velocity,
/// paler ones for linked blocks, and one that stands out for what is selected. Keeps its memory from one painting to
/// the next.
class NoteLooks {
public:
    struct Named {
        QRect rect;
        NoteInView note;
        QColor text;
    };

    void begin(const QColor& track, const QPalette& palette);
    /// With `isNamed` it is to get a text of its own.
    void add(const NoteInView& note, const QRect& rect, bool isSelected, bool isNamed);
    /// With a painter that has no pen.
    void paint(QPainter& painter);
    [[nodiscard]] std::span<const Named> named() const { return m_named; }

private:
    static constexpr int shades = 8;

    struct Look {
        QColor edge;
        QColor fill;
        QColor text;
        std::vector<QRect> rects;
    };

    std::array<Look, 2 * shades + 1> m_looks; ///< by velocity: plain, then of linked blocks; selected
    std::vector<QRect> m_rects;
    std::vector<Named> m_named;
};

} // namespace tessaro
