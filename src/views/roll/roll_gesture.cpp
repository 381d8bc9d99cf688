// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_gesture.h"

#include "core/edit/editor.h"
#include "views/editors/evnt_selection.h"
#include "views/roll/grid.h"
#include "views/roll/roll_drag.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tessaro {

using namespace roll_drag;

namespace {

constexpr int eraseStep = 2; // pixels

bool isClickTool(EditTool tool) { return tool == EditTool::divide || tool == EditTool::join; }

EditTool toolInRoll(EditTool tool)
{
    return tool == EditTool::line || tool == EditTool::curve ? EditTool::select : tool;
}

} // namespace

void RollGesture::setTrack(int track)
{
    cancel();
    m_track = track;
    m_anchor = {};
}

std::optional<RollGesture::Hit> RollGesture::hit(QPoint at) const
{
    const RollScale& scale = m_parts.scale;
    if (at.x() < RollScale::left || at.y() < RollScale::ruler || at.y() >= scale.yOfRow(scale.rows())) return {};
    const std::uint32_t from = scale.time(at.x());
    const std::uint32_t to = std::max(scale.time(at.x() + 1), tick::later(from, 1));
    const auto note = m_parts.notes.noteAt(m_track, from, to, scale.key(at.y()));
    if (!note) return {};
    const int left = scale.x(note->start);
    const int right = scale.x(note->end);
    const int zone = std::min(edge, (right - left) / 3);
    if (zone > 0 && right - at.x() <= zone) return Hit{*note, Zone::end};
    const bool isStartInView = note->start >= scale.start();
    return Hit{*note, isStartInView && at.x() - left < zone ? Zone::start : Zone::body};
}

std::optional<std::uint32_t> RollGesture::cutAt(QPoint at) const
{
    const auto found = hit(at);
    if (!found) return {};
    const std::uint32_t time = m_parts.grid.snap(m_parts.editor, m_parts.scale.time(at.x()));
    return found->note.start < time && time < found->note.end ? std::optional(time) : std::nullopt;
}

bool RollGesture::isSelected(const EvntRef& ref) const { return m_parts.selection.contains(ref); }

bool RollGesture::isShifted() const
{
    switch (m_drag.mode) {
    case Mode::move:
    case Mode::copy:
    case Mode::start:
    case Mode::end:
    case Mode::velocity: return true;
    default: return false;
    }
}

std::uint32_t RollGesture::snapped(std::int64_t time, Qt::KeyboardModifiers keys) const
{
    const std::uint32_t at = tick::clamped(time);
    return keys & Qt::AltModifier ? at : m_parts.grid.snap(m_parts.editor, at);
}

void RollGesture::hear(std::uint8_t key, std::uint8_t velocity)
{
    m_heardKey = key;
    if (onHear) onHear(key, velocity);
}

// The press

void RollGesture::press(EditTool tool, QPoint at, Qt::KeyboardModifiers keys)
{
    cancel();
    if (m_track < 0 || at.x() < RollScale::left || at.y() < RollScale::ruler) return;
    m_drag.tool = toolInRoll(tool);
    m_drag.from = m_drag.now = at;
    m_drag.grabTime = m_parts.scale.rawTime(at.x());
    m_drag.grabRow = m_parts.scale.row(at.y());
    m_drag.hit = hit(at);
    if (m_drag.tool == EditTool::eraser) {
        m_drag.mode = Mode::erase;
        erase(at, at);
    } else if (m_drag.hit) {
        m_drag.mode = Mode::waiting;
        if (!isClickTool(m_drag.tool)) pressNote(keys);
    } else if (m_drag.tool == EditTool::pencil) {
        beginDraw(keys);
    } else if (!isClickTool(m_drag.tool)) {
        m_drag.mode = Mode::band;
        if (!goesOn(keys)) m_parts.selection.clear();
    }
}

void RollGesture::pressNote(Qt::KeyboardModifiers keys)
{
    const NoteInView& note = m_drag.hit->note;
    m_drag.wasSelected = isSelected(note.ref);
    if (!m_drag.wasSelected && !(keys & Qt::ShiftModifier)) {
        if (!(keys & Qt::ControlModifier)) m_parts.selection.clear();
        m_parts.selection.add(note.ref);
    }
    m_velocity = note.velocity;
    hear(note.key, note.velocity);
}

void RollGesture::beginDraw(Qt::KeyboardModifiers keys)
{
    const std::uint32_t time = m_parts.scale.time(m_drag.from.x());
    NoteInView note;
    note.start = keys & Qt::AltModifier ? time : m_parts.grid.cell(m_parts.editor, time);
    note.end = tick::later(note.start, m_parts.grid.step(m_parts.editor, note.start));
    note.key = m_parts.scale.keyOfRow(m_drag.grabRow);
    note.velocity = m_velocity;
    m_drag.mode = Mode::draw;
    m_drag.drawn = note;
    m_parts.selection.clear();
    hear(note.key, note.velocity);
}

// The drag

void RollGesture::move(QPoint at, Qt::KeyboardModifiers keys)
{
    const QPoint before = std::exchange(m_drag.now, at);
    const QPoint way = at - m_drag.from;
    if (m_drag.mode == Mode::waiting && isFar(way)) beginDrag(keys);
    if (m_drag.mode == Mode::erase) erase(before, at);
    if (m_drag.mode == Mode::draw) dragDraw(keys);
    if (isShifted()) drag(keys);
}

void RollGesture::beginDrag(Qt::KeyboardModifiers keys)
{
    if (isClickTool(m_drag.tool)) return;
    m_parts.selection.add(m_drag.hit->note.ref);
    m_drag.extent = NoteExtent::of(m_parts.selection.inOrder());
    if (m_drag.tool == EditTool::velocity)
        m_drag.mode = Mode::velocity;
    else if (m_drag.hit->zone == Zone::start)
        m_drag.mode = Mode::start;
    else if (m_drag.hit->zone == Zone::end)
        m_drag.mode = Mode::end;
    else
        m_drag.mode = keys & Qt::ControlModifier ? Mode::copy : Mode::move;
}

void RollGesture::drag(Qt::KeyboardModifiers keys)
{
    m_drag.change = m_drag.extent.limit(changeTo(m_drag.now, keys));
    const NoteInView note = m_drag.change(m_drag.hit->note);
    if (note.key != m_heardKey) hear(note.key, note.velocity);
}

NoteChange RollGesture::changeTo(QPoint at, Qt::KeyboardModifiers keys) const
{
    const NoteInView& note = m_drag.hit->note;
    const QPoint way = at - m_drag.from;
    if (m_drag.mode == Mode::velocity) return {.velocityBy = -way.y()};

    // A note off the grid stays there as long as it is moved up and down.
    const std::int64_t ticks = m_parts.scale.rawTime(at.x()) - m_drag.grabTime;
    const auto by = [&](std::uint32_t edgeTime) {
        return isFar(way.x()) ? std::int64_t{snapped(edgeTime + ticks, keys)} - edgeTime : 0;
    };
    // No edge comes nearer to the other than a step, unless the note is as short as that.
    const std::int64_t length = note.end - note.start;
    const std::int64_t most = length - std::min<std::int64_t>(m_parts.grid.step(m_parts.editor, note.start), length);
    if (m_drag.mode == Mode::start) return {.startBy = std::min(by(note.start), most)};
    if (m_drag.mode == Mode::end) return {.endBy = std::max(by(note.end), -most)};

    const int rise = m_parts.scale.key(at.y()) - m_parts.scale.keyOfRow(m_drag.grabRow);
    if (!(keys & Qt::ShiftModifier)) return {.ticks = by(note.start), .keys = rise};
    if (std::abs(way.x()) >= std::abs(way.y())) return {.ticks = by(note.start)};
    return {.keys = rise};
}

void RollGesture::dragDraw(Qt::KeyboardModifiers keys)
{
    if (!isFar(m_drag.now.x() - m_drag.from.x())) return;
    const std::uint32_t start = m_drag.drawn->start;
    const std::uint32_t step = keys & Qt::AltModifier ? 1 : m_parts.grid.step(m_parts.editor, start);
    m_drag.drawn->end = std::max(snapped(m_parts.scale.rawTime(m_drag.now.x()), keys), tick::later(start, step));
}

void RollGesture::erase(QPoint from, QPoint to)
{
    const RollScale& scale = m_parts.scale;
    const QPoint way = to - from;
    const int steps = std::max(std::abs(way.x()), std::abs(way.y())) / eraseStep + 1;
    for (int i = 0; i <= steps; ++i) {
        const QPoint at(from.x() + way.x() * i / steps, from.y() + way.y() * i / steps);
        if (!hit(at)) continue;
        const std::uint32_t time = scale.time(at.x());
        const std::uint32_t end = std::max(scale.time(at.x() + 1), tick::later(time, 1));
        const int key = scale.key(at.y());
        m_parts.notes.forEachNote(m_track, time, end, key, key, [this](const NoteInView& note) {
            if (m_drag.erasedEvnts.insert(note.ref.evnt).second) m_drag.erased.push_back(note.ref);
        });
    }
}

std::optional<RollGesture::Band> RollGesture::band() const
{
    if (m_drag.mode != Mode::band) return {};
    const RollScale& scale = m_parts.scale;
    const int row = scale.row(m_drag.now.y());
    return Band{between(scale.rawTime(m_drag.now.x()), m_drag.grabTime), std::min(row, m_drag.grabRow),
                std::max(row, m_drag.grabRow)};
}

// The release

void RollGesture::cancel()
{
    if (std::exchange(m_drag, {}).mode != Mode::none && onHush) onHush();
}

void RollGesture::release(QPoint at, Qt::KeyboardModifiers keys)
{
    if (m_drag.mode == Mode::none) return;
    move(at, keys);
    if (const auto held = band()) selectBand(*held);
    const Drag done = m_drag;
    cancel(); // the song changes when nothing is drawn over it any more
    finish(done, keys);
}

void RollGesture::finish(const Drag& drag, Qt::KeyboardModifiers keys)
{
    const auto change = [&](TextId title) { m_parts.commands.change(m_parts.selection.inOrder(), drag.change, title); };
    switch (drag.mode) {
    case Mode::none:
    case Mode::band: break;
    case Mode::waiting: click(drag, keys); break;
    case Mode::move: change(TextId::undoEventMove); break;
    case Mode::copy: copy(drag.change); break;
    case Mode::start: change(TextId::undoEventChange); break;
    case Mode::end: change(TextId::undoGateTime); break;
    case Mode::draw: insert(*drag.drawn); break;
    case Mode::erase: m_parts.commands.remove(drag.erased); break;
    case Mode::velocity: m_velocity = drag.change(drag.hit->note).velocity; change(TextId::undoVelocity);
    }
}

void RollGesture::click(const Drag& drag, Qt::KeyboardModifiers keys)
{
    const NoteInView& note = drag.hit->note;
    const std::span<const EvntRef> ref(&note.ref, 1);
    if (drag.tool == EditTool::join) {
        m_parts.commands.join(ref);
    } else if (drag.tool == EditTool::divide) {
        if (const auto time = cutAt(drag.from)) m_parts.commands.split(ref, *time);
    } else if (keys & Qt::ShiftModifier) {
        extendTo(note);
    } else if (keys & Qt::ControlModifier) {
        if (drag.wasSelected) m_parts.selection.remove(note.ref);
    } else {
        m_parts.selection.set(ref);
    }
    m_anchor = note.ref;
}

/// Selects all from the note last clicked to this one: a rectangle in time and keys.
void RollGesture::extendTo(const NoteInView& note)
{
    m_parts.selection.add(note.ref);
    if (!isSelected(m_anchor)) return; // it may be gone
    const auto anchor = NoteTables::noteOf(m_anchor);
    if (!anchor) return;
    const auto [low, high] = std::minmax(anchor->key, note.key);
    m_parts.notes.forEachNote(m_track, std::min(anchor->start, note.start), std::max(anchor->end, note.end), low, high,
                              [this](const NoteInView& between) { m_parts.selection.add(between.ref); });
}

void RollGesture::selectBand(const Band& band)
{
    for (int row = band.firstRow; row <= band.lastRow; ++row) {
        const int key = m_parts.scale.keyOfRow(row);
        m_parts.notes.forEachNote(m_track, band.span.from, band.span.to, key, key,
                                  [this](const NoteInView& note) { m_parts.selection.add(note.ref); });
    }
}

void RollGesture::copy(const NoteChange& change)
{
    if (change == NoteChange{}) return;
    const auto copies = m_parts.commands.copy(m_parts.selection.inOrder(), change.ticks, change.keys);
    if (!copies.empty()) m_parts.selection.set(copies);
}

void RollGesture::insert(const NoteInView& note)
{
    const CTrk* trk = m_parts.editor.song().trk(m_track);
    const EvntRef made = m_parts.commands.insert(m_track, NoteCommands::record(note, trk ? trk->GetCh() : 0));
    if (made.evnt) m_parts.selection.set({&made, 1});
}

} // namespace tessaro
