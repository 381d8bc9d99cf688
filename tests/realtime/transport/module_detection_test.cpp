// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"
#include "core/doc/scratch_folder.h"
#include "core/doc/tr9app.h"
#include "core/doc/tr9doc.h"
#include "core/fakes.h"
#include "realtime/loom/loom.h"
#include "realtime/loom/midi_system.h"
#include "realtime/play/smc.h"
#include "realtime/transport/devices.h"
#include "realtime/transport/module_detection.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

using Bytes = std::vector<std::uint8_t>;
using namespace std::chrono_literals;

/// A module that is asked through one output and answers at one input.
struct Module {
    int output;
    int input;
    std::uint8_t device;
    std::vector<Bytes> says;
};

/// Outputs and inputs with modules between them.
class ModuleMidi final : public MidiSystem {
public:
    std::vector<Module> modules;
    std::vector<std::string> outs = {"A", "B", "C"};
    std::vector<std::string> ins = {"in 1", "in 2"};
    std::vector<std::pair<Nanos, std::size_t>> sent; ///< when, and how many bytes
    std::vector<int> openOuts;
    int openIn = -1;
    MidiInSink* sink = nullptr;

    void refresh() override {}
    [[nodiscard]] std::vector<std::string> outputs() const override { return outs; }
    [[nodiscard]] std::vector<std::string> inputs() const override { return ins; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override
    {
        return driver < outs.size() ? std::make_unique<Out>(*this, static_cast<int>(driver)) : nullptr;
    }
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t driver, MidiInSink& to, std::size_t) override
    {
        if (driver >= ins.size()) return nullptr;
        openIn = static_cast<int>(driver);
        sink = &to;
        return std::make_unique<In>(*this);
    }

private:
    struct Out final : MidiOut {
        Out(ModuleMidi& m, int d) : midi(m), driver(d) { midi.openOuts.push_back(d); }
        ~Out() override { midi.openOuts.erase(std::find(midi.openOuts.begin(), midi.openOuts.end(), driver)); }
        bool send(std::span<const std::uint8_t> bytes, Nanos due) noexcept override
        {
            midi.sent.emplace_back(due, bytes.size());
            for (const Module& m : midi.modules)
                if (Bytes(bytes.begin(), bytes.end()) == Bytes{0xF0, 0x7E, m.device, 6, 1, 0xF7} && m.output == driver
                    && m.input == midi.openIn)
                    for (const Bytes& said : m.says) midi.sink->received(said, due);
            return true;
        }
        ModuleMidi& midi;
        int driver;
    };
    struct In final : MidiIn {
        explicit In(ModuleMidi& m) : midi(m) {}
        ~In() override
        {
            midi.sink = nullptr;
            midi.openIn = -1;
        }
        ModuleMidi& midi;
    };
};

Bytes answer(const Bytes& identity)
{
    Bytes bytes = {0xF0, 0x7E, 0x10, 6, 2};
    bytes.insert(bytes.end(), identity.begin(), identity.end());
    bytes.insert(bytes.end(), {1, 0, 0, 0, 0xF7});
    return bytes;
}

struct Rows final : ModuleDetectionObserver {
    std::vector<std::string> texts;
    int endings = 0;
    void rowFound(const ModuleRow& row) override { texts.push_back(row.output + " " + row.input + " " + row.module); }
    void ended() override { ++endings; }
};

class Detecting : public testing::Test {
protected:
    Detecting()
    {
        folder.write("ModelName.ini", "[Model Name]\n7D01020304=Lab module\n");
        store.setInt("System", "Midi Id Req Dev Num", 0x90);
        store.setInt("System", "Midi Out Port Num", 2);
        store.setInt("System", "Midi In Dev", 1);
        EXPECT_TRUE(app.InitInstance({}));
        detection.setObserver(&rows);
    }
    ~Detecting() override { detection.setObserver(nullptr); }

    /// Timer calls until the end, and this before each.
    void runOn(const std::function<void()>& meanwhile = [] {})
    {
        for (int ticks = 0; detection.running() && ticks < 200; ++ticks) {
            meanwhile();
            clock.sleepFor(100ms);
            detection.timer();
        }
    }
    void load(int messages)
    {
        while (midi.sink && messages-- > 0) midi.sink->received(Bytes{0xB0, 1, 1}, clock.now());
    }
    void expectSetUpAgain()
    {
        EXPECT_FALSE(detection.running());
        EXPECT_EQ(rows.endings, 1);
        EXPECT_EQ(midi.openOuts, (std::vector{0, 1}));
        EXPECT_EQ(midi.openIn, 1);
    }

    ScratchFolder folder;
    ManualClock clock;
    ModuleMidi midi;
    ProfileStore store{folder / "tessaro.ini"};
    FakeUser user;
    Strings strings{Language::english};
    Loom loom{clock, midi};
    Smc smc{{loom, clock, store, store, user, strings}};
    Devices devices{smc, midi};
    QuietPorts quiet;
    FakeTransport transport;
    FakeFiles files;
    NullAppWindows windows;
    CTR9Doc doc{
        {files, user, quiet.progress, transport, quiet.waveLengths, quiet.waveOutput, quiet.score, windows, strings}};
    CTR9App app{{doc, user, devices, windows, store, folder.path() + "/", folder.path()}};
    Rows rows;
    ModuleDetection detection{app, smc};
};

TEST_F(Detecting, FindsEachModuleAtTheInputWhereItAnswers)
{
    const Bytes known = answer({0x7D, 1, 2, 3, 4});
    Bytes tooLong = known;
    tooLong.insert(tooLong.begin() + 6, 0);
    Bytes noIdentity = known;
    noIdentity[4] = 1;
    midi.modules = {{0, 1, 0x10, {{0xFE}, {0x90, 60, 1}, tooLong, noIdentity, known, answer({9, 9, 9, 9, 9})}},
                    {1, 0, 0x11, {known}}, // asked under another device number
                    {2, 0, 0x10, {answer({0, 0, 0x7F, 0x0A, 0x1B})}}};
    transport.playing = true;
    detection.start();
    EXPECT_FALSE(transport.playing);
    runOn([&] { load(200); });
    EXPECT_EQ(rows.texts, (std::vector<std::string>{"A 2: Lab module", "B --- ---", "C 1: 00007F0A1B"}));
    EXPECT_EQ(detection.found(), (std::vector{0, 2}));
    expectSetUpAgain();
    // Without an owner each entry is freed at once, if those before it were.
    smc.smcRecStart();
    load(590);
    clock.sleepFor(0ms);
    EXPECT_EQ(loom.getLoomRecError(), 0) << "the ring takes a whole load";
}

TEST_F(Detecting, EndsWhenCancelledAndWhenDevicesGo)
{
    detection.start();
    detection.timer();
    detection.cancel();
    expectSetUpAgain();
    detection.timer();
    detection.cancel();
    EXPECT_EQ(rows.endings, 1);

    rows = {};
    detection.start();
    app.OnDeviceChange(CTR9App::deviceRemoval);
    runOn();
    EXPECT_EQ(rows.endings, 1);
    EXPECT_TRUE(midi.openOuts.empty());
    midi.outs.clear();
    midi.ins.clear();
    app.OnDeviceChange(CTR9App::deviceArrival);
    detection.start();
    EXPECT_FALSE(detection.running()) << "nothing to ask";
    EXPECT_EQ(rows.endings, 2);
}

TEST_F(Detecting, LongMessagesLeaveInThePiecesThatTheSettingsSay)
{
    ASSERT_EQ(app.SetSysexOut(512, 30), 1);
    midi.sent.clear();
    Bytes message(1200, 1);
    message.front() = 0xF0;
    message.back() = 0xF7;
    EXPECT_EQ(app.SendLongMsg(0, message), 0U);
    clock.sleepFor(100ms);
    const Nanos first = midi.sent.at(0).first;
    EXPECT_EQ(midi.sent, (std::vector<std::pair<Nanos, std::size_t>>{
                             {first, 512}, {first + 30ms, 512}, {first + 60ms, 1200 - 2 * 512}}));
}

TEST(ModulesFirst, TakesFoundOutputsToTheTop)
{
    const std::vector<OutputChoice> rows = {{4, true}, {0, false}, {1, true}, {2, false}};
    EXPECT_EQ(modulesFirst(rows, {}), rows);
    EXPECT_EQ(modulesFirst(rows, {0, 2, 7}), (std::vector<OutputChoice>{{0, true}, {2, true}, {4, true}, {1, true}}));
}

} // namespace
} // namespace tessaro::test
