// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/undo_scope.h"
#include "core/fakes.h"
#include "core/model/meta.h"
#include "core/model/tick.h"
#include "core/song_picture.h"
#include "core/tools/edit_plan.h"
#include "support/random.h"

namespace tessaro::test {

/// A song to try the everyday edits on.
struct ToolsSong : EditorBench {
    CBlk& block(int track, std::uint32_t top, std::uint32_t end)
    {
        if (editor.song().trk(track)->GetType() == trktype::unused) editor.SetTrkTypePrivate(track, trktype::midi);
        editor.NewBlk(track, top);
        CBlk& blk = *List<CBlk>::get(editor.GetTailBlkPos(track));
        blk.SetTimeEnd(end);
        return blk;
    }
    /// A signature, its denominator as an exponent.
    void sign(std::uint32_t time, std::uint8_t num, std::uint8_t den)
    {
        const std::uint8_t body[] = {num, den, 24, 8};
        editor.AddTs(time, body);
        editor.InitMeasInfo();
    }

    EvntRef put(CBlk& blk, _EDT_EVNT rec) { return {trackOf(blk), &blk, blk.InsEvnt(std::move(rec))}; }
    /// `time` is absolute.
    EvntRef note(CBlk& blk, std::uint32_t time, int key, std::uint32_t gate = 100, int velocity = 100, int ch = 0)
    {
        _EDT_EVNT rec = noteRec(time, gate, static_cast<std::uint8_t>(key));
        rec.status = static_cast<std::uint8_t>(status::note | ch);
        rec.post2 = static_cast<std::uint8_t>(velocity);
        return put(blk, rec);
    }
    EvntRef send(CBlk& blk, std::uint32_t time, int st, int post1, int post2 = 0)
    {
        _EDT_EVNT rec;
        rec.time = time;
        rec.status = static_cast<std::uint8_t>(st);
        rec.post1 = static_cast<std::uint8_t>(post1);
        rec.post2 = static_cast<std::uint8_t>(post2);
        return put(blk, rec);
    }
    /// Notes on two tracks.
    void scatter(Dice& dice, int notes)
    {
        CBlk* blks[] = {&block(1, 0, 9600), &block(2, dice.below(500), 9600)};
        for (int i = 0; i < notes; ++i) {
            CBlk& blk = *blks[dice.below(2)];
            note(blk, blk.GetTimeTop() + dice.below(8000), static_cast<int>(dice.below(128)), dice.between(1, 900),
                 static_cast<int>(dice.between(1, 127)));
        }
    }

    POSITION trackOf(const CBlk& blk)
    {
        POSITION trk = editor.GetHeadTrkPos();
        while (!List<CTrk>::get(trk)->Find(&blk)) trk = trk->next;
        return trk;
    }
    /// Every event of a track, or of all but the master.
    std::vector<EvntRef> all(int track = -1)
    {
        std::vector<EvntRef> refs;
        for (int number = track < 0 ? 1 : track; number < (track < 0 ? trackCount : track + 1); ++number) {
            const POSITION trk = editor.GetTrkPos(number);
            for (POSITION blk = editor.GetHeadBlkPos(trk); blk; blk = blk->next)
                for (POSITION evnt = editor.GetHeadEvntPos(trk, blk); evnt; evnt = evnt->next)
                    refs.push_back({trk, blk, evnt});
        }
        return refs;
    }
    std::vector<EvntRef> edit(const EditPlan& plan)
    {
        const UndoScope step(editor, "edit");
        return apply(editor, plan);
    }

    static const CEvnt& event(const EvntRef& ref) { return *List<CEvnt>::get(ref.evnt); }
    static std::uint32_t time(const EvntRef& ref)
    {
        return List<CBlk>::get(ref.blk)->GetTimeTop() + event(ref).GetTime();
    }
};

} // namespace tessaro::test
