// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/input_gate.h"

#include <algorithm>

namespace tessaro {

void InputGate::received(std::span<const std::uint8_t> bytes, Nanos when) noexcept
{
    while (!bytes.empty()) {
        InputPacket packet;
        const std::size_t size = std::min(bytes.size(), InputPacket::room);
        packet.when = when;
        packet.size = static_cast<std::uint16_t>(size);
        packet.gap = m_gap;
        std::copy_n(bytes.begin(), size, packet.bytes.begin());
        m_gap = !m_ring.push(packet);
        if (m_gap) {
            m_lost = true;
            break;
        }
        bytes = bytes.subspan(size);
    }
    m_waker.wake();
}

void InputGate::inputError() noexcept
{
    m_gap = true;
    m_lost = true;
}

} // namespace tessaro
