// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

class Loom;

/// Sends ahead of the queue, with the chunks and pauses that long messages need. Sending from any thread; the chunk
/// size is the user interface thread's. Results are the engine's status word, 0 for success.
class DirectSender {
public:
    DirectSender(Loom& loom, Clock& clock) : m_loom(loom), m_clock(clock) {}

    /// Bytes that go out in one piece, and the pause behind each piece but the last.
    void setChunks(std::uint32_t size, std::uint32_t intervalMs) noexcept;
    [[nodiscard]] std::uint32_t chunkSize() const noexcept { return m_chunk.load(std::memory_order_relaxed); }

    unsigned shortMessage(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2);
    unsigned longMessage(int port, std::span<const std::uint8_t> bytes);
    /// A system exclusive or a continuation of one as the song keeps it. Returns when it has left and the receiver has
    /// had the time to take it in.
    void songSysex(std::uint8_t port, std::uint8_t status, std::span<const std::uint8_t> payload);
    void sleep(unsigned ms) { m_clock.sleepFor(std::chrono::milliseconds{ms}); }

private:
    void waitForLongEnd();

    Loom& m_loom;
    Clock& m_clock;
    std::atomic<std::uint32_t> m_chunk{4096};
    std::atomic<std::uint32_t> m_intervalMs{2000};
    std::vector<std::uint8_t> m_sysex; ///< of songSysex
};

} // namespace tessaro
