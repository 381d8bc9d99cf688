// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "core/model/meta.h"
#include "roll_song.h"
#include "support/random.h"

#include <functional>

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

/// Two notes on track 1 over 0 and 480, one on track 2, all selected; the block of track 1 is linked at 3840, where
/// its first note is selected again.
struct FollowedSong : RollSong {
    SelectionFollower follower{*this};
    BlkRef blk = addBlk(1, 0, 1920);
    BlkRef other = addBlk(2, 0, 1920);
    EvntRef a = addNote(blk, 0, 10, 60);
    EvntRef b = addNote(blk, 480, 10, 61);
    EvntRef c = addNote(other, 0, 10, 62);
    BlkRef link = addGhost(blk, 3, 3840);
    EvntRef linked{link.trk, link.blk, a.evnt};

    FollowedSong() { selection.set(std::vector{a, b, c, linked}); }
    template <class Edit>
    void step(Edit&& edit)
    {
        const UndoScope open(editor, "step");
        edit();
    }
};

TEST(EvntSelection, LosesWhatLeavesTheSong)
{
    using Song = FollowedSong;
    using Refs = std::vector<EvntRef>;
    struct Case {
        const char* name;
        std::function<void(Song&)> edit;
        std::function<Refs(Song&)> left;
    };
    const std::vector<Case> cases{
        {"event", [](Song& s) { s.editor.DeleteEvnt(s.blk.trk, s.blk.blk, s.a.evnt); },
         [](Song& s) {
             return Refs{s.c, s.b};
         }},
        {"block with its links", [](Song& s) { s.user.answer = true, s.editor.BlkDel(s.blk.trk, s.blk.blk); },
         [](Song& s) { return Refs{s.c}; }},
        {"link", [](Song& s) { s.editor.BlkDel(s.link.trk, s.link.blk); },
         [](Song& s) {
             return Refs{s.a, s.c, s.b};
         }},
        {"link made real", [](Song& s) { s.editor.BlkRealize(s.link.trk, s.link.blk); },
         [](Song& s) {
             return Refs{s.a, s.c, s.b};
         }},
        {"division", [](Song& s) { s.editor.BlkDiv(s.blk.trk, s.blk.blk, 480); }, [](Song& s) { return Refs{s.c}; }},
        {"joint", [](Song& s) { s.editor.BlkApp(s.other.trk, s.other.blk, s.blk.trk, s.blk.blk); },
         [](Song& s) {
             return Refs{s.a, s.b, s.linked};
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        FollowedSong song;
        song.step([&] { c.edit(song); });
        EXPECT_EQ(song.selection.inOrder(), c.left(song));
        EXPECT_GT(song.follower.changes, 0);
        song.editor.UndoNode();
        for (const EvntRef& ref : song.selection.inOrder()) EXPECT_TRUE(song.holds(ref));
        song.selection.set(std::vector{song.a, song.b, song.c, song.linked});
        song.editor.RedoNode();
        for (const EvntRef& ref : song.selection.inOrder()) EXPECT_TRUE(song.holds(ref));
    }
}

TEST(EvntSelection, GoesAlongWithBlocksThatMove)
{
    FollowedSong song;
    POSITION moved = nullptr;
    song.step([&] { song.editor.BlkMove(song.blk.trk, song.blk.blk, song.other.trk, 1920, &moved); });
    const EvntRef a{song.other.trk, moved, song.a.evnt};
    const EvntRef b{song.other.trk, moved, song.b.evnt};
    EXPECT_EQ(song.selection.inOrder(), (std::vector{song.c, a, b, song.linked}));
    song.step([&] { song.editor.SetLocation(a.trk, a.blk, a.evnt, 3000); });
    EXPECT_EQ(song.selection.inOrder(), (std::vector{song.c, b, a, song.linked}));
    song.editor.UndoNode(2);
    EXPECT_EQ(song.selection.inOrder(), (std::vector{song.a, song.c, song.b, song.linked}));
    song.editor.RedoNode();
    EXPECT_EQ(song.selection.inOrder(), (std::vector{song.c, a, b, song.linked}));
    EXPECT_EQ(song.follower.changes, 3);
}

/// A signature that changes makes those behind it anew; outside of a step the old ones are freed.
TEST(EvntSelection, LosesSignaturesThatAreMadeAnew)
{
    RollSong song;
    SelectionFollower follower(song);
    const BlkRef master{song.editor.GetTrkPos(0), song.editor.song().masterBlk()};
    const auto signature = [](std::uint32_t time, std::uint8_t beats) {
        static std::uint8_t body[4] = {0, 2, 24, 8};
        body[0] = beats;
        _EDT_EVNT rec;
        rec.status = status::metaEvent;
        rec.metaType = meta::timeSignature;
        rec.time = time;
        rec.data = body;
        rec.szData = 4;
        return rec;
    };
    const EvntRef first{master.trk, master.blk, song.editor.GetHeadEvntPos(master.trk, master.blk)};
    RollSong::add(master, signature(1920, 3));
    RollSong::add(master, signature(1920 + 1440, 5));
    song.editor.InitMeasInfo();
    const auto selectAll = [&] {
        for (CEvnt* e = song.editor.song().masterReal()->events().head(); e; e = List<CEvnt>::next(e))
            song.selection.add({master.trk, master.blk, e});
        return song.selection.count();
    };
    const auto expectAlive = [&] {
        const std::vector<EvntRef> refs = song.selection.inOrder();
        EXPECT_TRUE(std::ranges::all_of(refs, RollSong::holds));
        EXPECT_EQ(refs.size(), 2U) << "the first signature and the tempo";
    };
    EXPECT_EQ(selectAll(), 4U);
    {
        const UndoScope step(song.editor, "step");
        song.editor.SetEvnt(first.trk, first.blk, first.evnt, signature(0, 2));
    }
    expectAlive();
    EXPECT_EQ(selectAll(), 4U);
    song.editor.UndoNode();
    expectAlive();
    EXPECT_EQ(selectAll(), 4U);
    song.editor.RedoNode();
    expectAlive();
    EXPECT_EQ(selectAll(), 4U);
    song.editor.SetEvnt(first.trk, first.blk, first.evnt, signature(0, 6));
    expectAlive();
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
            for (const EvntRef& ref : song.selection.inOrder())
                ASSERT_TRUE(RollSong::holds(ref)) << seed << ' ' << edit;
        }
    }
}

} // namespace
} // namespace tessaro
