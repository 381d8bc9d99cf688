// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "realtime/loom/midi_system.h"
#include "realtime/transport/typed_keys.h"

#include <string>
#include <vector>

namespace tessaro {

/// MIDI inputs that a test plays. What is played while nobody has the input open is lost.
class PlayedInputs {
public:
    explicit PlayedInputs(Clock& clock) : m_clock(clock) {}

    std::vector<std::string> names;

    [[nodiscard]] int opened() const { return m_opened; }
    void play(std::size_t driver, std::span<const std::uint8_t> message)
    {
        if (m_sink && m_opened == static_cast<int>(driver)) m_sink->received(message, m_clock.now());
    }
    std::unique_ptr<MidiIn> open(std::size_t driver, MidiInSink& sink)
    {
        if (driver >= names.size()) return nullptr;
        m_opened = static_cast<int>(driver);
        m_sink = &sink;
        return std::make_unique<In>(*this);
    }

private:
    struct In final : MidiIn {
        explicit In(PlayedInputs& all) : inputs(all) {}
        ~In() override
        {
            inputs.m_sink = nullptr;
            inputs.m_opened = -1;
        }
        PlayedInputs& inputs;
    };

    Clock& m_clock;
    MidiInSink* m_sink = nullptr;
    int m_opened = -1;
};

/// The computer's keyboard, as the input behind all the others.
class PlayedKeys final : public TypedKeys {
public:
    explicit PlayedKeys(PlayedInputs& inputs) : m_inputs(inputs) {}

    std::string driverName() const override { return "Computer keyboard"; }
    void send(std::span<const std::uint8_t> message) override { m_inputs.play(m_inputs.names.size() - 1, message); }

private:
    PlayedInputs& m_inputs;
};

} // namespace tessaro
