// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tessaro {

class SettingsStore;

/// Which kinds of message a path drops, one switch a kind: 0 lets it pass. Controllers may have a third
/// value, see Settings.
struct FilterSwitches {
    static constexpr std::size_t note = 0;
    static constexpr std::size_t poly = 1;
    static constexpr std::size_t control = 2;
    static constexpr std::size_t program = 3;
    static constexpr std::size_t after = 4;
    static constexpr std::size_t pitch = 5;
    static constexpr std::size_t sysex = 6;
    static constexpr std::size_t realTime = 7;
    static constexpr std::size_t count = 8;

    std::array<int, count> drop{};

    /// The mask of the engine for the first seven kinds.
    [[nodiscard]] std::uint32_t mask() const noexcept;
};

/// Mask bit of incoming real-time messages.
inline constexpr std::uint32_t realTimeFilterBit = 0x1000;

/// The application's settings of section System. A new object holds what is in force before the first
/// reading: no devices, everything filtered. Drivers are indices into the device lists.
struct TESSARO_API Settings {
    static constexpr int noDriver = 0xFF;
    static constexpr int mostPorts = 128;
    static constexpr int firstPorts = 6; ///< ports before the first reading

    Settings();

    int midiIn = noDriver;
    int midiThru = noDriver;           ///< a port
    std::vector<std::int32_t> midiOut; ///< a driver for each port
    int wavIn = noDriver;
    std::vector<std::int32_t> wavOut;
    int midiIdReqDevNum = 0;
    FilterSwitches outFilter;
    FilterSwitches thruFilter; ///< the first seven
    FilterSwitches inFilter;   ///< control: 0 records all controllers, 1 none, else `inController` decides
    std::array<std::uint8_t, 128> inController{};
    int sync = 0; ///< 0 internal, 1 MIDI
    int wavInFmt = 11;
    int sysexSize = 8192;
    int sysexOutSize = 8192;
    int sysexOutInt = 2000; ///< milliseconds
    int metroPort = 1;
    int metroMidiCh = 10; ///< from 1
    int metroNote1 = 22;
    int metroNote2 = 21;
    int metroVelocity1 = 90;
    int metroVelocity2 = 90;
    int recMode = 0;
    int midiChase = 0;
    int viewChase = 1;
    std::string waveDir;
    int realRecBlockMode = 1;
    int realRecMode = 0;
    int realRecPunchInTime = 0;
    int realRecPunchOutTime = 0;
    int countInMeas = 0;
    int countInPlay = 0;

    /// Reads every key. The default of the ports is one for each of the `midiOutDrivers`; of the wave
    /// directory it is `appDirectory`.
    void read(const SettingsStore& store, std::size_t midiOutDrivers, std::size_t wavOutDrivers,
              const std::string& appDirectory);
    void write(SettingsStore& store) const;

    /// The input mask: its control bit is set only when no controller at all is recorded.
    [[nodiscard]] std::uint32_t inMask() const noexcept;
};

} // namespace tessaro
