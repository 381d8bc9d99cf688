// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom_rig.h"
#include "support/random.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

constexpr int on = 0x90;

} // namespace

TEST(LoomPorts, AFailingDriverDoesNotStopTheOthers)
{
    Rig rig;
    rig.midi.failing = 1;
    // Not in the list: its count, 0x7F, 0x80, and below 0.
    const std::array<std::int32_t, 8> map{2, 1, 8, 0x7F, 0x80, -1, 3, 0};
    EXPECT_NE(rig.loom.setLoomOutPortMap(map, 4096, 2000, 7) & 0x0F, 0U);
    EXPECT_EQ(rig.midi.openOuts(), 2);
    for (int port = -1; port < 130; ++port) {
        const bool open = port == 0 || port == 6;
        EXPECT_EQ(rig.loom.loomSendShortMsg(port, on, 60, 90) == 0, open) << port;
        EXPECT_EQ(rig.loom.loomSendLongMsg(port, "\xF0\x01\xF7", 3) == 0, open) << port;
    }
    EXPECT_EQ(rig.sent().size(), 4U);
    rig.loom.setLoomMidiPortsReset();
    EXPECT_EQ(rig.midi.openOuts(), 0);
    EXPECT_EQ(rig.midi.sink, nullptr);
}

TEST(LoomPorts, NotesEndBeforeTheirDriverCloses)
{
    Rig rig;
    StreamChecker checker;
    rig.loom.setLoomThruFlag(1);
    rig.loom.setLoomThruPort(3);
    rig.loom.setLoomMetroFlg(1);
    const Bytes open{1, 2};
    rig.arm();
    rig.put(shortRecord(1, 0, on, 60, 90, 1, 0));
    rig.put(shortRecord(0, 0, que::beat, 0, 1, 0));
    rig.put(longRecord(0, 0, que::sysex, open, 1, 2));
    rig.play();
    rig.input({0x93, 70, 80});
    checker.check(rig.sent());
    EXPECT_EQ(checker.sounding(), 3);
    const std::array<std::int32_t, 1> map{5};
    EXPECT_EQ(rig.loom.setLoomOutPortMap(map, 4096, 2000, 1), 0U);
    const auto last = rig.sent();
    checker.check(last);
    EXPECT_EQ(checker.sounding(), 0);
    EXPECT_EQ(last.back().bytes, (Bytes{0xF7}));
    // The song goes on at the new driver; ends of notes from before do not come again.
    rig.put(shortRecord(10, 10, on, 60, 0, 1, 0));
    rig.put(shortRecord(10, 20, on, 62, 90, 1, 0));
    rig.input({0x93, 70, 0});
    rig.run(1s);
    EXPECT_EQ(rig.sent(), (std::vector<Sent>{{5, Nanos(20'833'333), {on, 62, 90}}}));
}

TEST(LoomPorts, ImmediateMessagesKeepTheirOrder)
{
    Rig rig;
    rig.run(3ms);
    Bytes big(3'000'000, 5);
    big.front() = 0xF0;
    big.back() = 0xF7;
    EXPECT_EQ(rig.loom.loomSendShortMsg(1, 0xB0, 0, 1), 0U);
    EXPECT_EQ(rig.loom.loomSendLongMsg(1, big.data(), big.size()), 0U);
    EXPECT_EQ(rig.loom.loomSendShortMsg(1, 0xC0, 7, 0xFF), 0U);
    const std::vector<Sent> wanted{{1, 3ms, {0xB0, 0, 1}}, {1, 3ms, big}, {1, 3ms, {0xC0, 7}}};
    EXPECT_TRUE(rig.sent() == wanted);

    // Ahead of the queue.
    rig.arm();
    rig.put(shortRecord(1, 0, 0xE0, 1, 1));
    rig.put(shortRecord(480, 480, 0xE0, 2, 2));
    rig.play();
    rig.run(500ms - 1ns);
    rig.loom.loomSendShortMsg(0, 0xB0, 7, 9);
    rig.run(1ns);
    const auto sent = rig.sent();
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent[1].bytes, (Bytes{0xB0, 7, 9}));

    // In slices, as the layer above sends them.
    const Bytes first{0xF0, 1, 2};
    const Bytes rest{3, 0xF7};
    rig.loom.loomSendLongMsg(0, first.data(), first.size());
    rig.loom.loomSendLongMsg(0, rest.data(), rest.size());
    rig.loom.loomSendLongMsg(0, rest.data(), rest.size());
    EXPECT_EQ(rig.sent().size(), 2U) << "the last one continues nothing";
    EXPECT_NE(rig.loom.loomSendShortMsg(0, 0xB0, 0x80, 0), 0U);
    EXPECT_NE(rig.loom.loomSendShortMsg(0, 0xF0, 1, 2), 0U);
    EXPECT_NE(rig.loom.loomSendShortMsg(0, 0x40, 1, 2), 0U);
    EXPECT_TRUE(rig.sent().empty());
}

TEST(LoomPorts, ALongMessageIsUnderWayUntilTheDriverIsDone)
{
    Rig rig;
    const Bytes message{0xF0, 1, 0xF7};
    rig.midi.busy = true;
    rig.loom.loomSendLongMsg(0, message.data(), message.size());
    EXPECT_NE(rig.loom.getLoomInLongmsg(), 0);
    rig.run(1s);
    EXPECT_NE(rig.loom.getLoomInLongmsg(), 0);
    rig.midi.busy = false;
    rig.run(4ms);
    EXPECT_EQ(rig.loom.getLoomInLongmsg(), 0);

    rig.midi.busy = true;
    rig.loom.loomSendLongMsg(0, message.data(), message.size());
    rig.loom.setLoomInLongmsg(0);
    rig.run(1s);
    EXPECT_EQ(rig.loom.getLoomInLongmsg(), 0) << "given up on";
}

TEST(LoomPorts, StartingAndEnding)
{
    ManualClock clock;
    FakeMidi midi;
    Loom loom(clock, midi);
    const std::array<std::int32_t, 1> map{0};
    EXPECT_EQ(loom.setLoomOutPortMap(map, 512, 0, 1), 0U);
    EXPECT_NE(loom.loomSendShortMsg(0, on, 60, 90), 0U) << "nobody there to send it";
    const unsigned id = loom.CallTimeSetEvent(4, 4, 0, 1);
    EXPECT_NE(id, 0U);
    EXPECT_EQ(loom.CallTimeSetEvent(4, 4, 0, 1), 0U);
    EXPECT_EQ(loom.loomSendShortMsg(0, 0xB0, 60, 90), 0U);

    loom.loomPlayStart();
    loom.putLoomQueData(shortRecord(1, 0, on, 60, 90));
    loom.setLoomQueplying(1);
    EXPECT_EQ(midi.count(), 1U) << "without a table no note sounds";
    loom.CallTimeKillEvent(id);
    EXPECT_TRUE(loom.CreateNoteOnTbl());
    EXPECT_EQ(loom.CallTimeSetEvent(4, 4, 0, 1), id);
    loom.loomPlayStart();
    loom.putLoomQueData(shortRecord(1, 0, on, 60, 90));
    loom.setLoomQueplying(1);
    EXPECT_FALSE(loom.CreateNoteOnTbl());
    loom.CallTimeKillEvent(id);
    EXPECT_EQ(midi.takeSent().back().bytes, (Bytes{on, 60, 0})) << "nothing sounds on";
    EXPECT_EQ(loom.getLoomQueplying(), 0);
}

} // namespace tessaro::test
