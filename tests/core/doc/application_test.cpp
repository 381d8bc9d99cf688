// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/app_directory.h"
#include "core/doc/scratch_folder.h"
#include "core/doc/tr9app.h"
#include "core/doc/tr9doc.h"
#include "core/fakes.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessaro::test {
namespace {

using Log = std::vector<std::string>;

/// Writes down every call; what `fail` names does not succeed.
struct FakeDevices final : DevicePort {
    Log& log;
    std::string fail;
    std::vector<std::string> outs = {"Synth", "Port A"};
    EngineStart start = EngineStart::started;
    MetronomeSettings metronome;
    std::vector<std::string> ins = {"In"};
    std::vector<std::int32_t> ports;
    std::vector<int> silent; ///< drivers that lead nowhere
    int in = -1;
    std::uint32_t inSize = 0;
    std::array<int, 3> thru{}; ///< port, channel, transposition

    explicit FakeDevices(Log& l) : log(l) {}
    bool note(const std::string& what)
    {
        log.push_back(what);
        return what != fail;
    }
    void enumerate() override { note("enumerate"); }
    std::vector<std::string> midiOutNames() const override { return outs; }
    std::vector<std::string> midiInNames() const override { return ins; }
    bool sounds(int driver) const override { return std::find(silent.begin(), silent.end(), driver) == silent.end(); }
    std::vector<std::string> waveInNames() const override { return {}; }
    std::vector<std::string> waveOutNames() const override { return {"Speaker"}; }
    EngineStart startEngine() override
    {
        note("start");
        return start;
    }
    void stopEngine() override { note("stopEngine"); }
    bool setOutPorts(std::span<const std::int32_t> drivers, std::uint32_t, std::uint32_t) override
    {
        ports.assign(drivers.begin(), drivers.end());
        return note("out");
    }
    void setOutFilter(std::uint32_t, bool) override { note("outFilter"); }
    bool setInPort(int driver, std::uint32_t size) override
    {
        in = driver;
        inSize = size;
        return note("in");
    }
    void setInFilter(std::uint32_t, const std::array<std::uint8_t, 128>&) override { note("inFilter"); }
    void setThruFlag() override { note("thruFlag"); }
    bool setThruPort(int port) override
    {
        thru[0] = port;
        return note("thru");
    }
    void setThruFilter(std::uint32_t) override { note("thruFilter"); }
    void setThruCh(int channel) override
    {
        thru[1] = channel;
        note("thruCh" + std::to_string(channel));
    }
    void setThruTrans(int semitones) override
    {
        thru[2] = semitones;
        note("thruTrans" + std::to_string(semitones));
    }
    void setSyncMode(int mode) override { note("sync" + std::to_string(mode)); }
    void setMetronome(const MetronomeSettings& m) override
    {
        metronome = m;
        note("metronome");
    }
    void setWavePorts(std::span<const std::int32_t>) override { note("wavePorts"); }
    unsigned sendShort(int, std::uint8_t, std::uint8_t, std::uint8_t) override { return 0; }
    unsigned sendLong(int, std::span<const std::uint8_t>) override { return 0; }
    int setPlayOwner(MessageTarget*, std::uint8_t) override { return 0; }
    void releasePlayOwner(int) override {}
};

struct FakeWindows final : NullAppWindows {
    Log& log;
    bool mainFrame = true;
    std::function<void()> onPanel;

    explicit FakeWindows(Log& l) : log(l) {}
    bool createMainFrame() override
    {
        log.emplace_back("mainFrame");
        return mainFrame;
    }
    void createControlPanel() override
    {
        log.emplace_back("panel");
        if (onPanel) onPanel();
    }
    void songReplaced() override { log.emplace_back("song"); }
    void songToTop() override { log.emplace_back("top"); }
    void setSyncMode(int mode) override { log.push_back("panelSync" + std::to_string(mode)); }
    void showMainFrame() override { log.emplace_back("show"); }
};

struct Bench {
    ScratchFolder folder;
    Log log;
    QuietPorts quiet;
    FakeUser user;
    FakeTransport transport;
    FakeFiles files;
    FakeDevices devices{log};
    FakeWindows windows{log};
    Strings strings{Language::english};
    CTR9Doc doc{
        {files, user, quiet.progress, transport, quiet.waveLengths, quiet.waveOutput, quiet.score, windows, strings}};
    ProfileStore store{folder / "tessaro.ini"};
    CTR9App app{{doc, user, devices, windows, store, folder.path() + "/", folder.path()}};
};

const Log deviceSetUp = {"metronome", "out", "outFilter", "thruFlag", "thru",      "thruFilter",
                         "inFilter",  "in",  "sync0",     "thruCh-1", "thruTrans0"};

Log joined(std::initializer_list<Log> parts)
{
    Log all;
    for (const Log& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST(Application, StartsInItsOrderAndSetsTheDevicesUpTwice)
{
    Bench b;
    b.store.setInt("System", "Midi Out Port Num", 3);
    b.store.setInt("System", "Metro Midi Ch", 16);
    ASSERT_TRUE(b.app.InitInstance({}));
    EXPECT_EQ(b.log, joined({{"enumerate", "start"},
                             deviceSetUp,
                             {"mainFrame", "panel", "song", "top"},
                             deviceSetUp,
                             {"wavePorts", "show", "panelSync0"}}));
    EXPECT_EQ(b.devices.ports, (std::vector<std::int32_t>{0, 1, 2}));
    EXPECT_EQ(b.devices.metronome.channel, 15);
    EXPECT_EQ(b.app.GetMidiOutPortMap(3), 2U) << "a port beyond the map has no device";
    EXPECT_EQ(b.app.GetMidiThruFltr(7), 1);
    EXPECT_TRUE(b.app.IsStarted());
    EXPECT_NE(b.app.GetClipFmt_Blk(), b.app.GetClipFmt_Evnt());
    EXPECT_EQ(CTR9App::GetClipFmtName(b.app.GetClipFmt_MstrEvnt()), "TR9MSTREVNT");
}

TEST(Application, FailedDevicesAreShownAndTheStartGoesOn)
{
    Bench b;
    b.devices.start = EngineStart::noTimer;
    b.devices.fail = "in";
    EXPECT_TRUE(b.app.InitInstance({}));
    EXPECT_EQ(b.user.messages, (std::vector{994, 952, 952}));
}

TEST(Application, OnlyOneInstanceRuns)
{
    Bench b;
    {
        CTR9App first({b.doc, b.user, b.devices, b.windows, b.store, b.folder.path() + "/", b.folder.path()});
        ASSERT_TRUE(first.InitInstance({}));
        b.log.clear();
        EXPECT_FALSE(b.app.InitInstance({}));
        EXPECT_EQ(b.user.messages, (std::vector{900}));
        EXPECT_TRUE(b.log.empty()) << "the devices belong to the first";
    }
    EXPECT_TRUE(b.app.InitInstance({}));
}

TEST(Application, WhatEndsTheStart)
{
    const std::string print[] = {"/p", "song"};
    Bench b;
    EXPECT_FALSE(b.app.InitInstance(CommandLine::parse(print)));
    EXPECT_EQ(b.user.messages, (std::vector{61473}));
    Bench c;
    c.windows.mainFrame = false;
    EXPECT_FALSE(c.app.InitInstance({}));
    EXPECT_EQ(c.log.back(), "mainFrame");
    // A file that does not open is no reason to go.
    Bench d;
    const std::string missing[] = {d.folder / "missing.mid"};
    EXPECT_TRUE(d.app.InitInstance(CommandLine::parse(missing)));
    EXPECT_EQ(d.user.messages, (std::vector{static_cast<int>(TextId::fileNotFound)}));
}

TEST(Application, RecentFilesFollowWhatOpensAndDropWhatIsGone)
{
    Bench b;
    ASSERT_TRUE(b.app.InitInstance({}));
    const std::string one = b.folder.write("one.mid", "1");
    const std::string two = b.folder.write("two.mid", "2");
    b.transport.playing = true;
    EXPECT_TRUE(b.app.OnFileOpen(one));
    EXPECT_FALSE(b.transport.playing);
    EXPECT_TRUE(b.app.OnFileOpen(two));
    b.files.kind = 0;
    EXPECT_FALSE(b.app.OnFileOpen(b.folder.write("text", "x")));
    EXPECT_EQ(b.app.GetRecentFiles().paths(), (std::vector{two, one}));

    b.files.kind = 2;
    b.app.OnFileOpen(two);
    std::filesystem::remove(one);
    EXPECT_FALSE(b.app.OnFileRecent(1));
    EXPECT_EQ(b.app.GetRecentFiles().paths(), (std::vector{two}));
    EXPECT_EQ(b.doc.GetPathName(), two) << "the song stays";
    EXPECT_EQ(ProfileStore(b.folder / "tessaro.ini").getString("Recent File List", "File1", ""), two);
    b.files.writes = true;
    EXPECT_TRUE(b.doc.Save(b.folder / "three.mid", 2));
    EXPECT_EQ(b.app.GetRecentFiles().paths(), (std::vector{b.folder / "three.mid", two}));
}

TEST(Application, DevicesThatComeDuringTheStartWaitForItsEnd)
{
    Bench b;
    b.windows.onPanel = [&] { b.app.OnDeviceChange(CTR9App::deviceArrival); };
    ASSERT_TRUE(b.app.InitInstance({}));
    EXPECT_EQ(std::count(b.log.begin(), b.log.end(), "enumerate"), 2);
    EXPECT_EQ(b.log.back(), "wavePorts");
    b.devices.outs.emplace_back("Port B");
    b.folder.write("DrvShortName.ini", "[Midi Out]\nPort B=B\n");
    FakeView view;
    b.doc.GetEditor().addObserver(&view);
    b.app.OnDeviceChange(CTR9App::deviceArrival);
    EXPECT_EQ(b.devices.ports.size(), 3U);
    EXPECT_EQ(b.app.GetDrvShortName(2), "B");
    EXPECT_EQ(b.app.GetDrvShortName(1), "Port A");
    EXPECT_EQ(view.codes, (std::vector{hint::sysSetupChng}));
    b.doc.GetEditor().removeObserver(&view);
}

TEST(Application, ARemovalReleasesEverythingAndAnArrivalBringsTheSetUpBack)
{
    Bench b;
    b.devices.outs = {"Synth", "Port A", "Port B"};
    b.devices.ins = {"Keys", "Pads"};
    ASSERT_TRUE(b.app.InitInstance({}));
    Settings chosen = b.app.GetSettings();
    chosen.midiOut = {2, 0};
    chosen.midiIn = 1;
    chosen.midiThru = 1;
    chosen.wavOut = {0};
    b.log.clear();
    b.app.SetSettings(chosen);
    EXPECT_EQ(b.log, (Log{"out", "thru", "in", "outFilter", "thruFilter", "inFilter", "sync0", "panelSync0",
                          "wavePorts", "metronome", "thruCh-1", "thru", "thruTrans0"}));

    b.transport.playing = true;
    b.app.OnDeviceChange(CTR9App::deviceRemoval);
    EXPECT_FALSE(b.transport.playing);
    EXPECT_EQ(b.devices.ports, (std::vector<std::int32_t>{0x7F, 0x7F}));
    EXPECT_EQ(b.devices.in, 0x80);
    EXPECT_EQ(b.app.GetDrvNum() + b.app.GetMidiInDrvNum() + b.app.GetWaveOutPortNum(), 0U);

    // One device is gone, another has come, and what stands has other numbers.
    b.devices.outs = {"Port C", "Port B"};
    b.devices.ins = {"Pads", "Keys"};
    b.app.OnDeviceChange(CTR9App::deviceArrival);
    EXPECT_EQ(b.devices.ports, (std::vector<std::int32_t>{1, Settings::noDriver}));
    EXPECT_EQ(b.devices.in, 0);
    EXPECT_EQ(b.devices.thru, (std::array{1, -1, 0}));
    EXPECT_EQ(b.app.GetWaveOutPortNum(), 1U);
    // The set-up is confirmed meanwhile; the synth is found again all the same.
    b.app.SetSettings(b.app.GetSettings());
    b.devices.outs = {"Port B", "Synth"};
    b.app.OnDeviceChange(CTR9App::deviceArrival);
    EXPECT_EQ(b.devices.ports, (std::vector<std::int32_t>{0, 1}));
    // The choice of no device holds.
    chosen = b.app.GetSettings();
    chosen.midiIn = 2;
    b.app.SetSettings(chosen);
    b.app.OnDeviceChange(CTR9App::deviceArrival);
    EXPECT_EQ(b.devices.in, 2);
    EXPECT_TRUE(b.user.messages.empty());

    // Buffers have a least size.
    EXPECT_EQ(b.app.SetSysexSize(511) + b.app.SetSysexOut(511, 5), 0);
    EXPECT_EQ(b.app.GetSysexOutInt(), 2000);
    EXPECT_EQ(b.app.SetSysexSize(512), 1);
    EXPECT_EQ(b.devices.inSize, 512U);
    b.devices.fail = "out";
    EXPECT_EQ(b.app.SetSysexOut(1024, 5), 0);
    EXPECT_EQ(b.app.GetSysexOutSize(), 1024);
    EXPECT_EQ(b.user.messages, (std::vector{953}));
}

TEST(Application, NothingNewOpensDuringATake)
{
    Bench b;
    ASSERT_TRUE(b.app.InitInstance({}));
    const std::string song = b.folder.write("one.mid", "1");
    ASSERT_TRUE(b.app.OnFileOpen(song));
    b.transport.recording = true;
    EXPECT_FALSE(b.app.OnFileNew() || b.app.OnFileOpen(song) || b.app.OnFileRecent(0));
    EXPECT_EQ(b.doc.GetPathName(), song);
}

TEST(Application, ThruFollowsTheOneArmedTrack)
{
    Bench b;
    b.folder.write("Trk.ini", "[Inst 5]\nTransInst=1\n[Inst 6]\nTransInst=0\n");
    b.store.setInt("System", "Midi Thru Dev", 1);
    ASSERT_TRUE(b.app.InitInstance({}));
    CEditor& editor = b.doc.GetEditor();
    const auto arm = [&](int trk, bool on) {
        editor.SetTrkRec(trk, on);
        b.app.UpdateMidiThru();
        return b.devices.thru;
    };
    const std::array usual{1, -1, 0};
    editor.SetTrkPort(7, 3);
    editor.SetTrkTranspose(7, -2);
    for (const int wave : {2, 40}) editor.SetTrkTypePrivate(wave, trktype::wave);
    EXPECT_EQ(arm(7, true), (std::array{3, 6, 0}));
    for (const auto& [instrument, trans] : {std::pair(5U, 2), {6U, 0}, {0U, 0}}) {
        editor.SetTrkInstType(7, instrument << 24U);
        EXPECT_EQ(arm(7, true), (std::array{3, 6, trans}));
    }
    EXPECT_EQ(arm(2, true), (std::array{3, 6, 0})) << "a wave track before it";
    EXPECT_EQ(arm(40, true), usual) << "a wave track behind it";
    EXPECT_EQ(arm(40, false), (std::array{3, 6, 0}));
    EXPECT_EQ(arm(100, true), usual);
    EXPECT_EQ(arm(7, false), (std::array{0, 3, 0}));
    EXPECT_EQ(arm(100, false), usual) << "only a wave track";
}

TEST(Application, TheMetronomeGoesWhereItIsHeard)
{
    using Map = std::vector<std::int32_t>;
    Bench b;
    b.devices.outs = {"Synth", "Port A", "Loopback"};
    b.devices.silent = {2};
    ASSERT_TRUE(b.app.InitInstance({}));
    for (const auto& [map, heardAt] :
         {std::pair(Map{0, 1, 2}, 1), {Map{0, 2}, 0}, {Map{0}, 0}, {Map{1, 0xFF}, 0}, {Map{2, 0}, 1}}) {
        Settings s = b.app.GetSettings();
        s.midiOut = map;
        b.app.SetSettings(s);
        EXPECT_EQ(b.devices.metronome.port, heardAt);
        EXPECT_EQ(b.app.GetMetronome().port, 1) << "the setting stays";
    }
}

TEST(Application, TheListsColumnsOutliveTheProcess)
{
    Bench b;
    b.folder.write("ws.ini", "; kept\n[Midi Sync]\nRepeat Interval=20\n");
    ASSERT_TRUE(b.app.InitInstance({}));
    b.app.GetListSettings().columnWidths[4] = 77;
    b.app.SetMIDIChase(true);
    b.app.ExitInstance();
    EXPECT_EQ(b.log.back(), "stopEngine");
    const ProfileStore ini(b.folder / "ws.ini");
    EXPECT_EQ(ini.getInt("List Hdr", "4", 0), 77);
    EXPECT_EQ(ini.getInt("Midi Sync", "Repeat Interval", 0), 20);
    EXPECT_EQ(ProfileStore(b.folder / "tessaro.ini").getInt("System", "MIDI Chase", 0), 1);
}

TEST(AppDirectory, IsFilledFromTheInstalledDataAndKeepsWhatTheUserHas)
{
    const ScratchFolder folder;
    std::filesystem::create_directories(folder / "data/Style");
    folder.write("data/ws.ini", "new");
    folder.write("data/Style/a.sty", "style");
    std::filesystem::create_directories(folder / "share/tessaro");
    folder.write("share/tessaro/ws.ini", "mine");
    EXPECT_EQ(prepareAppDirectory({"/proc/nowhere", folder / "data", folder / "share"}), folder / "share/tessaro/");
    EXPECT_EQ(std::filesystem::file_size(folder / "share/tessaro/ws.ini"), 4U);
    EXPECT_TRUE(std::filesystem::exists(folder / "share/tessaro/Style/a.sty"));

    std::filesystem::create_directory(folder / "bin");
    EXPECT_EQ(prepareAppDirectory({folder / "bin", folder / "data", folder / "share"}), folder / "bin/");
    EXPECT_TRUE(std::filesystem::exists(folder / "bin/ws.ini"));
}

TEST(CommandLine, TakesOneFileAndNoOptions)
{
    using Args = std::vector<std::string>;
    const auto shell = [](const Args& args) { return CommandLine::parse(args).shell; };
    EXPECT_EQ(shell({}), CommandLine::Shell::fileNew);
    EXPECT_EQ(shell({"a.mid"}), CommandLine::Shell::fileOpen);
    EXPECT_EQ(shell({"a.mid", "b.mid"}), CommandLine::Shell::unsupported);
    EXPECT_EQ(shell({"--print"}), CommandLine::Shell::unsupported);
    EXPECT_EQ(CommandLine::parse(Args{"--", "-odd.mid"}).file, "-odd.mid");
}

} // namespace
} // namespace tessaro::test
