// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "roll_song.h"
#include "support/random.h"

namespace tessaro {
namespace {

struct SelectionFollower final : HintObserver {
    explicit SelectionFollower(RollSong& s) : song(s) { song.editor.addObserver(this); }
    ~SelectionFollower() override { song.editor.removeObserver(this); }
    SelectionFollower(const SelectionFollower&) = delete;
    SelectionFollower& operator=(const SelectionFollower&) = delete;
    void onHint(const HintObserver*, int code, CEditor* editor) override
    {
        if (editor) changes += song.selection.follow(code, *editor);
    }
    RollSong& song;
    int changes = 0;
};

TEST(EvntSelection, IsInTheOrderOfTheSong)
{
    RollSong song;
    const BlkRef second = song.addBlk(2, 0, 1920);
    const BlkRef first = song.addBlk(1, 480, 1920);
    const EvntRef a = song.addNote(second, 480, 10, 60);
    const EvntRef b = song.addNote(first, 480, 10, 61);
    const EvntRef c = song.addNote(first, 480, 10, 62);
    const EvntRef d = song.addNote(first, 500, 10, 63);
    const BlkRef link = song.addGhost(first, 1, 1920);
    const EvntRef linked{link.trk, link.blk, c.evnt}; // the same event, another place
    song.selection.set(std::vector{d, linked, c, a, b, c});
    EXPECT_EQ(song.selection.inOrder(), (std::vector{b, c, a, d, linked}));
    song.selection.toggle(c);
    EXPECT_TRUE(song.selection.contains(linked));
    song.selection.toggle(c);
    song.selection.remove(a);
    song.selection.remove(a);
    EXPECT_EQ(song.selection.inOrder(), (std::vector{b, c, d, linked}));
}

TEST(EvntSelection, FollowsTheSong)
{
    RollSong song;
    SelectionFollower follower(song);
    const BlkRef blk = song.addBlk(1, 0, 1920);
    const BlkRef other = song.addBlk(2, 0, 1920);
    const EvntRef a = song.addNote(blk, 0, 10, 60);
    const EvntRef b = song.addNote(blk, 480, 10, 61);
    const EvntRef c = song.addNote(other, 0, 10, 62);
    song.selection.set(std::vector{a, b, c});

    song.commands.remove({&a, 1});
    EXPECT_EQ(song.selection.inOrder(), (std::vector{c, b}));
    POSITION moved = nullptr;
    {
        const UndoScope step(song.editor, "move");
        song.editor.BlkMove(blk.trk, blk.blk, other.trk, 1920, &moved);
    }
    EXPECT_EQ(song.selected(), "0+10 62/100, 2400+10 61/100");
    EXPECT_TRUE(song.selection.contains({other.trk, moved, b.evnt}));
    song.editor.UndoNode();
    EXPECT_TRUE(song.selection.contains(b));
    {
        const UndoScope step(song.editor, "delete");
        song.editor.BlkDel(blk.trk, blk.blk);
    }
    EXPECT_EQ(song.selection.inOrder(), std::vector{c});
    EXPECT_EQ(follower.changes, 4);
}

/// Whatever is edited, what is selected stands in the song.
TEST(EvntSelection, NeverNamesWhatIsGone)
{
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        test::Dice dice(seed);
        RollSong song;
        SelectionFollower follower(song);
        for (const std::uint32_t top : {0U, 1920U, 3840U}) {
            const BlkRef blk = song.addBlk(1, top, top + 1920);
            for (int n = 0; n < 10; ++n) song.addNote(blk, top + dice.below(8) * 240, 120, 60);
        }
        const auto anyBlk = [&] { return song.editor.GetBlkPos(1, dice.below(song.editor.song().trk(1)->GetCount())); };
        for (int edit = 0; edit < 60; ++edit) {
            song.notes.forEachNote(1, 0, 99'999, 0, 127, [&](const NoteInView& note) {
                if (dice.oneIn(3)) song.selection.add(note.ref);
            });
            const POSITION trk = song.editor.GetTrkPos(1);
            const POSITION blk = anyBlk();
            const UndoScope step(song.editor, "edit");
            switch (dice.below(6)) {
            case 0:
                song.editor.BlkMove(trk, blk, song.editor.GetTrkPos(2 - static_cast<int>(dice.below(2))), 960);
                break;
            case 1: song.editor.BlkDiv(trk, blk, List<CBlk>::get(blk)->GetTimeTop() + 480); break;
            case 2:
                if (const POSITION into = anyBlk(); into != blk) song.editor.BlkApp(trk, blk, trk, into);
                break;
            case 3: song.editor.DeleteEvnt(trk, blk, song.editor.GetHeadEvntPos(trk, blk)); break;
            case 4: song.editor.BlkGhost(trk, blk, trk, dice.below(9) * 960); break;
            case 5: song.editor.BlkRealize(trk, blk); break;
            }
            if (song.editor.song().trk(1)->GetCount() < 2) song.addBlk(1, 0, 1920);
            for (const EvntRef& ref : song.selection.inOrder()) {
                ASSERT_TRUE(List<CTrk>::get(ref.trk)->Find(List<CBlk>::get(ref.blk))) << seed << ' ' << edit;
                ASSERT_TRUE(List<CBlk>::get(ref.blk)->GetRealBlk()->Find(List<CEvnt>::get(ref.evnt)));
            }
        }
    }
}

} // namespace
} // namespace tessaro
