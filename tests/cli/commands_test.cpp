// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the command as a user does.
#include "support/command.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tessaro {
namespace {

using test::Outcome;
namespace fs = std::filesystem;

class Commands : public test::CommandTest {
protected:
    std::string write(const std::string& name, const std::vector<int>& bytes) const
    {
        std::ofstream out(path(name), std::ios::binary);
        for (const int byte : bytes) out.put(static_cast<char>(byte));
        return path(name);
    }

    /// A format 0 file, 96 ticks a quarter: 60 beats a minute, 3/4, a program, a note of a quarter and a bend.
    std::string smallSong() const
    {
        const std::vector<int> track{0,  0xFF, 0x51, 3,    0x0F, 0x42, 0x40, 0,    0xFF, 0x58, 4,  3,
                                     2,  24,   8,    0,    0xC0, 5,    0,    0x90, 60,   100,  96, 0x80,
                                     60, 0,    0,    0xE0, 0,    80,   0,    0xFF, 0x2F, 0};
        std::vector<int> bytes{'M', 'T', 'h', 'd', 0,   0,   0,   6, 0, 0, 0,
                               1,   0,   96,  'M', 'T', 'r', 'k', 0, 0, 0, static_cast<int>(track.size())};
        bytes.insert(bytes.end(), track.begin(), track.end());
        return write("small.mid", bytes);
    }
};

struct Sent {
    double ms = 0;
    std::string tick;
    std::vector<int> bytes;
};

/// "12.345 960 0 90 3c 64": checks the form of each line to the letter.
std::vector<Sent> linesOf(const std::string& out)
{
    std::vector<Sent> lines;
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string ms;
        std::string port;
        Sent sent;
        words >> ms >> sent.tick >> port;
        std::string again = ms + ' ' + sent.tick + ' ' + port;
        for (std::string byte; words >> byte;) {
            EXPECT_EQ(byte.size(), 2U) << line;
            EXPECT_EQ(byte.find_first_not_of("0123456789abcdef"), std::string::npos) << line;
            sent.bytes.push_back(std::stoi(byte, nullptr, 16));
            again += ' ' + byte;
        }
        EXPECT_EQ(again, line) << "single blanks";
        EXPECT_EQ(ms.find('.'), ms.size() - 4) << line;
        EXPECT_EQ(ms.find_first_not_of("0123456789."), std::string::npos) << line;
        EXPECT_EQ(port.find_first_not_of("0123456789"), std::string::npos) << line;
        EXPECT_TRUE(sent.tick == "-" || sent.tick.find_first_not_of("0123456789") == std::string::npos) << line;
        sent.ms = std::stod(ms);
        lines.push_back(sent);
    }
    return lines;
}

void expectSoundRun(const std::vector<Sent>& lines)
{
    std::map<std::pair<int, int>, int> sounding;
    double last = 0;
    for (const Sent& line : lines) {
        EXPECT_GE(line.ms, last);
        last = line.ms;
        const int kind = line.bytes[0] & 0xF0;
        if (kind != 0x80 && kind != 0x90) continue;
        int& count = sounding[{line.bytes[0] & 0x0F, line.bytes[1]}];
        count += kind == 0x90 && line.bytes[2] > 0 ? 1 : -1;
        EXPECT_GE(count, 0) << "an off before its on";
    }
    for (const auto& [key, count] : sounding) EXPECT_EQ(count, 0) << "channel " << key.first << " key " << key.second;
}

TEST_F(Commands, DumpIsExact)
{
    const Outcome dump = run("dump " + smallSong());
    ASSERT_EQ(dump.exit, 0) << dump.err;
    std::istringstream in(dump.out);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    const std::vector<std::string> want{
        R"({"song":{"kind":1,"end":480}})",
        R"({"tempo":{"tick":0,"ms":0,"us":1000000}})",
        R"({"meas":{"top":0,"num":3,"den":2}})",
        R"({"trk":0,"type":1,"port":0,"ch":0,"trans":0,"transOn":1,"solo":0,"mute":0,"inst":0,"staff":0,"wavVol":127,"name":""})",
        R"({"blk":0,"trk":0,"type":1,"top":0,"end":0,"name":"Block0","real":0})",
        R"({"trk":1,"type":1,"port":0,"ch":0,"trans":0,"transOn":1,"solo":0,"mute":0,"inst":0,"staff":0,"wavVol":127,"name":""})",
        R"({"blk":0,"trk":1,"type":1,"top":0,"end":480,"name":"Block1","real":1})"};
    ASSERT_GE(lines.size(), want.size() + 5);
    for (std::size_t i = 0; i < want.size(); ++i) EXPECT_EQ(lines[i], want[i]);
    const std::vector<std::string> events{
        R"({"real":0,"time":0,"st":255,"p":[0,0,0,0],"gate":0,"meta":81,"data":"0f4240"})",
        R"({"real":0,"time":0,"st":255,"p":[0,0,0,0],"gate":0,"meta":88,"data":"03021808"})",
        R"({"real":1,"time":0,"st":192,"p":[5,0,0,0],"gate":0})",
        R"({"real":1,"time":0,"st":144,"p":[60,100,0,0],"gate":480})",
        R"({"real":1,"time":480,"st":224,"p":[0,80,0,0],"gate":0})"};
    EXPECT_EQ(std::vector<std::string>(lines.end() - 5, lines.end()), events);
}

TEST_F(Commands, InfoTellsTheSong)
{
    const Outcome info = run("info " + smallSong());
    EXPECT_EQ(info.exit, 0);
    EXPECT_NE(info.out.find("format 0"), std::string::npos);
    EXPECT_NE(info.out.find("notes: 1\n"), std::string::npos);
    EXPECT_NE(info.out.find("tempo: 60.00\n"), std::string::npos);
    EXPECT_NE(info.out.find("signature: 3/4\n"), std::string::npos);
    EXPECT_NE(info.out.find("length: 1:2:0 0:01\n"), std::string::npos);
}

TEST_F(Commands, WrongUsageExitsWithTwoAndHelpWithNone)
{
    for (const char* arguments :
         {"", "nonsense", "info", "simulate x.mid --from 1:2", "simulate x.mid --mute 5-3", "simulate x.mid --solo 101",
          "simulate x.mid --loop 3", "render x.mid", "play x.mid --sync --lead", "play x.mid --in 0", "record",
          "record x.wav", "record x.mid --seconds 0", "record x.mid --tempo 120 --with y.mid", "record x.mid --out 0",
          "record x.mid --in nobody"})
        EXPECT_EQ(run(arguments).exit, 2) << arguments;
    for (const char* command : {"", "info", "dump", "simulate", "render", "play", "record", "devices"})
        EXPECT_EQ(run(std::string(command) + " --help").exit, 0) << command;
}

TEST_F(Commands, BadFilesExitWithOneAndAReason)
{
    const std::vector<int> header{'M', 'T', 'h', 'd', 0, 0, 0, 6};
    const auto withHeader = [&](std::vector<int> rest) {
        rest.insert(rest.begin(), header.begin(), header.end());
        return rest;
    };
    std::vector<std::string> files{
        path("missing.mid"),
        path("."),
        write("empty.mid", {}),
        write("text.mid", {'h', 'e', 'l', 'l', 'o'}),
        write("truncated.mid", withHeader({0, 0, 0, 1, 0, 96, 'M', 'T', 'r', 'k', 0, 0, 0, 40, 0, 0x90})),
        write("lies.mid", withHeader({0, 0, 0, 1, 0, 96, 'M', 'T', 'r', 'k', 0xFF, 0xFF, 0xFF, 0xFF, 0, 0x90})),
        write("division0.mid", withHeader({0, 0, 0, 1, 0, 0, 'M', 'T', 'r', 'k', 0, 0, 0, 4, 0, 0xFF, 0x2F, 0})),
        write("format2.mid", withHeader({0, 2, 0, 1, 0, 96, 'M', 'T', 'r', 'k', 0, 0, 0, 4, 0, 0xFF, 0x2F, 0}))};
    for (const std::string& file : files) {
        for (const char* command : {"info", "dump", "simulate"}) {
            const Outcome result = run(std::string(command) + " " + file);
            EXPECT_EQ(result.exit, 1) << command << ' ' << file;
            EXPECT_TRUE(result.out.empty()) << file;
            EXPECT_FALSE(result.err.empty()) << file;
        }
    }
    EXPECT_NE(run("info " + files[3]).err.find("このﾌｧｲﾙのﾌｫｰﾏｯﾄはｻﾎﾟｰﾄしていません。"), std::string::npos);
    EXPECT_EQ(run("render " + example() + " " + path("no/such/folder.wav")).exit, 1);
}

TEST_F(Commands, SimulatePlaysAtTheTimesOfTheTempoMap)
{
    const std::vector<Sent> lines = linesOf(run("simulate " + smallSong()).out);
    expectSoundRun(lines);
    bool on = false;
    bool off = false;
    for (const Sent& line : lines) {
        if (line.bytes == std::vector<int>{0x90, 60, 100}) on = line.ms == 0 && line.tick == "0";
        if (line.bytes == std::vector<int>{0x90, 60, 0}) off = line.ms == 1000 && line.tick == "480";
    }
    EXPECT_TRUE(on);
    EXPECT_TRUE(off);
}

TEST_F(Commands, SimulateHonoursItsOptions)
{
    const auto simulate = [&](const std::string& options) {
        const Outcome result = run("simulate " + example() + " " + options);
        EXPECT_EQ(result.exit, 0) << result.err;
        std::vector<Sent> lines = linesOf(result.out);
        EXPECT_FALSE(lines.empty());
        expectSoundRun(lines);
        return lines;
    };
    const auto channels = [](const std::vector<Sent>& lines) {
        std::map<int, int> notes;
        for (const Sent& line : lines)
            if ((line.bytes[0] & 0xF0) == 0x90) ++notes[line.bytes[0] & 0x0F];
        return notes;
    };
    const auto whole = channels(simulate(""));
    EXPECT_GE(whole.size(), 8U);
    EXPECT_EQ(whole, channels(simulate(""))) << "the same run twice";

    const std::vector<Sent> part = simulate("--from 5:1:0 --to 7:1:0");
    for (const Sent& line : part)
        if (line.tick != "-") {
            EXPECT_GE(std::stol(line.tick), 4 * 1920);
            EXPECT_LT(std::stol(line.tick), 6 * 1920);
        }
    EXPECT_EQ(part.front().tick, "-") << "controllers are chased";
    EXPECT_NE(simulate("--from 5:1:0 --to 7:1:0 --no-chase").front().bytes, part.front().bytes);

    EXPECT_EQ(channels(simulate("--mute 1,3-4")).count(0), 0U);
    EXPECT_EQ(channels(simulate("--mute 1,3-4")).count(2), 0U);
    EXPECT_EQ(channels(simulate("--solo 2")).size(), 1U);

    std::map<std::string, int> passes;
    for (const Sent& line : simulate("--from 13440 --loop 13440 15360 --to 9600"))
        if ((line.bytes[0] & 0xF0) == 0x90) ++passes[line.tick];
    ASSERT_FALSE(passes.empty());
    EXPECT_GE(passes.begin()->second, 4) << "five bars of a loop of one";
}

TEST_F(Commands, RenderWritesSound)
{
    const Outcome result = run("render " + example() + " " + path("out.wav") + " --rate 22050 --from 5:1:0 --to 6:1:0");
    if (result.exit != 0 && result.err.find("SoundFont") != std::string::npos) GTEST_SKIP() << result.err;
    ASSERT_EQ(result.exit, 0) << result.err;
    EXPECT_GT(fs::file_size(path("out.wav")), 22050U * 4 * 2);
}

/// What dump prints but its first line, which has the kind.
std::string songOf(const std::string& dump) { return dump.substr(dump.find('\n')); }

TEST_F(Commands, ConvertWritesEveryKind)
{
    const std::string song = example();
    const std::string before = songOf(run("dump " + song).out);
    ASSERT_EQ(run("convert " + song + " " + path("own.tqm")).exit, 0);
    const Outcome native = run("dump " + path("own.tqm"));
    EXPECT_EQ(songOf(native.out), before) << "nothing is lost";
    EXPECT_NE(native.out.find("{\"song\":{\"kind\":4,"), std::string::npos);
    ASSERT_EQ(run("convert " + path("own.tqm") + " " + path("again.TQM")).exit, 0);
    EXPECT_EQ(bytesOf("own.tqm"), bytesOf("again.TQM"));

    const std::map<std::string, int> kinds{{"smf0", 1}, {"smf1", 2}, {"zp", 3}, {"tqm", 4}, {"tqmwave", 4}, {"vb", 2}};
    for (const auto& [name, kind] : kinds) {
        ASSERT_EQ(run("convert " + song + " " + path(name) + " --kind " + name).exit, 0) << name;
        const std::string line = "{\"song\":{\"kind\":" + std::to_string(kind) + ",";
        EXPECT_EQ(run("dump " + path(name)).out.compare(0, line.size(), line), 0) << name;
    }
}

TEST_F(Commands, ConvertRefusesWhatItCannotDo)
{
    EXPECT_EQ(run("convert " + smallSong() + " " + path("song.wav")).exit, 2) << "an ending that tells nothing";
    EXPECT_EQ(run("convert " + smallSong() + " " + path("song.mid") + " --kind mp3").exit, 2);
    EXPECT_EQ(run("convert " + smallSong()).exit, 2);
    EXPECT_EQ(run("convert " + path("none.mid") + " " + path("out.mid")).exit, 1);
    const Outcome noFolder = run("convert " + smallSong() + " " + path("missing/out.mid"));
    EXPECT_EQ(noFolder.exit, 1);
    EXPECT_NE(noFolder.err.find("ｾｰﾌﾞに失敗しました。"), std::string::npos) << noFolder.err;
    EXPECT_EQ(run("convert --help").exit, 0);
}

} // namespace
} // namespace tessaro
