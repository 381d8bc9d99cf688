// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/model/records.h"

#include <cstdint>
#include <vector>

namespace tessaro {

/// Microseconds a quarter note from 3 bytes, most significant first.
[[nodiscard]] constexpr std::uint32_t ReadTempo(const std::uint8_t* data) noexcept
{
    return (std::uint32_t{data[0]} << 16U) | (std::uint32_t{data[1]} << 8U) | data[2];
}

/// A node of the tempo map.
class TESSARO_API CTimeInfo {
public:
    CTimeInfo() = default;
    explicit CTimeInfo(const _EDT_TIMEINFO& rec) noexcept : m_rec(rec) {}
    [[nodiscard]] const _EDT_TIMEINFO& rec() const noexcept { return m_rec; }

    /// Rewrites the tempo of the node that stands at `prev`'s time; false for a tempo of 0.
    bool Set(const _EDT_TIMEINFO& prev, std::uint32_t tempo) noexcept;
    /// A node at `time` behind `prev`; `rem` carries what the milliseconds leave over. False for tempo 0.
    bool Set(const _EDT_TIMEINFO& prev, std::uint32_t time, std::uint32_t tempo, std::uint32_t& rem) noexcept;

private:
    _EDT_TIMEINFO m_rec;
};

/// The tempo map: ticks to milliseconds and back. A cache of the song's tempo events, rebuilt and never
/// edited; answers are found by bisection. User interface thread; the feeder reads it while no edit runs.
class TESSARO_API TempoMap {
public:
    /// Starts a new map: 120 beats a minute from tick 0.
    void begin();
    /// Adds a tempo at a time not before the last one. False for a tempo of 0, and the map stays as it is.
    bool add(std::uint32_t time, std::uint32_t tempo);
    void clear() noexcept { m_nodes.clear(); }

    [[nodiscard]] std::uint32_t count() const noexcept { return static_cast<std::uint32_t>(m_nodes.size()); }
    /// The node of this index, counted from 0 and below `count`.
    [[nodiscard]] const _EDT_TIMEINFO& node(std::uint32_t index) const noexcept { return m_nodes[index].rec(); }
    /// The node in force at `time`; time 0, millisecond 0, tempo 500000 on an empty map.
    [[nodiscard]] _EDT_TIMEINFO GetTimeInfo(std::uint32_t time) const noexcept;
    [[nodiscard]] _EDT_TIMEINFO GetHeadTimeInfo() const noexcept;
    [[nodiscard]] std::uint32_t TimeToMsecond(std::uint32_t time) const noexcept;
    [[nodiscard]] std::uint32_t MsecondToTime(std::uint32_t msec) const noexcept;

private:
    std::vector<CTimeInfo> m_nodes;
    std::uint32_t m_rem = 0;
};

} // namespace tessaro
