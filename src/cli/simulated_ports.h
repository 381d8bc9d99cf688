// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/midi_system.h"

namespace tessaro::cli {

/// Outputs that take everything and play nothing, one for each port an engine can have.
class SimulatedPorts final : public MidiSystem {
public:
    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override;
    [[nodiscard]] std::vector<std::string> inputs() const override { return {}; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override;
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t, MidiInSink&, std::size_t) override { return nullptr; }
};

} // namespace tessaro::cli
