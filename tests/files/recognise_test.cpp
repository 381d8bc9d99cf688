// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recognise.h"
#include "files/smf_bytes.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

_EDT_FILE recognise(Bytes file)
{
    const auto length = static_cast<std::uint32_t>(file.size());
    file.resize(file.size() + 16);
    return recogniseFile(file.data(), length);
}

SmfBytes header(std::uint32_t format, std::uint32_t numTrk, std::uint32_t division = 480)
{
    return SmfBytes().header(format, numTrk, division);
}

} // namespace

TEST(Recognise, Kinds)
{
    const Bytes end{0, 0xFF, 0x2F, 0};
    const auto bytes = [](const SmfBytes& file) { return file.bytes(); };
    struct Case {
        const char* what;
        Bytes file;
        unsigned kind;
    };
    const Case cases[] = {
        {"nothing", {}, 0},
        {"a header id alone", bytes(SmfBytes().id("MThd")), 0},
        {"format 0", smf0(end), 1},
        {"format 0 of two tracks", bytes(header(0, 2).chunk(end)), 0},
        {"format 1", smf1({end, end}), 2},
        {"format 1 without tracks", bytes(header(1, 0).chunk(end)), 0},
        {"format 1 with a chunk missing", bytes(header(1, 2).chunk(end)), 0},
        {"a foreign chunk in between", bytes(header(1, 2).chunk(end).chunk(end, "XFIH").chunk(end)), 0},
        {"format 2", bytes(header(2, 1).chunk(end)), 0},
        {"ZP", bytes(header(0, 1).chunk(end).chunk({}, "ZPIH").chunk({}, "ZPKM")), 3},
        {"ZP turned round", bytes(header(0, 1).chunk(end).chunk({}, "ZPKM").chunk({}, "ZPIH")), 1},
        {"half a ZP", bytes(header(0, 1).chunk(end).chunk({}, "ZPIH")), 1},
        {"a longer header",
         bytes(SmfBytes().id("MThd").number(8, 4).number(0, 2).number(1, 2).number(96, 2).number(0, 2).chunk(end)), 1},
        {"division 0", smf0(end, 0), 0},
        {"frames a second", smf0(end, 0xE728), 1},
        {"a track longer than the file", bytes(header(0, 1).id("MTrk").number(5, 4).raw(end)), 0},
        {"a length that wraps around", bytes(header(1, 2).id("MTrk").number(0xFFFFFFF8, 4).chunk(end)), 0},
        {"what begins like a native song, and is none", bytes(SmfBytes().id("TR9H").raw(smf0(end))), 1},
    };
    for (const Case& c : cases) EXPECT_EQ(c.kind, recognise(c.file).kind) << c.what;
}

TEST(Recognise, FindsTheHeaderBehindOtherBytes)
{
    const _EDT_FILE file = recognise(SmfBytes()
                                         .id("RIFFMTMThMThd")
                                         .number(6, 4)
                                         .number(0, 2)
                                         .number(1, 2)
                                         .number(96, 2)
                                         .chunk({0, 0xFF, 0x2F, 0})
                                         .bytes());
    EXPECT_EQ(filekind::smf0, file.kind);
    EXPECT_EQ(23U, file.mtrkOffset);
    EXPECT_EQ(4U, file.mtrkLength);
    EXPECT_EQ(96, file.division);
}

} // namespace tessaro::test
