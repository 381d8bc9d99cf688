// SPDX-License-Identifier: GPL-3.0-or-later
// Devices that go and come while the song plays and records.
#include "base/manual_clock.h"
#include "core/doc/scratch_folder.h"
#include "core/doc/tr9app.h"
#include "platform/jack_server.h"
#include "platform/platform_midi.h"
#include "realtime/transport/devices.h"
#include "streams/stream_client.h"
#include "streams/take_check.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessaro::test {
namespace {

/// Drivers that are plugged in and out.
class PluggedMidi final : public MidiSystem {
public:
    std::vector<std::string> outs{"Synth", "Module"};
    std::vector<std::string> ins{"Keys", "Pads"};
    std::vector<std::string> opened;
    MidiInSink* sink = nullptr; ///< of the open input

    void refresh() override { m_outs = outs, m_ins = ins; }
    [[nodiscard]] std::vector<std::string> outputs() const override { return m_outs; }
    [[nodiscard]] std::vector<std::string> inputs() const override { return m_ins; }
    [[nodiscard]] std::unique_ptr<MidiOut> openOutput(std::size_t driver) override
    {
        return driver < m_outs.size() ? std::make_unique<Out>() : nullptr;
    }
    [[nodiscard]] std::unique_ptr<MidiIn> openInput(std::size_t driver, MidiInSink& to, std::size_t) override
    {
        if (driver >= m_ins.size()) return nullptr;
        opened.push_back(m_ins[driver]);
        return std::make_unique<In>(to, *this);
    }

private:
    struct Out final : MidiOut {
        bool send(std::span<const std::uint8_t>, Nanos) noexcept override { return true; }
    };
    struct In final : MidiIn {
        In(MidiInSink& to, PluggedMidi& theMidi) : midi(theMidi)
        {
            midi.sink = &to;
            ++midi.m_open;
        }
        ~In() override
        {
            if (--midi.m_open == 0) midi.sink = nullptr;
        }
        PluggedMidi& midi;
    };

    std::vector<std::string> m_outs;
    std::vector<std::string> m_ins;
    int m_open = 0;
};

/// The program as the window starts it, without the window. One track is armed.
template <class SomeClock, class SomeMidi>
struct Desk {
    Desk(SomeClock& clock, SomeMidi& theMidi) : midi(theMidi), player(clock, theMidi, user)
    {
        player.onDevicesChanged([this](const Message& message) { app.OnDeviceChange(message.wParam); });
    }
    void start()
    {
        ASSERT_TRUE(app.InitInstance({}));
        player.editor().SetTrkRec(1, true);
        app.UpdateMidiThru();
    }
    void changed(std::uint64_t what) { player.messages().post({msg::devicesChanged, what, 0}); }
    void record()
    {
        player.panel().ShortCutRECClicked();
        player.panel().Start();
        ASSERT_EQ(player.panel().recorder().state(), RecState::recording);
    }
    std::size_t events() { return takenOf(player.editor())[0].size(); }
    void expectIdle()
    {
        EXPECT_FALSE(player.panel().IsRecButton());
        EXPECT_FALSE(player.panel().GetPlayBtn());
        EXPECT_FALSE(player.smc().running());
        EXPECT_FALSE(player.editor().IsUndoOpen());
    }

    ScratchFolder folder;
    SomeMidi& midi;
    FakeUser user;
    cli::Player player;
    NullAppWindows windows;
    ProfileStore store{folder / "tessaro.ini"};
    Devices devices{player.smc(), midi};
    CTR9App app{{player.doc(), user, devices, windows, store, folder.path() + "/", folder.path()}};
};

struct SimulatedDesk : testing::Test {
    ManualClock clock;
    PluggedMidi midi;
    Desk<ManualClock, PluggedMidi> desk{clock, midi};

    void run()
    {
        for (int i = 0; i < 20; ++i) {
            clock.sleepFor(std::chrono::milliseconds(20));
            desk.player.messages().drain();
            desk.player.panel().timer();
        }
    }
    void play(std::uint8_t key)
    {
        midi.sink->received(Bytes{0x90, key, 100}, clock.now());
        run();
        midi.sink->received(Bytes{0x80, key, 0}, clock.now());
    }
};

using DevicesThatGo = SimulatedDesk;

TEST_F(DevicesThatGo, EndATakeThatIsKeptAndComeBackUnderAnyNumber)
{
    desk.start();
    desk.app.SetSettings(desk.app.GetSettings()); // the devices have been chosen
    desk.record();
    run();
    play(60);
    play(62); // whose end is on its way still
    midi.ins = {"Pads"};
    desk.changed(CTR9App::deviceRemoval);
    desk.changed(CTR9App::deviceArrival);
    desk.player.messages().drain();
    desk.expectIdle();
    const TakenByChannel taken = takenOf(desk.player.editor());
    ASSERT_EQ(taken[0].size(), 2U);
    for (const Taken& note : taken[0]) EXPECT_GT(note.end, note.tick + 200);
    run();

    desk.player.panel().Start(); // without the input all else works
    run();
    EXPECT_TRUE(desk.player.smc().running());
    midi.ins = {"Pads", "Keys"};
    desk.changed(CTR9App::deviceArrival);
    desk.player.messages().drain();
    desk.expectIdle();
    ASSERT_FALSE(midi.opened.empty());
    EXPECT_EQ(midi.opened.back(), "Keys") << "it is known by its name";

    desk.record();
    run();
    play(64);
    run();
    desk.player.panel().Stop();
    EXPECT_EQ(desk.events(), 3U);
    EXPECT_TRUE(desk.player.editor().UndoNode());
    EXPECT_EQ(desk.events(), 2U);
}

TEST_F(DevicesThatGo, MayAllGoAtAnyTime)
{
    desk.start();
    for (int round = 0; round < 3; ++round) {
        desk.record();
        run();
        midi.outs.clear();
        midi.ins.clear();
        desk.changed(CTR9App::deviceRemoval);
        run();
        desk.expectIdle();
        desk.player.panel().Start(); // silence is no reason to stop
        run();
        midi.outs = {"Module"};
        midi.ins = {"Keys"};
        desk.changed(CTR9App::deviceArrival);
        run();
        desk.expectIdle();
    }
    EXPECT_TRUE(desk.user.messages.empty());
}

TEST(JackThatDies, EndsATakeThatIsKept)
{
    if (!JackServer::installed()) GTEST_SKIP() << "jackd is not installed";
    RealClock clock;
    JackServer server;
    ASSERT_TRUE(server.start());
    std::optional<JackPlayer> client;
    client.emplace(server.name(), clock);
    ASSERT_TRUE(client->connected());
    PlatformMidi midi(clock, {.jackServer = server.name(), .alsa = false, .soundDevices = false});
    Desk<RealClock, PlatformMidi> desk(clock, midi);
    ASSERT_TRUE(waitFor([&] {
        midi.refresh();
        return midi.inputs().front() == JackPlayer::out;
    }));
    desk.start();
    midi.setChangeListener(&desk.player.messages());
    const auto loop = [&] {
        desk.player.messages().drain();
        desk.player.panel().timer();
        return true;
    };
    const std::vector<Played> performance = randomPerformance(5, std::chrono::seconds(30), 300);
    desk.record();
    ASSERT_TRUE(waitFor([&] { return loop() && desk.player.smc().smcGetPlayCount() > 0; }));
    client->play(performance);
    ASSERT_TRUE(waitFor([&] { return loop() && desk.events() > 100; }));
    server.kill();
    EXPECT_TRUE(waitFor([&] { return loop() && !desk.player.panel().IsRecButton(); })) << "the take ends by itself";
    desk.expectIdle();
    const std::size_t kept = desk.events();
    EXPECT_GT(kept, 100U);
    client.reset();

    ASSERT_TRUE(server.start());
    client.emplace(server.name(), clock);
    EXPECT_TRUE(waitFor([&] { return loop() && desk.app.GetMidiInDrvName(0) == JackPlayer::out; }));
    desk.record();
    client->play(performance);
    EXPECT_TRUE(waitFor([&] { return loop() && desk.events() > kept; })) << "the input is open again";
    desk.player.panel().Stop();
    midi.setChangeListener(nullptr);
}

} // namespace
} // namespace tessaro::test
