// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/midi_bytes.h"
#include "realtime/loom_rig.h"
#include "support/random.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

constexpr int on = 0x90;
constexpr int off = 0x80;

std::vector<Bytes> bytesOf(const std::vector<Sent>& messages)
{
    std::vector<Bytes> result;
    for (const Sent& message : messages) result.push_back(message.bytes);
    return result;
}

} // namespace

TEST(LoomNotes, EveryNoteEndsAsItBegan)
{
    Dice dice(11);
    for (int round = 0; round < 40; ++round) {
        Rig rig;
        StreamChecker checker;
        std::array<int, 5> port{};
        std::array<int, 5> channel{};
        rig.arm();
        rig.play();
        std::uint32_t notes = 0;
        for (int step = 0; step < 400; ++step) {
            const int track = static_cast<int>(dice.below(5));
            const auto t = static_cast<std::size_t>(track);
            switch (dice.below(40)) {
            case 0: rig.loom.setLoomTrkSw(static_cast<int>(dice.below(2)), track); break;
            case 1: rig.loom.setLoomTrkTrsp(static_cast<int>(dice.below(60)) - 30, track); break;
            case 2: rig.loom.setLoomTrkTrspFlg(static_cast<int>(dice.below(2)), track); break;
            case 3: rig.loom.setLoomgTransp(static_cast<int>(dice.below(80)) - 40); break;
            case 4: port[t] = static_cast<int>(dice.below(5)); break; // port 4 has no driver
            case 5: channel[t] = static_cast<int>(dice.below(16)); break;
            case 6:
                if (dice.oneIn(3)) rig.loom.setLoomQueAlloff(1);
                break;
            case 7:
                if (dice.oneIn(3)) rig.arm();
                rig.play();
                break;
            default: break;
            }
            for (std::uint32_t i = dice.below(6); i > 0; --i) {
                // 0x9n stands twice: with velocity 0 it ends a note.
                const int status = std::array{on, on, off, 0xA0, 0xB0}.at(dice.below(5));
                const int key = static_cast<int>(dice.below(dice.oneIn(9) ? 256 : 12)) + 50;
                rig.put(shortRecord(static_cast<int>(dice.below(8)), 0, status | channel[t], key & 0xFF,
                                    dice.oneIn(2) ? 0 : 90, track, port[t]));
            }
            rig.run(Nanos(dice.below(12'000'000)));
            const auto sent = rig.sent();
            notes += static_cast<std::uint32_t>(sent.size());
            checker.check(sent);
        }
        EXPECT_GT(notes, 100U);
        rig.loom.setLoomQueAlloff(1);
        EXPECT_EQ(rig.loom.getLoomQueQlloff(), 0);
        EXPECT_EQ(rig.loom.getLoomQueCount(), 0U);
        checker.check(rig.sent());
        EXPECT_EQ(checker.sounding(), 0);
    }
}

TEST(LoomNotes, TranspositionTakesPartWhereTheTrackAllows)
{
    Rig rig;
    rig.loom.setLoomTrkTrsp(5, 1);
    rig.loom.setLoomgTransp(-12);
    rig.loom.setLoomTrkTrspFlg(0, 10);
    rig.arm();
    rig.put(shortRecord(1, 0, on, 60, 90, 1));
    rig.put(shortRecord(0, 0, on | 9, 36, 90, 10));
    rig.put(shortRecord(0, 0, on, 3, 90, 1)); // would be -4
    rig.put(shortRecord(0, 0, 0xA0, 60, 33, 1));
    rig.put(shortRecord(0, 0, 0xE0, 1, 2, 1));
    rig.put(shortRecord(0, 0, on, 3, 0, 1));
    rig.play();
    rig.loom.setLoomgTransp(0);
    rig.put(shortRecord(10, 0, off, 60, 64, 1));
    rig.put(shortRecord(0, 0, on | 9, 36, 0, 10));
    rig.run(1s);
    const std::vector<Bytes> wanted{{on, 53, 90}, {on | 9, 36, 90}, {0xA0, 53, 33},
                                    {0xE0, 1, 2}, {off, 53, 64},    {on | 9, 36, 0}};
    EXPECT_EQ(bytesOf(rig.sent()), wanted);
}

TEST(LoomNotes, ASwitchedOffTrackFallsSilentAtOnce)
{
    Rig rig;
    rig.arm();
    rig.put(shortRecord(1, 0, on, 60, 90, 1));
    rig.put(shortRecord(0, 0, on, 60, 90, 2));
    rig.put(shortRecord(100, 100, on, 62, 90, 1));
    rig.put(shortRecord(0, 100, 0xC0, 7, 0, 1));
    rig.put(shortRecord(0, 100, on, 60, 0, 1));
    rig.put(shortRecord(0, 100, on, 60, 0, 2));
    rig.play();
    rig.run(50ms);
    rig.sent();
    rig.loom.setLoomTrkSw(0, 1);
    EXPECT_EQ(rig.sent(), (std::vector<Sent>{{0, 50ms, {on, 60, 0}}}));
    rig.run(1s);
    EXPECT_EQ(bytesOf(rig.sent()), (std::vector<Bytes>{{on, 60, 0}})) << "that of the other track";
    EXPECT_EQ(rig.loom.getLoomQplaytime(), 100U);
}

TEST(LoomNotes, TheTableCountsAndHasAnEnd)
{
    Rig rig;
    rig.arm();
    for (int i = 0; i < 5000; ++i) rig.put(shortRecord(i == 0, 0, on | (i & 15), i / 16 % 128, 90, 1 + i % 100));
    rig.play();
    const auto begun = rig.sent().size();
    EXPECT_GE(begun, 512U + 64U);
    rig.loom.setLoomQueAlloff(1);
    EXPECT_EQ(rig.sent().size(), begun) << "what did not fit must not have sounded";

    rig.arm();
    rig.put(shortRecord(1, 0, on, 60, 90));
    rig.play();
    rig.sent();
    rig.loom.ClrKeyTable();
    rig.run(4ms);
    rig.loom.setLoomQueAlloff(1);
    EXPECT_TRUE(rig.sent().empty());
}

TEST(LoomNotes, SystemExclusivesStayValid)
{
    // What a song may hold, and what leaves for it.
    struct Case {
        std::vector<std::pair<int, Bytes>> records;
        std::vector<Bytes> wanted;
    };
    Bytes big(5000, 1);
    big.back() = 0xF7;
    Bytes bigHead(4096, 1);
    bigHead.front() = 0xF0;
    const Bytes bigTail(big.end() - (5000 - 4095), big.end());
    const std::vector<Case> cases{
        {{{0xF0, {1, 2, 0xF7}}}, {{0xF0, 1, 2, 0xF7}}},
        {{{0xF0, {1, 2}}, {0xF7, {3}}, {0xF7, {4, 0xF7}}}, {{0xF0, 1, 2}, {3}, {4, 0xF7}}},
        {{{0xF0, {1, 2}}, {0xB0, {}}}, {{0xF0, 1, 2}, {0xF7}, {0xB0, 7, 7}}},
        {{{0xF0, {1, 2}}, {0xF0, {3, 0xF7}}}, {{0xF0, 1, 2}, {0xF7}, {0xF0, 3, 0xF7}}},
        {{{0xF0, {1, 0x90, 2, 0xF7}}, {0xF7, {3, 0xF7}}, {0xB0, {}}}, {{0xB0, 7, 7}}},
        {{{0xF0, {1}}, {0xF7, {2, 0xF8}}, {0xF7, {3, 0xF7}}}, {{0xF0, 1}, {0xF7}}},
        {{{0xF0, {}}, {0xF7, {}}, {0xF7, {0xF7}}}, {}},
        {{{0xF0, big}}, {bigHead, bigTail}},
    };
    for (const Case& c : cases) {
        Rig rig;
        rig.arm();
        for (const auto& [status, data] : c.records)
            rig.put(status == 0xB0 ? shortRecord(1, 0, 0xB0, 7, 7) : longRecord(1, 0, status, data));
        rig.play();
        rig.run(100ms);
        EXPECT_EQ(bytesOf(rig.sent()), c.wanted);
    }
}

TEST(LoomNotes, NewsForTheWindowAndTheOwners)
{
    Rig rig;
    rig.loom.setLoomOwner(&rig.window);
    const char command[] = "play a.wav";
    const Bytes data{0x7F, 0xF7};
    rig.arm();
    _LOOM_QUE_REC mci = shortRecord(1, 0, que::mci);
    mci.data = command;
    rig.put(mci);
    rig.put(shortRecord(0, 0, on, 60, 90, 1, 2));
    rig.put(longRecord(0, 0, que::sysex, data, 1, 3));
    for (const auto status : {que::meta, que::signature, que::wave}) rig.put(longRecord(0, 0, status, data));
    rig.play();
    rig.run(10ms);
    const auto news = rig.window.take();
    ASSERT_EQ(news.size(), 1U);
    EXPECT_EQ(news[0].id, msg::mciCommand);
    EXPECT_EQ(news[0].lParam, reinterpret_cast<std::intptr_t>(command));
    EXPECT_EQ(rig.sent().size(), 2U);

    ASSERT_EQ(rig.loom.getLoomWbmpt(), 2);
    const LoomRingEntry* told = rig.loom.getLoomBackMsg();
    EXPECT_EQ(told[0].status, on);
    EXPECT_EQ(told[0].time, 2U);
    EXPECT_EQ(told[1].status, 0xF0);
    EXPECT_EQ(Bytes(told[1].data, told[1].data + told[1].length), (Bytes{0xF0, 0x7F, 0xF7}));

    rig.loom.setLoomQueAlloff(1);
    EXPECT_EQ(rig.loom.getLoomWbmpt(), 3) << "owners see the note end";
    rig.loom.setLoomOwner(nullptr);
    rig.arm();
    rig.put(shortRecord(1, 0, on, 60, 90));
    rig.play();
    EXPECT_EQ(rig.loom.getLoomWbmpt(), 3);
}

TEST(LoomNotes, TheClickEndsWhereItBegan)
{
    Rig rig;
    rig.loom.setLoomMetronome(1, 9, 34, 33, 100, 80);
    rig.loom.setLoomMetroFlg(1);
    rig.arm();
    rig.put(shortRecord(1, 0, que::beat, 0, 1, 0));
    rig.put(shortRecord(20, 20, que::beat, 0, 0, 0));
    rig.put(shortRecord(460, 480, que::beat, 1, 1, 0));
    rig.put(shortRecord(20, 500, que::beat, 1, 0, 0));
    rig.play();
    rig.loom.setLoomMetronome(2, 3, 35, 36, 1, 1);
    rig.run(100ms);
    rig.loom.setLoomMetroFlg(0);
    rig.run(1s);
    EXPECT_EQ(rig.sent(), (std::vector<Sent>{{1, 0ms, {0x99, 34, 100}}, {1, Nanos(20'833'333), {0x99, 34, 0}}}));
}

} // namespace tessaro::test
