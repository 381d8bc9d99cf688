// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/fakes.h"
#include "views/editors/evnt_selection.h"
#include "views/roll/grid.h"
#include "views/roll/note_commands.h"
#include "views/roll/note_table.h"
#include "views/roll/roll_scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tessaro {

/// A song of 4/4 with what a roll works on it with. A pixel is 4 ticks, a sixteenth 30 pixels.
struct RollSong : test::EditorBench {
    Strings strings{Language::japanese};
    NoteTables notes{editor};
    NoteCommands commands{editor, notes, strings};
    Grid grid;
    RollScale scale;
    EvntSelection selection;

    RollSong() { scale.resize(RollScale::left + 1000, RollScale::ruler + 128 * scale.rowHeight()); }

    BlkRef addBlk(int track, std::uint32_t top, std::uint32_t end)
    {
        const POSITION trk = editor.GetTrkPos(track);
        return {trk, editor.BlkRec(trk, top, end)};
    }
    BlkRef addGhost(const BlkRef& of, int track, std::uint32_t top)
    {
        const POSITION trk = editor.GetTrkPos(track);
        editor.BlkGhost(of.trk, of.blk, trk, top);
        BlkRef made;
        for (CBlk* blk = List<CTrk>::get(trk)->blocks().head(); blk; blk = List<CBlk>::next(blk))
            if (blk->GetType() == blktype::ghost && blk->GetTimeTop() == top) made = {trk, blk};
        return made;
    }
    /// The time is absolute.
    static EvntRef add(const BlkRef& blk, const _EDT_EVNT& rec)
    {
        return {blk.trk, blk.blk, CEditor::RealRecEvnt(List<CBlk>::get(blk.blk), rec)};
    }
    static EvntRef addNote(const BlkRef& blk, std::uint32_t time, std::uint32_t gate, int key, int velocity = 100)
    {
        _EDT_EVNT rec = test::noteRec(time, gate, static_cast<std::uint8_t>(key));
        rec.post2 = static_cast<std::uint8_t>(velocity);
        return add(blk, rec);
    }

    /// Whether the event, its block and its track stand where the reference says.
    [[nodiscard]] static bool holds(const EvntRef& ref)
    {
        return List<CTrk>::get(ref.trk)->Find(List<CBlk>::get(ref.blk))
            && List<CBlk>::get(ref.blk)->GetRealBlk()->Find(List<CEvnt>::get(ref.evnt));
    }
    static std::string text(const EvntRef& ref)
    {
        const _EDT_EVNT rec = NoteCommands::record(ref);
        return std::to_string(rec.time) + '+' + std::to_string(rec.gateTime) + ' ' + std::to_string(rec.post1) + '/'
             + std::to_string(rec.post2);
    }
    /// All events of a track, block by block in their order, as "time+gate first/second byte".
    [[nodiscard]] std::string track(int number) const
    {
        std::string out;
        const CTrk& trk = *editor.song().trk(number);
        for (CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            if (blk != trk.blocks().head()) out += " | ";
            for (CEvnt* e = blk->GetRealBlk()->events().head(); e; e = List<CEvnt>::next(e))
                out += (e == blk->GetRealBlk()->events().head() ? "" : ", ") + text({editor.GetTrkPos(number), blk, e});
        }
        return out;
    }
    [[nodiscard]] std::string selected() const
    {
        std::string out;
        for (const EvntRef& ref : selection.inOrder()) out += (out.empty() ? "" : ", ") + text(ref);
        return out;
    }

    /// The last step must have this title and lead to this, undone to what was before, and back.
    void expectStep(TextId title, const std::string& before, const std::string& after, int number = 1)
    {
        std::string done;
        editor.IsEnableUndo(done);
        EXPECT_EQ(done, strings(title));
        EXPECT_EQ(track(number), after);
        EXPECT_TRUE(editor.UndoNode());
        EXPECT_EQ(track(number), before);
        EXPECT_TRUE(editor.RedoNode());
        EXPECT_EQ(track(number), after);
        EXPECT_TRUE(editor.UndoNode());
    }
};

} // namespace tessaro
