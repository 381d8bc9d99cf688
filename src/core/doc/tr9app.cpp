// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/tr9app.h"

#include "base/strings.h"
#include "core/doc/tr9doc.h"

#include <algorithm>
#include <filesystem>

namespace tessaro {

namespace {

constexpr unsigned firstClipFormat = 0xC000;
constexpr std::array<std::string_view, 4> clipFormatNames = {"TR9BLK", "TR9STYLEBLK", "TR9EVNT", "TR9MSTREVNT"};
constexpr std::size_t longestShortName = 64;

std::vector<std::string> shortNames(const std::vector<std::string>& names, const SettingsStore& ini,
                                    std::string_view section)
{
    std::vector<std::string> found;
    found.reserve(names.size());
    for (const std::string& name : names)
        found.push_back(ini.getString(section, name, name).substr(0, longestShortName));
    return found;
}

MetronomeSettings metronomeOf(const Settings& s)
{
    return {s.metroPort,     std::clamp(s.metroMidiCh, 1, 16) - 1, s.metroNote1, s.metroNote2, s.metroVelocity1,
            s.metroVelocity2};
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
    m_ports.windows.showMainFrame();
    m_list.read(*m_ini);
    m_ports.windows.setSyncMode(m_settings.sync);
    m_started = true;
    if (m_devicesChanged) OnDeviceChange();
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
    stopTransport();
    return m_ports.document.OnNewDocument();
}

bool CTR9App::OnFileOpen(const std::string& path)
{
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
    if (index >= m_recent.paths().size()) return false;
    const std::string path = m_recent.paths()[index];
    std::error_code error;
    if (std::filesystem::exists(path, error)) return OnFileOpen(path);
    m_recent.remove(path);
    m_recent.write(m_ports.store);
    m_ports.user.message(TextId::fileNotFound, MessageKind::error);
    return false;
}

void CTR9App::OnDeviceChange()
{
    m_devicesChanged = !m_started;
    if (!m_started) return;
    stopTransport();
    enumerateDrivers();
    readSettings();
    applyDevices();
    m_ports.devices.setWavePorts(m_settings.wavOut);
    m_ports.document.GetEditor().HintSysSetupChng();
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

void CTR9App::applyDevices()
{
    const auto need = [this](bool done, TextId complaint) {
        if (!done) m_ports.user.message(complaint, MessageKind::error);
    };
    const Settings& s = m_settings;
    DevicePort& devices = m_ports.devices;
    devices.setMetronome(metronomeOf(s));
    need(devices.setOutPorts(s.midiOut, static_cast<std::uint32_t>(s.sysexOutSize),
                             static_cast<std::uint32_t>(s.sysexOutInt)),
         TextId::midiOutFailed);
    devices.setOutFilter(s.outFilter.mask(), s.outFilter.drop[FilterSwitches::realTime] == 0);
    devices.setThruFlag();
    need(devices.setThruPort(s.midiThru), TextId::midiThruFailed);
    devices.setThruFilter(s.thruFilter.mask());
    devices.setInFilter(s.inMask(), s.inController);
    need(devices.setInPort(s.midiIn, static_cast<std::uint32_t>(s.sysexSize)), TextId::midiInFailed);
    devices.setSyncMode(s.sync);
    devices.setThruCh(-1);
    devices.setThruTrans(0);
}

void CTR9App::readSettings() { m_settings.read(m_ports.store, GetDrvNum(), GetWavOutDrvNum(), m_ports.appDirectory); }

void CTR9App::SetSettings(const Settings& settings)
{
    stopTransport();
    m_settings = settings;
    applyDevices();
    m_ports.windows.setSyncMode(settings.sync);
    m_ports.devices.setWavePorts(settings.wavOut);
    settings.write(m_ports.store);
    m_ports.store.flush();
    m_ports.document.GetEditor().HintSysSetupChng();
}

void CTR9App::SetMIDIChase(bool on)
{
    m_settings.midiChase = on;
    m_ports.store.setInt("System", "MIDI Chase", on);
}

void CTR9App::SetViewChase(bool on)
{
    m_settings.viewChase = on;
    m_ports.store.setInt("System", "View Chase", on);
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
