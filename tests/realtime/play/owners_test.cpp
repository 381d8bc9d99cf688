// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/play_bench.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

using namespace std::chrono_literals;

/// Keeps the played messages it is told of.
struct Owner final : MessageTarget {
    std::vector<std::pair<std::uint64_t, PlayedMessage>> posted;
    std::vector<std::uint64_t> sent;
    bool post(const Message& m) noexcept override
    {
        posted.emplace_back(m.wParam, PlayOwners::read(m));
        return true;
    }
    void send(const Message& m) override { sent.push_back(m.wParam); }
};

TEST(PlayOwners, HearTheKindsOfTheirMask)
{
    PlayBench bench;
    CBlk& blk = bench.block(1);
    bench.addNote(blk, 0, 100, 64);
    bench.add(blk, 0xB0, 10, {7, 99});
    bench.add(blk, 0xC0, 20, {5});
    bench.add(blk, 0xE0, 30, {1, 2});
    bench.bind();
    Owner all;
    Owner notes;
    EXPECT_EQ(bench.smc.smcSetMultiPlayOwner(&all, 0xFF), 0);
    EXPECT_EQ(bench.smc.smcSetMultiPlayOwner(&notes, played::noteOnBit), 1);
    bench.panel.Start();
    bench.run(300ms);
    std::vector<std::uint64_t> codes;
    for (const auto& [code, message] : all.posted) codes.push_back(code);
    EXPECT_EQ(codes, (std::vector<std::uint64_t>{played::noteOn, played::control, played::program, played::noteOff}));
    ASSERT_EQ(notes.posted.size(), 1U);
    EXPECT_EQ(notes.posted[0].second.data1, 64);
    EXPECT_EQ(notes.posted[0].second.status, 0x90);

    // A chase tells them at once; one that has left hears nothing.
    bench.panel.Stop();
    bench.smc.smcReleaseMultiPlayOwner(1);
    bench.smc.smcReleaseMultiPlayOwner(1);
    notes.posted.clear();
    all.posted.clear();
    bench.smc.smcLocateQuiet(15, true);
    EXPECT_EQ(all.sent, (std::vector<std::uint64_t>{played::control}));
    bench.run(100ms);
    EXPECT_TRUE(all.posted.empty());
    bench.panel.Start();
    bench.run(300ms);
    EXPECT_TRUE(notes.posted.empty());
}

TEST(PlayOwners, AreEightAtMost)
{
    PlayBench bench;
    Owner owner;
    for (int i = 0; i < 8; ++i) EXPECT_EQ(bench.smc.smcSetMultiPlayOwner(&owner, 0xFF), i);
    EXPECT_EQ(bench.smc.smcSetMultiPlayOwner(&owner, 0xFF), -1);
    bench.smc.smcReleaseMultiPlayOwner(-1);
    bench.smc.smcReleaseMultiPlayOwner(8);
    bench.smc.smcReleaseMultiPlayOwner(3);
    EXPECT_EQ(bench.smc.smcSetMultiPlayOwner(&owner, 0xFF), 3);
}

TEST(DirectSending, CutsLongMessagesWithPauses)
{
    PlayBench bench;
    const std::int32_t drivers[] = {0};
    bench.smc.setOutPorts(drivers, 600, 300);
    std::vector<std::uint8_t> bytes(600, 1);
    bytes.front() = 0xF0;
    bytes.back() = 0xF7;
    const Nanos start = bench.clock.now();
    bench.smc.smcSendLongMsg(0, bytes);
    EXPECT_EQ(bench.clock.now(), start) << "one piece";
    bytes.insert(bytes.begin() + 1, 2);
    bench.smc.smcSendLongMsg(0, bytes);
    EXPECT_EQ(bench.clock.now(), start + 300ms) << "two pieces, one pause";
    bench.run(20ms);
    std::vector<std::size_t> sizes;
    for (const Heard& h : bench.take()) sizes.push_back(h.bytes.size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{600, 600, 1}));

    const std::uint8_t dump[] = {0x43, 0x1F, 0x68, 0};
    EXPECT_TRUE(Smc::smcIsSampleSysex(dump));
    EXPECT_FALSE(Smc::smcIsSampleSysex(std::span{dump}.first(3)));
}

} // namespace
} // namespace tessaro::test
