// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/profile_store.h"
#include "roll_song.h"
#include "views/roll/strip_path.h"
#include "views/roll/strip_scale.h"

#include <QTemporaryDir>

namespace tessaro {
namespace {

constexpr const char* section = "View Condition";

struct KeptSettings {
    QTemporaryDir folder;
    ProfileStore store{folder.filePath("tessaro.ini").toStdString()};
};

TEST(Grid, LengthsByIndex)
{
    struct Case {
        int index;
        std::uint32_t beat;
        std::uint8_t den;
        std::uint32_t length;
    };
    const Case cases[] = {
        {0, 480, 2, 1920}, {2, 480, 2, 480},   {6, 480, 2, 30},   {7, 480, 2, 2880}, {9, 480, 2, 720},
        {13, 480, 2, 45},  {14, 480, 2, 1280}, {16, 480, 2, 320}, {23, 480, 2, 480}, {30, 480, 2, 384},
        {44, 480, 2, 274}, {100, 480, 2, 256}, {104, 480, 2, 16}, {2, 240, 3, 480},  {3, 240, 3, 240},
        {2, 960, 1, 480},  {6, 960, 1, 30},    {5, 60, 5, 60},    {6, 60, 5, 30},    {16, 1920, 0, 320},
    };
    for (const Case& c : cases) EXPECT_EQ(Grid::length(c.index, c.beat, c.den), c.length) << c.index << ' ' << c.beat;
}

TEST(Grid, SnapsInsideEachMeasure)
{
    RollSong song;
    const std::vector<std::uint8_t> threeFour{3, 2, 24, 8};
    song.editor.InsEvnt(song.editor.GetTrkPos(0), song.editor.GetHeadBlkPos(0),
                        test::bytesRec(status::metaEvent, 1920, threeFour, 0x58));

    struct Case {
        int index;
        std::uint32_t time;
        std::uint32_t snapped;
        std::uint32_t cell;
    };
    const Case cases[] = {
        {4, 0, 0, 0},          {4, 60, 0, 0},         {4, 61, 120, 0}, {4, 119, 120, 0},  {4, 120, 120, 120},
        {16, 160, 0, 0},       {16, 161, 320, 0},     {44, 137, 0, 0}, {44, 138, 274, 0}, // an odd length, its half cut
        {0, 1920, 1920, 1920}, {0, 2880, 1920, 1920},                                     // half of a whole note
        {0, 2881, 3840, 1920}, // over the bar line of the three quarters, where no line is
        {0, 3360, 3360, 3360}, {9, 3361, 3360, 3360},
    };
    for (const Case& c : cases) {
        song.grid.setIndex(c.index);
        EXPECT_EQ(song.grid.snap(song.editor, c.time), c.snapped) << c.index << " at " << c.time;
        EXPECT_EQ(song.grid.cell(song.editor, c.time), c.cell) << c.index << " at " << c.time;
    }
    song.grid.setFree(true);
    EXPECT_EQ(song.grid.snap(song.editor, 61), 61U);
    EXPECT_EQ(song.grid.cell(song.editor, 61), 61U);
}

TEST(Grid, IsKeptWholeOrNotAtAll)
{
    Grid grid;
    grid.setIndex(16);
    grid.setFree(true);
    KeptSettings kept;
    for (const char* gone : {"", "Note", "Half", "Tuplet", "Free"}) {
        grid.save(kept.store);
        kept.store.remove(section, std::string("Common Grid ") + gone);
        Grid read;
        read.load(kept.store);
        EXPECT_EQ(read, *gone ? Grid() : grid) << gone;
    }
    grid.save(kept.store);
    kept.store.setInt(section, "Common Grid Note", 4711);
    grid.load(kept.store);
    EXPECT_EQ(grid.index(), Grid::count - 1);
}

TEST(RollScale, PlacesOfTimes)
{
    RollScale scale;
    scale.resize(1120, 600);
    scale.setZoom(2.5);
    scale.setStart(1000);
    EXPECT_EQ(scale.time(119), 1000U);
    EXPECT_EQ(scale.time(120), 1000U);
    EXPECT_EQ(scale.time(122), 1005U);
    EXPECT_EQ(scale.x(999), 120);
    EXPECT_EQ(scale.x(1002), 120); // cut, not rounded
    EXPECT_EQ(scale.x(1003), 121);
    EXPECT_EQ(scale.span(), (TickRange{1000, 3500}));
    EXPECT_EQ(scale.rawTime(0), 700);
    scale.setStart(0);
    EXPECT_GT(scale.x(0xFFFFFFFF), 1 << 28);
    EXPECT_EQ(scale.rawTime(20), -250);
    scale.setStart(0xFFFFFF00);
    EXPECT_EQ(scale.time(1119), 0xFFFFFFFFU);

    for (const double zoom : {0.0, 1.0, 3.3, 16.0, 99.0}) { // the place under the pointer stays, as far as it can
        scale.setZoom(4);
        scale.setStart(48'000);
        const std::uint32_t held = scale.time(500);
        scale.zoomAt(500, zoom);
        EXPECT_EQ(scale.zoom(), std::clamp(zoom, 1.0, 16.0));
        EXPECT_NEAR(scale.time(500), held, 1);
    }
    scale.showSpan({1920, 1920 + 3000});
    EXPECT_EQ(scale.span(), (TickRange{1920, 4920}));
}

TEST(RollScale, PlacesOfKeys)
{
    RollScale scale;
    scale.resize(1000, RollScale::ruler + 240);
    scale.setRowHeight(12);
    EXPECT_EQ(scale.key(RollScale::ruler), 127);
    EXPECT_EQ(scale.key(RollScale::ruler + 12), 126);
    EXPECT_EQ(scale.key(0), 127);
    scale.setScroll(99'999);
    EXPECT_EQ(scale.scroll(), 128 * 12 - 240);
    EXPECT_EQ(scale.visibleRows(), std::pair(108, 127));
    EXPECT_EQ(scale.key(5000), 0);
    for (int key = 0; key < 128; ++key) EXPECT_EQ(scale.key(scale.y(static_cast<std::uint8_t>(key))), key);

    for (const int height : {0, 8, 11, 16, 40}) {
        scale.setRowHeight(12);
        scale.setScroll(600);
        const std::uint8_t held = scale.key(RollScale::ruler + 100);
        scale.zoomRowsAt(RollScale::ruler + 100, height);
        EXPECT_EQ(scale.key(RollScale::ruler + 100), held) << height;
    }
    for (const int key : {0, 127, 64, 60}) {
        scale.showKey(static_cast<std::uint8_t>(key));
        EXPECT_GE(scale.y(static_cast<std::uint8_t>(key)), RollScale::ruler);
        EXPECT_LE(scale.y(static_cast<std::uint8_t>(key)) + scale.rowHeight(), scale.height());
    }
    scale.setRows({42, 38, 36});
    EXPECT_EQ(scale.scroll(), 0);
    EXPECT_EQ(scale.key(RollScale::ruler + scale.rowHeight()), 38);
    EXPECT_EQ(scale.rowOfKey(36), 2);
    EXPECT_LT(scale.y(37), -1000);
}

TEST(RollScale, ReadsStrangeZoomsAsTheNearest)
{
    struct Case {
        int zoom;
        double read;
        int rows;
        int readRows;
    };
    for (const Case& c : {Case{-1, 4, -1, 12}, {0, 1, 7, 8}, {1, 1, 8, 8}, {9, 9, 16, 16}, {17, 16, 17, 16}}) {
        KeptSettings kept;
        kept.store.setInt(section, "Piano Zoom", c.zoom);
        kept.store.setInt(section, "Piano VZoom", c.rows);
        RollScale scale;
        scale.load(kept.store, "Piano");
        EXPECT_EQ(scale.zoom(), c.read);
        EXPECT_EQ(scale.rowHeight(), c.readRows);
        scale.save(kept.store, "Drum");
        EXPECT_EQ(kept.store.getInt(section, "Drum Zoom", 0), c.read);
    }
}

TEST(StripScale, EveryValueHasItsPlace)
{
    for (const auto what : {StripKind::What::velocity, StripKind::What::control, StripKind::What::pitchBend})
        for (const int height : {40, 137, 200, 777}) {
            const StripScale scale({what, 7}, 50, height);
            EXPECT_EQ(scale.value(50), scale.kind().most());
            EXPECT_EQ(scale.value(scale.bottom()), scale.kind().least());
            const bool isFine = height > 127 + 2 * StripScale::margin && what != StripKind::What::pitchBend;
            for (int value = scale.kind().least(); value <= scale.kind().most(); ++value) {
                EXPECT_NEAR(scale.value(scale.y(value)), value, isFine ? 0 : scale.kind().most() / (height - 9) + 1);
                EXPECT_GE(scale.y(value), 50);
                EXPECT_LT(scale.y(value), scale.bottom());
            }
        }
    EXPECT_EQ(StripScale({}, 0, 0).value(0), 127); // no room, no harm
}

TEST(StripKind, ValuesGoIntoTheirBytes)
{
    using What = StripKind::What;
    for (const What what : {What::polyPressure, What::control, What::program, What::pressure, What::pitchBend}) {
        const StripKind kind{what, 7};
        CEvnt event;
        for (const int value : {0, 64, kind.rest(), kind.most()}) {
            ASSERT_TRUE(event.Set(kind.record(5, value, 9)));
            EXPECT_EQ(kind.valueOf(kind.record(5, value, 9)), value);
        }
        EXPECT_TRUE(kind.isOf(event));
        EXPECT_EQ((StripKind{what, 8}.isOf(event)), what > What::control); // only these two have numbers
    }
}

TEST(StripPath, LaterReplacesEarlier)
{
    StripPath path;
    path.start({100, 10});
    path.lineTo({200, 110});
    path.lineTo({300, 10});
    EXPECT_EQ(path.valueAt(150), 60);
    EXPECT_EQ(path.valueAt(250), 60);
    path.lineTo({150, 40}); // back over what was drawn
    EXPECT_EQ(path.valueAt(200), 30);
    EXPECT_EQ(path.valueAt(300), 10);
    EXPECT_EQ(path.valueAt(125), 25);
    EXPECT_EQ(path.valueAt(0), 10);
    EXPECT_EQ(path.valueAt(9999), 10);

    path.start({0, 0});
    path.lineTo({400, 100});
    path.setBend(30);
    EXPECT_EQ(path.valueAt(200), 80);
    EXPECT_EQ(path.valueAt(400), 100);
    EXPECT_EQ(path.valueAt(100), 25 + 22.5);
}

} // namespace
} // namespace tessaro
