// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "realtime/loom/midi_system.h"

#include <memory>
#include <string>
#include <vector>

namespace tessaro {

/// One kind of MIDI port that this machine may offer. Ports go by name; a name stands for one port. User
/// interface thread, apart from `poll`. Outlives what it has opened.
class MidiBackend {
public:
    virtual ~MidiBackend();
    /// The ports that are there now.
    [[nodiscard]] virtual std::vector<std::string> outputs() = 0;
    [[nodiscard]] virtual std::vector<std::string> inputs() = 0;
    /// Whether an output leads to something that may sound, and not just back into this machine's inputs.
    [[nodiscard]] virtual bool sounds(const std::string& output) { return output.find("Midi Through") == output.npos; }
    /// Null when there is no such port, or it cannot be opened. An output is opened once at a time.
    [[nodiscard]] virtual std::unique_ptr<MidiOut> openOutput(const std::string& name) = 0;
    [[nodiscard]] virtual std::unique_ptr<MidiIn> openInput(const std::string& name, MidiInSink& sink) = 0;
    /// Looks after the connection to the system; background thread. True when ports may have come or gone since
    /// the last call.
    virtual bool poll([[maybe_unused]] Nanos now) { return false; }
    /// The service in use, as "JACK"; empty when it is not there.
    [[nodiscard]] virtual std::string service() const = 0;
};

} // namespace tessaro
