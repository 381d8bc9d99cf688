// SPDX-License-Identifier: GPL-3.0-or-later
#include "song_fixture.h"
#include "views/tracks/lights.h"
#include "views/tracks/miniature.h"
#include "views/tracks/note_starts.h"
#include "views/tracks/track_rows.h"

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(TrackRows, ListTracksWithBlocksAndWhatSounds)
{
    SongFixture song;
    const auto shown = [&](int track) { // 0 for no row, 1 for an empty one, 2 for one in use
        for (const TrackRow& row : trackRows(song.editor))
            if (row.track == track) return row.used ? 2 : 1;
        return 0;
    };
    EXPECT_EQ(trackRows(song.editor).size(), 16U); // a new song has tracks to record on
    EXPECT_EQ(shown(16), 1);
    for (const int track : {1, 4, 40}) song.addBlock(track, 0, 1920);
    EXPECT_EQ(shown(4), 2);
    EXPECT_EQ(shown(17), 0);
    EXPECT_EQ(shown(40), 2);
    EXPECT_EQ(shown(41), 1); // room behind the last
    song.addBlock(100, 0, 1920);
    EXPECT_EQ(trackRows(song.editor).size(), 18U);

    song.editor.SetTrkMute(4, true);
    song.editor.SetTrkRec(2, true);
    auto rows = trackRows(song.editor);
    EXPECT_EQ(rows[3].channel, 3);
    EXPECT_TRUE(rows[1].record);
    EXPECT_TRUE(rows[0].sounding);
    EXPECT_FALSE(rows[3].sounding);
    song.editor.SetTrkSolo(4, true); // a muted track with solo plays, and alone
    rows = trackRows(song.editor);
    EXPECT_FALSE(rows[0].sounding);
    EXPECT_TRUE(rows[3].sounding);
    EXPECT_FALSE(rows.back().sounding);
}

TEST(Miniature, PutsNotesWhereTheyPlay)
{
    SongFixture song;
    const std::uint32_t end = Miniature::parts * 10; // ten ticks a part
    CBlk& blk = song.addBlock(1, 1000, 5000);
    SongFixture::addNote(blk, 1000, 40, 100, 20);        // lowest: parts 100 and 101
    SongFixture::addNote(blk, 2000, 99, 100, 0);         // highest, without length: part 200
    SongFixture::addNote(blk, 4990, 60, 100, 1'000'000); // runs past the song's end
    const Miniature picture(*song.editor.song().trk(1), end);

    ASSERT_EQ(picture.blocks().size(), 1U);
    EXPECT_EQ(picture.blocks()[0].top, 1000U);
    EXPECT_EQ(picture.bandsIn(0, 100), 0U);
    EXPECT_EQ(picture.bandsIn(100, 102), 1U);
    EXPECT_EQ(picture.bandsIn(102, 200), 0U);
    EXPECT_EQ(picture.bandsIn(200, 201), 1U << (Miniature::bands - 1));
    EXPECT_NE(picture.bandsIn(1023, 5000), 0U);
    EXPECT_EQ(Miniature(*song.editor.song().trk(2), 0).bandsIn(0, Miniature::parts), 0U);
}

TEST(Miniature, OfABlockUnderRecordingLeavesTheOthersOut)
{
    SongFixture song;
    const std::uint32_t end = Miniature::parts * 10;
    SongFixture::addNote(song.addBlock(1, 0, 1000), 0, 20, 100, 1000);
    CBlk& take = song.addBlock(1, 2000, 2000);
    SongFixture::addNote(take, 2500, 60, 100, 10);
    const Miniature picture(take, end);
    ASSERT_EQ(picture.blocks().size(), 1U);
    EXPECT_EQ(picture.bandsIn(0, 250), 0U);
    EXPECT_NE(picture.bandsIn(250, 251), 0U);
}

TEST(NoteStarts, FindNotesThatBegin)
{
    SongFixture song;
    CBlk& first = song.addBlock(1, 480, 1920);
    SongFixture::addNote(first, 480, 60, 30, 4000);
    SongFixture::addNote(first, 500, 60, 90, 10);
    SongFixture::addNote(first, 960, 60, 127, 10);
    CBlk& overlapping = song.addBlock(1, 490, 4000);
    SongFixture::addNote(overlapping, 495, 60, 64, 10);
    const NoteStarts starts(*song.editor.song().trk(1));

    EXPECT_EQ(starts.loudest(0, 480), 0);
    EXPECT_EQ(starts.loudest(480, 481), 30);
    EXPECT_EQ(starts.loudest(481, 490), 0); // begun before, still sounding
    EXPECT_EQ(starts.loudest(481, 500), 64);
    EXPECT_EQ(starts.loudest(0, 961), 127);
    EXPECT_EQ(starts.loudest(961, 0xFFFFFFFFU), 0);
    EXPECT_EQ(starts.loudest(960, 480), 0);
}

TEST(Lights, FadeAway)
{
    Lights lights;
    lights.strike(3, 127);
    lights.strike(4, 1);
    EXPECT_EQ(lights.level(3), Lights::brightest);
    EXPECT_GT(lights.level(4), 0);
    EXPECT_LT(lights.level(4), lights.level(3));
    lights.fade(100);
    lights.strike(3, 1); // a soft note does not dim a bright light
    EXPECT_GT(lights.level(3), lights.level(4));
    lights.fade(1000);
    EXPECT_EQ(lights.level(3), 0);
    EXPECT_EQ(lights.level(1), 0);
}

} // namespace
} // namespace tessaro
