// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

class MessageTarget;

/// Channel from 0; the first note sounds at the start of a bar, the second at the other beats.
struct MetronomeSettings {
    int port = 1;
    int channel = 9;
    int note1 = 22;
    int note2 = 21;
    int velocity1 = 90;
    int velocity2 = 90;

    bool operator==(const MetronomeSettings&) const = default;
};

enum class EngineStart { started, noMemory, noTimer };

/// The real-time layer as the application's settings see it: device lists, the engine's start, ports,
/// filters and immediate sending. Main thread only, apart from the two send calls. A driver goes by its index
/// in the list; an index outside it means no device. Filter masks have a set bit for each kind that is
/// dropped.
class TESSARO_API DevicePort {
public:
    virtual ~DevicePort();

    /// Looks for devices anew. A device that cannot be asked keeps its place under the name "---".
    virtual void enumerate() = 0;
    [[nodiscard]] virtual std::vector<std::string> midiOutNames() const = 0;
    [[nodiscard]] virtual std::vector<std::string> midiInNames() const = 0;
    [[nodiscard]] virtual std::vector<std::string> waveInNames() const = 0;
    [[nodiscard]] virtual std::vector<std::string> waveOutNames() const = 0;

    /// Whether a person can hear what is sent to this output driver; not so for a cable that only leads back.
    [[nodiscard]] virtual bool sounds([[maybe_unused]] int driver) const { return true; }

    /// Starts the engine without open devices. A second call does nothing and answers `started`.
    virtual EngineStart startEngine() = 0;
    /// Stops the engine and closes every device.
    virtual void stopEngine() = 0;

    /// Closes all outputs and opens one port for each entry. False when a driver failed to open; the
    /// other ports stand.
    virtual bool setOutPorts(std::span<const std::int32_t> drivers, std::uint32_t bufferSize,
                             std::uint32_t intervalMs) = 0;
    /// The mask applies to all tracks; `realTime` lets Start, Stop, Continue, Song Position and clock out.
    virtual void setOutFilter(std::uint32_t mask, bool realTime) = 0;
    virtual bool setInPort(int driver, std::uint32_t bufferSize) = 0;
    /// `dropController` holds 1 for each controller that is not recorded.
    virtual void setInFilter(std::uint32_t mask, const std::array<std::uint8_t, 128>& dropController) = 0;
    virtual void setThruFlag() = 0;
    /// 0x80 turns thru off. False when the port cannot be set.
    virtual bool setThruPort(int port) = 0;
    virtual void setThruFilter(std::uint32_t mask) = 0;
    /// -1 leaves channels as they come.
    virtual void setThruCh(int channel) = 0;
    virtual void setThruTrans(int semitones) = 0;
    /// 0 internal, 1 MIDI.
    virtual void setSyncMode(int mode) = 0;
    virtual void setMetronome(const MetronomeSettings& metronome) = 0;
    virtual void setWavePorts(std::span<const std::int32_t> drivers) = 0;

    /// Sends at once, ahead of the queue. Any thread. The result is the engine's status word, 0 for success.
    virtual unsigned sendShort(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2) = 0;
    /// Sends in chunks with pauses where the bytes exceed the output buffer. Any thread.
    virtual unsigned sendLong(int port, std::span<const std::uint8_t> bytes) = 0;
    /// Registers a receiver of played messages; -1 when all 8 slots are in use.
    virtual int setPlayOwner(MessageTarget* owner, std::uint8_t mask) = 0;
    virtual void releasePlayOwner(int slot) = 0;
};

} // namespace tessaro
