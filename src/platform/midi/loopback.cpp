// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/loopback.h"

#include <utility>

namespace tessaro {

class Loopback::Out : public MidiOut {
public:
    explicit Out(Loopback& cable) : m_cable(cable) {}
    bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override { return m_cable.deliver(bytes, due); }

private:
    Loopback& m_cable;
};

class Loopback::In : public MidiIn {
public:
    In(Loopback& cable, MidiInSink& sink) : m_cable(cable), m_sink(sink) {}
    ~In() override { m_cable.m_inputs.remove(*this); }
    void receive(std::span<const std::uint8_t> bytes, Nanos when) noexcept { m_sink.received(bytes, when); }

private:
    Loopback& m_cable;
    MidiInSink& m_sink;
};

std::unique_ptr<MidiOut> Loopback::openOutput(const std::string& port)
{
    return port == name ? std::make_unique<Out>(*this) : nullptr;
}

std::unique_ptr<MidiIn> Loopback::openInput(const std::string& port, MidiInSink& sink)
{
    if (port != name) return nullptr;
    auto in = std::make_unique<In>(*this, sink);
    return m_inputs.add(*in) ? std::move(in) : nullptr;
}

bool Loopback::deliver(std::span<const std::uint8_t> bytes, Nanos due) noexcept
{
    if (m_delivering || bytes.empty()) return false;
    m_delivering = true;
    m_inputs.forEach([&](In& in) { in.receive(bytes, due); });
    m_delivering = false;
    return true;
}

} // namespace tessaro
