// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "song_fixture.h"
#include "views/tracks/blk_pictures.h"
#include "views/tracks/blk_shares.h"
#include "views/tracks/lights.h"
#include "views/tracks/note_starts.h"
#include "views/tracks/track_rows.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace tessaro {
namespace {

TEST(TrackRows, AreTheHundredTracksAndWhatSounds)
{
    SongFixture song;
    for (const int track : {1, 4, 40}) song.addBlock(track, 0, 1920);
    song.editor.SetTrkMute(4, true);
    song.editor.SetTrkRec(2, true);
    auto rows = trackRows(song.editor);
    ASSERT_EQ(rows.size(), 100U);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row].track, static_cast<int>(row) + 1);
        EXPECT_EQ(rows[row].used, row == 0 || row == 3 || row == 39);
    }
    EXPECT_EQ(rows[3].channel, 3);
    EXPECT_TRUE(rows[1].record);
    EXPECT_TRUE(rows[0].sounding);
    EXPECT_FALSE(rows[3].sounding);
    song.editor.SetTrkSolo(4, true); // a muted track with solo plays, and alone
    rows = trackRows(song.editor);
    EXPECT_FALSE(rows[0].sounding);
    EXPECT_TRUE(rows[3].sounding);
    EXPECT_FALSE(rows[39].sounding);
}

BlkPicture whole(const CRealBlk& real)
{
    BlkPicture picture(real);
    std::size_t budget = 1'000'000;
    EXPECT_TRUE(picture.build(budget));
    return picture;
}

TEST(BlkPicture, TellsWhichPitchesSoundInASpan)
{
    SongFixture song;
    CBlk& blk = song.addBlock(1, 1000, 9000); // the picture counts from here
    SongFixture::addNote(blk, 1000, 40, 100, 48);
    SongFixture::addNote(blk, 1480, 41, 100, 0); // shares a step with 40; without length
    SongFixture::addNote(blk, 1480, 127, 100, 4000);
    SongFixture::addNote(blk, 2000, 127, 100, 10); // inside the long one
    const BlkPicture picture = whole(*blk.GetRealBlk());
    const std::uint64_t low = std::uint64_t{1} << 20;
    const std::uint64_t high = std::uint64_t{1} << 63;
    EXPECT_EQ(picture.pitches(), low | high);
    EXPECT_EQ(picture.pitches(0, 1), low);
    EXPECT_EQ(picture.pitches(47, 48), low);
    EXPECT_EQ(picture.pitches(48, 480), 0U);
    EXPECT_EQ(picture.pitches(480, 500), low | high);
    EXPECT_EQ(picture.pitches(504, 4480), high);
    EXPECT_EQ(picture.pitches(4480 + BlkPicture::leastSpan, 0xFFFFFFFFU), 0U);
    EXPECT_EQ(picture.pitches(5, 5), 0U);
    EXPECT_EQ(whole(*song.addBlock(2, 0, 100).GetRealBlk()).pitches(0, 100), 0U);
}

TEST(BlkPicture, AgreesWithAWalkAlsoWhereTheBlockIsVeryLong)
{
    SongFixture song;
    std::mt19937 dice(7);
    for (const std::uint32_t length : {4000U, 3'000'000U, 0xF0000000U}) {
        CBlk& blk = song.addBlock(1, 0, 10);
        struct Note {
            std::uint32_t time, gate;
            int key;
        };
        std::vector<Note> notes;
        for (int i = 0; i < 60; ++i) {
            const Note note{static_cast<std::uint32_t>(dice()) % length,
                            static_cast<std::uint32_t>(dice()) % (length / 8), static_cast<int>(dice() % 128)};
            notes.push_back(note);
            SongFixture::addNote(blk, note.time, note.key, 100, note.gate);
        }
        const BlkPicture picture = whole(*blk.GetRealBlk());
        const std::uint32_t span = std::max(BlkPicture::leastSpan, length / 32768); // nothing finer is kept
        for (int i = 0; i < 200; ++i) {
            const std::uint32_t from = static_cast<std::uint32_t>(dice()) % length;
            const std::uint32_t to = from + length / 100 + 1;
            std::uint64_t sure = 0;
            std::uint64_t near = 0;
            for (const Note& n : notes) {
                const std::uint64_t end = std::uint64_t{n.time} + std::max(n.gate, 1U);
                if (n.time < to && end > from) sure |= std::uint64_t{1} << (n.key / 2);
                if (n.time < std::uint64_t{to} + span && end + span > from) near |= std::uint64_t{1} << (n.key / 2);
            }
            const std::uint64_t shown = picture.pitches(from, to);
            const bool kept = to < length / 2; // the very end may be cut
            EXPECT_TRUE(!kept || (sure & ~shown) == 0) << from;
            EXPECT_EQ(shown & ~near, 0U);
        }
    }
}

/// Passes hints on, as the window does.
class Hints final : public HintObserver {
public:
    Hints(CEditor& editor, std::function<void(int code)> tell) : m_editor(editor), m_tell(std::move(tell))
    {
        m_editor.addObserver(this);
    }
    ~Hints() override { m_editor.removeObserver(this); }
    Hints(const Hints&) = delete;
    Hints& operator=(const Hints&) = delete;
    void onHint(const HintObserver*, int code, CEditor*) override { m_tell(code); }

private:
    CEditor& m_editor;
    std::function<void(int code)> m_tell;
};

TEST(BlkPictures, AreMadeWithinABudgetAndAnewAfterAChange)
{
    SongFixture song;
    CBlk& blk = song.addBlock(1, 0, 10000);
    for (std::uint32_t i = 0; i < 100; ++i) SongFixture::addNote(blk, i * 10, 60, 100, 5);
    const CRealBlk& real = *blk.GetRealBlk();
    BlkPictures pictures;
    const auto find = [&](std::size_t budget) {
        pictures.begin(budget);
        return pictures.find(real);
    };
    EXPECT_FALSE(find(60));
    EXPECT_TRUE(pictures.unfinished());
    const BlkPicture* first = find(60); // goes on where it was
    ASSERT_TRUE(first);
    EXPECT_FALSE(pictures.unfinished());
    EXPECT_EQ(find(0), first);

    SongFixture::addNote(blk, 500, 72, 100, 5);
    pictures.setStale(&real);
    pictures.setStale(&real);
    EXPECT_EQ(find(60), first) << "the old one serves meanwhile";
    SongFixture::addNote(blk, 0, 84, 100, 5);
    pictures.setStale(&real); // what was half made begins again
    EXPECT_EQ(find(60), first);
    const BlkPicture* second = find(60);
    EXPECT_EQ(second->pitches(), std::uint64_t{1} << 30 | std::uint64_t{1} << 36 | std::uint64_t{1} << 42);
    pictures.setStale(&real);
    find(60);
    song.editor.HintBlkUpdate(song.editor.GetTrkPos(2), &song.addBlock(2, 0, 100));
    pictures.follow(hint::blkUpdate, song.editor); // events may have come from here
    find(60);
    EXPECT_TRUE(pictures.unfinished());
}

TEST(BlkPictures, GoWithTheirBlocks)
{
    SongFixture song;
    CEditor& editor = song.editor;
    CBlk& blk = song.addBlock(1, 0, 3840);
    for (const std::uint32_t time : {0U, 1920U}) SongFixture::addNote(blk, time, 60, 100, 5);
    const POSITION trk = editor.GetTrkPos(1);
    BlkPictures pictures;
    const Hints hints(editor, [&](int code) { pictures.follow(code, editor); });
    const auto find = [&](const CRealBlk* real, std::size_t budget) {
        pictures.begin(budget);
        return pictures.find(*real);
    };
    const CRealBlk* real = blk.GetRealBlk();
    const auto step = [&](auto&& work) {
        EXPECT_TRUE(find(real, 10));
        const UndoScope scope(editor, "step");
        work();
    };
    step([&] { editor.BlkGhost(trk, &blk, editor.GetTrkPos(2), 0); });
    editor.UndoNode();
    EXPECT_TRUE(find(real, 0)) << "a ghost leaves it to the source";
    step([&] { editor.BlkMove(trk, &blk, trk, 1920); });
    EXPECT_TRUE(find(real, 0));
    editor.UndoNode();
    step([&] { editor.BlkDel(trk, &blk); });
    EXPECT_FALSE(find(real, 0));
    editor.UndoNode();
    EXPECT_TRUE(find(real, 10));

    step([&] { editor.BlkDiv(trk, &blk, 1920); });
    const CRealBlk* second = editor.song().trk(1)->blocks().tail()->GetRealBlk();
    EXPECT_TRUE(find(second, 10));
    editor.UndoNode();
    EXPECT_EQ(find(second, 0)->pitches(), 0U);
}

TEST(BlkShares, CountTheBlocksOfARealBlock)
{
    SongFixture song;
    CBlk& blk = song.addBlock(1, 0, 1920);
    BlkShares shares(song.editor);
    const Hints hints(song.editor, [&](int code) { shares.follow(code, song.editor); });
    shares.refresh();
    EXPECT_FALSE(shares.isShared(blk.GetRealBlk()));
    const POSITION trk = song.editor.GetTrkPos(1);
    const POSITION trk2 = song.editor.GetTrkPos(2);
    {
        const UndoScope step(song.editor, "link");
        song.editor.BlkGhost(trk, &blk, trk2, 0);
        song.editor.BlkGhost(trk, &blk, trk2, 1920);
    }
    shares.refresh();
    EXPECT_EQ(shares.count(blk.GetRealBlk()), 3);
    song.editor.UndoNode();
    shares.refresh();
    EXPECT_EQ(shares.count(blk.GetRealBlk()), 1);
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
