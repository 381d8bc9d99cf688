// SPDX-License-Identifier: GPL-3.0-or-later
// Events in a native song file: their bytes, both ways.
#include "base/bytes.h"
#include "files/native_bench.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

/// The events of a file's one real block, as the next save writes them; nothing when the load fails.
Bytes reload(NativeBench& bench, const Bytes& events)
{
    if (!bench.load(nativeFile({events}, {TrkBytes().blk(0, 0, 0).bytes()}).bytes())) return {};
    const Bytes file = bench.save();
    ByteReader in(file);
    in.skip(72 + 4);
    const auto chunk = in.bytes(in.u32be());
    return {chunk.begin(), chunk.end()};
}

} // namespace

TEST(NativeEvents, EveryFormIsWrittenAsItIsRead)
{
    const std::vector<std::pair<const char*, Bytes>> forms = {
        {"packed NRPN", {0, 0x1A, 1, 2, 3, 4}},
        {"packed RPN", {5, 0x20, 0, 1, 2, 0x7F}},
        {"packed voice", {0x81, 0x00, 0x3F, 1, 2, 3}},
        {"wave", {0, 0x42, 0, 0, 1, 0x90, 3, 'a', '.', 'w'}},
        {"MCI", {0, 0x50, 1, 'f', 4, 'p', 'l', 'a', 'y'}},
        {"Syng", {0, 0x63, 60, 100, 0x80, 0, 0, 0, 2, 0x43, 0xF7}},
        {"note", {0, 0x9F, 60, 100, 0, 0, 0, 240}},
        {"note of no length", {0, 0x90, 60, 100, 0, 0, 0, 0}},
        {"three bytes", {0, 0xA1, 2, 3, 0, 0xB1, 7, 100, 0, 0xE2, 0, 0x40}},
        {"two bytes", {0, 0xC1, 2, 0, 0xD9, 3}},
        {"system exclusive", {0, 0xF0, 3, 1, 2, 0xF7, 9, 0xF7, 1, 0xF7}},
        {"metas of any length", {0, 0xFF, 0x01, 0, 0, 0xFF, 0x51, 1, 9, 0, 0xFF, 0x7F, 3, 0x43, 0, 1}},
    };
    NativeBench bench;
    for (const auto& [what, events] : forms) EXPECT_EQ(events, reload(bench, events)) << what;
}

TEST(NativeEvents, WhatIsPassedOverLeavesItsDeltaBehind)
{
    NativeBench bench;
    const auto behind = [&](const Bytes& skipped) {
        Bytes events{4};
        events.insert(events.end(), skipped.begin(), skipped.end());
        events.insert(events.end(), {3, 0xC0, 1});
        return reload(bench, events);
    };
    const Bytes kept{7, 0xC0, 1};
    EXPECT_EQ(kept, behind({0xFF, 0x7F, 4, 0x43, 0, 1, 5})) << "port";
    EXPECT_EQ(kept, behind({0xFF, 0x01, 4, 0x43, 0, 1, 5})) << "the same under another type";
    EXPECT_EQ(kept, behind({0xFF, 0x2F, 0})) << "end of track";
    EXPECT_EQ(kept, behind({0xFF, 0x80, 1, 1})) << "a type that is none";

    // A rest has no form: it is left out when it is written.
    CEvnt* rest = nullptr;
    bench.master().New(&rest);
    rest->SetStatus(0x05);
    rest->SetTime(2);
    bench.master().AddHead(rest);
    const Bytes file = bench.save();
    EXPECT_EQ(kept, Bytes(file.begin() + 80, file.begin() + 83));
}

TEST(NativeEvents, BrokenOnesFailTheLoad)
{
    NativeBench bench;
    const std::vector<Bytes> broken = {
        {0, 0x00, 60, 1}, // rest
        {0, 0x70},
        {0, 0x80, 60, 0},
        {0, 0xF1, 0},                // no kinds
        {0, 60, 100},                // running status
        {0},                         // ends behind the delta,
        {0, 0x90, 60, 100, 0, 0, 0}, // inside a gate time,
        {0, 0xF0, 5, 1},
        {0, 0xFF, 0x01},                            // inside data,
        {0, 0xF0, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 1}, // long before the data's end,
        {0x80},                                     // inside the delta
        {0, 0x50, 1, 'f'},
        {0, 0x60, 1, 2, 0, 0, 0, 0},
        {0, 0x40, 0, 0, 0, 0, 2, 'a'},
    };
    for (std::size_t i = 0; i < broken.size(); ++i) EXPECT_TRUE(reload(bench, broken[i]).empty()) << i;
}

TEST(NativeEvents, TimesStayInOrder)
{
    NativeBench bench;
    // The second delta takes all 32 bits, and would lead past them.
    reload(bench, {5, 0xC0, 1, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0xC0, 2, 1, 0xC0, 3});
    ASSERT_EQ(3U, bench.master().GetNum());
    EXPECT_EQ(0xFFFFFFFFU, bench.master().events().tail()->GetTime());

    // Twenty-eight bits of a delta are written.
    bench.load(
        nativeFile({{0, 0xC0, 1, 0x81, 0x80, 0x80, 0x80, 0x03, 0xC0, 2}}, {TrkBytes().blk(0, 0, 0).bytes()}).bytes());
    ASSERT_EQ(0x10000003U, bench.master().events().tail()->GetTime());
    const Bytes file = bench.save();
    EXPECT_EQ((Bytes{0, 0xC0, 1, 3, 0xC0, 2}), Bytes(file.begin() + 80, file.begin() + 86));
}

} // namespace tessaro::test
