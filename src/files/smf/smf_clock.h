// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tessaro {

/// The time inside a chunk: song ticks, and the rest that the conversion from the file's division has left
/// over so far, so that rounding never adds up. Ticks wrap at 32 bits.
class SmfClock {
public:
    explicit SmfClock(std::uint16_t division = 480) noexcept : m_division(division) {}

    void restart() noexcept { m_time = m_rest = 0; }

    /// Steps on by a delta of the file.
    void advance(std::uint32_t delta) noexcept
    {
        if (delta == 0) return;
        const std::uint64_t units = std::uint64_t{delta} * 480 + m_rest;
        m_time += static_cast<std::uint32_t>(units / m_division);
        m_rest = static_cast<std::uint32_t>(units % m_division);
    }

    [[nodiscard]] std::uint32_t time() const noexcept { return m_time; }
    [[nodiscard]] std::uint32_t rest() const noexcept { return m_rest; }

    /// What a clock would show that was started at an earlier time and rest of this one.
    [[nodiscard]] std::uint32_t since(std::uint32_t time, std::uint32_t rest) const noexcept
    {
        return m_time - time - (m_rest < rest ? 1U : 0U);
    }

private:
    std::uint32_t m_division;
    std::uint32_t m_time = 0;
    std::uint32_t m_rest = 0; ///< in ticks divided by the division, below the division
};

} // namespace tessaro
