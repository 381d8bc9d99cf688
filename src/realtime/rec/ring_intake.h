// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/loom.h"

#include <cstdint>

namespace tessaro {

/// How far the engine's record ring has been taken in. Entries come one by one as messages, in order; at the end of a
/// take those still on their way are read from the ring, and when their messages come they are only to be freed, even
/// if another take has begun by then. User interface thread.
class RingIntake {
public:
    explicit RingIntake(const Loom& loom) noexcept : m_loom(loom) {}

    /// What stands in the ring now is not to be taken in.
    void skip() noexcept { m_taken = m_loom.getLoomWrdpt(); }
    /// An entry's message has come: whether it is still to be taken in.
    bool arrived(const LoomRingEntry& entry) noexcept
    {
        const auto index = static_cast<std::uint16_t>(&entry - m_loom.getLoomRecdata());
        const bool taken = distance(m_arrived, index) < distance(m_arrived, m_taken);
        m_arrived = after(index);
        if (!taken) m_taken = m_arrived;
        return !taken;
    }
    /// Hands over the entries whose messages have not come yet; none is freed.
    template <class Take>
    void takeRest(Take&& take)
    {
        const LoomRingEntry* entries = m_loom.getLoomRecdata();
        for (const std::uint16_t end = m_loom.getLoomWrdpt(); m_taken != end; m_taken = after(m_taken))
            take(entries[m_taken]);
    }

private:
    static constexpr std::uint16_t after(std::uint16_t index) noexcept
    {
        return static_cast<std::uint16_t>((index + 1U) % loomRingEntries);
    }
    static constexpr unsigned distance(std::uint16_t from, std::uint16_t to) noexcept
    {
        return (to + 0U + loomRingEntries - from) % loomRingEntries;
    }

    const Loom& m_loom;
    std::uint16_t m_arrived = 0; ///< behind the entry whose message came last
    std::uint16_t m_taken = 0;   ///< behind the entry that was taken in last; not before `m_arrived`
};

} // namespace tessaro
