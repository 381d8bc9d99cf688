// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/metronome.h"

#include "realtime/loom/midi_bytes.h"

#include <array>

namespace tessaro {

void Metronome::click(OutPorts& ports, bool barStart, Stamp stamp)
{
    silence(ports, stamp);
    const Settings s = m_settings.load(std::memory_order_relaxed);
    const Click click{.port = s.port,
                      .status = static_cast<std::uint8_t>(midi::noteOn | channelOf(s.channel)),
                      .key = barStart ? s.barKey : s.beatKey};
    const std::uint8_t velocity = barStart ? s.barVelocity : s.beatVelocity;
    const std::array<std::uint8_t, 3> message{click.status, click.key, velocity};
    if (velocity == 0 || !isShortMessage(message)) return;
    if (ports.send(click.port, message, stamp)) m_sounding = click;
}

void Metronome::silence(OutPorts& ports, Stamp stamp)
{
    if (!m_sounding) return;
    const std::array<std::uint8_t, 3> message{m_sounding->status, m_sounding->key, 0};
    ports.send(m_sounding->port, message, stamp);
    m_sounding.reset();
}

} // namespace tessaro
