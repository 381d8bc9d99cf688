// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_painter.h"

#include "core/edit/editor.h"
#include "views/roll/grid.h"
#include "views/roll/roll_paint.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaro {
namespace {

constexpr int lineRoom = 6;    ///< pixels between lines of one kind
constexpr int textHeight = 12; ///< of rows whose notes are named
constexpr int textWidth = 28;  ///< of notes that are named

} // namespace

void RollPainter::paint(QPainter& painter, const QRect& area, int track, bool withShadows)
{
    Sight sight{.span = {m_scale.time(area.left()), m_scale.time(area.right() + 1) + 1}};
    for (int row = m_scale.row(area.top()); row <= m_scale.row(area.bottom()); ++row) {
        sight.low = std::min<int>(sight.low, m_scale.keyOfRow(row));
        sight.high = std::max<int>(sight.high, m_scale.keyOfRow(row));
    }
    paintRows(painter, area);
    paintLines(painter, area);
    paintBlks(painter, area, sight.span, track);
    if (withShadows) paintShadows(painter, sight, track);
    paintNotes(painter, sight, track);
}

void RollPainter::paintRows(QPainter& painter, const QRect& area)
{
    const QColor line = blend(m_widget.palette().color(QPalette::Mid), m_widget.palette().color(QPalette::Base), 0.7);
    painter.fillRect(area, m_widget.palette().color(QPalette::Window));
    for (int row = m_scale.row(area.top()); row <= m_scale.row(area.bottom()); ++row) {
        const int key = m_scale.keyOfRow(row);
        const int y = m_scale.yOfRow(row);
        painter.fillRect(area.left(), y, area.width(), m_scale.rowHeight(), m_looks.rowColour(key));
        if (m_looks.hasLineBelow(key))
            painter.fillRect(area.left(), y + m_scale.rowHeight() - 1, area.width(), 1, line);
    }
}

void RollPainter::paintLines(QPainter& painter, const QRect& area)
{
    const auto room = static_cast<std::uint32_t>(std::ceil(lineRoom * m_scale.zoom()));
    const auto grid = [this](std::uint32_t top) {
        return m_parts.grid.isFree() ? 0U : m_parts.grid.step(m_parts.editor, top);
    };
    timeMarks(m_parts.editor, m_scale.time(area.left()), m_scale.time(area.right()) + 1, room, grid, m_marks);
    const QColor base = m_widget.palette().color(QPalette::Base);
    const QColor dark = m_widget.palette().color(QPalette::Text);
    constexpr std::pair<TimeMark::Rank, double> ranks[] = {
        {TimeMark::Rank::grid, 0.07}, {TimeMark::Rank::beat, 0.16}, {TimeMark::Rank::bar, 0.34}};
    for (const auto& [rank, share] : ranks) {
        m_rects.clear();
        for (const TimeMark& mark : m_marks)
            if (mark.rank == rank) m_rects.emplace_back(m_scale.x(mark.tick), area.top(), 1, area.height());
        fillAll(painter, m_rects, blend(dark, base, share));
    }
}

void RollPainter::paintBlks(QPainter& painter, const QRect& area, TickRange span, int track) const
{
    const QColor colour = trackColour(track, m_widget.palette());
    const QColor outside = withAlpha(m_widget.palette().color(QPalette::Text), 0.06);
    int covered = area.left(); // up to here the ground is that of blocks, or drawn as outside of them
    m_parts.notes.forEachBlk(track, span.from, span.to, [&](const BlkInView& at) {
        const int left = m_scale.x(at.start);
        const int right = m_scale.x(at.end);
        if (left > covered) painter.fillRect(covered, area.top(), left - covered, area.height(), outside);
        covered = std::max(covered, right);
        const bool isGhost = at.blk->GetType() == blktype::ghost;
        if (isGhost)
            painter.fillRect(QRect(left, area.top(), right - left, area.height()),
                             QBrush(withAlpha(colour, 0.22), Qt::BDiagPattern));
        painter.fillRect(left, RollScale::ruler, right - left, 3,
                         isGhost ? QBrush(colour, Qt::Dense4Pattern) : QBrush(colour));
        const QColor bound = withAlpha(colour, 0.75);
        if (at.start >= m_scale.start()) painter.fillRect(left, area.top(), 1, area.height(), bound);
        painter.fillRect(right - 1, area.top(), 1, area.height(), bound);
    });
    if (covered <= area.right())
        painter.fillRect(covered, area.top(), area.right() + 1 - covered, area.height(), outside);
}

void RollPainter::paintShadows(QPainter& painter, const Sight& sight, int track)
{
    const QColor base = m_widget.palette().color(QPalette::Base);
    for (int number = 1; number < trackCount; ++number) {
        const CTrk* other = m_parts.editor.song().trk(number);
        if (number == track || other->GetType() != trktype::midi || !other->blocks().head()) continue;
        m_rects.clear();
        m_parts.notes.forEachNote(number, sight.span.from, sight.span.to, sight.low, sight.high,
                                  [this](const NoteInView& note) {
                                      if (m_scale.rowOfKey(note.key) >= 0)
                                          m_rects.push_back(m_looks.noteRect(note).adjusted(0, 1, 0, -1));
                                  });
        fillAll(painter, m_rects, blend(trackColour(number, m_widget.palette()), base, 0.28));
    }
}

void RollPainter::paintNotes(QPainter& painter, const Sight& sight, int track)
{
    m_notes.begin(trackColour(track, m_widget.palette()), m_widget.palette());
    const bool hasRoom = m_scale.rowHeight() >= textHeight;
    m_looks.forEachShown(sight.span, sight.low, sight.high, [&](const NoteInView& note, bool isSelected) {
        if (m_scale.rowOfKey(note.key) < 0) return;
        const QRect rect = m_looks.noteRect(note);
        m_notes.add(note, rect, isSelected, hasRoom && rect.width() >= textWidth);
    });
    m_notes.paint(painter);
    for (const NoteLooks::Named& named : m_notes.named())
        m_looks.paintNoteText(painter, named.rect, named.note, named.text);
    painter.setPen(Qt::NoPen);
}

void RollPainter::paintSentence(QPainter& painter, const QRect& area, TextId sentence) const
{
    const QString words = m_parts.text(sentence);
    const QFontMetrics letters = m_widget.fontMetrics();
    const QRect box = letters.boundingRect(area.adjusted(32, 0, -32, 0), Qt::AlignCenter | Qt::TextWordWrap, words);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(withAlpha(m_widget.palette().color(QPalette::Base), 0.9));
    painter.drawRoundedRect(box.adjusted(-16, -12, 16, 12), 8, 8);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(m_widget.palette().color(QPalette::PlaceholderText));
    painter.drawText(box, Qt::AlignCenter | Qt::TextWordWrap, words);
    painter.setPen(Qt::NoPen);
}

} // namespace tessaro
