// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/fakes.h"
#include "core/song_picture.h"
#include "views/text/ui_text.h"
#include "views/tracks/blk_commands.h"
#include "views/tracks/blk_finder.h"
#include "views/tracks/trk_blks.h"
#include "views/tracks/trk_selection.h"

#include <string>

namespace tessaro {

/// A song of 4/4 with what the track window works on it with; the user answers as told.
struct TrackSong : test::EditorBench {
    Strings strings{Language::japanese};
    UiText text{strings};
    TrkGeometry geometry;
    TrkBlks blks{editor};
    TrkSelection selection{editor};
    BlkFinder finder{editor, geometry, blks, selection};
    bool locked = false;
    BlkCommands commands{editor, text, selection, [this] { return locked; }};

    TrackSong()
    {
        geometry.setZoom(6); // a bar is 320 pixels wide
        geometry.setSize({2000, 2100});
    }

    /// A block of type 1 with a note at its top; makes a MIDI track of an unused one. Without undo and hint, as all
    /// here.
    BlkRef add(int track, std::uint32_t top, std::uint32_t end, std::uint8_t key = 60)
    {
        if (editor.song().trk(track)->GetType() == trktype::unused) editor.SetTrkTypePrivate(track, trktype::midi);
        CRealBlk* real = editor.NewAddTailRealBlk();
        real->InsEvnt(test::noteRec(0, 10, key));
        CTrk* trk = editor.song().trk(track);
        return {trk, trk->NewAdd(top, end, real, blktype::real, "b")};
    }
    BlkRef addGhost(const BlkRef& of, int track, std::uint32_t top)
    {
        const CBlk& blk = *List<CBlk>::get(of.blk);
        editor.SetTrkTypePrivate(track, trktype::midi);
        CTrk* trk = editor.song().trk(track);
        const std::uint32_t end = top + blk.GetTimeEnd() - blk.GetTimeTop();
        return {trk, trk->NewAdd(top, end, blk.GetRealBlk(), blktype::ghost, "*b")};
    }

    void select(std::initializer_list<BlkRef> refs) { selection.setBlks({refs.begin(), refs.size()}); }

    static std::string place(const BlkRef& ref)
    {
        const CBlk& blk = *List<CBlk>::get(ref.blk);
        return std::to_string(Song::numberOf(ref.trk)) + ':' + std::to_string(blk.GetTimeTop()) + '-'
             + std::to_string(blk.GetTimeEnd()) + (blk.GetType() == blktype::ghost ? "g" : "");
    }
    /// As "track:top-end", with a g behind a ghost.
    static std::string places(const std::vector<BlkRef>& refs)
    {
        std::string out;
        for (const BlkRef& ref : refs) out += (out.empty() ? "" : " ") + place(ref);
        return out;
    }
    [[nodiscard]] std::string selected() const { return places(selection.blks()); }
    [[nodiscard]] std::string all() const { return all(editor); }
    static std::string all(const CEditor& editor)
    {
        std::vector<BlkRef> refs;
        for (int n = 1; n < trackCount; ++n)
            for (CBlk* blk = editor.song().trk(n)->blocks().head(); blk; blk = List<CBlk>::next(blk))
                refs.push_back({editor.song().trk(n), blk});
        return places(refs);
    }
    [[nodiscard]] std::string undoTitle() const
    {
        std::string title;
        editor.IsEnableUndo(title);
        return title;
    }
};

} // namespace tessaro
