// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/bytes.h"

#include <gtest/gtest.h>

namespace tessaro {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(ByteReader, FailsOnceAndForAllAtTheEnd)
{
    const Bytes data{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0x41};
    ByteReader r(data);
    EXPECT_EQ(r.u8(), 1);
    EXPECT_EQ(r.u16be(), 0x0203);
    EXPECT_EQ(r.u24be(), 0x040506U);
    EXPECT_EQ(r.u32be(), 0x0708090AU);
    EXPECT_EQ(r.chars(1), "A");
    EXPECT_TRUE(r.atEnd() && r.ok());

    r.seek(8);
    EXPECT_EQ(r.u32be(), 0U); // three bytes are left: none of them is taken
    EXPECT_FALSE(r.ok());
    EXPECT_EQ(r.position(), 8U);
    EXPECT_EQ(r.left(), 0U);
    EXPECT_TRUE(r.atEnd());
    r.seek(0);
    EXPECT_EQ(r.u8(), 0);

    // Lengths that lie must not wrap the bounds check around.
    for (const std::size_t count : {data.size(), SIZE_MAX, SIZE_MAX - 1}) {
        ByteReader liar(data);
        liar.u8();
        EXPECT_TRUE(liar.bytes(count).empty());
        EXPECT_FALSE(liar.ok());
    }
    ByteReader beyond(data);
    beyond.seek(data.size() + 1);
    EXPECT_FALSE(beyond.ok());
    EXPECT_TRUE(ByteReader().atEnd());
}

TEST(Vlq, ReadsAnyNumberOfBytes)
{
    const auto read = [](Bytes data) {
        ByteReader r(data);
        const std::uint32_t value = r.vlq();
        return r.ok() && r.atEnd() ? static_cast<std::int64_t>(value) : -1;
    };
    EXPECT_EQ(read({0}), 0);
    EXPECT_EQ(read({0x80, 0x80, 0x00}), 0);
    EXPECT_EQ(read({0x81, 0x00}), 128);
    EXPECT_EQ(read({0xFF, 0xFF, 0xFF, 0x7F}), 0x0FFFFFFF);
    EXPECT_EQ(read({0x8F, 0xFF, 0xFF, 0xFF, 0x7F}), 0xFFFFFFFF);
    EXPECT_EQ(read({0xFF, 0x80, 0x80, 0x80, 0x80, 0x80, 0x05}), 5); // the first bits fell out at the top
    EXPECT_EQ(read({0x81}), -1);
    EXPECT_EQ(read({}), -1);
}

TEST(Vlq, WritesTheShortestFormOf28Bits)
{
    const auto write = [](std::uint32_t value) {
        Bytes out;
        ByteWriter(out).vlq(value);
        return out;
    };
    EXPECT_EQ(write(0), Bytes{0});
    EXPECT_EQ(write(0x7F), Bytes{0x7F});
    EXPECT_EQ(write(0x80), (Bytes{0x81, 0x00}));
    EXPECT_EQ(write(0x4000), (Bytes{0x81, 0x80, 0x00}));
    EXPECT_EQ(write(0x1FFFFF), (Bytes{0xFF, 0xFF, 0x7F}));
    EXPECT_EQ(write(0xF0000003), Bytes{0x03});
    EXPECT_EQ(write(0xFFFFFFFF), (Bytes{0xFF, 0xFF, 0xFF, 0x7F}));
}

TEST(ByteWriter, FillsInLengthsOfNestedChunks)
{
    Bytes out;
    ByteWriter w(out);
    w.chars("A");
    const auto outer = w.beginLength();
    w.u16be(0x10203); // the upper bits drop out
    const auto inner = w.beginLength();
    w.u24be(0x040506);
    w.endLength(inner);
    w.u32be(0x0708090A);
    w.endLength(outer);
    EXPECT_EQ(out, (Bytes{'A', 0, 0, 0, 13, 2, 3, 0, 0, 0, 3, 4, 5, 6, 7, 8, 9, 10}));
}

} // namespace
} // namespace tessaro
