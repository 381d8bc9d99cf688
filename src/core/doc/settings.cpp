// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/settings.h"

#include "core/doc/driver_names.h"
#include "core/ports/settings_store.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr const char* section = "System";

constexpr std::array<const char*, FilterSwitches::count> kindWords = {"Note",  "Poly",  "Cntrl", "Prog",
                                                                      "After", "Pitch", "Sys",   "Real"};
constexpr std::array<std::uint32_t, FilterSwitches::realTime> kindBits = {0x03, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80};

constexpr int largestBuffer = 1 << 24; ///< bytes of a system exclusive buffer

template <class Holder>
struct IntKey {
    const char* key;
    int Holder::*field;
    int otherwise;
};

// What has a plain key and a plain default; the rest is read and written by name below.
constexpr IntKey<Settings> setUpKeys[] = {
    {"Midi In Dev", &Settings::midiIn, 0},
    {"Midi Thru Dev", &Settings::midiThru, 0},
    {"Wav In Dev", &Settings::wavIn, 0},
    {"Midi Id Req Dev Num", &Settings::midiIdReqDevNum, 0},
    {"Sync", &Settings::sync, 0},
    {"Wav In Fmt", &Settings::wavInFmt, 11},
    {"Sysex Size", &Settings::sysexSize, 8192},
    {"Sysex Out Size", &Settings::sysexOutSize, 8192},
    {"Sysex Out Int", &Settings::sysexOutInt, 2000},
};

constexpr IntKey<RecordPlaySettings> recordKeys[] = {
    {"Rec Mode", &RecordPlaySettings::recMode, 0},
    {"Real Rec Block Mode", &RecordPlaySettings::blockMode, 1},
    {"Real Rec Mode", &RecordPlaySettings::realMode, 0},
    {"Real Rec Punch In Time", &RecordPlaySettings::punchIn, 0},
    {"Real Rec Punch Out Time", &RecordPlaySettings::punchOut, 0},
    {"Count In Meas", &RecordPlaySettings::countInMeas, 0},
    {"Count In Play", &RecordPlaySettings::countInPlay, 0},
    {"MIDI Chase", &RecordPlaySettings::midiChase, 0},
    {"View Chase", &RecordPlaySettings::viewChase, 1},
};

constexpr IntKey<MetronomeSettings> metronomeKeys[] = {
    {"Metro Port", &MetronomeSettings::port, 1},
    {"Metro Note1", &MetronomeSettings::note1, 22},
    {"Metro Note2", &MetronomeSettings::note2, 21},
    {"Metro Velocity1", &MetronomeSettings::velocity1, 90},
    {"Metro Velocity2", &MetronomeSettings::velocity2, 90},
};

void readKeys(const SettingsStore& store, auto& holder, const auto& keys)
{
    for (const auto& k : keys) holder.*k.field = store.getInt(section, k.key, k.otherwise);
}

void writeKeys(SettingsStore& store, const auto& holder, const auto& keys)
{
    for (const auto& k : keys) store.setInt(section, k.key, holder.*k.field);
}

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

constexpr const char* inNameKey = "Midi In Dev Name";

std::string outNameKey(std::size_t port) { return numbered("Midi Out Dev", port + 1) + " Name"; }

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

void Settings::read(const SettingsStore& store, const DriverLists& drivers)
{
    readKeys(store, *this, setUpKeys);
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
    midiOut = readPorts(store, "Midi Out Port Num", drivers.midiOut.size(), "Midi Out Dev",
                        [](std::size_t port) { return static_cast<int>(port); });
    wavOut = readPorts(store, "Wav Out Port Num", 0, "Wav Out Dev",
                       [&](std::size_t) { return static_cast<int>(drivers.wavOut); });
    readNames(store, drivers);
}

void Settings::readNames(const SettingsStore& store, const DriverLists& drivers)
{
    midiInName = store.getString(section, inNameKey, "");
    midiIn = DriverNames(drivers.midiIn).find(midiIn, midiInName, noDriver);
    const DriverNames outs(drivers.midiOut);
    midiOutNames.resize(midiOut.size());
    for (std::size_t i = 0; i < midiOut.size(); ++i) {
        midiOutNames[i] = store.getString(section, outNameKey(i), "");
        midiOut[i] = outs.find(midiOut[i], midiOutNames[i], noDriver);
    }
}

void Settings::remember(const DriverLists& drivers, const Settings& before)
{
    const auto nameOf = [](const DriverNames& names, int now, int then, const std::string& nameThen) {
        return names.has(now) || names.has(then) ? names.of(now) : nameThen;
    };
    midiInName = nameOf(DriverNames(drivers.midiIn), midiIn, before.midiIn, before.midiInName);
    const DriverNames outs(drivers.midiOut);
    midiOutNames.assign(midiOut.size(), {});
    for (std::size_t i = 0; i < midiOut.size(); ++i)
        midiOutNames[i] = i < before.midiOutNames.size()
                            ? nameOf(outs, midiOut[i], before.midiOut[i], before.midiOutNames[i])
                            : outs.of(midiOut[i]);
}

void Settings::write(SettingsStore& store) const
{
    writeKeys(store, *this, setUpKeys);
    for (const FilterKeys& f : filterKeys)
        for (std::size_t i = 0; i < f.kinds; ++i)
            store.setInt(section, f.prefix + std::string(kindWords[i]), (this->*f.field).drop[i]);
    for (std::size_t i = 0; i < inController.size(); ++i)
        store.setInt(section, numbered("Midi In Fltr Cntrl", i), inController[i]);
    writePorts(store, "Midi Out Port Num", "Midi Out Dev", midiOut);
    writePorts(store, "Wav Out Port Num", "wav Out Dev", wavOut);
    store.setString(section, inNameKey, midiInName);
    for (std::size_t i = 0; i < midiOutNames.size(); ++i) store.setString(section, outNameKey(i), midiOutNames[i]);
}

RecordPlaySettings RecordPlaySettings::read(const SettingsStore& store, const std::string& appDirectory)
{
    RecordPlaySettings settings;
    readKeys(store, settings, recordKeys);
    settings.waveDir = store.getString(section, "Wave Dir", appDirectory);
    return settings;
}

void RecordPlaySettings::write(SettingsStore& store) const
{
    writeKeys(store, *this, recordKeys);
    store.setString(section, "Wave Dir", waveDir);
}

MetronomeSettings readMetronome(const SettingsStore& store)
{
    MetronomeSettings metronome;
    readKeys(store, metronome, metronomeKeys);
    metronome.channel = std::clamp(store.getInt(section, "Metro Midi Ch", 10), 1, 16) - 1;
    return metronome;
}

void writeMetronome(SettingsStore& store, const MetronomeSettings& metronome)
{
    writeKeys(store, metronome, metronomeKeys);
    store.setInt(section, "Metro Midi Ch", metronome.channel + 1);
}

std::uint32_t Settings::inMask() const noexcept
{
    FilterSwitches plain = inFilter;
    plain.drop[FilterSwitches::control] = inFilter.drop[FilterSwitches::control] == 1;
    return plain.mask() | (inFilter.drop[FilterSwitches::realTime] != 0 ? realTimeFilterBit : 0);
}

} // namespace tessaro
