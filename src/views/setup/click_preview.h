// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/devices.h"

#include <functional>
#include <optional>

namespace tessaro {

/// One bar of the metronome's click, to be heard before its settings are kept. Steps last half a beat: on the even ones
/// a click sounds, on the odd ones it ends.
class ClickPreview {
public:
    using Send = std::function<void(int port, std::uint8_t status, std::uint8_t key, std::uint8_t velocity)>;

    explicit ClickPreview(Send send) : m_send(std::move(send)) {}

    /// From the bar's start, whatever sounds.
    void start()
    {
        silence();
        m_step = 0;
    }
    /// False when the bar is over.
    bool step(const MetronomeSettings& metronome);
    /// Ends the click that sounds, on the port and channel where it began.
    void silence();

private:
    struct Click {
        int port;
        std::uint8_t status;
        std::uint8_t key;
    };

    Send m_send;
    std::optional<Click> m_sounding;
    int m_step = 0;
};

} // namespace tessaro
