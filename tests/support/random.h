// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <random>

namespace tessaro::test {

/// Repeatable random numbers for property tests.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : m_engine(seed) {}
    /// 0 to n - 1.
    std::uint32_t below(std::uint32_t n) { return static_cast<std::uint32_t>(m_engine() % n); }
    /// lo to hi, both included.
    std::uint32_t between(std::uint32_t lo, std::uint32_t hi) { return lo + below(hi - lo + 1); }
    /// True once in n.
    bool oneIn(std::uint32_t n) { return below(n) == 0; }
    std::uint8_t byteBelow(std::uint32_t n) { return static_cast<std::uint8_t>(below(n)); }

private:
    std::mt19937 m_engine;
};

} // namespace tessaro::test
