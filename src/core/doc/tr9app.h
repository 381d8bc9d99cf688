// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/strings.h"
#include "core/doc/command_line.h"
#include "core/doc/instance_lock.h"
#include "core/doc/list_settings.h"
#include "core/doc/profile_store.h"
#include "core/doc/recent_files.h"
#include "core/doc/settings.h"
#include "core/ports/app_windows.h"
#include "core/ports/devices.h"
#include "core/ports/user.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

class CTR9Doc;
class CTrk;
class MessageTarget;

/// All that the application object asks of its surroundings; everything outlives it.
struct AppPorts {
    CTR9Doc& document;
    UserPort& user;
    DevicePort& devices;
    AppWindows& windows;
    ProfileStore& store;      ///< the per-user settings
    std::string appDirectory; ///< with a slash at its end
    std::string lockFolder;   ///< of the mark that one instance runs; empty for no such mark
};

/// The application object: it starts one instance of the program, holds the settings and the lists of
/// devices, and opens the devices through the real-time layer. A failed device is shown and the start
/// goes on. Main thread only, apart from SendShortMsg and SendLongMsg.
class TESSARO_API CTR9App {
public:
    explicit CTR9App(const AppPorts& ports);
    CTR9App(const CTR9App&) = delete;
    CTR9App& operator=(const CTR9App&) = delete;
    ~CTR9App();

    /// The whole start, in its order. False ends the process: another instance runs, there is no main window, or the
    /// command line is not understood. A file that cannot be opened ends nothing: a new song stands.
    bool InitInstance(const CommandLine& commandLine);
    /// Stops the engine, writes the settings back and lets the next instance start.
    void ExitInstance();
    /// From the end of InitInstance on.
    [[nodiscard]] bool IsStarted() const noexcept { return m_started; }

    // Commands. They stop the transport first; while a take runs new and open do nothing.
    bool OnFileNew();
    bool OnFileOpen(const std::string& path);
    /// A file that is gone drops from the list, and the song stays.
    bool OnFileRecent(std::size_t index);
    [[nodiscard]] const RecentFiles& GetRecentFiles() const noexcept { return m_recent; }
    /// Devices came or went. A removal stops the song and releases all of them; an arrival looks for them anew and
    /// applies the stored settings. During the start it waits for the start's end.
    void OnDeviceChange(std::uint64_t event);
    static constexpr std::uint64_t deviceArrival = 0x8000;
    static constexpr std::uint64_t deviceRemoval = 0x8004;

    [[nodiscard]] std::uint32_t GetVersion() const noexcept { return 0x02000300; }
    [[nodiscard]] const std::string& GetAppDirectory() const noexcept { return m_ports.appDirectory; }
    [[nodiscard]] std::string GetIniFile() const { return m_ports.appDirectory + "ws.ini"; }
    [[nodiscard]] const std::string& GetVceFileName() const noexcept { return m_vceFileName; }
    void SetVceFileName(const std::string& name) { m_vceFileName = name; }

    [[nodiscard]] unsigned GetClipFmt_Blk() const noexcept { return clipFormat(0); }
    [[nodiscard]] unsigned GetClipFmt_StyleBlk() const noexcept { return clipFormat(1); }
    [[nodiscard]] unsigned GetClipFmt_Evnt() const noexcept { return clipFormat(2); }
    [[nodiscard]] unsigned GetClipFmt_MstrEvnt() const noexcept { return clipFormat(3); }
    /// The name under which a format is registered; empty for none of ours.
    [[nodiscard]] static std::string_view GetClipFmtName(unsigned format) noexcept;

    // Device lists. A short name is the name itself unless DrvShortName.ini has another one.
    [[nodiscard]] std::size_t GetDrvNum() const noexcept { return m_midiOut.names.size(); }
    [[nodiscard]] std::string GetDrvName(std::uint8_t i) const { return m_midiOut.name(i); }
    [[nodiscard]] std::string GetDrvShortName(std::uint8_t i) const { return m_midiOut.shortName(i); }
    [[nodiscard]] std::size_t GetMidiInDrvNum() const noexcept { return m_midiIn.names.size(); }
    [[nodiscard]] std::string GetMidiInDrvName(std::uint8_t i) const { return m_midiIn.name(i); }
    [[nodiscard]] std::size_t GetWavInDrvNum() const noexcept { return m_wavIn.names.size(); }
    [[nodiscard]] std::string GetWavInDrvName(std::uint8_t i) const { return m_wavIn.name(i); }
    [[nodiscard]] std::size_t GetWavOutDrvNum() const noexcept { return m_wavOut.names.size(); }
    [[nodiscard]] std::string GetWavOutDrvName(std::uint8_t i) const { return m_wavOut.name(i); }
    [[nodiscard]] std::string GetWavOutDrvShortName(std::uint8_t i) const { return m_wavOut.shortName(i); }

    // Settings. A port beyond the map reads as the count of drivers, which is no device; a bad index of a filter as 1.
    [[nodiscard]] std::size_t GetMidiOutPortNum() const noexcept { return m_settings.midiOut.size(); }
    [[nodiscard]] unsigned GetMidiOutPortMap(unsigned port) const noexcept;
    [[nodiscard]] std::uint8_t GetMidiOut(std::uint8_t port) const noexcept;
    [[nodiscard]] std::size_t GetWaveOutPortNum() const noexcept { return m_settings.wavOut.size(); }
    [[nodiscard]] unsigned GetWaveOutPortMap(unsigned port) const noexcept;
    [[nodiscard]] std::uint8_t GetWavOut(std::uint8_t port) const noexcept;
    /// Number of ports of a class: 1 is MIDI out, 4 wave out, 0, 2 and 3 have one each.
    [[nodiscard]] std::size_t GetPortNum(int portClass) const noexcept;
    [[nodiscard]] int GetMidiIn() const noexcept { return m_settings.midiIn; }
    [[nodiscard]] int GetMidiThru() const noexcept { return m_settings.midiThru; }
    [[nodiscard]] int GetWavIn() const noexcept { return m_settings.wavIn; }
    [[nodiscard]] int GetWavInFmt() const noexcept { return m_settings.wavInFmt; }
    [[nodiscard]] int GetMidiIdReqDevNum() const noexcept { return m_settings.midiIdReqDevNum; }
    [[nodiscard]] int GetMidiOutFltr(std::uint8_t kind) const noexcept;
    [[nodiscard]] int GetMidiThruFltr(std::uint8_t kind) const noexcept;
    [[nodiscard]] int GetMidiInFltr(std::uint8_t kind) const noexcept;
    [[nodiscard]] int GetSync() const noexcept { return m_settings.sync; }
    [[nodiscard]] int GetSysexSize() const noexcept { return m_settings.sysexSize; }
    [[nodiscard]] int GetSysexOutSize() const noexcept { return m_settings.sysexOutSize; }
    [[nodiscard]] int GetSysexOutInt() const noexcept { return m_settings.sysexOutInt; }
    [[nodiscard]] int GetRecMode() const { return GetRecordSettings().recMode; }
    [[nodiscard]] int GetMIDIChase() const { return GetRecordSettings().midiChase; }
    [[nodiscard]] int GetViewChase() const { return GetRecordSettings().viewChase; }
    [[nodiscard]] int GetSysRecRtrBlkMode() const { return GetRecordSettings().blockMode; }
    [[nodiscard]] int GetSysRecRtrMode() const { return GetRecordSettings().realMode; }
    [[nodiscard]] int GetSysRecPunchInTime() const { return GetRecordSettings().punchIn; }
    [[nodiscard]] int GetSysRecPunchOutTime() const { return GetRecordSettings().punchOut; }
    [[nodiscard]] int GetCountInMeas() const { return GetRecordSettings().countInMeas; }
    [[nodiscard]] int GetCountInPlay() const { return GetRecordSettings().countInPlay; }
    [[nodiscard]] std::string GetWaveDirectory() const { return GetRecordSettings().waveDir; }
    /// As they stand in the store, which others write to as well.
    [[nodiscard]] RecordPlaySettings GetRecordSettings() const;
    [[nodiscard]] MetronomeSettings GetMetronome() const { return readMetronome(m_ports.store); }
    [[nodiscard]] const Settings& GetSettings() const noexcept { return m_settings; }
    [[nodiscard]] ListSettings& GetListSettings() noexcept { return m_list; }

    // What these take is kept at once.
    void SetMIDIChase(bool on);
    void SetViewChase(bool on);
    /// The panel's chase switches and the loop are the caller's to set.
    void SetRecordSettings(const RecordPlaySettings& settings);
    void SetMetronome(const MetronomeSettings& metronome);
    int SetWavIn(int driver);
    int SetWavInFmt(int row);
    /// Before the system set-up is shown: stops the song and looks for drivers anew. What is open stays open.
    void PrepareSystemSetup();
    /// The OK of the system set-up: applies new settings to the devices. The names of drivers are taken from the lists.
    void SetSettings(Settings settings);

    // Devices. Nothing plays while they change.
    /// The buffer of MIDI in, in bytes. 0, and no change, below 512.
    int SetSysexSize(int size);
    /// The piece in which a long message goes out, and the pause behind each piece in milliseconds. 0 below 512, and
    /// when an output does not open, which is shown.
    int SetSysexOut(int size, int interval);
    /// For the detection of modules: one output, on port 0, one input and no thru, whatever the settings say. Always 1.
    int OpenMidiDev(int out, int in);
    /// Stops the song and closes every output, thru and the input.
    void CloseMidiDev();
    /// Opens what the settings say again.
    void RecoverMidiDev();
    /// Lets thru follow the armed track: for every change of a record switch.
    void UpdateMidiThru();

    unsigned SendShortMsg(short port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2);
    unsigned SendLongMsg(short port, std::span<const std::uint8_t> data);
    int SetPlayOwner(MessageTarget* owner, std::uint8_t mask) { return m_ports.devices.setPlayOwner(owner, mask); }
    void ReleasePlayOwner(int slot) { m_ports.devices.releasePlayOwner(slot); }

private:
    struct DriverList {
        std::vector<std::string> names;
        std::vector<std::string> shortNames;

        [[nodiscard]] std::string name(std::size_t i) const { return i < names.size() ? names[i] : std::string(); }
        [[nodiscard]] std::string shortName(std::size_t i) const
        {
            return i < shortNames.size() ? shortNames[i] : std::string();
        }
    };

    void enumerateDrivers();
    void readShortNames();
    [[nodiscard]] DriverLists driverLists() const { return {m_midiOut.names, m_midiIn.names, m_wavOut.names.size()}; }
    void startEngine();
    void applyDevices();
    bool applyOutPorts();
    void applyOutFilter();
    void applyThruPort();
    bool applyInPort();
    void applyMetronome();
    [[nodiscard]] bool sounds(int port) const;
    [[nodiscard]] const CTrk* thruTrk() const;
    [[nodiscard]] int thruTransOf(const CTrk& trk) const;
    void need(bool done, TextId complaint);
    void releaseDevices();
    void bringDevicesBack();
    void keep(std::string_view key, int value);
    void readSettings();
    bool processShellCommand(const CommandLine& commandLine);
    void keepRecent(const std::string& path);
    void stopTransport();
    [[nodiscard]] unsigned clipFormat(std::size_t index) const noexcept;

    AppPorts m_ports;
    InstanceLock m_lock;
    Settings m_settings;
    ListSettings m_list;
    RecentFiles m_recent;
    DriverList m_midiOut;
    DriverList m_midiIn;
    DriverList m_wavIn;
    DriverList m_wavOut;
    std::unique_ptr<ProfileStore> m_ini; ///< ws.ini
    std::string m_vceFileName;
    bool m_running = false; ///< between a start that went on and the exit
    bool m_started = false;
    bool m_devicesChanged = false; ///< during the start
    bool m_clipFormatsRegistered = false;
};

} // namespace tessaro
