// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/master_gesture.h"

#include "core/edit/editor.h"
#include "core/model/meta.h"
#include "core/model/tick.h"
#include "views/editors/evnt_selection.h"
#include "views/master/master_edits.h"
#include "views/roll/grid.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tessaro {
namespace {

bool draws(EditTool tool) { return tool == EditTool::pencil || tool == EditTool::line || tool == EditTool::curve; }

/// Speeds go in steps that a person would type: tenths, or whole beats where a pixel is more.
double rounded(double beats) { return std::round(beats * 10) / 10; }

} // namespace

std::optional<MasterGesture::Hit> MasterGesture::hit(QPoint at) const
{
    const TempoScale& scale = m_parts.scale;
    if (at.x() < TempoScale::left - near) return std::nullopt;
    if (const int lane = TempoScale::lane(at.y()); lane >= 0) {
        // A flag reaches to the right of its time; the later one lies above.
        const std::uint32_t reach = static_cast<std::uint32_t>(400 * scale.zoom());
        const std::uint32_t time = scale.time(at.x());
        const auto flags = m_parts.evnts.flags(time > reach ? time - reach : 0, tick::later(time, 1));
        for (auto flag = flags.rbegin(); flag != flags.rend(); ++flag)
            if (flag->lane == lane && at.x() < scale.x(flag->time) + m_parts.flagWidth(*flag))
                return Hit{flag->evnt, flag->time, false, 0};
        return std::nullopt;
    }
    if (at.y() < TempoScale::curveTop) return std::nullopt;
    const auto tempos = m_parts.evnts.tempos(scale.time(at.x() - near), tick::later(scale.time(at.x() + near), 1));
    for (auto point = tempos.rbegin(); point != tempos.rend(); ++point)
        if (std::abs(scale.x(point->time) - at.x()) <= near && std::abs(scale.y(point->beats) - at.y()) <= near)
            return Hit{point->evnt, point->time, true, point->beats};
    return std::nullopt;
}

std::uint32_t MasterGesture::snapped(std::uint32_t time, Qt::KeyboardModifiers keys) const
{
    return keys & Qt::AltModifier ? time : m_parts.grid.snap(m_parts.editor, time);
}

bool MasterGesture::isSelected(POSITION evnt) const { return m_parts.selection.contains(m_parts.evnts.ref(evnt)); }

std::vector<EvntRef> MasterGesture::selected(bool tempos) const
{
    std::vector<EvntRef> refs = m_parts.selection.inOrder();
    std::erase_if(refs,
                  [tempos](const EvntRef& ref) { return List<CEvnt>::get(ref.evnt)->isMeta(meta::tempo) != tempos; });
    return refs;
}

StripPoint MasterGesture::pathPoint(QPoint at) const
{
    const double beats = rounded(m_parts.scale.beats(at.y()));
    return {m_parts.scale.time(at.x()), static_cast<int>(std::lround(beats * pathUnits))};
}

void MasterGesture::press(EditTool tool, QPoint at, Qt::KeyboardModifiers keys)
{
    if (m_mode == Mode::bend) {
        commitPath();
        return;
    }
    cancel();
    m_from = m_now = placeOf(at);
    const bool inCurve = at.y() >= TempoScale::curveTop;
    m_tool = inCurve ? tool : EditTool::select;
    if (inCurve && draws(tool)) {
        m_mode = Mode::draw;
        m_pathStart = pathPoint(at);
        m_pathStart.time = snapped(m_pathStart.time, keys);
        m_path.start(m_pathStart);
        return;
    }
    if (inCurve && tool == EditTool::eraser) {
        m_mode = Mode::erase;
        erase(at, at);
        return;
    }
    m_hit = hit(at);
    m_mode = Mode::waiting;
    if (!m_hit) return;
    m_wasSelected = isSelected(m_hit->evnt);
    if (m_wasSelected) return;
    std::vector<EvntRef> refs;
    if (keys & (Qt::ControlModifier | Qt::ShiftModifier)) refs = m_parts.selection.inOrder();
    refs.insert(refs.begin(), m_parts.evnts.ref(m_hit->evnt));
    m_parts.select(refs);
}

void MasterGesture::move(QPoint at, Qt::KeyboardModifiers keys)
{
    const QPoint before = pointOf(m_now);
    m_now = placeOf(at);
    if (m_mode == Mode::waiting && (at - pointOf(m_from)).manhattanLength() >= dragDistance)
        m_mode = m_hit ? Mode::drag : Mode::band;
    switch (m_mode) {
    case Mode::drag: drag(at, keys); break;
    case Mode::erase: erase(before, at); break;
    case Mode::draw: {
        StripPoint to = pathPoint(at);
        if (m_tool == EditTool::pencil) {
            m_path.lineTo(to);
            break;
        }
        to.time = snapped(to.time, keys);
        m_path = {};
        m_path.start(m_pathStart);
        m_path.lineTo(to);
        break;
    }
    case Mode::bend: m_path.setBend((m_parts.scale.beats(at.y()) - m_parts.scale.beats(m_from.y)) * pathUnits); break;
    default: break;
    }
}

void MasterGesture::drag(QPoint at, Qt::KeyboardModifiers keys)
{
    const TempoScale& scale = m_parts.scale;
    const QPoint way = at - pointOf(m_from);
    const bool isAcross = std::abs(way.x()) >= std::abs(way.y());
    const bool keepsOne = keys & Qt::ShiftModifier;
    const std::int64_t moved = std::int64_t{scale.time(at.x())} - m_from.time;
    m_ticks = 0;
    m_beats = 0;
    if (!m_hit->isTempo || !keepsOne || isAcross)
        m_ticks = std::int64_t{snapped(tick::shifted(m_hit->time, moved), keys)} - m_hit->time;
    if (std::abs(way.x()) < dragDistance) m_ticks = 0;
    if (m_hit->isTempo && (!keepsOne || !isAcross) && std::abs(way.y()) >= dragDistance)
        m_beats = rounded(scale.beats(scale.y(m_hit->beats) + way.y())) - m_hit->beats;
}

void MasterGesture::erase(QPoint from, QPoint to)
{
    const TempoScale& scale = m_parts.scale;
    const int left = std::min(from.x(), to.x()) - near;
    const int right = std::max(from.x(), to.x()) + near;
    const int top = std::min(from.y(), to.y()) - near;
    const int bottom = std::max(from.y(), to.y()) + near;
    for (const TempoPoint& point : m_parts.evnts.tempos(scale.time(left), tick::later(scale.time(right), 1))) {
        const QPoint place(scale.x(point.time), scale.y(point.beats));
        if (point.time != 0 && QRect(QPoint(left, top), QPoint(right, bottom)).contains(place))
            m_erased.insert(point.evnt);
    }
}

void MasterGesture::release(QPoint at, Qt::KeyboardModifiers keys)
{
    move(at, keys);
    switch (m_mode) {
    case Mode::waiting: click(keys); break;
    case Mode::band: selectBand(keys); break;
    case Mode::drag: {
        const auto ticks = m_ticks;
        const double beats = m_beats;
        const bool isTempo = m_hit->isTempo;
        const std::vector<EvntRef> refs = selected(isTempo);
        cancel();
        if (isTempo && (ticks != 0 || beats != 0)) m_parts.edits.moveTempos(refs, ticks, beats);
        if (!isTempo) m_parts.listEdits.move(refs, ticks);
        return;
    }
    case Mode::erase: {
        std::vector<EvntRef> refs;
        for (const TempoPoint& point : m_parts.evnts.tempos())
            if (m_erased.contains(point.evnt)) refs.push_back(m_parts.evnts.ref(point.evnt));
        cancel();
        if (!refs.empty()) m_parts.listEdits.remove(refs);
        return;
    }
    case Mode::draw:
        if (m_tool == EditTool::curve && m_path.first() != m_path.last()) {
            m_mode = Mode::bend;
            m_from = placeOf(at);
            return;
        }
        commitPath();
        return;
    default: break;
    }
    cancel();
}

void MasterGesture::click(Qt::KeyboardModifiers keys)
{
    if (!m_hit) {
        if (!(keys & (Qt::ControlModifier | Qt::ShiftModifier))) m_parts.select({});
        return;
    }
    if (!m_wasSelected) return; // selected at the press
    if (!(keys & Qt::ControlModifier)) {
        const EvntRef one[] = {m_parts.evnts.ref(m_hit->evnt)};
        m_parts.select(one);
        return;
    }
    std::vector<EvntRef> refs = m_parts.selection.inOrder();
    std::erase(refs, m_parts.evnts.ref(m_hit->evnt));
    m_parts.select(refs);
}

void MasterGesture::selectBand(Qt::KeyboardModifiers keys)
{
    const QRect area = *band();
    const TempoScale& scale = m_parts.scale;
    const auto [from, last] = std::minmax(m_from.time, m_now.time);
    const std::uint32_t to = tick::later(last, 1);
    std::vector<EvntRef> refs;
    if (keys & (Qt::ControlModifier | Qt::ShiftModifier)) refs = m_parts.selection.inOrder();
    const auto add = [&](POSITION evnt) {
        const EvntRef ref = m_parts.evnts.ref(evnt);
        if (std::find(refs.begin(), refs.end(), ref) == refs.end()) refs.push_back(ref);
    };
    for (const TempoPoint& point : m_parts.evnts.tempos(from, to))
        if (const int y = scale.y(point.beats); y >= area.top() && y <= area.bottom()) add(point.evnt);
    for (const MasterFlag& flag : m_parts.evnts.flags(from, to)) {
        const int y = TempoScale::yOfLane(flag.lane);
        if (y + TempoScale::laneHeight > area.top() && y <= area.bottom()) add(flag.evnt);
    }
    m_parts.select(refs);
}

void MasterGesture::commitPath()
{
    const std::vector<TempoPoint> points = drawn();
    const TickRange over{m_path.first(), tick::later(m_path.last(), 1)};
    cancel();
    m_parts.edits.drawTempos(points, over);
}

void MasterGesture::cancel()
{
    m_mode = Mode::none;
    m_hit.reset();
    m_path = {};
    m_erased.clear();
    m_ticks = 0;
    m_beats = 0;
}

std::optional<QRect> MasterGesture::band() const
{
    if (m_mode != Mode::band) return std::nullopt;
    return QRect(pointOf(m_from), pointOf(m_now)).normalized();
}

std::vector<TempoPoint> MasterGesture::drawn() const
{
    if (m_mode != Mode::draw && m_mode != Mode::bend) return {};
    return rampPoints(m_path, m_parts.editor, m_parts.grid);
}

std::optional<TempoPoint> MasterGesture::shown(const TempoPoint& point) const
{
    if (m_erased.contains(point.evnt)) return std::nullopt;
    if (m_mode != Mode::drag || !m_hit->isTempo || !isSelected(point.evnt)) return point;
    TempoPoint moved = point;
    if (point.time != 0) moved.time = tick::shifted(point.time, m_ticks);
    moved.beats += m_beats;
    return moved;
}

} // namespace tessaro
