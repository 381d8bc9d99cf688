// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/message_queue.h"
#include "base/real_clock.h"
#include "platform/jack_server.h"
#include "platform/midi/jack_midi.h"
#include "platform/platform_midi.h"
#include "platform/recording_sink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

using namespace std::chrono_literals;

namespace tessaro {

namespace {

const std::string listenerDriver = "JACK MIDI: listener:in";
constexpr jack_nframes_t periodFrames = 256;
constexpr Nanos period{periodFrames * std::nano::den / 48000};

class Jack : public testing::Test {
protected:
    void SetUp() override
    {
        if (!JackServer::installed()) GTEST_SKIP() << "jackd is not installed";
        ASSERT_TRUE(server.start());
    }

    RealClock clock;
    JackServer server;
};

class JackMidiPorts : public Jack {
protected:
    void SetUp() override
    {
        Jack::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        client.emplace(server.name());
        midi.emplace(*client, clock);
        // A server that has just started may turn the first client away.
        ASSERT_TRUE(waitFor([this] {
            midi->poll(clock.now());
            return client->running();
        }));
    }

    std::optional<JackClient> client;
    std::optional<JackMidi> midi;
};

Bytes note(int number, bool on)
{
    return {static_cast<std::uint8_t>((on ? 0x90 : 0x80) | (number & 0x0F)),
            static_cast<std::uint8_t>(number / 128 % 128), static_cast<std::uint8_t>(number % 128)};
}

} // namespace

TEST_F(JackMidiPorts, DeliverABurstAndALongSysexCompletelyAndInOrder)
{
    JackListener listener(server);
    const auto out = midi->openOutput(listenerDriver);
    ASSERT_TRUE(out);
    Bytes expected;
    const auto send = [&](const Bytes& bytes) {
        expected.insert(expected.end(), bytes.begin(), bytes.end());
        return out->send(bytes, clock.now());
    };
    for (int i = 0; i < 2500; ++i) ASSERT_TRUE(send(note(i, true)));
    ASSERT_TRUE(send(sysexOf(65536)));
    EXPECT_TRUE(out->busy());
    for (int i = 0; i < 2500; ++i) ASSERT_TRUE(send(note(i, false)));

    EXPECT_TRUE(waitFor([&] { return listener.stream().size() >= expected.size(); }));
    EXPECT_FALSE(out->busy());
    EXPECT_TRUE(listener.stream() == expected);
}

TEST_F(JackMidiPorts, LetWhatWasSentBeHeardBeforeTheyClose)
{
    JackListener listener(server);
    auto out = midi->openOutput(listenerDriver);
    ASSERT_TRUE(out);
    Bytes expected;
    for (int i = 0; i < 64; ++i) {
        const Bytes off = note(i, false);
        expected.insert(expected.end(), off.begin(), off.end());
        ASSERT_TRUE(out->send(off, clock.now()));
    }
    out.reset();
    EXPECT_TRUE(waitFor([&] { return listener.stream().size() >= expected.size(); }));
    EXPECT_TRUE(listener.stream() == expected);
}

TEST_F(JackMidiPorts, PlaceEachMessageAtTheFrameOfItsDueTime)
{
    JackListener listener(server);
    const auto out = midi->openOutput(listenerDriver);
    ASSERT_TRUE(out);
    std::this_thread::sleep_for(1s); // the server's clock filter settles
    constexpr std::size_t count = 200;
    const Nanos start = clock.now() + 50ms;
    const Nanos offset = std::chrono::microseconds(jack_get_time()) - clock.now();
    const auto dueOf = [&](std::size_t i) { return start + static_cast<std::int64_t>(i) * 1700us; };
    for (std::size_t i = 0; i < count; ++i) ASSERT_TRUE(out->send(note(static_cast<int>(i), true), dueOf(i)));
    ASSERT_TRUE(waitFor([&] { return listener.events().size() >= count; }));
    std::vector<double> errors; // µs
    for (std::size_t i = 0; i < count; ++i) {
        const Nanos expected = dueOf(i) + offset + period;
        errors.push_back(std::abs(listener.events()[i].micros - static_cast<double>(expected.count()) / 1e3));
    }
    std::sort(errors.begin(), errors.end());
    RecordProperty("medianErrorMicroseconds", std::to_string(errors[count / 2]));
    EXPECT_LT(errors[count / 2], static_cast<double>(period.count()) / 1e3) << "no message waits for the next period";
    EXPECT_EQ(listener.stream()[3 * 150 + 2], 150 % 128);
}

TEST_F(JackMidiPorts, StampWhatComesInOnTheEnginesClock)
{
    RecordingSink sink;
    const auto out = midi->openOutput("JACK MIDI: Tessaro out");
    const auto in = midi->openInput("JACK MIDI: Tessaro in", sink);
    ASSERT_TRUE(out && in);
    client->with([](jack_client_t* c) { return jack_connect(c, "Tessaro:out", "Tessaro:in"); });
    std::vector<Nanos> due;
    for (int i = 0; i < 50; ++i) {
        due.push_back(clock.now());
        ASSERT_TRUE(out->send(note(i, true), due.back()));
        std::this_thread::sleep_for(3ms);
    }
    ASSERT_TRUE(waitFor([&] { return sink.messages().size() >= due.size(); }));
    std::vector<Nanos> latency;
    for (std::size_t i = 0; i < due.size(); ++i) latency.push_back(sink.times()[i] - due[i]);
    std::sort(latency.begin(), latency.end());
    EXPECT_NEAR(static_cast<double>(latency[due.size() / 2].count()), static_cast<double>(period.count()), 1.5e6);
    EXPECT_EQ(sink.messages()[7], note(7, true));
}

TEST_F(JackMidiPorts, ComeBackWithTheServer)
{
    std::optional<JackListener> listener;
    listener.emplace(server);
    const auto out = midi->openOutput(listenerDriver);
    ASSERT_TRUE(out);
    ASSERT_TRUE(out->send(note(1, true), clock.now()));
    EXPECT_TRUE(waitFor([&] { return listener->events().size() == 1; }));

    server.kill();
    EXPECT_TRUE(waitFor([&] { return !out->send(note(2, true), clock.now()); })) << "a dead server takes nothing";
    listener.reset();
    EXPECT_TRUE(midi->poll(clock.now()));
    EXPECT_TRUE(midi->outputs().empty());

    ASSERT_TRUE(server.start());
    EXPECT_TRUE(waitFor([&] { return midi->poll(clock.now()) && client->running(); }));
    listener.emplace(server);
    const auto arrives = [&] {
        midi->poll(clock.now());
        out->send(note(3, true), clock.now());
        return !listener->events().empty();
    };
    EXPECT_TRUE(waitFor(arrives)) << "the open port is connected again by name";
    EXPECT_EQ(listener->stream()[0], note(3, true)[0]) << "nothing left over from before";
}

// As a bridge shows the program's ports of the ALSA sequencer.
TEST_F(JackMidiPorts, DoNotTakeTheProgramsOwnForDevices)
{
    JackListener bridge(server);
    const auto add = [&](const char* name) {
        return jack_port_register(bridge.client(), name, JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    };
    ASSERT_TRUE(add("[129] Tessaro: out"));
    jack_port_t* aliased = add("midi_playback_1");
    ASSERT_TRUE(aliased);
    jack_port_set_alias(aliased, "in-129-0-Tessaro-out");
    EXPECT_EQ(midi->outputs(), (std::vector<std::string>{listenerDriver, "JACK MIDI: Tessaro out"}));
}

// As when the server is killed in the middle of a take.
TEST_F(JackMidiPorts, AnOpenInputOutlivesTheServerAndIsConnectedToTheNext)
{
    std::optional<JackListener> player;
    player.emplace(server);
    RecordingSink sink;
    auto in = midi->openInput("JACK MIDI: listener:out", sink);
    ASSERT_TRUE(in);
    const auto heard = [&](unsigned char key) {
        midi->poll(clock.now());
        player->play(key);
        const std::vector<Bytes> messages = sink.messages();
        return !messages.empty() && messages.back() == Bytes{0x90, key, 100};
    };
    EXPECT_TRUE(waitFor([&] { return heard(60); }));
    server.kill();
    player.reset();
    EXPECT_TRUE(waitFor([&] { return midi->poll(clock.now()) && !client->running(); }));
    RecordingSink second;
    EXPECT_FALSE(midi->openInput("JACK MIDI: listener:out", second));

    ASSERT_TRUE(server.start());
    EXPECT_TRUE(waitFor([&] { return midi->poll(clock.now()) && client->running(); }));
    player.emplace(server);
    EXPECT_TRUE(waitFor([&] { return heard(61); }));
    server.kill();
    in.reset();
    const std::size_t count = sink.messages().size();
    midi->poll(clock.now());
    EXPECT_EQ(sink.messages().size(), count) << "a closed input is silent";
}

TEST_F(Jack, SoundAndNewsFollowTheServer)
{
    std::vector<std::uint64_t> news;
    MessageQueue queue([&](const Message& message) {
        if (message.id == msg::devicesChanged) news.push_back(message.wParam);
    });
    PlatformMidi midi(clock, {.jackServer = server.name(), .alsa = false, .soundDevices = false});
    midi.setChangeListener(&queue);
    const std::vector<std::string> all{"Tessaro Synth", "JACK MIDI: Tessaro out", "Loopback"};
    EXPECT_EQ(midi.outputs(), all);
    EXPECT_EQ(midi.inputs(), (std::vector<std::string>{"JACK MIDI: Tessaro in", "Computer Keyboard", "Loopback"}));
    EXPECT_TRUE(midi.sounds(0));
    EXPECT_FALSE(midi.sounds(1)) << "nothing is connected to it";
    EXPECT_FALSE(midi.sounds(2) || midi.sounds(3));
    if (!midi.waitForSound(5s)) GTEST_SKIP() << midi.sentence();
    EXPECT_EQ(midi.sentence(), "Sound: JACK, 48000 Hz; MIDI: JACK.");
    const auto first = midi.openOutput(0);
    const auto second = midi.openOutput(0);
    EXPECT_TRUE(first && second) << "ports share the synth";

    server.kill();
    EXPECT_TRUE(waitFor([&] { return midi.soundStatus().state == SoundState::silent; }));
    EXPECT_TRUE(first->send(note(60, true), clock.now())) << "time goes on without sound";
    midi.refresh();
    EXPECT_EQ(midi.outputs(), (std::vector<std::string>{"Tessaro Synth", "Loopback"}));
    EXPECT_TRUE(waitFor([&] {
        queue.drain();
        return news.size() >= 2;
    }));

    ASSERT_TRUE(server.start());
    EXPECT_TRUE(waitFor([&] { return midi.soundStatus().state == SoundState::playing; }));
    EXPECT_TRUE(waitFor([&] {
        queue.drain();
        return news.size() >= 3;
    }));
    EXPECT_EQ(news, (std::vector<std::uint64_t>{0x8004, 0x8000, 0x8000}));
    midi.refresh();
    EXPECT_EQ(midi.outputs(), all);
    midi.setChangeListener(nullptr);
}

} // namespace tessaro
