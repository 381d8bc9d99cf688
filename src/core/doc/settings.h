// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/ports/devices.h"

#include <array>
#include <cstdint>
#include <span>
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

/// The drivers that are there now.
struct DriverLists {
    std::span<const std::string> midiOut;
    std::span<const std::string> midiIn;
    std::size_t wavOut = 0; ///< how many
};

/// The settings of the record and play dialog, of section System. Times are song ticks.
struct TESSARO_API RecordPlaySettings {
    int recMode = 0;   ///< 0 real time, 1 step input
    int blockMode = 1; ///< 1 a take stays a block of its own, 0 it is merged into its neighbour
    int realMode = 0;  ///< 0 overdub, 1 replace, 2 punch
    int punchIn = 0;
    int punchOut = 0;
    int countInMeas = 0;
    int countInPlay = 0; ///< 1 plays the song during the count-in
    std::string waveDir;
    int midiChase = 0;
    int viewChase = 1;

    /// The default of the wave folder is `appDirectory`.
    [[nodiscard]] static RecordPlaySettings read(const SettingsStore& store, const std::string& appDirectory);
    void write(SettingsStore& store) const;
    bool operator==(const RecordPlaySettings&) const = default;
};

[[nodiscard]] TESSARO_API MetronomeSettings readMetronome(const SettingsStore& store);
TESSARO_API void writeMetronome(SettingsStore& store, const MetronomeSettings& metronome);

/// The settings of the system set-up, of section System. A new object holds what is in force before the first
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

    // The names by which the chosen drivers are remembered, see driver_names.h; empty for none. A driver that is away
    // keeps its name here, and its port has no driver until it is back.
    std::vector<std::string> midiOutNames; ///< for each port
    std::string midiInName;

    /// Reads every key. A driver goes by its name where one is remembered, otherwise by its number. The default of the
    /// ports is one for each MIDI output.
    void read(const SettingsStore& store, const DriverLists& drivers);
    /// Takes the names of the drivers chosen now. A port that is without a driver as it was `before` keeps the name
    /// of then.
    void remember(const DriverLists& drivers, const Settings& before);
    void write(SettingsStore& store) const;

    /// The input mask: its control bit is set only when no controller at all is recorded.
    [[nodiscard]] std::uint32_t inMask() const noexcept;

private:
    void readNames(const SettingsStore& store, const DriverLists& drivers);
};

} // namespace tessaro
