// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_sheet.h"

#include "core/edit/editor.h"
#include "views/editors/evnt_kinds.h"
#include "views/roll/roll_scrolling.h"

#include <QPaintEvent>
#include <QPainter>

namespace tessaro {

RollSheet::RollSheet(const ViewParts& parts)
    : m_parts(parts)
    , m_ruler(parts, m_scale)
    , m_painter(parts, m_scale, *this, *this)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

// What is shown

void RollSheet::showTrack(int track)
{
    m_track = track;
    m_notesRevision = 0;
}

void RollSheet::centreRows()
{
    rescale([this](RollScale& scale) {
        const int row = roll_scrolling::middleRow(m_parts.notes, scale, m_track, middleKey());
        const int middle = (2 * row + 1) * scale.rowHeight() / 2;
        scale.setScroll(middle - (scale.height() - RollScale::ruler) / 2);
    });
    m_isCentred = true;
}

void RollSheet::reveal(std::uint32_t tick)
{
    startAtPage(tick);
    centreRows();
}

void RollSheet::setShadows(bool on)
{
    m_shadows = on;
    update();
}

void RollSheet::setPosition(std::uint32_t tick)
{
    if (tick == m_position) return;
    update(positionStrip(m_position));
    m_position = tick;
    update(positionStrip(m_position));
}

void RollSheet::showTick(std::uint32_t tick)
{
    const TickRange seen = m_scale.span();
    if (tick >= seen.from && tick < seen.to) return;
    startAtPage(tick);
}

void RollSheet::startAtPage(std::uint32_t tick)
{
    rescale([&](RollScale& scale) { scale.setStart(roll_scrolling::startOfPage(m_parts.editor, scale, tick)); });
}

std::uint32_t RollSheet::songEnd() const { return m_parts.editor.GetTimeEnd(); }

void RollSheet::paintSoon()
{
    if (m_isStale) return;
    m_isStale = true;
    update();
}

void RollSheet::scaleChanged()
{
    update();
    if (onScale) onScale();
}

void RollSheet::setHeldKey(int key)
{
    m_heldKey = key;
    update();
}

bool RollSheet::isMidi() const { return takesNotes(m_parts.editor, m_track); }

bool RollSheet::hasNotes()
{
    if (m_notesRevision == m_parts.notes.revision()) return m_hasNotes;
    m_notesRevision = m_parts.notes.revision();
    m_hasNotes = false;
    const CTrk* track = m_parts.editor.song().trk(m_track);
    for (const CBlk* blk = track ? track->blocks().head() : nullptr; blk && !m_hasNotes; blk = List<CBlk>::next(blk))
        m_hasNotes = blk->GetNum() != 0;
    return m_hasNotes;
}

// Painting

QRect RollSheet::rowsArea() const
{
    return {RollScale::left, RollScale::ruler, width() - RollScale::left, height() - RollScale::ruler};
}

QRect RollSheet::positionStrip(std::uint32_t tick) const { return {m_scale.x(tick) - 8, 0, 17, height()}; }

void RollSheet::paintEvent(QPaintEvent* event)
{
    m_isStale = false;
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    const QRect area = event->rect().intersected(rowsArea());
    if (!area.isEmpty()) {
        painter.setClipRect(area);
        paintSong(painter, area);
        painter.setClipping(false);
    }
    if (event->rect().top() < RollScale::ruler) m_ruler.paint(painter, *this);
    m_ruler.paintLoop(painter, *this);
    const QRect column(0, RollScale::ruler, RollScale::left, height() - RollScale::ruler);
    if (event->rect().intersects(column)) {
        painter.setClipRect(column);
        paintColumn(painter, event->rect().intersected(column), m_heldKey);
        painter.setClipping(false);
        painter.fillRect(column.right(), 0, 1, height(), palette().mid());
    }
    m_ruler.paintPosition(painter, *this, m_position);
}

void RollSheet::paintSong(QPainter& painter, const QRect& area)
{
    m_painter.paint(painter, area, m_track, m_shadows);
    paintGesture(painter);
    if (!isMidi())
        m_painter.paintSentence(painter, rowsArea(), TextId::rollNotMidi);
    else if (!hasNotes() && !isDrawing())
        m_painter.paintSentence(painter, rowsArea(), emptySentence());
}

void RollSheet::resizeEvent(QResizeEvent*)
{
    m_scale.resize(width(), height());
    if (m_isCentred) centreRows();
    scaleChanged();
}

} // namespace tessaro
