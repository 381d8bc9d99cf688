// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/light_follower.h"

#include "core/edit/editor.h"
#include "views/tracks/track_rows.h"

namespace tessaro {
namespace {

constexpr std::uint32_t longestStep = 960;    ///< ticks between two looks, unless the position jumped
constexpr std::uint32_t startsAStep = 200000; ///< notes that one step may look through

} // namespace

void LightFollower::setStale(POSITION trk) { m_stale[static_cast<std::size_t>(Song::numberOf(trk))] = true; }

void LightFollower::follow(std::span<const TrackRow> rows, std::uint32_t now, int milliseconds)
{
    if (now < m_tick || now - m_tick > longestStep) m_tick = now; // it jumped
    m_lights.fade(milliseconds);
    std::uint32_t looked = 0;
    for (const TrackRow& row : rows) {
        const auto track = static_cast<std::size_t>(row.track);
        if (!row.sounding || !row.used) continue;
        if (m_stale[track] && looked < startsAStep) {
            m_starts[track] = NoteStarts(*m_editor.song().trk(row.track));
            looked += m_starts[track].count();
            m_stale[track] = false;
        }
        if (const int loudest = m_starts[track].loudest(m_tick, now + 1); loudest > 0)
            m_lights.strike(row.track, loudest);
    }
    m_tick = now + 1;
}

} // namespace tessaro
