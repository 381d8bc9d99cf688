// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/midi_system.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace tessaro {

using Bytes = std::vector<std::uint8_t>;

/// Keeps what an input receives.
class RecordingSink : public MidiInSink {
public:
    void received(std::span<const std::uint8_t> bytes, Nanos when) noexcept override
    {
        const std::lock_guard guard(m_lock);
        m_messages.emplace_back(bytes.begin(), bytes.end());
        m_times.push_back(when);
    }
    void inputError() noexcept override { ++errors; }

    [[nodiscard]] std::vector<Bytes> messages() const
    {
        const std::lock_guard guard(m_lock);
        return m_messages;
    }
    [[nodiscard]] std::vector<Nanos> times() const
    {
        const std::lock_guard guard(m_lock);
        return m_times;
    }
    [[nodiscard]] Bytes stream() const
    {
        const std::lock_guard guard(m_lock);
        Bytes all;
        for (const Bytes& message : m_messages) all.insert(all.end(), message.begin(), message.end());
        return all;
    }

    std::atomic<int> errors{0};

private:
    mutable std::mutex m_lock;
    std::vector<Bytes> m_messages;
    std::vector<Nanos> m_times;
};

/// True as soon as `done` is, false after `atMost`.
template <class Done>
bool waitFor(Done&& done, std::chrono::milliseconds atMost = std::chrono::seconds(10))
{
    const auto end = std::chrono::steady_clock::now() + atMost;
    while (!done()) {
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

/// A system exclusive of this size, 0xF0 and 0xF7 included, with bytes that tell their places.
inline Bytes sysexOf(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>((i * 31 + i / 128) & 0x7F);
    bytes.front() = 0xF0;
    bytes.back() = 0xF7;
    return bytes;
}

} // namespace tessaro
