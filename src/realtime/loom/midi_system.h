// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

/// An open MIDI output. Created and destroyed on the user interface thread; sending is the engine's.
class TESSARO_API MidiOut {
public:
    virtual ~MidiOut();
    /// Takes one message (status byte first, no running status; a system exclusive with its 0xF0 and
    /// 0xF7, or a slice of one). `due` is the exact time of the message on the engine's clock; it may lie
    /// a little in the past. Engine thread: no allocation, no lock, no wait. False: the message is lost.
    virtual bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept = 0;
    /// True while a system exclusive taken earlier is still under way. Any thread.
    [[nodiscard]] virtual bool busy() const noexcept { return false; }
};

/// Takes what an open MIDI input receives.
class TESSARO_API MidiInSink {
public:
    virtual ~MidiInSink();
    /// One whole message, or a slice of a system exclusive: the first slice starts with 0xF0, the last
    /// ends with 0xF7. `when` is the time of arrival on the engine's clock. Called on the driver's thread,
    /// one thread for the life of an input; never blocks or allocates.
    virtual void received(std::span<const std::uint8_t> bytes, Nanos when) noexcept = 0;
    /// The driver lost data. Same thread as `received`.
    virtual void inputError() noexcept = 0;
};

/// An open MIDI input; closing it is destroying it. After the destructor the sink is not called again.
class TESSARO_API MidiIn {
public:
    virtual ~MidiIn();
};

/// The MIDI devices of this machine: two lists of drivers, named by their index. User interface thread,
/// except where a line says otherwise.
class TESSARO_API MidiSystem {
public:
    virtual ~MidiSystem();
    /// Looks for devices anew; indices may change. Open devices stay open.
    virtual void refresh() = 0;
    [[nodiscard]] virtual std::vector<std::string> outputs() const = 0;
    [[nodiscard]] virtual std::vector<std::string> inputs() const = 0;
    /// Whether a person can hear what is sent to this output; not so for a cable that only leads back.
    [[nodiscard]] virtual bool sounds([[maybe_unused]] std::size_t driver) const { return true; }
    /// Null when the driver cannot be opened or the index is outside the list.
    [[nodiscard]] virtual std::unique_ptr<MidiOut> openOutput(std::size_t driver) = 0;
    [[nodiscard]] virtual std::unique_ptr<MidiIn> openInput(std::size_t driver, MidiInSink& sink,
                                                            std::size_t bufferSize) = 0;
};

} // namespace tessaro
