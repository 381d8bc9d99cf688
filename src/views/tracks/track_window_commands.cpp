// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/track_window_commands.h"

#include "core/edit/editor.h"
#include "realtime/transport/cnp_window.h"
#include "views/clipboard/song_clipboard.h"
#include "views/roll/grid_commands.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/trk_blk_view.h"
#include "views/tracks/trk_pram_view.h"

#include <algorithm>

namespace tessaro {
namespace {

constexpr int rowHeightStep = 12;

using C = ViewCommand;

} // namespace

CTrkBlkView& TrackWindowCommands::view() const { return m_frame.blkView(); }

BlkCommands& TrackWindowCommands::blks() const { return view().commands(); }

TrkSelection& TrackWindowCommands::selection() const { return m_frame.selection(); }

bool TrackWindowCommands::can(ViewCommand command) const
{
    const bool any = !selection().empty();
    const bool free = !m_parts.isLocked();
    switch (command) {
    case C::copy:
    case C::selectNone:
    case C::selectSiblings:
    case C::zoomToSelection: return any;
    case C::cut:
    case C::remove:
    case C::duplicate:
    case C::duplicateLinked:
    case C::tickLeft:
    case C::tickRight: return any && free;
    case C::nudgeLeft:
    case C::nudgeRight: return any ? free : !currentTrk().IsEmpty();
    case C::nudgeUp:
    case C::nudgeDown: return !any || free;
    case C::longer:
    case C::shorter:
    case C::divideBlocks:
    case C::linkBlocks: return free && blks().anyReal();
    case C::mergeBlocks: return free && selection().count() > 1;
    case C::realiseBlock: return free && blks().anyGhost();
    case C::showSource: return blks().anyGhost();
    case C::paste: return free && m_parts.clipboard.holds(SongClipboard::Format::blks);
    case C::properties:
    case C::newBlock: return free;
    case C::openEditor:
    case C::editCell:
    case C::armTrack:
    case C::muteTrack:
    case C::soloTrack: return true;
    case C::selectAll:
    case C::invertSelection:
    case C::zoomToSong: return !m_frame.isEmpty();
    case C::zoomIn: return view().geometry().zoom() > TrkGeometry::leastZoom;
    case C::zoomOut: return view().geometry().zoom() < TrkGeometry::mostZoom;
    case C::zoomInRows: return view().geometry().rowHeight() < TrkGeometry::mostRowHeight;
    case C::zoomOutRows: return view().geometry().rowHeight() > TrkGeometry::leastRowHeight;
    default: return grid_commands::can(m_parts.grid, command);
    }
}

bool TrackWindowCommands::isOn(ViewCommand command) const { return grid_commands::isOn(m_parts.grid, command); }

void TrackWindowCommands::run(ViewCommand command)
{
    if (can(command)) edit(command) || act(command) || select(command) || look(command);
}

/// Of the selected blocks.
bool TrackWindowCommands::edit(ViewCommand command)
{
    switch (command) {
    case C::cut:
        if (m_parts.clipboard.copyBlks(selection().blks())) blks().remove(TextId::undoBlockCut);
        return true;
    case C::copy: m_parts.clipboard.copyBlks(selection().blks()); return true;
    case C::remove: blks().remove(); return true;
    case C::duplicate: made(blks().duplicate(DropKind::copy)); return true;
    case C::duplicateLinked: made(blks().duplicate(DropKind::relink)); return true;
    case C::nudgeLeft: nudge(-1, 0); return true;
    case C::nudgeRight: nudge(1, 0); return true;
    case C::nudgeUp: nudge(0, -1); return true;
    case C::nudgeDown: nudge(0, 1); return true;
    case C::tickLeft: blks().nudgeTicks(-1); return true;
    case C::tickRight: blks().nudgeTicks(1); return true;
    case C::longer: blks().lengthen(1); return true;
    case C::shorter: blks().lengthen(-1); return true;
    case C::divideBlocks: blks().divide(m_parts.panel.GetLocation()); return true;
    case C::linkBlocks: blks().link(); return true;
    case C::mergeBlocks: blks().merge(); return true;
    case C::realiseBlock: blks().realise(); return true;
    default: return false;
    }
}

/// On the current track, or what is selected.
bool TrackWindowCommands::act(ViewCommand command)
{
    switch (command) {
    case C::paste: paste(); return true;
    case C::newBlock: newBlock(); return true;
    case C::properties: properties(); return true;
    case C::openEditor: openEditor(); return true;
    case C::editCell: m_frame.pramView().editCell(); return true;
    case C::armTrack: m_frame.pramView().toggle(TrackColumn::record); return true;
    case C::muteTrack: m_frame.pramView().toggle(TrackColumn::mute); return true;
    case C::soloTrack: m_frame.pramView().toggle(TrackColumn::solo); return true;
    default: return false;
    }
}

bool TrackWindowCommands::select(ViewCommand command)
{
    switch (command) {
    case C::selectAll: blks().selectAll(); return true;
    case C::selectNone: selection().trkInitSel(); return true;
    case C::invertSelection: blks().invert(); return true;
    case C::showSource: made(blks().selectSources()); return true;
    case C::selectSiblings: blks().selectSiblings(); return true;
    default: return false;
    }
}

bool TrackWindowCommands::look(ViewCommand command)
{
    const int rowHeight = view().geometry().rowHeight();
    switch (command) {
    case C::zoomIn: view().zoomBy(1); return true;
    case C::zoomOut: view().zoomBy(-1); return true;
    case C::zoomInRows: view().setRowHeight(rowHeight + rowHeightStep); return true;
    case C::zoomOutRows: view().setRowHeight(rowHeight - rowHeightStep); return true;
    case C::zoomToSong: view().zoomToSong(); return true;
    case C::zoomToSelection: view().zoomToSelection(); return true;
    default: return grid_commands::run(m_parts.grid, command);
    }
}

/// Brings into sight what an edit has made or moved.
void TrackWindowCommands::made(bool done)
{
    if (const auto found = selection().blks(); done && !found.empty()) {
        view().reveal(found.front());
        m_frame.setCurrentTrack(Song::numberOf(found.front().trk));
    }
}

/// With nothing to move it goes to a block, or to another track.
void TrackWindowCommands::nudge(int bars, int rows)
{
    if (!selection().empty()) {
        made(blks().nudge(bars, rows));
    } else if (bars) {
        selectBlk();
    } else {
        m_frame.setCurrentTrack(std::clamp(m_frame.currentTrack() + rows, 1, TrkGeometry::rows));
        view().reveal(m_frame.currentTrack());
    }
}

/// The block of the current track at the play position or next to it.
void TrackWindowCommands::selectBlk()
{
    CTrk* trk = m_parts.editor.song().trk(m_frame.currentTrack());
    CBlk* found = trk->blocks().head();
    while (List<CBlk>::next(found) && found->GetTimeEnd() <= m_parts.panel.GetLocation())
        found = List<CBlk>::next(found);
    const BlkRef ref{trk, found};
    selection().setBlks({{ref}});
    view().reveal(ref);
}

const CTrk& TrackWindowCommands::currentTrk() const { return *m_parts.editor.song().trk(m_frame.currentTrack()); }

void TrackWindowCommands::paste()
{
    const auto found = m_parts.clipboard.pasteBlks(m_frame.currentTrack(), m_parts.panel.GetLocation());
    if (found.empty()) return;
    selection().setBlks(found);
    view().reveal(found.front());
}

/// One bar on the current track, at the play position or behind what stands there.
void TrackWindowCommands::newBlock()
{
    const BarLines bars(m_parts.editor.maps().meas());
    std::uint32_t top = bars.before(m_parts.panel.GetLocation());
    for (const CBlk* blk = currentTrk().blocks().head(); blk; blk = List<CBlk>::next(blk))
        if (blk->GetTimeTop() <= top && blk->GetTimeEnd() > top) top = bars.after(blk->GetTimeEnd() - 1);
    made(blks().create(m_frame.currentTrack(), top, bars.after(top)));
}

void TrackWindowCommands::properties()
{
    const auto found = selection().blks();
    if (found.empty() || m_frame.pramView().hasFocus())
        m_frame.showTrack(m_frame.currentTrack());
    else
        m_frame.showBlk(found.back());
}

/// The notes of a selected block, or of the current track.
void TrackWindowCommands::openEditor()
{
    if (m_frame.pramView().hasFocus())
        m_frame.pramView().openCell();
    else if (const auto found = selection().blks(); !found.empty())
        view().openNotes(found.front());
    else if (currentTrk().GetType() == trktype::wave)
        m_frame.showTrack(m_frame.currentTrack());
    else
        view().openNotes(m_frame.currentTrack(), m_parts.panel.GetLocation());
}

} // namespace tessaro
