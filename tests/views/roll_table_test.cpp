// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "roll_song.h"
#include "support/random.h"

#include <tuple>

namespace tessaro {
namespace {

using Found = std::vector<std::tuple<POSITION, POSITION, std::uint32_t, std::uint32_t, int>>;

constexpr StripKind volume{StripKind::What::control, 7};

/// Every block and event of the track, one by one.
template <class Visit>
void walk(const RollSong& song, int track, Visit&& visit)
{
    for (CBlk* blk = song.editor.song().trk(track)->blocks().head(); blk; blk = List<CBlk>::next(blk))
        for (CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e)) visit(blk, e);
}

Found walkedNotes(const RollSong& song, std::uint32_t from, std::uint32_t to, int low, int high)
{
    Found found;
    walk(song, 1, [&](CBlk* blk, CEvnt* e) {
        const std::uint32_t start = blk->GetTimeTop() + e->GetTime();
        const std::uint32_t end = start + std::max(e->GetGateTime(), 1U);
        const bool isSeen = start < to && end > from && e->GetPost1() >= low && e->GetPost1() <= high;
        if (status::kind(e->GetStatus()) == status::note && isSeen)
            found.emplace_back(blk, e, start, end, e->GetPost1());
    });
    std::ranges::sort(found);
    return found;
}

Found tableNotes(const RollSong& song, std::uint32_t from, std::uint32_t to, int low, int high)
{
    Found found;
    song.notes.forEachNote(1, from, to, low, high, [&](const NoteInView& note) {
        EXPECT_EQ(note.ref.trk, song.editor.GetTrkPos(1));
        found.emplace_back(note.ref.blk, note.ref.evnt, note.start, note.end, note.key);
    });
    std::ranges::sort(found);
    return found;
}

class RandomRoll {
public:
    explicit RandomRoll(std::uint32_t seed) : m_dice(seed)
    {
        for (int n = 0; n < 4; ++n) {
            const std::uint32_t top = m_dice.below(8) * 960;
            const BlkRef blk = song.addBlk(1, top, top + 1920);
            for (int i = 0; i < 30; ++i) RollSong::add(blk, anyRec(top));
            song.editor.BlkSize(blk.trk, blk.blk, top);
            if (m_dice.oneIn(2)) song.addGhost(blk, 1, m_dice.below(8) * 960);
        }
    }

    void edit()
    {
        CEditor& editor = song.editor;
        const POSITION trk = editor.GetTrkPos(1);
        const POSITION blk = editor.GetBlkPos(1, m_dice.below(editor.song().trk(1)->GetCount()));
        const CBlk& block = *List<CBlk>::get(blk);
        const POSITION evnt = block.GetNum() ? block.GetPos(m_dice.below(block.GetNum())) : nullptr;
        const UndoScope step(editor, "edit");
        switch (m_dice.below(9)) {
        case 0: editor.InsEvnt(trk, blk, anyRec(block.GetTimeTop())); break;
        case 1: editor.DeleteEvnt(trk, blk, evnt); break;
        case 2: editor.SetLocation(trk, blk, evnt, block.GetTimeTop() + m_dice.below(16) * 120); break;
        case 3: editor.SetEvnt(trk, blk, evnt, anyRec(block.GetTimeTop())); break;
        case 4: editor.BlkMove(trk, blk, trk, m_dice.below(8) * 960); break;
        case 5: editor.BlkDiv(trk, blk, block.GetTimeTop() + 480); break;
        case 6: editor.BlkRealize(trk, blk); break;
        case 7: editor.BlkOfst(trk, blk, 120); break;
        case 8: editor.BlkMerge(trk, blk, trk, editor.GetHeadBlkPos(1), block.GetTimeTop()); break;
        }
    }

    RollSong song;
    test::Dice& dice() { return m_dice; }

private:
    _EDT_EVNT anyRec(std::uint32_t top)
    {
        const std::uint32_t time = top + m_dice.below(16) * 120;
        if (m_dice.oneIn(3)) return volume.record(time, m_dice.byteBelow(128), 0);
        const std::uint32_t gate = m_dice.oneIn(8) ? 0 : m_dice.oneIn(8) ? m_dice.below(4000) : m_dice.below(300);
        return test::noteRec(time, gate, static_cast<std::uint8_t>(m_dice.between(60, 63)));
    }

    test::Dice m_dice;
};

TEST(NoteTables, AnswerAsAWalkDoes)
{
    for (std::uint32_t seed = 1; seed <= 30; ++seed) {
        RandomRoll roll(seed);
        const RollSong& song = roll.song;
        for (int edit = 0; edit < 30; ++edit) {
            switch (roll.dice().below(6)) {
            case 0: roll.song.editor.UndoNode(); break;
            case 1: roll.song.editor.RedoNode(); break;
            default: roll.edit();
            }
            const std::uint32_t from = roll.dice().below(9000);
            const std::uint32_t to = from + roll.dice().below(roll.dice().oneIn(2) ? 4000 : 3);
            const int low = static_cast<int>(roll.dice().between(0, 62));
            ASSERT_EQ(tableNotes(song, from, to, low, 62), walkedNotes(song, from, to, low, 62)) << seed << ' ' << edit;

            // What is drawn last is what a click finds.
            EvntRef last;
            EvntRef before;
            walk(song, 1, [&](CBlk* blk, CEvnt* e) {
                const EvntRef ref{song.editor.GetTrkPos(1), blk, e};
                const auto note = NoteTables::noteOf(ref);
                if (note && note->key == 61 && note->start <= from && from < note->end) last = ref;
                const std::uint32_t top = blk->GetTimeTop();
                if (volume.isOf(*e) && song.notes.blkAt(1, from).blk == blk && top + e->GetTime() < from) before = ref;
            });
            const auto hit = song.notes.noteAt(1, from, from + 1, 61);
            ASSERT_EQ(hit ? hit->ref : EvntRef{}, last);
            const auto value = song.notes.valueBefore(1, volume, from);
            ASSERT_EQ(value ? value->ref : EvntRef{}, before);

            NoteTables::Keys keys;
            walk(song, 1, [&](CBlk*, CEvnt* e) {
                if (status::kind(e->GetStatus()) == status::note) keys.set(e->GetPost1());
            });
            ASSERT_EQ(song.notes.keysOf(1), keys);

            int values = 0;
            song.notes.forEachValue(1, volume, from, to, [&](const ValueInView&) { ++values; });
            walk(song, 1, [&](CBlk* blk, CEvnt* e) {
                const std::uint32_t time = blk->GetTimeTop() + e->GetTime();
                values -= volume.isOf(*e) && time >= from && time < to;
            });
            ASSERT_EQ(values, 0);
        }
    }
}

TEST(NoteTables, ATakeIsSeenWithoutHints)
{
    RollSong song;
    const BlkRef blk = song.addBlk(1, 0, 1920);
    const auto count = [&] {
        int notes = 0;
        song.notes.forEachNote(1, 0, 9999, 0, 127, [&](const NoteInView&) { ++notes; });
        return notes;
    };
    EXPECT_EQ(count(), 0);
    song.addNote(blk, 10, 10, 60);
    EXPECT_EQ(count(), 1);
    song.editor.InitEditor();
    song.notes.clear();
    EXPECT_EQ(count(), 0);
    song.addNote(song.addBlk(1, 0, 10), 0xFFFFFFF0, 100, 127); // over the end of time
    EXPECT_EQ(count(), 0);
    EXPECT_FALSE(song.notes.noteAt(101, 0, 9, 60));
}

} // namespace
} // namespace tessaro
