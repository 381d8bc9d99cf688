// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/midi_system.h"

namespace tessaro {

/// One output that takes everything and sounds nowhere, for a run in simulated time.
class SilentMidi final : public MidiSystem {
public:
    explicit SilentMidi(std::string name) : m_name(std::move(name)) {}

    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override { return {m_name}; }
    [[nodiscard]] std::vector<std::string> inputs() const override { return {}; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override
    {
        return driver == 0 ? std::make_unique<Out>() : nullptr;
    }
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t, MidiInSink&, std::size_t) override { return nullptr; }

private:
    struct Out final : MidiOut {
        bool send(std::span<const std::uint8_t>, Nanos) noexcept override { return true; }
    };

    std::string m_name;
};

} // namespace tessaro
