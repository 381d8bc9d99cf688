// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/list_settings.h"
#include "core/doc/profile_store.h"
#include "core/doc/recent_files.h"
#include "core/doc/scratch_folder.h"
#include "core/doc/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tessaro::test {
namespace {

const std::vector<std::string> threeOuts = {"Synth", "Port A", "Port B"};
const std::vector<std::string> oneIn = {"Keys"};

TEST(Settings, BeforeTheFirstReadingNothingIsOpenAndAllIsFiltered)
{
    const Settings s;
    EXPECT_EQ(s.midiOut, (std::vector<std::int32_t>(6, 0xFF)));
    EXPECT_EQ(s.midiIn, 0xFF);
    EXPECT_EQ(s.midiThru, 0xFF);
    EXPECT_EQ(s.wavIn, 0xFF);
    EXPECT_EQ(s.outFilter.mask(), 0xFFU);
    EXPECT_EQ(s.thruFilter.mask(), 0xFFU);
    EXPECT_EQ(s.inMask(), 0x10FFU);
    EXPECT_EQ(s.wavInFmt, 11);
    EXPECT_EQ(s.sysexOutInt, 2000);
}

TEST(Settings, AnEmptyStoreGivesTheDefaults)
{
    const ScratchFolder folder;
    const ProfileStore store(folder / "none.ini");
    Settings s;
    s.read(store, {threeOuts, oneIn, 2});
    EXPECT_EQ(s.midiOut, (std::vector<std::int32_t>{0, 1, 2})) << "a port for each driver";
    EXPECT_TRUE(s.wavOut.empty());
    EXPECT_EQ(s.midiIn, 0);
    EXPECT_EQ(s.outFilter.mask(), 0U);
    EXPECT_EQ(s.outFilter.drop[FilterSwitches::realTime], 1) << "real-time messages stay in";
    EXPECT_EQ(s.inMask(), 0U);
    EXPECT_EQ(s.inController[5], 0);
    EXPECT_EQ(readMetronome(store).channel, 9);
    const RecordPlaySettings record = RecordPlaySettings::read(store, "/app/");
    EXPECT_EQ(record.viewChase, 1);
    EXPECT_EQ(record.midiChase, 0);
    EXPECT_EQ(record.blockMode, 1);
    EXPECT_EQ(record.waveDir, "/app/");
}

TEST(Settings, ControllersAreReadOneByOneOnlyForTheMixedSwitch)
{
    const ScratchFolder folder;
    ProfileStore store(folder / "t.ini");
    store.setInt("System", "Midi In Fltr Cntrl7", 1);
    Settings s;
    for (const auto& [control, seven, eight, bit] : {std::tuple(0, 0, 0, 0U), {1, 1, 1, 8U}, {2, 1, 0, 0U}}) {
        store.setInt("System", "Midi In Fltr Cntrl", control);
        s.read(store, {});
        EXPECT_EQ(s.inController[7], seven) << control;
        EXPECT_EQ(s.inController[8], eight) << control;
        EXPECT_EQ(s.inMask(), bit) << control;
    }
}

TEST(Settings, StrangeValuesStayWithinBounds)
{
    const ScratchFolder folder;
    folder.write("t.ini",
                 "[SYSTEM]\nmidi out port num=5000\nWav Out Port Num=-3\nSysex Size=-1\nsysex out size=2000000000\n");
    const ProfileStore store(folder / "t.ini");
    Settings s;
    s.read(store, {threeOuts, oneIn, 7});
    EXPECT_EQ(s.midiOut.size(), 128U);
    EXPECT_TRUE(s.wavOut.empty());
    EXPECT_EQ(s.sysexSize, 0);
    EXPECT_LE(s.sysexOutSize, 1 << 24);
}

TEST(Settings, WhatIsWrittenIsReadBackByAnotherProcess)
{
    const ScratchFolder folder;
    const std::string path = folder / "new/deep/tessaro.ini";
    Settings s;
    const RecordPlaySettings record{1, 0, 2, 960, 1920, 4, 1, "/waves and more", 1, 0};
    const MetronomeSettings metronome{3, 15, 60, 61, 70, 33};
    {
        ProfileStore store(path);
        s.read(store, {threeOuts, oneIn, 4});
        s.midiOut = {1, 0, 9};
        s.wavOut = {3, 4};
        s.thruFilter.drop[FilterSwitches::pitch] = 1;
        s.inFilter.drop[FilterSwitches::control] = 2;
        s.inController[127] = 1;
        s.write(store);
        record.write(store);
        writeMetronome(store, metronome);
    }
    const ProfileStore store(path);
    Settings back;
    back.read(store, {threeOuts, oneIn, 4});
    EXPECT_EQ(back.midiOut, s.midiOut);
    EXPECT_EQ(back.wavOut, s.wavOut);
    EXPECT_EQ(back.thruFilter.mask(), 0x40U);
    EXPECT_EQ(back.inController, s.inController);
    EXPECT_EQ(RecordPlaySettings::read(store, ""), record);
    EXPECT_EQ(readMetronome(store), metronome);
    EXPECT_EQ(store.getInt("sYSTEM", "REC MODE", 5), 1);
}

// Random lists and choices: whatever order the machine gives its drivers, a port plays to the one that was chosen.
TEST(Settings, DriversAreFoundAgainUnderOtherNumbers)
{
    std::minstd_rand random(7);
    const auto below = [&](std::size_t n) { return static_cast<int>(random() % n); };
    const ScratchFolder folder;
    ProfileStore store(folder / "t.ini");
    for (int round = 0; round < 300; ++round) {
        std::vector<std::string> outs;
        for (int i = 0; i < 6; ++i) outs.push_back(std::string(" port ") + static_cast<char>('a' + below(4)) + ' ');
        std::vector<std::string> ins = {"x", "y", "---", "z"};
        Settings s;
        s.midiOut = {below(6), below(6), below(9), 0x7F};
        s.midiIn = below(4);
        s.remember({outs, ins}, Settings());
        s.write(store);

        // What a driver is: its name, and which one of that name.
        const auto identity = [](const std::vector<std::string>& list, int driver) {
            const auto at = list.begin() + driver;
            return *at + std::to_string(std::count(list.begin(), at, *at));
        };
        std::vector<std::string> later = outs;
        std::shuffle(later.begin(), later.end(), random);
        if (round % 2) later.erase(later.begin() + below(6));
        std::swap(ins[0], ins[static_cast<std::size_t>(below(2))]);
        const auto check = [&](const std::vector<std::string>& list, int then, int now) {
            if (then >= 6) {
                EXPECT_EQ(now, then);
                return;
            }
            std::vector<std::string> all;
            for (int i = 0; i < static_cast<int>(list.size()); ++i) all.push_back(identity(list, i));
            const auto at = std::find(all.begin(), all.end(), identity(outs, then));
            EXPECT_EQ(now, at == all.end() ? Settings::noDriver : at - all.begin());
        };
        Settings back;
        back.read(store, {later, ins});
        for (std::size_t port = 0; port < 4; ++port) check(later, s.midiOut[port], back.midiOut[port]);
        EXPECT_EQ(back.midiIn == 2, s.midiIn == 2) << "no name, so the number counts";
        EXPECT_EQ(back.midiOutNames, s.midiOutNames);
    }
}

TEST(ProfileStore, AFileThatCannotBeReadIsNotOverwritten)
{
    const ScratchFolder folder;
    const std::string path = folder / "folder.ini";
    std::filesystem::create_directory(path);
    ProfileStore store(path);
    EXPECT_FALSE(store.setInt("System", "Sync", 1));
    EXPECT_FALSE(store.flush());
    EXPECT_TRUE(std::filesystem::is_directory(path));
}

TEST(ListSettings, WidthsBelowOneAndFontsOfAnotherSizeFallBack)
{
    const ScratchFolder folder;
    ProfileStore ini(folder / "ws.ini");
    ini.setInt("List Hdr", "2", 0);
    ini.setInt("List Hdr", "3", 55);
    ini.setBinary("List", "Font", std::vector<std::uint8_t>(59, 1));
    ini.setString("VceFileName", "0", std::string(300, 'x'));
    ListSettings list;
    list.read(ini);
    EXPECT_EQ(list.columnWidths, (std::array{120, 120, 120, 55, 120, 120, 120}));
    EXPECT_TRUE(list.font.empty());
    EXPECT_EQ(readVceFileName(ini).size(), 260U);

    list.font.assign(60, 7);
    list.monitor = {0, 1, 0, 1};
    list.write(ini);
    ListSettings back;
    back.read(ini);
    EXPECT_EQ(back.font, list.font);
    EXPECT_EQ(back.monitor, list.monitor);
    EXPECT_EQ(readVceFileName(ProfileStore(folder / "no.ini")), "ZRVoiceListExtension5.ini");
}

TEST(RecentFiles, TenEachOnceTheLatestFirst)
{
    const ScratchFolder folder;
    ProfileStore store(folder / "t.ini");
    RecentFiles files;
    for (int i = 0; i < 12; ++i) files.add("/songs/" + std::to_string(i));
    files.add("/songs/x/../5");
    EXPECT_EQ(files.paths().size(), 10U);
    EXPECT_EQ(files.paths()[0], "/songs/5");
    EXPECT_EQ(files.paths()[1], "/songs/11");
    EXPECT_EQ(files.paths()[9], "/songs/2");
    files.write(store);
    files.remove("/songs/5");
    files.write(store);
    RecentFiles back;
    back.read(store);
    EXPECT_EQ(back.paths(), files.paths());
}

} // namespace
} // namespace tessaro::test
