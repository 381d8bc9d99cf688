// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/click_preview.h"

namespace tessaro {

bool ClickPreview::step(const MetronomeSettings& metronome)
{
    constexpr int steps = 8;
    silence();
    if (m_step >= steps) return false;
    const bool barStart = m_step == 0;
    if (m_step++ % 2 != 0) return true;
    const Click click{metronome.port, static_cast<std::uint8_t>(0x90 | (metronome.channel & 0x0F)),
                      static_cast<std::uint8_t>(barStart ? metronome.note1 : metronome.note2)};
    const int velocity = barStart ? metronome.velocity1 : metronome.velocity2;
    m_send(click.port, click.status, click.key, static_cast<std::uint8_t>(velocity));
    m_sounding = click;
    return true;
}

void ClickPreview::silence()
{
    if (m_sounding) m_send(m_sounding->port, m_sounding->status, m_sounding->key, 0);
    m_sounding.reset();
}

} // namespace tessaro
