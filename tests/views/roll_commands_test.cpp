// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/meta.h"
#include "roll_song.h"

#include <array>

namespace tessaro {
namespace {

constexpr int linkedId = static_cast<int>(TextId::linkedBlockNotEditable);

class NoteCommandsTest : public testing::Test {
protected:
    RollSong song;
    BlkRef blk = song.addBlk(1, 480, 1920);

    /// What stands in the block, as `time gate key velocity` each.
    std::vector<EvntRef> notes(std::initializer_list<std::array<int, 4>> rows)
    {
        std::vector<EvntRef> refs;
        for (const auto& [time, gate, key, velocity] : rows)
            refs.push_back(
                song.addNote(blk, static_cast<std::uint32_t>(time), static_cast<std::uint32_t>(gate), key, velocity));
        return refs;
    }
};

TEST_F(NoteCommandsTest, OneStepEachWithItsTitle)
{
    const auto refs = notes({{480, 120, 60, 100}, {600, 240, 64, 3}, {960, 0, 127, 120}});
    const std::vector second{refs[1]};
    const std::string before = song.track(1);
    const auto expect = [&](bool done, TextId title, const char* after) {
        EXPECT_TRUE(done) << after;
        song.expectStep(title, before, after);
    };
    NoteCommands& c = song.commands;
    expect(c.move(refs, 240), TextId::undoEventMove, "720+120 60/100, 840+240 64/3, 1200+0 127/120");
    expect(c.move(second, -999, 2), TextId::undoEventMove, "480+120 60/100, 480+240 66/3, 960+0 127/120");
    expect(c.transpose(refs, -80), TextId::undoTranspose, "480+120 0/100, 600+240 4/3, 960+0 67/120");
    expect(c.stretch(refs, -20), TextId::undoGateTime, "480+100 60/100, 600+220 64/3, 960+1 127/120");
    expect(c.change(refs, {.velocityBy = -5}, TextId::undoVelocity), TextId::undoVelocity,
           "480+120 60/95, 600+240 64/1, 960+0 127/115");
    expect(c.change(refs, {.velocityBy = 30}, TextId::undoVelocity), TextId::undoVelocity,
           "480+120 60/127, 600+240 64/33, 960+0 127/127");
    expect(c.remove(std::vector{refs[0], refs[2]}), TextId::undoEventDelete, "600+240 64/3");
    expect(c.split(refs, 700), TextId::undoNoteSplit, "480+120 60/100, 600+100 64/3, 700+140 64/3, 960+0 127/120");
    expect(c.copy(second, 840, -1).size() == 1, TextId::undoDragDrop,
           "480+120 60/100, 600+240 64/3, 960+0 127/120, 1440+240 63/3");
    expect(c.duplicate(std::vector{refs[0], refs[1]}, song.grid).size() == 2, TextId::undoEventInsert,
           "480+120 60/100, 600+240 64/3, 840+120 60/100, 960+0 127/120, 960+240 64/3");
    EXPECT_FALSE(c.transpose(refs, 1)); // the highest is at the end of the keys
    EXPECT_FALSE(c.split(refs, 600));   // between two notes
    EXPECT_FALSE(c.remove({}) || c.join(refs));
    EXPECT_EQ(song.editor.GetUndoRedoIndex(), -1);
}

TEST_F(NoteCommandsTest, NotesOfOneTimeKeepTheirOrder)
{
    const auto refs = notes({{480, 10, 60, 1}, {480, 10, 60, 2}, {480, 10, 60, 3}, {600, 10, 60, 4}});
    song.commands.move(refs, 240);
    EXPECT_EQ(song.track(1), "720+10 60/1, 720+10 60/2, 720+10 60/3, 840+10 60/4");
    song.commands.move(refs, -240);
    EXPECT_EQ(song.track(1), "480+10 60/1, 480+10 60/2, 480+10 60/3, 600+10 60/4");
    EXPECT_EQ(song.editor.GetBlkTimeEnd(blk.trk, blk.blk), 1920U);
    song.commands.move(refs, 1560);
    EXPECT_EQ(song.editor.GetBlkTimeEnd(blk.trk, blk.blk), 2170U); // the block grows
}

TEST_F(NoteCommandsTest, EdgesNeverCross)
{
    const auto refs = notes({{600, 120, 60, 100}, {720, 10, 61, 100}});
    const std::string before = song.track(1);
    song.commands.change(refs, {.startBy = 50}, TextId::undoEventChange);
    song.expectStep(TextId::undoEventChange, before, "650+70 60/100, 729+1 61/100");
    song.commands.change(refs, {.startBy = -500}, TextId::undoEventChange); // no earlier than the block
    song.expectStep(TextId::undoEventChange, before, "480+240 60/100, 600+130 61/100");
}

TEST_F(NoteCommandsTest, JoinsToTheNextOfTheKey)
{
    const auto refs = notes({{480, 10, 60, 1}, {490, 5, 61, 2}, {600, 10, 60, 3}, {700, 500, 60, 4}, {720, 10, 60, 5}});
    const std::string before = song.track(1);
    EXPECT_TRUE(song.commands.join(std::vector{refs[0], refs[1]})); // 61 has no next one
    song.expectStep(TextId::undoNoteJoin, before, "480+130 60/1, 490+5 61/2, 700+500 60/4, 720+10 60/5");
    EXPECT_TRUE(song.commands.join(std::vector{refs[0], refs[3]}));
    song.expectStep(TextId::undoNoteJoin, before, "480+130 60/1, 490+5 61/2, 700+500 60/4");
    EXPECT_TRUE(song.commands.join(std::vector{refs[0], refs[2]})); // what the one is joined with is joined itself
    song.expectStep(TextId::undoNoteJoin, before, "480+720 60/1, 490+5 61/2, 720+10 60/5");
    EXPECT_TRUE(song.commands.join(refs));
    song.expectStep(TextId::undoNoteJoin, before, "480+720 60/1, 490+5 61/2");
}

TEST_F(NoteCommandsTest, CopiedSignaturesReplaceEachOther)
{
    CEditor& editor = song.editor;
    const BlkRef master{editor.GetTrkPos(0), editor.GetHeadBlkPos(0)};
    const auto insert = [&](std::uint32_t time, std::uint8_t beats) {
        const std::vector<std::uint8_t> bytes{beats, 2, 24, 8};
        POSITION evnt = nullptr;
        editor.InsEvnt(master.trk, master.blk, test::bytesRec(status::metaEvent, time, bytes, 0x58), evnt);
        return EvntRef{master.trk, master.blk, evnt};
    };
    const std::vector refs{insert(1920, 1), insert(2400, 3)}; // one bar of a quarter, then bars of three
    const auto copies = song.commands.copy(refs, 600, 0);     // both into the same bar
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(timeOf(copies[0]), 3840U);
    std::string all;
    for (const CEvnt* e = blkOf(copies[0]).GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
        if (e->isMeta(meta::timeSignature)) all += std::to_string(e->GetTime()) + " ";
    EXPECT_EQ(all, "0 1920 2400 3840 ");
}

TEST_F(NoteCommandsTest, RefuseInLinkedBlocks)
{
    const EvntRef note = notes({{600, 120, 60, 100}})[0];
    const BlkRef link = song.addGhost(blk, 2, 0);
    const std::vector shown{note, EvntRef{link.trk, link.blk, note.evnt}};
    const std::string before = song.track(1);
    NoteCommands& c = song.commands;
    EXPECT_FALSE(c.move(shown, 10) || c.remove(shown) || c.join(shown) || c.split(shown, 650) || c.stretch(shown, 5));
    EXPECT_FALSE(c.change(shown, {.velocityBy = 5}, TextId::undoVelocity));
    EXPECT_TRUE(c.copy(shown, 10, 0).empty() && c.duplicate(shown, song.grid).empty());
    EXPECT_FALSE(c.insert(2, test::noteRec(100, 10)).evnt);
    EXPECT_EQ(song.user.messages, std::vector<int>(9, linkedId));
    EXPECT_EQ(song.track(1), before);
    EXPECT_EQ(song.editor.GetUndoRedoIndex(), -1);
}

TEST_F(NoteCommandsTest, NewNotesFindOrMakeTheirBlock)
{
    const BlkRef above = song.addBlk(1, 960, 1440);
    EXPECT_EQ(song.commands.insert(1, test::noteRec(970, 10)).blk, above.blk); // drawn last
    EXPECT_EQ(song.commands.insert(1, test::noteRec(1440, 10)).blk, blk.blk);  // an end is outside
    const EvntRef made = song.commands.insert(1, test::noteRec(2000, 4000));
    EXPECT_EQ(song.editor.GetBlkTimeTop(made.trk, made.blk), 1920U);
    EXPECT_EQ(song.editor.GetBlkTimeEnd(made.trk, made.blk), 6000U);
    EXPECT_EQ(song.commands.insert(1, test::noteRec(5000, 10)).blk, made.blk);
    EXPECT_TRUE(song.commands.insert(7, test::noteRec(0, 10)).evnt); // a track without a type becomes one for MIDI
    EXPECT_EQ(song.editor.song().trk(7)->GetType(), trktype::midi);
    EXPECT_EQ(song.editor.GetBlkTimeEnd(7, 0), 1920U);
    song.editor.UndoNode();
    EXPECT_TRUE(song.editor.song().trk(7)->IsEmpty());
    song.editor.SetTrkTypePrivate(8, trktype::wave);
    for (const int track : {0, 8, 101}) EXPECT_FALSE(song.commands.insert(track, test::noteRec(0, 10)).evnt);
    EXPECT_TRUE(song.editor.song().trk(8)->IsEmpty());
}

} // namespace
} // namespace tessaro
