// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/doc/list_settings.h"
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

/// A song with an engine on a clock of its own, and all that a child window works with.
struct ViewBench : test::PlayBench {
    UiText text{strings};
    Icons icons{QStringLiteral(TESSARO_SOURCE_DIR "/data/icons")};
    QWidget window;
    ViewActions actions{window, icons, text};
    SongClipboard clipboard{editor, strings};
    NoteAudition audition{smc, editor};
    NoteTables notes{editor};
    Grid grid;
    ListSettings listSettings;
    bool locked = false;

    ViewBench()
    {
        listSettings.columnWidths.fill(ListSettings::defaultWidth);
        bind();
    }

    ViewParts parts()
    {
        return {.editor = editor,
                .panel = panel,
                .store = settings,
                .user = user,
                .text = text,
                .icons = icons,
                .actions = actions,
                .clipboard = clipboard,
                .audition = audition,
                .notes = notes,
                .grid = grid,
                .open = {},
                .portNames = {},
                .isLocked = [this] { return locked; },
                .listSettings = &listSettings};
    }
};

} // namespace tessaro
