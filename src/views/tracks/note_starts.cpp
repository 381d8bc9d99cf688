// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/note_starts.h"

#include "views/tracks/note_walk.h"

#include <algorithm>

namespace tessaro {

NoteStarts::NoteStarts(const CTrk& track)
{
    forEachNote(track, [&](std::uint32_t time, const CEvnt& e) { m_starts.push_back({time, e.GetPost2()}); });
    m_starts.shrink_to_fit();
    const auto earlier = [](const Start& a, const Start& b) { return a.tick < b.tick; };
    if (!std::is_sorted(m_starts.begin(), m_starts.end(), earlier)) // blocks that overlap
        std::sort(m_starts.begin(), m_starts.end(), earlier);
}

int NoteStarts::loudest(std::uint32_t from, std::uint32_t to) const
{
    int most = 0;
    auto start = std::lower_bound(m_starts.begin(), m_starts.end(), from,
                                  [](const Start& s, std::uint32_t tick) { return s.tick < tick; });
    for (; start != m_starts.end() && start->tick < to; ++start) most = std::max<int>(most, start->velocity);
    return most;
}

} // namespace tessaro
