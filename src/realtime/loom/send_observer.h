// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"

#include <cstdint>
#include <optional>
#include <span>

namespace tessaro {

/// One message at the moment it leaves for a driver.
struct SentMessage {
    std::uint8_t port = 0;
    std::span<const std::uint8_t> bytes;   ///< borrowed for the call
    Nanos due{};                           ///< planned time
    Nanos sent{};                          ///< time of the call
    std::optional<std::uint32_t> songTick; ///< the queue record's `time`; none for what is sent outside the queue
};

/// Told of every message that leaves the engine. Called on the engine thread: no allocation, lock, file
/// or wait.
class TESSARO_API SendObserver {
public:
    virtual ~SendObserver();
    virtual void sent(const SentMessage& message) noexcept = 0;
};

} // namespace tessaro
