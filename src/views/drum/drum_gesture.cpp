// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/drum/drum_gesture.h"

#include "core/edit/undo_scope.h"
#include "core/model/tick.h"
#include "views/roll/grid.h"

#include <algorithm>
#include <utility>

namespace tessaro {

void DrumGesture::setTrack(int track)
{
    if (track == m_track) return;
    cancel();
    m_track = track;
}

std::optional<NoteInView> DrumGesture::hit(QPoint at) const
{
    const RollScale& scale = m_parts.scale;
    if (at.x() < RollScale::left || at.y() < RollScale::ruler || at.y() >= scale.yOfRow(scale.rows())) return {};
    const std::uint32_t from = scale.time(at.x() - hitWidth(scale) + 1);
    const std::uint32_t to = tick::later(scale.time(at.x()), 1);
    const int key = scale.key(at.y());
    std::optional<NoteInView> found;
    m_parts.notes.forEachNote(m_track, from, to, key, key, [&](const NoteInView& note) {
        if (note.start >= from) found = note;
    });
    return found;
}

void DrumGesture::press(QPoint at)
{
    cancel();
    m_key = m_parts.scale.key(at.y());
    m_last = m_parts.scale.time(at.x());
    if (const auto under = hit(at)) {
        m_mode = Mode::take;
        take(under->start, tick::later(under->start, 1));
        return;
    }
    m_mode = Mode::write;
    write(m_parts.grid.cell(m_parts.editor, m_last));
    if (onHear) onHear(m_key, velocity);
}

void DrumGesture::move(QPoint at)
{
    if (!isActive()) return;
    const std::uint32_t time = m_parts.scale.time(at.x());
    const auto [from, to] = std::minmax(m_last, time);
    if (m_mode == Mode::take)
        take(from, tick::later(to, 1));
    else if (!m_parts.grid.isFree())
        sweep(from, to);
    m_last = time;
}

/// Every cell that the pointer has passed.
void DrumGesture::sweep(std::uint32_t from, std::uint32_t to)
{
    const CEditor& editor = m_parts.editor;
    for (std::uint32_t cell = m_parts.grid.cell(editor, from); cell <= to;) {
        const std::uint32_t next = m_parts.grid.next(editor, cell);
        if (next == cell) return;
        if (isFree({cell, next})) write(cell);
        cell = next;
    }
}

bool DrumGesture::isFree(TickRange cell) const
{
    const auto isIn = [cell](const NoteInView& note) { return note.start >= cell.from && note.start < cell.to; };
    bool isFree = std::ranges::none_of(m_written, isIn);
    m_parts.notes.forEachNote(m_track, cell.from, cell.to, m_key, m_key,
                              [&](const NoteInView& note) { isFree = isFree && !isIn(note); });
    return isFree;
}

void DrumGesture::write(std::uint32_t time)
{
    NoteInView note;
    note.start = time;
    note.end = tick::later(time, m_parts.grid.step(m_parts.editor, time));
    note.key = m_key;
    note.velocity = velocity;
    m_written.push_back(note);
}

void DrumGesture::take(std::uint32_t from, std::uint32_t to)
{
    m_parts.notes.forEachNote(m_track, from, to, m_key, m_key, [&](const NoteInView& note) {
        if (note.start >= from && m_taken.insert(note.ref.evnt).second) m_takenRefs.push_back(note.ref);
    });
}

void DrumGesture::release()
{
    // The song changes when nothing is drawn over it any more.
    std::vector<NoteInView> written = std::exchange(m_written, {});
    const std::vector<EvntRef> taken = std::exchange(m_takenRefs, {});
    cancel();
    if (!written.empty()) commit(std::move(written));
    if (!taken.empty()) m_parts.commands.remove(taken);
}

void DrumGesture::commit(std::vector<NoteInView> hits)
{
    CEditor& editor = m_parts.editor;
    const CTrk* trk = editor.song().trk(m_track);
    if (std::ranges::any_of(hits, [&](const NoteInView& n) { return m_parts.commands.isLinkedAt(m_track, n.start); })) {
        m_parts.commands.sayLinked();
        return;
    }
    const UndoScope step(editor, m_parts.commands.title(TextId::undoEventInsert));
    if (!step || !trk) return;
    std::ranges::sort(hits, {}, &NoteInView::start);
    for (const NoteInView& hit : hits) {
        const BlkRef blk = m_parts.commands.blkFor(m_track, hit.start);
        if (!blk.blk) return;
        const POSITION evnt = m_parts.commands.insertInto(blk, NoteCommands::record(hit, trk->GetCh()));
        if (evnt) editor.ChkBlkReSize(blk.trk, blk.blk, evnt);
    }
}

void DrumGesture::cancel()
{
    m_mode = Mode::none;
    m_written.clear();
    m_takenRefs.clear();
    m_taken.clear();
}

} // namespace tessaro
