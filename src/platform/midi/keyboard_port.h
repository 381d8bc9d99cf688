// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/midi/midi_backend.h"
#include "realtime/transport/typed_keys.h"

namespace tessaro {

/// The computer's keyboard as a MIDI input: what the program sends comes in at once, stamped with the time of now.
class KeyboardPort final : public MidiBackend, public TypedKeys {
public:
    static constexpr const char* name = "Computer Keyboard";

    /// The clock outlives it.
    explicit KeyboardPort(const Clock& clock) : m_clock(clock) {}

    [[nodiscard]] std::vector<std::string> outputs() override { return {}; }
    [[nodiscard]] std::vector<std::string> inputs() override { return {name}; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(const std::string&) override { return nullptr; }
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(const std::string& port, MidiInSink& sink) override;
    [[nodiscard]] std::string service() const override { return {}; }

    [[nodiscard]] std::string driverName() const override { return name; }
    void send(std::span<const std::uint8_t> message) override;

private:
    class In;

    const Clock& m_clock;
    std::vector<In*> m_open;
};

} // namespace tessaro
