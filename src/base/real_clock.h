// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <atomic>

namespace tessaro {

/// The time of the machine since it started, not set by anybody (CLOCK_MONOTONIC). Each task is a
/// thread of its own that waits for absolute deadlines, so lateness does not add up. A wake() that
/// meets the deadline may cost one step more than asked for. Any thread; it outlives its tasks.
class TESSARO_API RealClock final : public Clock {
public:
    [[nodiscard]] Nanos now() const noexcept override;
    void sleepUntil(Nanos deadline) override;
    /// Raises std::system_error when the system gives no more threads. A refused priority is no error.
    [[nodiscard]] std::unique_ptr<TimedTask> start(Urgency urgency, Step step) override;
    [[nodiscard]] bool realtimeGranted() const noexcept override { return !m_refused.load(); }

private:
    std::atomic<bool> m_refused = false;
};

} // namespace tessaro
