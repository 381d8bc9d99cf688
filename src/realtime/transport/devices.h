// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/ports/devices.h"

namespace tessaro {

class MidiSystem;
class Smc;

/// The devices of the application's settings: the drivers of the machine, opened and set through the real-time layer.
/// The lists keep what the last `enumerate` found.
class TESSARO_API Devices final : public DevicePort {
public:
    Devices(Smc& smc, MidiSystem& midi);

    void enumerate() override;
    [[nodiscard]] std::vector<std::string> midiOutNames() const override { return m_outs; }
    [[nodiscard]] std::vector<std::string> midiInNames() const override { return m_ins; }
    /// Audio devices join with the wave tracks: there are none yet.
    [[nodiscard]] std::vector<std::string> waveInNames() const override { return {}; }
    [[nodiscard]] std::vector<std::string> waveOutNames() const override { return {}; }
    void setWavePorts(std::span<const std::int32_t>) override {}

    [[nodiscard]] bool sounds(int driver) const override;

    EngineStart startEngine() override;
    void stopEngine() override;
    bool setOutPorts(std::span<const std::int32_t> drivers, std::uint32_t bufferSize,
                     std::uint32_t intervalMs) override;
    void setOutFilter(std::uint32_t mask, bool realTime) override;
    bool setInPort(int driver, std::uint32_t bufferSize) override;
    void setInFilter(std::uint32_t mask, const std::array<std::uint8_t, 128>& dropController) override;
    void setThruFlag() override;
    bool setThruPort(int port) override;
    void setThruFilter(std::uint32_t mask) override;
    void setThruCh(int channel) override;
    void setThruTrans(int semitones) override;
    void setSyncMode(int mode) override;
    void setMetronome(const MetronomeSettings& metronome) override;
    unsigned sendShort(int port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2) override;
    unsigned sendLong(int port, std::span<const std::uint8_t> bytes) override;
    int setPlayOwner(MessageTarget* owner, std::uint8_t mask) override;
    void releasePlayOwner(int slot) override;

private:
    Smc& m_smc;
    MidiSystem& m_midi;
    std::vector<std::string> m_outs;
    std::vector<std::string> m_ins;
};

} // namespace tessaro
