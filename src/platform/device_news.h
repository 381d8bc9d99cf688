// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <string>
#include <vector>

namespace tessaro {

/// When to tell that devices came or went. A removal is news at once, since everything has to be let go; the arrival
/// that brings things back, what still stands included, waits until all is quiet. So a burst of changes costs one
/// removal and one arrival. One thread at a time.
class DeviceNews {
public:
    static constexpr std::uint64_t arrival = 0x8000;
    static constexpr std::uint64_t removal = 0x8004;
    static constexpr Nanos quietTime = std::chrono::milliseconds(300);
    static constexpr Nanos longestWait = std::chrono::seconds(2);

    /// What is to be told now, the removal first.
    struct Due {
        bool removal = false;
        bool arrival = false;
        bool operator==(const Due&) const = default;
    };

    /// The devices at the start, sorted, which are no news.
    void reset(std::vector<std::string> devices) { m_known = std::move(devices); }
    /// The devices as they stand now, sorted.
    [[nodiscard]] Due look(Nanos now, std::vector<std::string> devices);
    /// Nothing has changed since the last look.
    [[nodiscard]] Due look(Nanos now);

private:
    std::vector<std::string> m_known;
    Nanos m_firstChange{};
    Nanos m_lastChange{};
    bool m_pending = false; ///< an arrival is to be told
    bool m_removed = false; ///< a removal has been told, and no arrival since
};

} // namespace tessaro
