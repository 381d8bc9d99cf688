// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/export_rig.h"
#include "files/smf_bytes.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

const Bytes eot{0x00, 0xFF, 0x2F, 0x00};

Bytes port(std::uint8_t p) { return {0x00, 0xFF, 0x7F, 0x04, 0x43, 0x00, 0x01, p}; }

/// The chunks of a format 1 file, each with its end of track.
Bytes format1(std::initializer_list<Bytes> chunks)
{
    SmfBytes file;
    file.header(1, static_cast<std::uint32_t>(chunks.size()));
    for (const Bytes& chunk : chunks) file.chunk(join({chunk, eot}));
    return file.bytes();
}

TEST(ExportBytes, ASongWithoutEvents)
{
    ExportRig rig;
    rig.trk(1).SetName("kept by no file");
    EXPECT_EQ(rig.save(1), smf0(eot));
    EXPECT_EQ(rig.save(2), format1({}));
    EXPECT_EQ(rig.save(3), SmfBytes().raw(smf0(eot)).chunk(eot, "ZPIH").chunk(eot, "ZPKM").bytes());
    EXPECT_EQ(rig.save(6), format1({port(0), port(1), port(2), port(3)}));
    EXPECT_TRUE(rig.save(7).empty());
}

TEST(ExportBytes, ChannelAndTranspositionAreTheTracks)
{
    ExportRig rig;
    rig.trk(3).SetCh(5);
    rig.trk(3).SetTranspose(12);
    rig.trk(4).SetTranspose(-36);
    rig.trk(10).SetTranspose(12); // switched off on the drum track
    CRealBlk& real = rig.blk(3);
    addShort(real, 0, 0x9F, {120, 1});
    addShort(real, 0, 0xA0, {120, 2});
    addShort(real, 0, 0x00, {60, 3}, 10);
    addShort(real, 0, 0x40, {}, 10);
    addShort(real, 0, 0x50, {});
    addShort(rig.blk(4), 0, 0x90, {10, 4});
    addShort(rig.blk(10), 0, 0x90, {60, 5});
    EXPECT_EQ(rig.save(1), smf0(join({{0, 0x95, 120, 1, 0, 0xA5, 120, 2, 0, 0x93, 10, 4, 0, 0x99, 60, 5}, eot})));
}

TEST(ExportBytes, PackedKinds)
{
    ExportRig rig;
    CRealBlk& real = rig.blk(2);
    addBody(real, 3, 0x60, {60, 100}, 10, {0x43, 0x10, 0xF7});
    addShort(real, 5, 0x30, {1, 2, 3});
    addShort(real, 5, 0x10, {4, 5, 6, 7});
    addShort(real, 5, 0x20, {8, 9, 10, 11});
    addShort(real, 20, 0xC0, {12});
    addShort(real, 20, 0xE0, {13, 14});
    EXPECT_EQ(rig.save(1), smf0(join({{0, 0xF0, 3, 0x43, 0x10, 0xF7},
                                      {5, 0xB1, 0x00, 1},
                                      {0, 0xB1, 0x63, 4, 0, 0xB1, 0x62, 5, 0, 0xB1, 0x06, 6, 0, 0xB1, 0x26, 7},
                                      {0, 0xB1, 0x65, 8, 0, 0xB1, 0x64, 9, 0, 0xB1, 0x06, 10, 0, 0xB1, 0x26, 11},
                                      {0, 0x91, 60, 100},
                                      {5, 0xB1, 0x20, 2},
                                      {5, 0x91, 60, 0, 0, 0xC1, 3},
                                      {5, 0xC1, 12, 0, 0xE1, 13, 14},
                                      eot})));
}

TEST(ExportBytes, LengthsKeep28Bits)
{
    ExportRig rig;
    const Bytes body(200, 0x55);
    addMeta(rig.master(), 0x0FFFFFFF, 0x01, body);
    addBody(rig.master(), 0x2FFFFFFF, 0xF7, {}, 0, {1});
    EXPECT_EQ(rig.save(1), smf0(join({{0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0x01, 0x81, 0x48}, body, {0, 0xF7, 1, 1}, eot})));
}

TEST(ExportBytes, Format1HasAChunkForEachTrackWithEvents)
{
    ExportRig rig;
    addMeta(rig.master(), 0, 0x03, "song");
    rig.trk(0).SetName("not written");
    rig.trk(1).SetName("no events");
    rig.trk(2).SetName("name");
    rig.trk(2).SetPort(7);
    addShort(rig.blk(2), 1, 0xD0, {64});
    addShort(rig.blk(4), 2, 0xD0, {65});
    EXPECT_EQ(rig.save(2), format1({{0, 0xFF, 0x03, 4, 's', 'o', 'n', 'g'},
                                    join({port(7), {0, 0xFF, 0x03, 4, 'n', 'a', 'm', 'e', 1, 0xD1, 64}}),
                                    join({port(0), {2, 0xD3, 65}})}));
}

TEST(ExportBytes, TheFourPortFileTakesMidiTracksOfItsPorts)
{
    ExportRig rig;
    addMeta(rig.master(), 0, 0x01, "m");
    rig.trk(0).SetPort(2); // the master stays with port 0
    rig.trk(1).SetPort(3);
    rig.trk(2).SetPort(4);
    rig.trk(20).SetType(trktype::wave);
    for (const int number : {1, 2, 3, 20}) {
        rig.trk(number).SetName("none");
        addShort(rig.blk(number), 0, 0xD0, {static_cast<std::uint8_t>(number)});
    }
    EXPECT_EQ(rig.save(6), format1({join({port(0), {0, 0xFF, 0x01, 1, 'm', 0, 0xD2, 3}}), port(1), port(2),
                                    join({port(3), {0, 0xD0, 1}})}));
}

TEST(ExportBytes, ZpTextsAreToldByTheirOrder)
{
    ExportRig rig;
    const auto add = [&rig](std::uint8_t type, std::string_view text) { addMeta(rig.master(), 0, type, text); };
    const auto bytes = [](std::uint8_t type, std::string_view text) {
        return join({{0, 0xFF, type, static_cast<std::uint8_t>(text.size())}, Bytes(text.begin(), text.end())});
    };
    for (const std::string_view text : {"ZPhd", "ZPhc~~", "ZPl", "lower", "Upper", "\x83\x65\x83\x58"}) add(0x01, text);
    for (const std::uint8_t type : Bytes{0x03, 0x05, 0x06, 0x07}) add(type, "zzzz");
    EXPECT_EQ(rig.save(3),
              SmfBytes()
                  .raw(smf0(join({bytes(1, "ZPhc~~"), bytes(1, "ZPl"), bytes(1, "Upper"), bytes(3, "zzzz"),
                                  bytes(6, "zzzz"), eot})))
                  .chunk(join({bytes(1, "ZPhd"), bytes(1, "lower"), bytes(1, "\x83\x65\x83\x58"), eot}), "ZPIH")
                  .chunk(join({bytes(5, "zzzz"), bytes(7, "zzzz"), eot}), "ZPKM")
                  .bytes());
}

TEST(ExportBytes, ASinkThatRefusesFailsTheSave)
{
    struct : ByteSink {
        bool write(std::span<const std::uint8_t>) override { return false; }
    } full;
    ExportRig rig;
    for (const std::uint8_t kind : Bytes{1, 2, 3, 6}) EXPECT_FALSE(rig.files.save(kind, rig.editor, full));
}

} // namespace
} // namespace tessaro::test
