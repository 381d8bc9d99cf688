// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/song_place.h"

namespace tessaro {

void SongPlace::restart(std::uint32_t song)
{
    m_lines.clear();
    hold(song);
}

void SongPlace::hold(std::uint32_t song)
{
    m_jumps.clear();
    m_start = song;
}

void SongPlace::follow(Nanos time, const TimeLine& line, std::int64_t limit) { m_lines.put(time, {line, limit}); }

void SongPlace::jump(std::int64_t tick, std::uint32_t song)
{
    // Most records only say what is known.
    if (!m_jumps.empty() && songAt(tick) == song) return;
    m_jumps.put(tick, {tick, song});
}

std::int64_t SongPlace::tickAt(Nanos time) const
{
    const Line* line = m_lines.at(time);
    return line ? std::min(line->line.nearestTickAt(time), line->limit) : 0;
}

std::uint32_t SongPlace::songAt(std::int64_t tick) const
{
    const Jump* jump = m_jumps.at(tick);
    return jump && tick >= jump->tick ? songTickFrom(jump->song, tick - jump->tick) : m_start;
}

} // namespace tessaro
