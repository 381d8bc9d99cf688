// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/time_line.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace tessaro {

/// The latest N values of something that changes along an axis, each with the place it holds from.
template <class Place, class Value, std::size_t N>
class Recent {
public:
    void clear() { m_size = 0; }
    /// From here on `value` holds; what was to hold behind is forgotten.
    void put(Place from, const Value& value)
    {
        while (m_size > 0 && newest(0).from >= from) --m_size, --m_end;
        m_entries[m_end++ % N] = {from, value};
        m_size = std::min(m_size + 1, N);
    }
    /// What holds there; the oldest value known when that place lies before all, null when there is none.
    [[nodiscard]] const Value* at(Place place) const
    {
        for (std::size_t i = 0; i < m_size; ++i)
            if (i + 1 == m_size || newest(i).from <= place) return &newest(i).value;
        return nullptr;
    }
    [[nodiscard]] bool empty() const { return m_size == 0; }

private:
    struct Entry {
        Place from{};
        Value value{};
    };
    [[nodiscard]] const Entry& newest(std::size_t back) const { return m_entries[(m_end - 1 - back) % N]; }

    std::array<Entry, N> m_entries{};
    std::size_t m_end = 0;
    std::size_t m_size = 0;
};

/// Where the song was at a time of the recent past, so that a message finds its tick also when a driver hands it over
/// late: which lines between time and ticks were in force, and which song tick belonged to each tick of the run. Ticks
/// are the nearest ones, the later of two equally near. Fixed room: of more than 256 changes of tempo, or jumps,
/// in the time that a message is late, the oldest are forgotten. Engine thread.
class SongPlace {
public:
    /// A run that has not begun: the song stands.
    void restart(std::uint32_t song);
    /// From `time` on ticks follow this line, but no further than `limit`.
    void follow(Nanos time, const TimeLine& line, std::int64_t limit = std::numeric_limits<std::int64_t>::max());
    /// From `time` on the run stands still.
    void stand(Nanos time) { follow(time, m_lines.at(time)->line, tickAt(time)); }
    /// From `tick` on the song goes on at `song`.
    void jump(std::int64_t tick, std::uint32_t song);
    /// The song stands while the run goes on.
    void hold(std::uint32_t song);

    /// The tick of the run at a time; not before restart() and follow().
    [[nodiscard]] std::int64_t tickAt(Nanos time) const;
    [[nodiscard]] std::uint32_t songAt(std::int64_t tick) const;

private:
    struct Line {
        TimeLine line;
        std::int64_t limit = 0;
    };
    struct Jump {
        std::int64_t tick = 0;
        std::uint32_t song = 0;
    };
    static constexpr std::size_t room = 256;

    Recent<Nanos, Line, room> m_lines;
    Recent<std::int64_t, Jump, room> m_jumps;
    std::uint32_t m_start = 0; // where the song stood before the first jump
};

/// The song tick at a distance from another, 0 at least.
[[nodiscard]] constexpr std::uint32_t songTickFrom(std::uint32_t song, std::int64_t distance)
{
    return static_cast<std::uint32_t>(std::max<std::int64_t>(std::int64_t{song} + distance, 0));
}

} // namespace tessaro
