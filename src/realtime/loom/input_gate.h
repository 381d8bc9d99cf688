// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/ring.h"
#include "realtime/loom/midi_system.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace tessaro {

/// A piece of what an input received, at most one message.
struct InputPacket {
    static constexpr std::size_t room = 244;

    Nanos when{};
    std::uint16_t size = 0;
    bool gap = false; ///< something was lost before it
    std::array<std::uint8_t, room> bytes{};
};

/// Wakes the engine's task while there is one. Any thread; the task is set and cleared while nobody wakes.
class Waker {
public:
    void set(TimedTask* task) noexcept { m_task.store(task, std::memory_order_release); }
    [[nodiscard]] bool hasTask() const noexcept { return m_task.load(std::memory_order_acquire) != nullptr; }
    void wake() const noexcept
    {
        if (TimedTask* task = m_task.load(std::memory_order_acquire)) task->wake();
    }

private:
    std::atomic<TimedTask*> m_task = nullptr;
};

/// The road from a driver's thread to the engine: what arrives is stamped, put into a ring of packets, and the engine
/// is woken. What does not fit is reported as lost.
class InputGate final : public MidiInSink {
public:
    InputGate(const Waker& waker, std::atomic<bool>& lost) : m_waker(waker), m_lost(lost) {}

    // Driver's thread.
    void received(std::span<const std::uint8_t> bytes, Nanos when) noexcept override;
    void inputError() noexcept override;

    /// Between two inputs: a message left unfinished by the one is not continued by the next.
    void restart() noexcept { m_gap = true; }

    /// Engine thread.
    [[nodiscard]] const InputPacket* front() noexcept { return m_ring.front(); }
    void pop() noexcept { m_ring.drop(); }

private:
    SpscRing<InputPacket, 1024> m_ring;
    const Waker& m_waker;
    std::atomic<bool>& m_lost;
    bool m_gap = false; // driver's side
};

} // namespace tessaro
