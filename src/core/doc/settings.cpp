// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/settings.h"

#include "core/ports/settings_store.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr const char* section = "System";

constexpr std::array<const char*, FilterSwitches::count> kindWords = {"Note",  "Poly",  "Cntrl", "Prog",
                                                                      "After", "Pitch", "Sys",   "Real"};
constexpr std::array<std::uint32_t, FilterSwitches::realTime> kindBits = {0x03, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80};

constexpr int largestBuffer = 1 << 24; ///< bytes of a system exclusive buffer

struct IntKey {
    const char* key;
    int Settings::*field;
    int otherwise;
};

// What has a plain key and a plain default; the rest is read and written by name below.
constexpr IntKey plainKeys[] = {
    {"Midi In Dev", &Settings::midiIn, 0},
    {"Midi Thru Dev", &Settings::midiThru, 0},
    {"Wav In Dev", &Settings::wavIn, 0},
    {"Midi Id Req Dev Num", &Settings::midiIdReqDevNum, 0},
    {"Sync", &Settings::sync, 0},
    {"Wav In Fmt", &Settings::wavInFmt, 11},
    {"Sysex Size", &Settings::sysexSize, 8192},
    {"Sysex Out Size", &Settings::sysexOutSize, 8192},
    {"Sysex Out Int", &Settings::sysexOutInt, 2000},
    {"Metro Port", &Settings::metroPort, 1},
    {"Metro Midi Ch", &Settings::metroMidiCh, 10},
    {"Metro Note1", &Settings::metroNote1, 22},
    {"Metro Note2", &Settings::metroNote2, 21},
    {"Metro Velocity1", &Settings::metroVelocity1, 90},
    {"Metro Velocity2", &Settings::metroVelocity2, 90},
    {"Rec Mode", &Settings::recMode, 0},
    {"MIDI Chase", &Settings::midiChase, 0},
    {"View Chase", &Settings::viewChase, 1},
    {"Real Rec Block Mode", &Settings::realRecBlockMode, 1},
    {"Real Rec Mode", &Settings::realRecMode, 0},
    {"Real Rec Punch In Time", &Settings::realRecPunchInTime, 0},
    {"Real Rec Punch Out Time", &Settings::realRecPunchOutTime, 0},
    {"Count In Meas", &Settings::countInMeas, 0},
    {"Count In Play", &Settings::countInPlay, 0},
};

struct FilterKeys {
    const char* prefix;
    FilterSwitches Settings::*field;
    std::size_t kinds;
    int realTimeDefault;
};

constexpr FilterKeys filterKeys[] = {
    {"Midi Out Fltr ", &Settings::outFilter, FilterSwitches::count, 1},
    {"Midi Thru Fltr ", &Settings::thruFilter, FilterSwitches::realTime, 0},
    {"Midi In Fltr ", &Settings::inFilter, FilterSwitches::count, 0},
};

std::string numbered(const char* key, std::size_t number) { return key + std::to_string(number); }

bool decidesByController(int control) { return control != 0 && control != 1; }

std::vector<std::int32_t> readPorts(const SettingsStore& store, const char* countKey, std::size_t defaultCount,
                                    const char* driverKey, auto&& defaultDriver)
{
    const int stored = store.getInt(section, countKey, static_cast<int>(defaultCount));
    std::vector<std::int32_t> ports(static_cast<std::size_t>(std::clamp(stored, 0, Settings::mostPorts)));
    for (std::size_t i = 0; i < ports.size(); ++i)
        ports[i] = store.getInt(section, numbered(driverKey, i + 1), defaultDriver(i));
    return ports;
}

void writePorts(SettingsStore& store, const char* countKey, const char* driverKey,
                const std::vector<std::int32_t>& ports)
{
    store.setInt(section, countKey, static_cast<int>(ports.size()));
    for (std::size_t i = 0; i < ports.size(); ++i) store.setInt(section, numbered(driverKey, i + 1), ports[i]);
}

} // namespace

std::uint32_t FilterSwitches::mask() const noexcept
{
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kindBits.size(); ++i)
        if (drop[i] != 0) bits |= kindBits[i];
    return bits;
}

Settings::Settings() : midiOut(firstPorts, noDriver)
{
    outFilter.drop.fill(1);
    thruFilter.drop.fill(1);
    inFilter.drop.fill(1);
    inController.fill(1);
}

void Settings::read(const SettingsStore& store, std::size_t midiOutDrivers, std::size_t wavOutDrivers,
                    const std::string& appDirectory)
{
    for (const IntKey& k : plainKeys) this->*k.field = store.getInt(section, k.key, k.otherwise);
    for (int Settings::*size : {&Settings::sysexSize, &Settings::sysexOutSize, &Settings::sysexOutInt})
        this->*size = std::clamp(this->*size, 0, largestBuffer);
    for (const FilterKeys& f : filterKeys)
        for (std::size_t i = 0; i < f.kinds; ++i)
            (this->*f.field).drop[i] = store.getInt(section, f.prefix + std::string(kindWords[i]),
                                                    i == FilterSwitches::realTime ? f.realTimeDefault : 0);
    const int control = inFilter.drop[FilterSwitches::control];
    for (std::size_t i = 0; i < inController.size(); ++i) {
        const int drop =
            decidesByController(control) ? store.getInt(section, numbered("Midi In Fltr Cntrl", i), 0) : control;
        inController[i] = drop != 0;
    }
    midiOut = readPorts(store, "Midi Out Port Num", midiOutDrivers, "Midi Out Dev",
                        [](std::size_t port) { return static_cast<int>(port); });
    wavOut = readPorts(store, "Wav Out Port Num", 0, "Wav Out Dev",
                       [&](std::size_t) { return static_cast<int>(wavOutDrivers); });
    waveDir = store.getString(section, "Wave Dir", appDirectory);
}

void Settings::write(SettingsStore& store) const
{
    for (const IntKey& k : plainKeys) store.setInt(section, k.key, this->*k.field);
    for (const FilterKeys& f : filterKeys)
        for (std::size_t i = 0; i < f.kinds; ++i)
            store.setInt(section, f.prefix + std::string(kindWords[i]), (this->*f.field).drop[i]);
    for (std::size_t i = 0; i < inController.size(); ++i)
        store.setInt(section, numbered("Midi In Fltr Cntrl", i), inController[i]);
    writePorts(store, "Midi Out Port Num", "Midi Out Dev", midiOut);
    writePorts(store, "Wav Out Port Num", "wav Out Dev", wavOut);
    store.setString(section, "Wave Dir", waveDir);
}

std::uint32_t Settings::inMask() const noexcept
{
    FilterSwitches plain = inFilter;
    plain.drop[FilterSwitches::control] = inFilter.drop[FilterSwitches::control] == 1;
    return plain.mask() | (inFilter.drop[FilterSwitches::realTime] != 0 ? realTimeFilterBit : 0);
}

} // namespace tessaro
