// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/out_ports.h"

#include <atomic>
#include <cstdint>
#include <optional>

namespace tessaro {

/// The click, sounded from the beat markers of the queue.
class Metronome {
public:
    struct alignas(8) Settings {
        std::uint8_t port = 0;
        std::uint8_t channel = 9;
        std::uint8_t barKey = 22;
        std::uint8_t beatKey = 21;
        std::uint8_t barVelocity = 90;
        std::uint8_t beatVelocity = 90;
    };

    // Any thread.
    void set(const Settings& settings) { m_settings.store(settings, std::memory_order_relaxed); }
    void setOn(bool on) { m_on.store(on, std::memory_order_relaxed); }
    [[nodiscard]] bool isOn() const { return m_on.load(std::memory_order_relaxed); }

    // Engine thread. One click sounds at a time; its end matches its start whatever has been set since.
    void click(OutPorts& ports, bool barStart, Stamp stamp);
    void silence(OutPorts& ports, Stamp stamp);

private:
    struct Click {
        std::uint8_t port;
        std::uint8_t status;
        std::uint8_t key;
    };

    std::atomic<Settings> m_settings{Settings{}};
    std::atomic<bool> m_on = false;
    std::optional<Click> m_sounding;

    static_assert(std::atomic<Settings>::is_always_lock_free);
};

} // namespace tessaro
