// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/trk.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace tessaro {

/// Where each track's messages go, and what is filtered out of them. Written by the user interface thread, also while
/// a song plays; read by the feeder. A change holds from the next event on.
class TrackTable {
public:
    [[nodiscard]] std::uint8_t port(int track) const noexcept { return at(track).port.load(std::memory_order_relaxed); }
    [[nodiscard]] std::uint8_t channel(int track) const noexcept
    {
        return at(track).channel.load(std::memory_order_relaxed);
    }
    [[nodiscard]] std::uint32_t filter(int track) const noexcept
    {
        return at(track).filter.load(std::memory_order_relaxed);
    }

    void setPort(int track, std::uint8_t port) noexcept { at(track).port.store(port, std::memory_order_relaxed); }
    void setChannel(int track, std::uint8_t channel) noexcept
    {
        at(track).channel.store(channel & 0x0FU, std::memory_order_relaxed);
    }
    /// One mask for all tracks.
    void setFilter(std::uint32_t mask) noexcept
    {
        for (Entry& e : m_entries) e.filter.store(mask, std::memory_order_relaxed);
    }

private:
    struct Entry {
        std::atomic<std::uint32_t> filter{0};
        std::atomic<std::uint8_t> port{0};
        std::atomic<std::uint8_t> channel{0};
    };
    [[nodiscard]] const Entry& at(int track) const noexcept { return m_entries[static_cast<std::size_t>(track)]; }
    [[nodiscard]] Entry& at(int track) noexcept { return m_entries[static_cast<std::size_t>(track)]; }

    std::array<Entry, trackCount> m_entries;
};

} // namespace tessaro
