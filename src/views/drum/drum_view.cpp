// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/drum/drum_view.h"

#include "core/model/tick.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace tessaro {
namespace {

constexpr int margin = 8;
constexpr int nameRoom = RollScale::left - margin - 4;
constexpr int softest = 4; ///< pixels of a hit that can hardly be heard

} // namespace

CDrumView::CDrumView(const ViewParts& parts)
    : CRollView(parts)
    , m_pencil({parts.editor, parts.notes, commands(), parts.grid, scale()})
{
    m_pencil.onHear = [this](std::uint8_t key, std::uint8_t velocity) { sound(key, velocity); };
    rescale([](RollScale& scale) { scale.setRowHeight(RollScale::mostRow); }); // names have room
    setShown(m_shown);
}

void CDrumView::setShown(DrumRows::Shown shown)
{
    m_shown = shown;
    m_rowsRevision = 0;
    contentChanged();
}

/// Notes in use have rows, so new notes may make new rows.
void CDrumView::contentChanged()
{
    m_pencil.setTrack(track());
    NoteTables& notes = parts().notes;
    if (std::exchange(m_rowsRevision, notes.revision()) == notes.revision()) return;
    DrumRows rows;
    rows.set(m_shown, track() > 0 ? notes.keysOf(track()) : DrumRows::Keys{});
    if (rows == m_rows) return;
    m_rows = std::move(rows);
    rescale([this](RollScale& scale) { scale.setRows(m_rows.fromTop()); });
}

int CDrumView::keyStep(int rows) const
{
    const std::vector<EvntRef> refs = selection().inOrder();
    const auto note = refs.empty() ? std::nullopt : NoteTables::noteOf(refs.front());
    const auto row = note ? m_rows.row(note->key) : std::nullopt;
    return row ? m_rows.key(*row - rows) - note->key : rows;
}

QString CDrumView::keyText(int key) const { return drumName(key, parts().text); }

QColor CDrumView::rowColour(int key) const
{
    const QColor base = palette().color(QPalette::Base);
    const auto row = m_rows.row(key);
    return row && *row % 2 ? palette().color(QPalette::AlternateBase) : base;
}

QRect CDrumView::noteRect(const NoteInView& note) const
{
    const int room = scale().rowHeight() - 2;
    const int height = std::max(room * note.velocity / 127, std::min(softest, room));
    return {scale().x(note.start), scale().y(note.key) + 1 + (room - height), DrumGesture::hitWidth(scale()), height};
}

void CDrumView::paintColumn(QPainter& painter, const QRect& area, int held) const
{
    const QPalette& roles = palette();
    const int height = scale().rowHeight();
    QFont small = font();
    small.setPixelSize(std::clamp(height - 3, 8, 11));
    painter.setFont(small);
    painter.fillRect(area, roles.window());
    for (int row = scale().row(area.top()); row <= scale().row(area.bottom()); ++row) {
        const int key = scale().keyOfRow(row);
        const QRect place(0, scale().yOfRow(row), RollScale::left - 1, height);
        if (key == held) painter.fillRect(place, roles.highlight());
        painter.fillRect(0, place.bottom(), place.width(), 1, roles.color(QPalette::Midlight));
        painter.setPen(roles.color(key == held        ? QPalette::HighlightedText
                                   : hasDrumName(key) ? QPalette::WindowText
                                                      : QPalette::PlaceholderText));
        const QString name = drumName(key, parts().text);
        const int nameWidth = QFontMetrics(small).horizontalAdvance(name);
        if (nameWidth > nameRoom) { // narrower letters rather than an ellipsis
            QFont narrow = small;
            narrow.setStretch(100 * nameRoom / nameWidth);
            painter.setFont(narrow);
        }
        painter.drawText(place.adjusted(margin, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, name);
        if (nameWidth > nameRoom) painter.setFont(small);
        painter.setPen(Qt::NoPen);
    }
}

/// A hit is drawn wider than a short note is: all of it stands for the note's body.
QPoint CDrumView::gesturePoint(QPoint at) const
{
    const auto hit = m_pencil.hit(at);
    if (!hit) return at;
    const int left = scale().x(hit->start);
    return {left + (scale().x(hit->end) - left) / 3, at.y()};
}

void CDrumView::pressRows(QMouseEvent& event)
{
    if (tool() == EditTool::pencil)
        m_pencil.press(event.position().toPoint());
    else
        CRollView::pressRows(event);
}

void CDrumView::moveRows(QMouseEvent& event)
{
    if (m_pencil.isActive())
        m_pencil.move(event.position().toPoint());
    else
        CRollView::moveRows(event);
}

void CDrumView::releaseRows(QMouseEvent& event)
{
    if (m_pencil.isActive())
        m_pencil.release();
    else
        CRollView::releaseRows(event);
}

void CDrumView::cancelRows()
{
    m_pencil.cancel();
    CRollView::cancelRows();
}

void CDrumView::forEachShown(TickRange span, int low, int high, const NoteVisit& visit) const
{
    // A hit reaches to the right as far as it is drawn.
    const auto reach = static_cast<std::int64_t>(DrumGesture::hitWidth(scale()) * scale().zoom());
    const TickRange wide{tick::shifted(span.from, -reach), span.to};
    CRollView::forEachShown(wide, low, high, [&](const NoteInView& note, bool isSelected) {
        if (note.start >= scale().start() && !m_pencil.isTaken(note.ref)) visit(note, isSelected);
    });
    for (const NoteInView& note : m_pencil.written()) visit(note, false);
}

} // namespace tessaro
