// SPDX-License-Identifier: GPL-3.0-or-later
#include "streams/studio.h"

#include <algorithm>

namespace tessaro::test {

namespace {

class SilentOut final : public MidiOut {
public:
    bool send(std::span<const std::uint8_t>, Nanos) noexcept override { return true; }
};

} // namespace

std::unique_ptr<MidiOut> Cables::openOutput(std::size_t driver)
{
    if (driver == silence) return std::make_unique<SilentOut>();
    return driver == cable ? loopback.openOutput(Loopback::name) : nullptr;
}

std::unique_ptr<MidiIn> Cables::openInput(std::size_t driver, MidiInSink& sink, std::size_t)
{
    return driver == 0 ? loopback.openInput(Loopback::name, sink) : nullptr;
}

void TickTimes::sent(const SentMessage& message) noexcept
{
    const bool noteOn = (message.bytes[0] & 0xF0) == 0x90 && message.bytes[2] != 0;
    if (!noteOn || message.port != 0 || !message.songTick) return;
    const std::size_t index = *message.songTick / step;
    if (index >= m_dues.size()) return;
    m_dues[index] = message.due;
    m_late[index] = message.sent - message.due;
    m_count = index + 1;
}

Nanos TickTimes::at(std::uint32_t tick) const
{
    const std::size_t index = std::min<std::size_t>(tick / step, m_count - 2);
    const Nanos length = m_dues[index + 1] - m_dues[index];
    return m_dues[index] + length * (tick - static_cast<std::uint32_t>(index) * step) / step;
}

Nanos TickTimes::lateness(double part) const
{
    std::vector<Nanos> late(m_late.begin(), m_late.begin() + static_cast<std::ptrdiff_t>(m_count));
    const auto at = late.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(late.size() - 1));
    std::nth_element(late.begin(), at, late.end());
    return *at;
}

} // namespace tessaro::test
