// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/grid_lines.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"

#include <algorithm>
#include <utility>

namespace tessaro {

GridLines::GridLines(const CEditor& editor, GridLength length, int swing)
    : m_editor(editor)
    , m_lengthOf(std::move(length))
    , m_swing(static_cast<std::uint32_t>(std::clamp(swing, 0, 100)))
{
}

void GridLines::enter(std::uint32_t time)
{
    if (time >= m_top && time < m_end) return;
    _EDT_MEAS at;
    m_editor.TimeToMeas(time, at);
    _EDT_MEASINFO meas;
    m_editor.GetMeasInfo(at.meas, meas);
    m_length = m_lengthOf(meas);
    m_top = m_editor.MeasToTime({at.meas - 1, 0, 0});
    m_end = m_editor.MeasToTime({at.meas, 0, 0});
    if (m_end <= m_top) m_end = tick::latest; // the last one that ticks can name
}

std::uint32_t GridLines::line(std::uint32_t number) const noexcept
{
    const std::uint64_t late = number % 2 == 0 ? 0 : std::uint64_t{m_length} * m_swing / 300;
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(m_top + std::uint64_t{m_length} * number + late, m_end));
}

std::uint32_t GridLines::nearest(std::uint32_t time)
{
    enter(time);
    if (m_length == 0) return time;
    const std::uint32_t number = (time - m_top) / m_length;
    const std::uint32_t earlier = line(line(number) > time ? number - 1 : number);
    const std::uint32_t later = line(line(number) > time ? number : number + 1);
    return later - time < time - earlier ? later : earlier;
}

std::uint32_t GridLines::atOrAfter(std::uint32_t time)
{
    enter(time);
    if (m_length == 0) return time;
    const std::uint32_t number = (time - m_top) / m_length;
    return line(number) >= time ? line(number) : line(number + 1);
}

std::uint32_t GridLines::length(std::uint32_t time)
{
    enter(time);
    return m_length;
}

} // namespace tessaro
