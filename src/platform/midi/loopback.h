// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/midi/midi_backend.h"
#include "platform/rt_slots.h"

#include <atomic>

namespace tessaro {

/// A cable inside the program: what goes to the output "Loopback" comes in at the input "Loopback", at once, on
/// the sender's thread, whole, stamped with its due time. What a receiver sends from within its reception is
/// dropped, so that the cable cannot feed itself.
class Loopback : public MidiBackend {
public:
    static constexpr const char* name = "Loopback";
    static constexpr std::size_t maxInputs = 16;

    [[nodiscard]] std::vector<std::string> outputs() override { return {name}; }
    [[nodiscard]] std::vector<std::string> inputs() override { return {name}; }
    [[nodiscard]] bool sounds(const std::string&) override { return false; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(const std::string& port) override;
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(const std::string& port, MidiInSink& sink) override;
    [[nodiscard]] std::string service() const override { return {}; }

private:
    class Out;
    class In;
    bool deliver(std::span<const std::uint8_t> bytes, Nanos due) noexcept;

    RtSlots<In, maxInputs> m_inputs;
    bool m_delivering = false; ///< sender's thread only
};

} // namespace tessaro
