// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/ring.h"
#include "realtime/loom/out_ports.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tessaro {

/// Messages that leave at once, from any thread to the engine. One caller's messages keep their order. The bytes of
/// a long message are copied; the engine hands the copy back and a later caller frees it.
class ImmediateSender {
public:
    ImmediateSender() = default;
    ~ImmediateSender();
    ImmediateSender(const ImmediateSender&) = delete;
    ImmediateSender& operator=(const ImmediateSender&) = delete;

    // Any thread. False when the line is full or there is no memory.
    bool putShort(int port, std::span<const std::uint8_t> message) noexcept;
    bool putLong(int port, std::span<const std::uint8_t> bytes) noexcept;
    /// True from putLong on until the driver is done with the message.
    [[nodiscard]] bool longUnderWay() const noexcept;
    void forgetLong() noexcept;

    // Engine thread.
    void drain(OutPorts& ports, Nanos now) noexcept;

private:
    struct Long;
    struct Item {
        Long* big = nullptr;
        std::uint8_t port = 0;
        std::uint8_t size = 0;
        std::array<std::uint8_t, 3> bytes{};
    };

    void giveBack(Long* message) noexcept;
    void reclaim() noexcept;

    MpscQueue<Item, 16'384> m_line;
    std::atomic<Long*> m_done = nullptr;   // a stack of sent messages, to be freed
    std::atomic<std::uint64_t> m_put = 0;  // long messages ever put
    std::atomic<std::uint64_t> m_sent = 0; // and handed to a driver or forgotten
    std::atomic<bool> m_busy = false;      // a driver is not done with one
    bool m_watching = false;               // engine: a long message was sent since m_busy was last false
};

} // namespace tessaro
