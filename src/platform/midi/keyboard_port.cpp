// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/keyboard_port.h"

namespace tessaro {

class KeyboardPort::In final : public MidiIn {
public:
    In(KeyboardPort& keyboard, MidiInSink& sink) : m_keyboard(keyboard), m_sink(sink)
    {
        m_keyboard.m_open.push_back(this);
    }
    ~In() override { std::erase(m_keyboard.m_open, this); }
    void receive(std::span<const std::uint8_t> bytes, Nanos when) noexcept { m_sink.received(bytes, when); }

private:
    KeyboardPort& m_keyboard;
    MidiInSink& m_sink;
};

std::unique_ptr<MidiIn> KeyboardPort::openInput(const std::string& port, MidiInSink& sink)
{
    return port == name ? std::make_unique<In>(*this, sink) : nullptr;
}

void KeyboardPort::send(std::span<const std::uint8_t> message)
{
    const Nanos now = m_clock.now();
    for (In* in : m_open) in->receive(message, now);
}

} // namespace tessaro
