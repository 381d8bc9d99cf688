// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/block_time.h"

#include <cmath>
#include <numbers>

namespace tessaro {

namespace {

constexpr double bandwidth = 0.5; ///< Hz; jitter above it is evened out
constexpr double farOff = 0.1;    ///< s beyond a block: not jitter any more

} // namespace

Nanos BlockTime::next(Nanos now, std::size_t frames, unsigned rate) noexcept
{
    const double called = std::chrono::duration<double>(now).count();
    const double length = static_cast<double>(frames) / rate;
    if (!m_running || std::abs(called - m_next) > farOff + length) {
        m_running = true;
        m_secondsPerFrame = 1.0 / rate;
        m_next = called;
    }
    const double late = called - m_next;
    const double block = m_next;
    const double omega = 2 * std::numbers::pi * bandwidth * length;
    m_next += std::numbers::sqrt2 * omega * late + m_secondsPerFrame * static_cast<double>(frames);
    m_secondsPerFrame += omega * omega * late / static_cast<double>(frames);
    return std::chrono::duration_cast<Nanos>(std::chrono::duration<double>(block));
}

} // namespace tessaro
