// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/fakes.h"

namespace tessaro {

/// A song in memory, without engine or files.
struct SongFixture {
    test::FakeDocument document;
    test::FakeFiles files;
    QuietPorts quiet;
    CEditor editor{quiet.with(document, files)};

    /// A block over the span on this track; makes a track of those that are unused.
    CBlk& addBlock(int track, std::uint32_t top, std::uint32_t end)
    {
        if (editor.song().trk(track)->GetType() == trktype::unused) editor.SetTrkTypePrivate(track, trktype::midi);
        editor.NewBlk(track, top);
        CBlk* blk = nullptr;
        editor.GetBlk(editor.GetTrkPos(track), editor.GetTailBlkPos(track), &blk);
        blk->SetTimeEnd(end);
        return *blk;
    }

    /// `time` is absolute.
    static void addNote(CBlk& blk, std::uint32_t time, int key, int velocity, std::uint32_t gate)
    {
        _EDT_EVNT note = test::noteRec(time, gate, static_cast<std::uint8_t>(key));
        note.post2 = static_cast<std::uint8_t>(velocity);
        blk.InsEvnt(note);
    }
};

} // namespace tessaro
