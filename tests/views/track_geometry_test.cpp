// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/random.h"
#include "track_song.h"
#include "views/tracks/bar_lines.h"
#include "views/tracks/meas_scroll.h"

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(TrkGeometry, MapsTimesAndTracksToPixels)
{
    TrkGeometry g;
    g.setZoom(1);
    EXPECT_EQ(g.zoom(), 6);
    EXPECT_EQ(g.blkRect(1, 0, 1920), QRect(40, 22, 320, 20));
    EXPECT_EQ(g.blkRect(100, 1920, 1920), QRect(360, 2002, TrkGeometry::leastBlkWidth, 20));
    g.setZoom(1000);
    EXPECT_EQ(g.zoom(), 384);
    g.setZoom(7.5);
    EXPECT_EQ(g.x(14), 41);
    EXPECT_EQ(g.x(15), 42);
    EXPECT_EQ(g.time(39), 0U);
    EXPECT_EQ(g.time(43), 22U);
    EXPECT_GT(g.x(tick::latest), 0);
    const int tracks[][2] = {{-50, 1}, {0, 1}, {22, 1}, {41, 1}, {42, 2}, {2021, 100}, {2022, 100}, {9999, 100}};
    for (const auto& [y, track] : tracks) EXPECT_EQ(g.track(y), track) << y;
}

TEST(TrkGeometry, SnapsADragToRows)
{
    TrkGeometry g;
    const int drags[][2] = {{0, 0},  {10, 0},  {11, 1},   {20, 1},   {30, 1},
                            {31, 2}, {-10, 0}, {-11, -1}, {-30, -1}, {-31, -2}};
    for (const auto& [dy, rows] : drags) EXPECT_EQ(g.snappedRows(dy), rows) << dy;
    g.setRowHeight(40);
    EXPECT_EQ(g.snappedRows(20), 0);
    EXPECT_EQ(g.snappedRows(21), 1);
    EXPECT_EQ(TrkGeometry::shiftedTrack(3, -5), 1);
    EXPECT_EQ(TrkGeometry::shiftedTrack(98, 5), 100);
}

TEST(TrkGeometry, KeepsThePlaceUnderThePointer)
{
    TrkGeometry g;
    g.setSize({800, 600});
    test::Dice dice(1);
    for (int i = 0; i < 500; ++i) {
        g.setOrigin(500'000 + dice.below(500'000));
        g.setZoom(6 + dice.below(370));
        const int x = static_cast<int>(dice.between(40, 799));
        const std::uint32_t under = g.time(g.toSong(QPoint(x, 0)).x());
        g.zoomBy(dice.oneIn(2) ? 1 : -1, x);
        EXPECT_NEAR(g.windowX(under), x, 2 + 384 / g.zoom() / 40);
    }
    g.fit(1920, 19200);
    EXPECT_EQ(g.windowX(1920), 40);
    EXPECT_NEAR(g.windowX(19200), 760, 1);
    g.setZoom(6);
    for (const auto& [track, top] : {std::pair(50, 96000U), {1, 0U}, {100, 960U}}) {
        const QRect rect = g.blkRect(track, top, top + 1920);
        g.reveal(rect);
        EXPECT_TRUE(QRect(38, 22, 762, 578).contains(g.toWindow(rect))) << track;
        EXPECT_EQ(g.firstTrack(QRect(0, 22, 800, 578)), 1 + g.scrollY() / 20);
    }
}

TEST(BarLines, SnapWithExactlyHalfToTheEarlier)
{
    test::EditorBench bench;
    const BarLines bars(bench.editor.maps().meas());
    const std::uint8_t threeFour[] = {3, 2, 24, 8};
    bench.editor.AddTs(3840, threeFour);
    bench.editor.InitMeasInfo();
    const std::uint32_t nearest[][2] = {{0, 0}, {960, 0}, {961, 1920}, {4560, 3840}, {4561, 5280}};
    for (const auto& [time, line] : nearest) EXPECT_EQ(bars.nearest(time), line) << time;
    EXPECT_EQ(bench.editor.GetMeasTime(960), 1920U); // where the other way of rounding goes
    EXPECT_EQ(bars.before(3839), 1920U);
    EXPECT_EQ(bars.after(3840), 5280U);
    EXPECT_EQ(bars.nearestBeat(3840 + 240), 3840U);
    EXPECT_EQ(bars.beatAfter(3840 + 241), 4320U);
    const std::int64_t steps[][3] = {{0, -1, 0},     {100, -1, 0},    {1920, -1, 0},
                                     {100, 1, 1920}, {1920, 2, 5280}, {5281, -2, 3840}};
    for (const auto& [time, count, to] : steps)
        EXPECT_EQ(bars.stepped(static_cast<std::uint32_t>(time), static_cast<int>(count)), to) << time;
}

TEST(MeasScroll, GrowsPastTheEndByLinesAndPages)
{
    MeasScroll scroll;
    scroll.reset(10);
    EXPECT_EQ(scroll.lines(-1), 0);
    EXPECT_EQ(scroll.pages(1, 0), 1);
    EXPECT_EQ(scroll.pages(2, 4), 9);
    EXPECT_EQ(scroll.range(), 10);
    EXPECT_EQ(scroll.lines(2), 11);
    EXPECT_EQ(scroll.range(), 11);
    EXPECT_EQ(scroll.thumb(500), 11);
    EXPECT_EQ(scroll.pages(100, 1000), 9999);
    EXPECT_EQ(scroll.range(), 9999);
    scroll.thumb(3);
    scroll.setSong(2);
    EXPECT_EQ(scroll.range(), 9999); // what was added stays
    scroll.reset(5);
    scroll.lines(3);
    scroll.setSong(20);
    EXPECT_EQ(scroll.range(), 20);
    scroll.setSong(2);
    EXPECT_EQ(scroll.range(), 3);
}

/// Walks everything, as a hit test is told: selected ones from the last, then row by row from the last.
BlkRef literalHit(const TrackSong& song, QPoint at)
{
    POSITION pos = song.selection.trkGetTailSel();
    for (const SelItem* item = nullptr; TrkSelection::trkGetPrevSel(pos, &item);)
        if (song.finder.rect(item->ref()).adjusted(0, -4, 0, 4).contains(at)) return item->ref();
    for (int track = 1; track <= TrkGeometry::rows; ++track) {
        CTrk* trk = song.editor.song().trk(track);
        for (CBlk* blk = trk->blocks().tail(); blk; blk = List<CBlk>::prev(blk))
            if (song.finder.rect({trk, blk}).contains(at)) return {trk, blk};
    }
    return {};
}

TEST(BlkFinder, FindsWhatAWalkOverAllBlocksFinds)
{
    TrackSong song;
    test::Dice dice(7);
    std::vector<BlkRef> blks;
    for (int i = 0; i < 60; ++i) {
        const std::uint32_t top = dice.below(12000);
        blks.push_back(
            song.add(static_cast<int>(dice.between(1, 6)), top, top + dice.below(dice.oneIn(5) ? 9000 : 900)));
    }
    int hits = 0;
    for (int round = 0; round < 400; ++round) {
        BlkRef& ref = blks[dice.below(60)];
        if (dice.oneIn(3)) song.selection.toggle(ref);
        const POSITION trk = song.editor.GetTrkPos(static_cast<int>(dice.between(1, 6)));
        if (dice.oneIn(4) && song.editor.BlkMove(ref.trk, ref.blk, trk, dice.below(12000), &ref.blk)) ref.trk = trk;
        if (dice.oneIn(4)) song.editor.BlkSize(ref.trk, ref.blk, 50 + dice.below(12000));
        const QPoint at(static_cast<int>(dice.below(2400)), static_cast<int>(dice.between(10, 160)));
        const BlkRef found = song.finder.hit(at).value_or(BlkRef{});
        EXPECT_EQ(found, literalHit(song, at));
        hits += found.blk ? 1 : 0;

        const QRect area(at, QSize(static_cast<int>(dice.between(1, 300)), static_cast<int>(dice.between(1, 90))));
        std::size_t literal = 0;
        for (const BlkRef& each : blks) literal += song.finder.rect(each).intersects(area) ? 1U : 0U;
        EXPECT_EQ(song.finder.inside(area).size(), literal);
    }
    EXPECT_GT(hits, 100);
}

TEST(TrkSelection, FollowsTheSong)
{
    TrackSong song;
    const BlkRef a = song.add(1, 0, 3840);
    const BlkRef b = song.add(2, 0, 1920);
    song.select({a, b});
    EXPECT_FALSE(song.selection.trkAddSel(a.trk, a.blk));
    const auto step = [&](auto&& edit) {
        song.editor.OpenUndoNode("step");
        edit();
        song.editor.CloseUndoNode();
    };
    step([&] { song.editor.BlkMove(a.trk, a.blk, song.editor.GetTrkPos(3), 1920); });
    EXPECT_EQ(song.selected(), "3:1920-5760 2:0-1920"); // at its place among the others
    song.editor.UndoNode();
    EXPECT_EQ(song.selected(), "1:0-3840 2:0-1920");
    step([&] { song.editor.BlkDiv(a.trk, a.blk, 1920); });
    EXPECT_EQ(song.selected(), "1:0-1920 2:0-1920 1:1920-3840");
    song.editor.UndoNode();
    EXPECT_EQ(song.selected(), "1:0-3840 2:0-1920");
    step([&] { song.editor.SetTrkArrange(1, 5); });
    EXPECT_EQ(song.selected(), "5:0-3840 1:0-1920");
    step([&] { song.editor.BlkDel(a.trk, a.blk); });
    EXPECT_EQ(song.selected(), "1:0-1920");
    song.editor.UndoNode();
    EXPECT_EQ(song.selected(), "1:0-1920");

    EXPECT_EQ(song.selection.selectedBlks(b.trk).size(), 1U);
    song.selection.deselectAll();
    EXPECT_EQ(song.selection.trkGetHeadSel(), nullptr);
}

} // namespace
} // namespace tessaro
