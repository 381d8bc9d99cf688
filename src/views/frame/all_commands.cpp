// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/all_commands.h"

#include "views/commands/command_list.h"
#include "views/editors/view_actions.h"
#include "views/edits/everyday_edits.h"
#include "views/frame/frame_actions.h"

namespace tessaro {
namespace {

/// The menu where a command stands.
TextId groupOf(ViewCommand command)
{
    if (command <= ViewCommand::editCell) return TextId::menuEdit;
    if (command <= ViewCommand::splitNotes || command == ViewCommand::insertEvent) return TextId::menuNotes;
    if (command <= ViewCommand::soloTrack) return TextId::windowTrackFrame;
    if (command <= ViewCommand::mergeBlocks) return TextId::menuBlocks;
    if (command <= ViewCommand::gridCoarser) return TextId::menuView;
    return TextId::menuTools;
}

} // namespace

void listCommands(CommandList& list, FrameActions& frame, ViewActions& view, EverydayEdits& edits)
{
    frame.listIn(list);
    for (int i = 0; i < viewCommands; ++i) {
        const auto command = static_cast<ViewCommand>(i);
        const ViewActions::Entry& entry = ViewActions::entry(command);
        list.add(entry.id, groupOf(command), entry.text, view[command]);
    }
    for (int i = 0; i < everydayEdits; ++i) {
        const auto edit = static_cast<EverydayEdit>(i);
        list.add(EverydayEdits::entry(edit).id, TextId::menuNotes, EverydayEdits::entry(edit).text, edits[edit]);
    }
    list.arrange({TextId::menuFile, TextId::menuEdit, TextId::menuTools, TextId::menuBlocks, TextId::menuNotes,
                  TextId::menuTransport, TextId::menuView, TextId::windowTrackFrame, TextId::menuSettings,
                  TextId::menuWindow, TextId::menuHelp});
}

} // namespace tessaro
