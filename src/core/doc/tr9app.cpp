// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/tr9app.h"

#include "base/strings.h"
#include "core/doc/tr9doc.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace tessaro {

namespace {

constexpr unsigned firstClipFormat = 0xC000;
constexpr std::array<std::string_view, 4> clipFormatNames = {"TR9BLK", "TR9STYLEBLK", "TR9EVNT", "TR9MSTREVNT"};
constexpr std::size_t longestShortName = 64;
constexpr const char* systemSection = "System";
constexpr int noPort = 0x80;         ///< turns thru or the input off
constexpr int releasedDriver = 0x7F; ///< no device
constexpr int leastBuffer = 512;     ///< bytes of a system exclusive buffer

std::vector<std::string> shortNames(const std::vector<std::string>& names, const SettingsStore& ini,
                                    std::string_view section)
{
    std::vector<std::string> found;
    found.reserve(names.size());
    for (const std::string& name : names)
        found.push_back(ini.getString(section, name, name).substr(0, longestShortName));
    return found;
}

int switchAt(const FilterSwitches& filter, std::size_t kind, std::size_t kinds) noexcept
{
    return kind < kinds ? filter.drop[kind] : 1;
}

} // namespace

CTR9App::CTR9App(const AppPorts& ports) : m_ports(ports)
{
    m_ports.document.OnSaved([this](const std::string& path) { keepRecent(path); });
}

CTR9App::~CTR9App()
{
    m_ports.document.OnSaved(nullptr);
    ExitInstance();
}

bool CTR9App::InitInstance(const CommandLine& commandLine)
{
    if (!m_lock.take(m_ports.lockFolder)) {
        m_ports.user.message(TextId::alreadyRunning, MessageKind::error);
        return false;
    }
    m_running = true;
    m_recent.read(m_ports.store);
    enumerateDrivers();
    startEngine();
    applyDevices();
    m_clipFormatsRegistered = true;
    if (!m_ports.windows.createMainFrame()) return false;
    m_ini = std::make_unique<ProfileStore>(GetIniFile());
    SetVceFileName(readVceFileName(*m_ini));
    m_ports.windows.createControlPanel();
    if (!processShellCommand(commandLine)) return false;
    readSettings();
    applyDevices();
    m_ports.devices.setWavePorts(m_settings.wavOut);
    m_list.read(*m_ini);
    m_ports.windows.showMainFrame();
    m_ports.windows.setSyncMode(m_settings.sync);
    m_started = true;
    if (m_devicesChanged) OnDeviceChange(deviceArrival);
    return true;
}

void CTR9App::ExitInstance()
{
    if (!m_running) return;
    stopTransport();
    m_ports.devices.stopEngine();
    if (m_started) m_list.write(*m_ini);
    m_recent.write(m_ports.store);
    m_ports.store.flush();
    m_ini.reset();
    m_started = false;
    m_running = false;
    m_lock.release();
}

bool CTR9App::processShellCommand(const CommandLine& commandLine)
{
    switch (commandLine.shell) {
    case CommandLine::Shell::fileNew: m_ports.document.OnNewDocument(); return true;
    case CommandLine::Shell::fileOpen: OnFileOpen(commandLine.file); return true;
    default: m_ports.user.message(TextId::commandLineNotSupported, MessageKind::error); return false;
    }
}

bool CTR9App::OnFileNew()
{
    if (m_ports.document.IsRecording()) return false;
    stopTransport();
    return m_ports.document.OnNewDocument();
}

bool CTR9App::OnFileOpen(const std::string& path)
{
    if (m_ports.document.IsRecording()) return false;
    stopTransport();
    if (!m_ports.document.Load(path)) return false;
    keepRecent(path);
    return true;
}

void CTR9App::keepRecent(const std::string& path)
{
    m_recent.add(path);
    m_recent.write(m_ports.store);
    m_ports.store.flush();
}

bool CTR9App::OnFileRecent(std::size_t index)
{
    if (index >= m_recent.paths().size() || m_ports.document.IsRecording()) return false;
    const std::string path = m_recent.paths()[index];
    std::error_code error;
    if (std::filesystem::exists(path, error)) return OnFileOpen(path);
    m_recent.remove(path);
    m_recent.write(m_ports.store);
    m_ports.user.message(TextId::fileNotFound, MessageKind::error);
    return false;
}

void CTR9App::OnDeviceChange(std::uint64_t event)
{
    m_devicesChanged = !m_started;
    if (!m_started) return;
    switch (event) {
    case deviceRemoval: releaseDevices(); break;
    case deviceArrival: bringDevicesBack(); break;
    default: return;
    }
    m_ports.document.GetEditor().HintSysSetupChng();
}

void CTR9App::releaseDevices()
{
    m_midiOut = m_midiIn = m_wavIn = m_wavOut = {};
    stopTransport();
    std::fill(m_settings.midiOut.begin(), m_settings.midiOut.end(), releasedDriver);
    m_settings.midiIn = noPort;
    m_settings.wavOut.clear();
    applyOutPorts();
    applyInPort();
    m_ports.devices.setWavePorts({});
    UpdateMidiThru();
}

void CTR9App::bringDevicesBack()
{
    enumerateDrivers();
    stopTransport();
    readSettings();
    applyDevices();
    UpdateMidiThru();
    m_ports.devices.setWavePorts(m_settings.wavOut);
}

void CTR9App::stopTransport() { m_ports.document.StopTransport(); }

void CTR9App::enumerateDrivers()
{
    DevicePort& devices = m_ports.devices;
    devices.enumerate();
    m_midiOut.names = devices.midiOutNames();
    m_midiIn.names = devices.midiInNames();
    m_wavIn.names = devices.waveInNames();
    m_wavOut.names = devices.waveOutNames();
    readShortNames();
}

void CTR9App::readShortNames()
{
    const ProfileStore ini(m_ports.appDirectory + "DrvShortName.ini");
    m_midiOut.shortNames = shortNames(m_midiOut.names, ini, "Midi Out");
    m_wavOut.shortNames = shortNames(m_wavOut.names, ini, "Wave Out");
}

void CTR9App::startEngine()
{
    switch (m_ports.devices.startEngine()) {
    case EngineStart::started: break;
    case EngineStart::noMemory: m_ports.user.message(TextId::outOfMemory, MessageKind::error); break;
    case EngineStart::noTimer: m_ports.user.message(TextId::timerError, MessageKind::error); break;
    }
}

void CTR9App::need(bool done, TextId complaint)
{
    if (!done) m_ports.user.message(complaint, MessageKind::error);
}

void CTR9App::applyDevices()
{
    DevicePort& devices = m_ports.devices;
    applyMetronome();
    applyOutPorts();
    applyOutFilter();
    devices.setThruFlag();
    applyThruPort();
    devices.setThruFilter(m_settings.thruFilter.mask());
    devices.setInFilter(m_settings.inMask(), m_settings.inController);
    applyInPort();
    devices.setSyncMode(m_settings.sync);
    devices.setThruCh(-1);
    devices.setThruTrans(0);
}

bool CTR9App::applyOutPorts()
{
    const bool opened =
        m_ports.devices.setOutPorts(m_settings.midiOut, static_cast<std::uint32_t>(m_settings.sysexOutSize),
                                    static_cast<std::uint32_t>(m_settings.sysexOutInt));
    need(opened, TextId::midiOutFailed);
    return opened;
}

void CTR9App::applyOutFilter()
{
    const FilterSwitches& filter = m_settings.outFilter;
    m_ports.devices.setOutFilter(filter.mask(), filter.drop[FilterSwitches::realTime] == 0);
}

void CTR9App::applyThruPort() { need(m_ports.devices.setThruPort(m_settings.midiThru), TextId::midiThruFailed); }

bool CTR9App::applyInPort()
{
    const bool opened = m_ports.devices.setInPort(m_settings.midiIn, static_cast<std::uint32_t>(m_settings.sysexSize));
    need(opened, TextId::midiInFailed);
    return opened;
}

// The metronome has to be heard: where nothing sounds at its port it goes to the first.
void CTR9App::applyMetronome()
{
    MetronomeSettings metronome = GetMetronome();
    if (!sounds(metronome.port)) metronome.port = 0;
    m_ports.devices.setMetronome(metronome);
}

bool CTR9App::sounds(int port) const
{
    const unsigned driver = GetMidiOutPortMap(static_cast<unsigned>(port));
    return driver < GetDrvNum() && m_ports.devices.sounds(static_cast<int>(driver));
}

void CTR9App::readSettings() { m_settings.read(m_ports.store, driverLists()); }

void CTR9App::PrepareSystemSetup()
{
    stopTransport();
    enumerateDrivers();
    readSettings();
}

void CTR9App::SetSettings(Settings settings)
{
    stopTransport();
    DevicePort& devices = m_ports.devices;
    const Settings before = std::exchange(m_settings, std::move(settings));
    m_settings.remember(driverLists(), before);
    applyOutPorts();
    applyThruPort();
    applyInPort();
    applyOutFilter();
    devices.setThruFilter(m_settings.thruFilter.mask());
    devices.setInFilter(m_settings.inMask(), m_settings.inController);
    devices.setSyncMode(m_settings.sync);
    m_ports.windows.setSyncMode(m_settings.sync);
    devices.setWavePorts(m_settings.wavOut);
    m_settings.write(m_ports.store);
    m_ports.store.flush();
    applyMetronome();
    UpdateMidiThru();
    m_ports.document.GetEditor().HintSysSetupChng();
}

RecordPlaySettings CTR9App::GetRecordSettings() const
{
    return RecordPlaySettings::read(m_ports.store, m_ports.appDirectory);
}

void CTR9App::SetRecordSettings(const RecordPlaySettings& settings)
{
    settings.write(m_ports.store);
    m_ports.store.flush();
}

void CTR9App::SetMetronome(const MetronomeSettings& metronome)
{
    writeMetronome(m_ports.store, metronome);
    m_ports.store.flush();
    applyMetronome();
}

void CTR9App::SetMIDIChase(bool on) { keep("MIDI Chase", on); }

void CTR9App::SetViewChase(bool on) { keep("View Chase", on); }

int CTR9App::SetWavIn(int driver)
{
    keep("Wav In Dev", m_settings.wavIn = driver);
    return 1;
}

int CTR9App::SetWavInFmt(int row)
{
    keep("Wav In Fmt", m_settings.wavInFmt = row);
    return 1;
}

void CTR9App::keep(std::string_view key, int value)
{
    m_ports.store.setInt(systemSection, key, value);
    m_ports.store.flush();
}

int CTR9App::SetSysexSize(int size)
{
    if (size < leastBuffer) return 0;
    m_settings.sysexSize = size;
    applyInPort();
    return 1;
}

int CTR9App::SetSysexOut(int size, int interval)
{
    if (size < leastBuffer) return 0;
    m_settings.sysexOutSize = size;
    m_settings.sysexOutInt = std::max(interval, 0);
    return applyOutPorts();
}

int CTR9App::OpenMidiDev(int out, int in)
{
    const std::int32_t port[] = {out};
    DevicePort& devices = m_ports.devices;
    devices.setOutPorts(port, static_cast<std::uint32_t>(m_settings.sysexOutSize),
                        static_cast<std::uint32_t>(m_settings.sysexOutInt));
    devices.setThruPort(noPort);
    devices.setInPort(in, static_cast<std::uint32_t>(m_settings.sysexSize));
    return 1;
}

void CTR9App::CloseMidiDev()
{
    stopTransport();
    DevicePort& devices = m_ports.devices;
    devices.setOutPorts({}, static_cast<std::uint32_t>(m_settings.sysexOutSize),
                        static_cast<std::uint32_t>(m_settings.sysexOutInt));
    devices.setThruPort(noPort);
    devices.setInPort(noPort, static_cast<std::uint32_t>(m_settings.sysexSize));
}

void CTR9App::RecoverMidiDev()
{
    applyOutPorts();
    applyOutFilter();
    m_ports.devices.setThruFlag();
    applyThruPort();
    applyInPort();
    UpdateMidiThru();
}

void CTR9App::UpdateMidiThru()
{
    const CTrk* trk = thruTrk();
    m_ports.devices.setThruCh(trk ? trk->GetCh() : -1);
    m_ports.devices.setThruPort(trk ? trk->GetPort() : m_settings.midiThru);
    m_ports.devices.setThruTrans(trk ? thruTransOf(*trk) : 0);
}

// A wave track before the armed MIDI track does not count, one behind it does.
const CTrk* CTR9App::thruTrk() const
{
    const CTrk* armed = nullptr;
    for (int number = 1; number < trackCount; ++number) {
        CTrk* trk = nullptr;
        if (!m_ports.document.GetEditor().GetTrk(number, &trk) || !trk->GetRec()) continue;
        if (!armed && trk->GetType() == trktype::wave) continue;
        if (armed) return nullptr;
        armed = trk;
    }
    return armed;
}

// A transposing instrument is played as it sounds and written as it is read.
int CTR9App::thruTransOf(const CTrk& trk) const
{
    const ProfileStore instruments(m_ports.appDirectory + "Trk.ini");
    const std::string instrument = "Inst " + std::to_string(trk.GetInstType() >> 24U);
    return instruments.getInt(instrument, "TransInst", 0) == 1 ? -trk.GetTrans() : 0;
}

unsigned CTR9App::clipFormat(std::size_t index) const noexcept
{
    return m_clipFormatsRegistered ? firstClipFormat + static_cast<unsigned>(index) : 0;
}

std::string_view CTR9App::GetClipFmtName(unsigned format) noexcept
{
    const unsigned index = format - firstClipFormat;
    return index < clipFormatNames.size() ? clipFormatNames[index] : std::string_view();
}

unsigned CTR9App::GetMidiOutPortMap(unsigned port) const noexcept
{
    return port < m_settings.midiOut.size() ? static_cast<unsigned>(m_settings.midiOut[port])
                                            : static_cast<unsigned>(GetDrvNum());
}

std::uint8_t CTR9App::GetMidiOut(std::uint8_t port) const noexcept
{
    return static_cast<std::uint8_t>(GetMidiOutPortMap(port));
}

unsigned CTR9App::GetWaveOutPortMap(unsigned port) const noexcept
{
    return port < m_settings.wavOut.size() ? static_cast<unsigned>(m_settings.wavOut[port])
                                           : static_cast<unsigned>(GetWavOutDrvNum());
}

std::uint8_t CTR9App::GetWavOut(std::uint8_t port) const noexcept
{
    return static_cast<std::uint8_t>(GetWaveOutPortMap(port));
}

std::size_t CTR9App::GetPortNum(int portClass) const noexcept
{
    switch (portClass) {
    case 0:
    case 2:
    case 3: return 1;
    case 1: return GetMidiOutPortNum();
    case 4: return GetWaveOutPortNum();
    default: return 0;
    }
}

int CTR9App::GetMidiOutFltr(std::uint8_t kind) const noexcept
{
    return switchAt(m_settings.outFilter, kind, FilterSwitches::count);
}

int CTR9App::GetMidiThruFltr(std::uint8_t kind) const noexcept
{
    return switchAt(m_settings.thruFilter, kind, FilterSwitches::realTime);
}

int CTR9App::GetMidiInFltr(std::uint8_t kind) const noexcept
{
    return switchAt(m_settings.inFilter, kind, FilterSwitches::count);
}

unsigned CTR9App::SendShortMsg(short port, std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
{
    return m_ports.devices.sendShort(port, status, data1, data2);
}

unsigned CTR9App::SendLongMsg(short port, std::span<const std::uint8_t> data)
{
    return m_ports.devices.sendLong(port, data);
}

} // namespace tessaro
