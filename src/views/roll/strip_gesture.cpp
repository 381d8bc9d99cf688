// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/strip_gesture.h"

#include "core/edit/editor.h"
#include "views/editors/evnt_selection.h"
#include "views/roll/grid.h"
#include "views/roll/roll_drag.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace tessaro {

using namespace roll_drag;

namespace {

EditTool toolInStrip(EditTool tool)
{
    switch (tool) {
    case EditTool::velocity: return EditTool::pencil;
    case EditTool::divide:
    case EditTool::join: return EditTool::select;
    default: return tool;
    }
}

bool isIn(TickRange range, std::uint32_t time) { return range.from <= time && time < range.to; }

} // namespace

void StripGesture::setTrack(int track)
{
    cancel();
    m_track = track;
}

void StripGesture::setScale(const StripScale& scale)
{
    if (scale.kind() != m_scale.kind()) cancel();
    m_scale = scale;
}

std::optional<ValueInView> StripGesture::hit(QPoint at) const
{
    const std::uint32_t from = m_parts.scale.time(at.x() - near);
    const std::uint32_t to = tick::later(m_parts.scale.time(at.x() + near), 1);
    std::optional<ValueInView> best;
    int bestDistance = 0;
    m_parts.notes.forEachValue(m_track, kind(), from, to, [&](const ValueInView& value) {
        const int head = m_scale.y(value.value);
        if (at.y() < head - near) return; // above its head; below is its stem
        const int distance = std::abs(at.y() - head);
        if (best && distance > bestDistance) return;
        best = value;
        bestDistance = distance;
    });
    return best;
}

StripPoint StripGesture::pointAt(QPoint at) const { return {m_parts.scale.time(at.x()), m_scale.value(at.y())}; }

// Steps

bool StripGesture::isFine() const { return m_parts.grid.isFree() || (m_drag.keys & Qt::AltModifier); }

std::uint32_t StripGesture::stepAt(std::uint32_t time) const
{
    return isFine() ? fineStep : m_parts.grid.step(m_parts.editor, time);
}

std::uint32_t StripGesture::cellAt(std::uint32_t time) const
{
    return isFine() ? time / fineStep * fineStep : m_parts.grid.cell(m_parts.editor, time);
}

/// Velocities under a line: those of notes a little aside, too, as long as there is nothing between. Other events:
/// whole steps.
TickRange StripGesture::around(const StripPath& path) const
{
    if (kind().isVelocity()) {
        const auto aside = static_cast<std::int64_t>(near * m_parts.scale.zoom());
        return {tick::shifted(path.first(), -aside), tick::shifted(path.last(), aside + 1)};
    }
    const std::uint32_t last = cellAt(path.last());
    return {cellAt(path.first()), tick::later(last, stepAt(last))};
}

int StripGesture::valueAt(const StripPath& path, std::uint32_t time) const
{
    const double value = path.valueAt(std::clamp(time, path.first(), path.last()));
    return std::clamp(static_cast<int>(std::lround(value)), kind().least(), kind().most());
}

std::vector<StripPoint> StripGesture::points() const
{
    std::vector<StripPoint> points;
    if (m_drag.path.empty() || kind().isVelocity()) return points;
    const TickRange range = around(m_drag.path);
    for (std::uint32_t time = range.from; time < range.to;) {
        points.push_back({time, valueAt(m_drag.path, time)});
        const std::uint32_t next = cellAt(tick::later(time, stepAt(time)));
        if (next <= time) break; // where time ends
        time = next;
    }
    return points;
}

std::optional<TickRange> StripGesture::span() const
{
    switch (m_drag.mode) {
    case Mode::draw:
    case Mode::bend: return around(m_drag.path);
    case Mode::erase: return m_drag.passed;
    case Mode::band: return between(m_parts.scale.rawTime(m_drag.now.x()), m_drag.grabTime);
    default: return {};
    }
}

std::pair<int, int> StripGesture::bandValues() const
{
    const int from = m_scale.value(m_drag.from.y());
    const int now = m_scale.value(m_drag.now.y());
    return {std::min(from, now), std::max(from, now)};
}

bool StripGesture::hasSelected(TickRange over) const
{
    bool found = false;
    if (m_parts.selection.empty()) return false;
    m_parts.notes.forEachValue(m_track, kind(), over.from, over.to, [&](const ValueInView& value) {
        found = found || m_parts.selection.contains(value.ref);
    });
    return found;
}

std::optional<ValueInView> StripGesture::shown(ValueInView value) const
{
    const bool isSelected = m_parts.selection.contains(value.ref);
    switch (m_drag.mode) {
    case Mode::draw:
    case Mode::bend:
        if (value.isGhost || !isIn(around(m_drag.path), value.time)) break;
        if (!kind().isVelocity()) return {};
        if (!m_drag.onlySelected || isSelected) value.value = valueAt(m_drag.path, value.time);
        break;
    case Mode::erase:
        if (!value.isGhost && !kind().isVelocity() && isIn(m_drag.passed, value.time)) return {};
        break;
    case Mode::drag:
        if (!isSelected) break;
        value.time = tick::shifted(value.time, m_drag.ticks);
        value.value = std::clamp(value.value + m_drag.by, kind().least(), kind().most());
        break;
    default: break;
    }
    return value;
}

// Press, drag and release

void StripGesture::press(EditTool tool, QPoint at, Qt::KeyboardModifiers keys)
{
    if (m_drag.mode == Mode::bend) {
        finish();
        return;
    }
    cancel();
    if (m_track < 0 || at.x() < RollScale::left) return;
    m_drag.tool = toolInStrip(tool);
    m_drag.keys = keys;
    m_drag.from = m_drag.now = at;
    m_drag.grabTime = m_parts.scale.rawTime(at.x());
    m_drag.hit = hit(at);
    switch (m_drag.tool) {
    case EditTool::select: pressEvent(keys); break;
    case EditTool::eraser:
        m_drag.mode = Mode::erase;
        m_drag.passed = {m_parts.scale.time(at.x()), m_parts.scale.time(at.x())};
        erase();
        break;
    default:
        m_drag.mode = Mode::draw;
        m_drag.path.start(pointAt(at));
        draw();
    }
}

void StripGesture::pressEvent(Qt::KeyboardModifiers keys)
{
    EvntSelection& selection = m_parts.selection;
    m_drag.mode = m_drag.hit ? Mode::waiting : Mode::band;
    m_drag.wasSelected = m_drag.hit && selection.contains(m_drag.hit->ref);
    if (!goesOn(keys) && !m_drag.wasSelected) selection.clear();
    if (m_drag.hit) selection.add(m_drag.hit->ref);
}

void StripGesture::move(QPoint at, Qt::KeyboardModifiers keys)
{
    if (m_drag.mode == Mode::none) return;
    m_drag.now = at;
    m_drag.keys = keys;
    if (m_drag.mode == Mode::waiting && isFar(at - m_drag.from)) beginDrag();
    switch (m_drag.mode) {
    case Mode::draw: draw(); break;
    case Mode::bend: bend(); break;
    case Mode::erase: erase(); break;
    case Mode::drag: drag(); break;
    default: break;
    }
}

void StripGesture::draw()
{
    if (m_drag.tool != EditTool::pencil) m_drag.path.start(pointAt(m_drag.from));
    m_drag.path.lineTo(pointAt(m_drag.now));
    m_drag.onlySelected = kind().isVelocity() && hasSelected(around(m_drag.path));
}

/// The middle of the line goes through the pointer.
void StripGesture::bend()
{
    StripPath& path = m_drag.path;
    path.setBend(m_scale.value(m_drag.now.y()) - (path.valueAt(path.first()) + path.valueAt(path.last())) / 2);
}

void StripGesture::erase()
{
    TickRange& passed = m_drag.passed;
    passed.from = std::min(passed.from, m_parts.scale.time(m_drag.now.x() - near));
    passed.to = std::max(passed.to, tick::later(m_parts.scale.time(m_drag.now.x() + near), 1));
}

void StripGesture::beginDrag()
{
    m_drag.mode = Mode::drag;
    m_drag.extent = NoteExtent::of(m_parts.selection.inOrder());
}

void StripGesture::drag()
{
    const QPoint way = m_drag.now - m_drag.from;
    m_drag.by = m_scale.value(m_drag.now.y()) - m_scale.value(m_drag.from.y());
    m_drag.ticks = 0;
    if (kind().isVelocity() || !isFar(way.x())) return;
    const std::uint32_t old = m_drag.hit->time;
    std::uint32_t time = tick::shifted(old, m_parts.scale.rawTime(m_drag.now.x()) - m_drag.grabTime);
    if (!isFine()) time = m_parts.grid.snap(m_parts.editor, time);
    m_drag.ticks = m_drag.extent.limit({.ticks = std::int64_t{time} - old}).ticks;
}

void StripGesture::cancel() { m_drag = {}; }

void StripGesture::release(QPoint at, Qt::KeyboardModifiers keys)
{
    if (m_drag.mode == Mode::none || m_drag.mode == Mode::bend) return;
    move(at, keys);
    if (m_drag.mode == Mode::draw && m_drag.tool == EditTool::curve && isFar(at - m_drag.from))
        m_drag.mode = Mode::bend;
    else
        finish();
}

void StripGesture::finish()
{
    if (m_drag.mode == Mode::band) selectBand();
    const std::vector<StripPoint> made = points();
    const TickRange over = span().value_or(TickRange{});
    const Drag done = std::exchange(m_drag, {}); // the song changes when nothing is drawn over it any more
    StripCommands& commands = m_parts.commands;
    switch (done.mode) {
    case Mode::draw:
    case Mode::bend:
        if (kind().isVelocity())
            commands.drawVelocities(m_track, over, done.onlySelected ? &m_parts.selection : nullptr,
                                    [&](std::uint32_t time) { return valueAt(done.path, time); });
        else
            commands.draw(m_track, kind(), made, over);
        break;
    case Mode::erase:
        if (!kind().isVelocity()) commands.erase(m_track, kind(), over);
        break;
    case Mode::drag: commands.shift(m_parts.selection.inOrder(), kind(), done.ticks, done.by); break;
    case Mode::waiting: click(done); break;
    default: break;
    }
}

void StripGesture::click(const Drag& drag)
{
    if (!goesOn(drag.keys))
        m_parts.selection.set({&drag.hit->ref, 1});
    else if (drag.wasSelected)
        m_parts.selection.remove(drag.hit->ref);
}

void StripGesture::selectBand()
{
    const TickRange over = *span();
    const auto [low, high] = bandValues();
    m_parts.notes.forEachValue(m_track, kind(), over.from, over.to, [&, low = low, high = high](const ValueInView& v) {
        if (low <= v.value && v.value <= high) m_parts.selection.add(v.ref);
    });
}

} // namespace tessaro
