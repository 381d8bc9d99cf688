// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/evnt.h"
#include "core/model/pos.h"
#include "core/model/poslist.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace tessaro {
namespace {

_EDT_EVNT record(std::uint8_t st)
{
    _EDT_EVNT rec;
    rec.status = st;
    rec.post1 = 11;
    rec.post2 = 22;
    rec.post3 = 33;
    rec.post4 = 44;
    rec.time = 960;
    rec.gateTime = 77;
    return rec;
}

_EDT_EVNT metaRecord(std::uint8_t type, const std::vector<std::uint8_t>& body)
{
    _EDT_EVNT rec = record(status::metaEvent);
    rec.metaType = type;
    rec.data = body.data();
    rec.szData = static_cast<std::uint32_t>(body.size());
    return rec;
}

TEST(Evnt, RefusedStatusLeavesTheEventAsItWas)
{
    CEvnt e;
    ASSERT_TRUE(e.Set(record(0x93)));
    for (const int st : {0x70, 0x81, 0x8F, 0xF1, 0xF6, 0xF8, 0xFE}) {
        _EDT_EVNT rec = record(static_cast<std::uint8_t>(st));
        rec.time = 1;
        EXPECT_FALSE(e.Set(rec)) << st;
    }
    EXPECT_EQ(e.GetStatus(), 0x93);
    EXPECT_EQ(e.GetTime(), 960U);
    EXPECT_EQ(e.GetGateTime(), 77U);
}

TEST(Evnt, KindsKeepTheFieldsTheyHave)
{
    struct Case {
        std::uint8_t status;
        int posts;
        bool gate;
    };
    for (const Case& c :
         {Case{0x05, 2, true}, Case{0x15, 4, false}, Case{0x25, 4, false}, Case{0x35, 3, false}, Case{0x45, 0, true},
          Case{0x55, 0, false}, Case{0x65, 2, true}, Case{0x95, 2, true}, Case{0xA5, 2, false}, Case{0xB5, 2, false},
          Case{0xC5, 1, false}, Case{0xD5, 1, false}, Case{0xE5, 2, false}}) {
        CEvnt e;
        e.SetGateTime(5);
        ASSERT_TRUE(e.Set(record(c.status)));
        EXPECT_EQ(e.GetStatus(), c.status);
        EXPECT_EQ(e.GetTime(), 960U);
        EXPECT_EQ(e.GetGateTime(), c.gate ? 77U : 0U) << int{c.status};
        const std::array posts{e.GetPost1(), e.GetPost2(), e.GetPost3(), e.GetPost4()};
        for (int i = 0; i < 4; ++i) {
            const int given = 11 * (i + 1);
            EXPECT_EQ(posts[static_cast<std::size_t>(i)], i < c.posts ? given : 0)
                << int{c.status} << " post " << i + 1;
        }
    }
}

TEST(Evnt, MetaSizesFollowTheTable)
{
    CEvnt e;
    EXPECT_FALSE(e.Set(metaRecord(0x51, {1, 2})));
    EXPECT_TRUE(e.Set(metaRecord(0x51, {1, 2, 3})));
    EXPECT_TRUE(e.Set(metaRecord(0x54, {1, 2, 3, 4, 5, 6, 7})));
    EXPECT_FALSE(e.Set(metaRecord(0x55, {1, 2, 3, 4})));
    EXPECT_TRUE(e.Set(metaRecord(0x55, {1, 2, 3, 4, 5})));
    EXPECT_FALSE(e.Set(metaRecord(0x80, {})));
    EXPECT_EQ(e.GetMetaType(), 0x55);
    EXPECT_EQ(e.GetSzData(), 5U);
    // The reader of files takes any size, but no type without an entry.
    const std::array<std::uint8_t, 3> body{9, 8, 7};
    EXPECT_TRUE(e.SetMeta(4, 0x58, 2, body.data(), 1));
    EXPECT_EQ(e.payload()[0], 8);
    EXPECT_FALSE(e.SetMeta(4, 0x80, 0, body.data(), 0));
}

TEST(Evnt, CopiedEventsShareNoPayload)
{
    CEvnt a;
    const std::array<std::uint8_t, 3> bytes{0x43, 0x10, 0xF7};
    ASSERT_TRUE(a.SetSys(10, 3, bytes.data(), 0, status::sysex));
    _EDT_EVNT rec;
    a.Get(rec);
    CEvnt b;
    ASSERT_TRUE(b.Set(rec));
    ASSERT_TRUE(a.PackSysex(bytes.data(), 2));
    EXPECT_EQ(a.GetSzData(), 5U);
    EXPECT_EQ(b.GetSzData(), 3U);
    EXPECT_NE(a.payload().data(), b.payload().data());
    b.GmemFree();
    EXPECT_FALSE(b.PackSysex(bytes.data(), 2)) << "nothing to append to";
    ASSERT_TRUE(b.SetSys(10, 3, bytes.data(), 0, status::sysexPart));
    EXPECT_FALSE(b.PackSysex(bytes.data(), 2)) << "a continuation is no start";
}

TEST(Evnt, StreamReaderStopsAtTheStreamsEnd)
{
    const std::vector<std::uint8_t> bytes{60, 100, 60, 0, 0x83, 0x00, 0x51, 3, 1, 2, 3, 0x51, 9, 1};
    _EDT_SMF smf{bytes.data(), static_cast<std::uint32_t>(bytes.size()), 0, 100, 0x90};
    CEvnt e;
    ASSERT_TRUE(e.Set(smf));
    smf.time = 340;
    smf.status = 0x80;
    ASSERT_TRUE(e.Set(smf));
    EXPECT_EQ(e.GetTime(), 100U);
    EXPECT_EQ(e.GetGateTime(), 240U);
    std::uint32_t value = 0;
    ASSERT_TRUE(CEvnt::ReadVarLenQnt(smf, value));
    EXPECT_EQ(value, 0x180U);
    smf.status = status::metaEvent;
    CEvnt tempo;
    ASSERT_TRUE(tempo.Set(smf));
    EXPECT_EQ(tempo.GetSzData(), 3U);
    EXPECT_FALSE(tempo.Set(smf)) << "a length behind the stream's end";
}

TEST(PosList, OrderOfEqualTimesAndBounds)
{
    CPosList list;
    POSITION pos = nullptr;
    const auto add = [&](std::uint32_t time, std::uint8_t tag, bool before) {
        CPos* place = CPosList::New();
        place->Set(time, tag);
        before ? list.SortBefore(pos, time, place) : list.Sort(pos, time, place);
    };
    add(10, 1, false);
    add(10, 2, false);
    add(5, 3, false);
    add(10, 4, true);
    add(10, 5, true);
    add(20, 6, false);
    std::vector<int> tags;
    for (POSITION p = list.GetHeadPos(); p;) tags.push_back(list.GetNext(p)->GetNote());
    EXPECT_EQ(tags, (std::vector<int>{3, 5, 4, 1, 2, 6}));
    EXPECT_EQ(list.FindIndex(-1), nullptr);
    EXPECT_EQ(list.FindIndex(list.GetCount()), nullptr);
    list.RemoveFrom(2);
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(list.GetAt(list.GetTailPos())->GetNote(), 5);
}

} // namespace
} // namespace tessaro
