// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/simulated_ports.h"

namespace tessaro::cli {

namespace {

constexpr std::size_t portCount = 128;

class SilentOut final : public MidiOut {
public:
    bool send(std::span<const std::uint8_t>, Nanos) noexcept override { return true; }
};

} // namespace

std::vector<std::string> SimulatedPorts::outputs() const { return std::vector<std::string>(portCount, "Simulated"); }

std::unique_ptr<MidiOut> SimulatedPorts::openOutput(std::size_t driver)
{
    return driver < portCount ? std::make_unique<SilentOut>() : nullptr;
}

} // namespace tessaro::cli
