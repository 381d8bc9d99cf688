// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/audio/audio_out.h"

namespace tessaro {

/// The audio device of a machine without one: takes frames at the pace of the clock and drops them.
class NullAudio : public AudioOut {
public:
    static constexpr unsigned standardRate = 48000;
    static constexpr std::size_t standardPeriod = 256;

    explicit NullAudio(Clock& clock);
    ~NullAudio() override;

private:
    Nanos step(Nanos now) noexcept;

    Nanos m_start{-1};
    std::uint64_t m_blocks = 0;
    std::unique_ptr<TimedTask> m_task;
};

} // namespace tessaro
