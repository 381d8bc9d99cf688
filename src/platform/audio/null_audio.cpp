// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/null_audio.h"

#include <array>

namespace tessaro {

NullAudio::NullAudio(Clock& clock) : AudioOut(std::make_shared<AudioTap>(clock), standardRate, standardPeriod)
{
    m_task = clock.start(Urgency::feeder, [this](Nanos now) { return step(now); });
}

NullAudio::~NullAudio() { m_task.reset(); }

// Deadlines count from the start, so lateness does not add up; after a long standstill they start over.
Nanos NullAudio::step(Nanos now) noexcept
{
    constexpr Nanos second = std::chrono::seconds(1);
    const auto blockStart = [this](std::uint64_t block) {
        return m_start + Nanos(static_cast<std::int64_t>(block * standardPeriod * std::nano::den / standardRate));
    };
    if (m_start < Nanos::zero() || now > blockStart(m_blocks) + second) {
        m_start = now;
        m_blocks = 0;
    }
    if (now < blockStart(m_blocks)) return blockStart(m_blocks); // woken early
    std::array<float, standardPeriod> left;
    std::array<float, standardPeriod> right;
    tap().pull(left.data(), right.data(), standardPeriod);
    return blockStart(++m_blocks);
}

} // namespace tessaro
