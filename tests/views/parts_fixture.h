// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/play/play_bench.h"
#include "realtime/transport/note_audition.h"
#include "views/clipboard/song_clipboard.h"
#include "views/editors/view_actions.h"
#include "views/editors/view_parts.h"
#include "views/roll/grid.h"
#include "views/roll/note_table.h"
#include "views/text/ui_text.h"
#include "views/theme/icons.h"

#include <QWidget>

namespace tessaro {

/// All that a child window works with, over a song in memory and an engine on the manual clock.
struct PartsFixture {
    test::PlayBench bench;
    CEditor& editor = bench.editor;
    QWidget window;
    Icons icons{QStringLiteral(TESSARO_SOURCE_DIR "/data/icons")};
    UiText text{bench.strings};
    ViewActions actions{window, icons, text};
    SongClipboard clipboard{bench.editor, bench.strings};
    NoteAudition audition{bench.smc, bench.editor};
    NoteTables notes{bench.editor};
    Grid grid;
    bool locked = false;
    ViewParts parts{.editor = bench.editor,
                    .panel = bench.panel,
                    .store = bench.settings,
                    .user = bench.user,
                    .text = text,
                    .icons = icons,
                    .actions = actions,
                    .clipboard = clipboard,
                    .audition = audition,
                    .notes = notes,
                    .grid = grid,
                    .open = [](WindowKind, int, std::uint32_t) {},
                    .portNames = [] { return QStringList(); },
                    .isLocked = [this] { return locked; }};

    /// A block over the span; the track is a MIDI track then.
    CBlk& addBlock(int track, std::uint32_t top, std::uint32_t end)
    {
        CBlk& blk = bench.block(track, top);
        blk.SetTimeEnd(end);
        return blk;
    }
    /// `time` is absolute.
    static POSITION addNote(CBlk& blk, std::uint32_t time, int key, std::uint32_t gate, int velocity = 100)
    {
        _EDT_EVNT rec;
        rec.status = status::note;
        rec.time = time;
        rec.gateTime = gate;
        rec.post1 = static_cast<std::uint8_t>(key);
        rec.post2 = static_cast<std::uint8_t>(velocity);
        return blk.InsEvnt(rec);
    }
    /// Blocks and notes were put in without a hint.
    void bind()
    {
        bench.bind();
        notes.clear();
    }
};

} // namespace tessaro
