// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/time_line.h"

#include <atomic>
#include <cstdint>

namespace tessaro {

/// The tempo in force: base, relative change in thousandths, trim in millionths. New values are asked for by any
/// thread and taken over by the engine in one go, so that a tempo played from the queue meanwhile is not lost.
class TempoControl {
public:
    static constexpr int relativeMin = -999;
    static constexpr int relativeMax = 999'000;

    // Any thread.
    void setBase(std::uint32_t tempo);
    void setRelative(int thousandths);
    void setTrim(int millionths);
    /// Lets the engine take over what was set.
    void request();
    [[nodiscard]] int relative() const { return m_relative.load(std::memory_order_relaxed); }
    [[nodiscard]] int trim() const { return m_trim.load(std::memory_order_relaxed); }
    /// Whole beats a minute.
    [[nodiscard]] int baseBeats() const;
    [[nodiscard]] int realBeats() const;

    // Engine thread.
    /// True when a request was taken over and length() may have changed.
    bool takeRequest();
    /// A tempo record is played.
    void play(std::uint32_t tempo);
    [[nodiscard]] TickLength length() const { return lengthAt(m_engine.base); }
    /// Once this tempo is played.
    [[nodiscard]] TickLength lengthAt(std::uint32_t tempo) const;

private:
    std::atomic<std::uint32_t> m_base = 500'000; // as shown
    std::atomic<std::int32_t> m_relative = 0;
    std::atomic<std::int32_t> m_trim = 0;
    std::atomic<std::uint32_t> m_setBase = 0;   // set, not yet asked for; 0: none
    std::atomic<std::uint32_t> m_askedBase = 0; // asked for, not yet taken
    std::atomic<bool> m_asked = false;

    struct {
        std::uint32_t base = 500'000;
        std::int32_t relative = 0;
        std::int32_t trim = 0;
    } m_engine;
};

} // namespace tessaro
