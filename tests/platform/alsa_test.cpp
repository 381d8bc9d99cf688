// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/manual_clock.h"
#include "base/real_clock.h"
#include "platform/fake_alsa.h"
#include "platform/midi/alsa_midi.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace tessaro {

namespace {

constexpr unsigned out = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;
constexpr unsigned in = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ;

class Alsa : public testing::Test {
protected:
    Alsa()
    {
        alsa.clients = {{0, {"System", {{"Timer", in, false}, {"Announce", in, false}}}},
                        {14, {"Midi Through", {{"Midi Through Port-0", in | out, false}}}},
                        {20,
                         {"Box",
                          {{"Box MIDI 1", in | out, true},
                           {"Keys", in, true},
                           {"secret", in | out | SND_SEQ_PORT_CAP_NO_EXPORT, true}}}},
                        {24, {"Box", {{"Box MIDI 1", out, true}}}},
                        {128, {"Tessaro", {{"own", in | out, false}}}}};
    }

    static void append(Bytes& all, const Bytes& more) { all.insert(all.end(), more.begin(), more.end()); }

    FakeAlsa alsa;
};

} // namespace

TEST_F(Alsa, ListsThePortsOfOthersUnderUniqueNames)
{
    ManualClock clock;
    AlsaMidi midi(alsa.calls(), clock);
    EXPECT_EQ(midi.outputs(),
              (std::vector<std::string>{"ALSA: Midi Through Port-0", "ALSA: Box MIDI 1", "ALSA: Box MIDI 1 2"}));
    EXPECT_EQ(midi.inputs(),
              (std::vector<std::string>{"ALSA: Midi Through Port-0", "ALSA: Box MIDI 1", "ALSA: Box: Keys"}));
    EXPECT_EQ(midi.service(), "ALSA");
    EXPECT_FALSE(midi.openOutput("ALSA: Box: Keys"));
}

TEST_F(Alsa, IsQuietlyAbsentAndMayComeLater)
{
    ManualClock clock;
    alsa.present = false;
    AlsaMidi midi(alsa.calls(), clock);
    EXPECT_TRUE(midi.outputs().empty());
    EXPECT_FALSE(midi.openOutput("ALSA: Box MIDI 1"));
    EXPECT_EQ(midi.service(), "");
    alsa.present = true;
    EXPECT_EQ(midi.outputs().size(), 3U);
}

TEST_F(Alsa, SendsInOrderThroughFullBuffers)
{
    RealClock clock;
    AlsaMidi midi(alsa.calls(), clock);
    const auto port = midi.openOutput("ALSA: Midi Through Port-0");
    const auto other = midi.openOutput("ALSA: Box MIDI 1 2");
    ASSERT_TRUE(port && other);
    alsa.refuse = 5;
    Bytes expected;
    const auto send = [&](const Bytes& bytes) {
        append(expected, bytes);
        return port->send(bytes, clock.now());
    };
    for (int i = 0; i < 2000; ++i) ASSERT_TRUE(send({0x90, static_cast<std::uint8_t>(i % 128), 100}));
    ASSERT_TRUE(send(sysexOf(65536)));
    for (const Bytes& bytes : std::vector<Bytes>{{0xC3, 5}, {0xF8}, {0xF2, 1, 2}, {0xE1, 3, 4}, {0x80, 1, 0}})
        ASSERT_TRUE(send(bytes));
    ASSERT_TRUE(other->send(Bytes{0xD0, 9}, clock.now()));
    EXPECT_TRUE(waitFor([&] { return alsa.sentTo(14, 0).size() >= expected.size(); }));
    EXPECT_TRUE(alsa.sentTo(14, 0) == expected);
    EXPECT_TRUE(waitFor([&] { return alsa.sentTo(24, 0) == Bytes{0xD0, 9}; }));
    EXPECT_LE(alsa.longest, AlsaMidi::piece);
    EXPECT_FALSE(port->busy());
}

TEST_F(Alsa, SendsNothingEarlyAndPacesSysexToHardware)
{
    ManualClock clock;
    AlsaMidi midi(alsa.calls(), clock);
    const auto port = midi.openOutput("ALSA: Box MIDI 1");
    ASSERT_TRUE(port);
    port->send(Bytes{0x90, 1, 1}, 10ms);
    clock.advanceTo(9ms);
    EXPECT_EQ(alsa.sentTo(20, 0), Bytes{});
    clock.advanceTo(10ms);
    EXPECT_EQ(alsa.sentTo(20, 0).size(), 3U);

    const Bytes sysex = sysexOf(3000);
    port->send(sysex, 20ms);
    port->send(Bytes{0x80, 1, 1}, 20ms);
    clock.advanceTo(20ms + 480ms);
    EXPECT_NEAR(static_cast<double>(alsa.sentTo(20, 0).size()), 1500, 2.0 * AlsaMidi::piece);
    EXPECT_TRUE(port->busy());
    clock.advanceTo(20ms + 1s);
    Bytes expected{0x90, 1, 1};
    append(expected, sysex);
    append(expected, {0x80, 1, 1});
    EXPECT_EQ(alsa.sentTo(20, 0), expected);
}

TEST_F(Alsa, HandsOnWhatComesInAndNoticesChanges)
{
    RealClock clock;
    AlsaMidi midi(alsa.calls(), clock);
    RecordingSink sink;
    RecordingSink other;
    auto keys = midi.openInput("ALSA: Box: Keys", sink);
    const auto through = midi.openInput("ALSA: Midi Through Port-0", other);
    ASSERT_TRUE(keys && through);

    const Nanos before = clock.now();
    snd_seq_event_t event{};
    snd_seq_ev_set_noteon(&event, 2, 60, 99);
    alsa.arrive(20, 1, event);
    Bytes sysex = sysexOf(600);
    snd_seq_ev_set_sysex(&event, 300U, sysex.data());
    alsa.arrive(20, 1, event);
    snd_seq_ev_set_sysex(&event, 300U, sysex.data() + 300);
    alsa.arrive(20, 1, event);
    Bytes expected{0x92, 60, 99};
    append(expected, sysex);
    EXPECT_TRUE(waitFor([&] { return sink.messages().size() == 3; }));
    EXPECT_EQ(sink.stream(), expected);
    EXPECT_GE(sink.times().front(), before);
    EXPECT_LE(sink.times().back(), clock.now());
    EXPECT_TRUE(other.messages().empty());

    alsa.overrun();
    EXPECT_TRUE(waitFor([&] { return sink.errors == 1; }));
    EXPECT_FALSE(midi.poll({}));
    alsa.announce(SND_SEQ_EVENT_PORT_EXIT);
    EXPECT_TRUE(waitFor([&] { return midi.poll({}); }));
    EXPECT_FALSE(midi.poll({}));
    keys.reset();
    alsa.arrive(20, 1, event);
    EXPECT_EQ(sink.messages().size(), 3U);
}

} // namespace tessaro
