// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_commands.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "views/clipboard/song_clipboard.h"
#include "views/editors/evnt_kinds.h"
#include "views/roll/grid.h"
#include "views/roll/grid_commands.h"
#include "views/roll/roll_view.h"
#include "views/roll/strip_view.h"
#include "views/text/ui_text.h"

namespace tessaro {
namespace {

constexpr int octave = 12;
constexpr double zoomStep = 1.25;

} // namespace

bool RollCommands::can(ViewCommand command) const
{
    const bool hasSelection = !m_view.selection().empty();
    switch (command) {
    case ViewCommand::cut:
    case ViewCommand::remove:
    case ViewCommand::duplicate:
    case ViewCommand::nudgeLeft:
    case ViewCommand::nudgeRight:
    case ViewCommand::tickLeft:
    case ViewCommand::tickRight:
    case ViewCommand::nudgeUp:
    case ViewCommand::nudgeDown:
    case ViewCommand::octaveUp:
    case ViewCommand::octaveDown:
    case ViewCommand::longer:
    case ViewCommand::shorter:
    case ViewCommand::joinNotes:
    case ViewCommand::splitNotes: return hasSelection && !m_parts.isLocked();
    case ViewCommand::copy:
    case ViewCommand::selectNone:
    case ViewCommand::zoomToSelection: return hasSelection;
    case ViewCommand::paste:
        return isMidi() && !m_parts.isLocked() && m_parts.clipboard.holds(SongClipboard::Format::evnts);
    case ViewCommand::selectAll:
    case ViewCommand::invertSelection: return isMidi();
    case ViewCommand::zoomIn:
    case ViewCommand::zoomOut:
    case ViewCommand::zoomInRows:
    case ViewCommand::zoomOutRows:
    case ViewCommand::zoomToSong:
    case ViewCommand::shadows:
    case ViewCommand::audition: return true;
    default: return command >= ViewCommand::toolSelect || grid_commands::can(m_parts.grid, command);
    }
}

void RollCommands::run(ViewCommand command)
{
    NoteCommands& commands = m_view.commands();
    switch (command) {
    case ViewCommand::cut: return cut();
    case ViewCommand::copy: m_parts.clipboard.copyEvnts(selected()); return;
    case ViewCommand::paste: return paste();
    case ViewCommand::remove: commands.remove(selected()); return;
    case ViewCommand::duplicate: return select(commands.duplicate(selected(), m_parts.grid));
    case ViewCommand::selectAll: return select(everything());
    case ViewCommand::selectNone: return select({});
    case ViewCommand::invertSelection:
        for (const EvntRef& ref : everything()) m_view.selection().toggle(ref);
        return m_view.selectionChanged();
    case ViewCommand::nudgeLeft: return nudge(-1);
    case ViewCommand::nudgeRight: return nudge(1);
    case ViewCommand::tickLeft: commands.move(selected(), -1); return;
    case ViewCommand::tickRight: commands.move(selected(), 1); return;
    case ViewCommand::nudgeUp: return transpose(m_view.keyStep(1));
    case ViewCommand::nudgeDown: return transpose(m_view.keyStep(-1));
    case ViewCommand::octaveUp: return transpose(octave);
    case ViewCommand::octaveDown: return transpose(-octave);
    case ViewCommand::longer: return stretch(1);
    case ViewCommand::shorter: return stretch(-1);
    case ViewCommand::joinNotes: commands.join(selected()); return;
    case ViewCommand::splitNotes: commands.split(selected(), m_view.position()); return;
    case ViewCommand::zoomIn: return zoom(1 / zoomStep);
    case ViewCommand::zoomOut: return zoom(zoomStep);
    case ViewCommand::zoomInRows:
    case ViewCommand::zoomOutRows:
        return m_view.rescale([&](RollScale& scale) {
            scale.zoomRowsAt((RollScale::ruler + scale.height()) / 2,
                             scale.rowHeight() + (command == ViewCommand::zoomInRows ? 1 : -1));
        });
    case ViewCommand::zoomToSong:
        return m_view.rescale([this](RollScale& scale) { scale.showSpan({0, m_view.songEnd()}); });
    case ViewCommand::zoomToSelection: return zoomToSelection();
    case ViewCommand::shadows: return m_view.setShadows(!m_view.shadows());
    case ViewCommand::audition: return m_view.setAudition(!m_view.audition());
    default: grid_commands::run(m_parts.grid, command); // or a tool: the next press uses it
    }
}

bool RollCommands::isOn(ViewCommand command) const
{
    switch (command) {
    case ViewCommand::shadows: return m_view.shadows();
    case ViewCommand::audition: return m_view.audition();
    default: return grid_commands::isOn(m_parts.grid, command);
    }
}

bool RollCommands::isMidi() const { return takesNotes(m_parts.editor, m_view.track()); }

std::vector<EvntRef> RollCommands::selected() const { return m_view.selection().inOrder(); }

std::vector<EvntRef> RollCommands::everything() const
{
    std::vector<EvntRef> refs;
    const int track = m_view.track();
    if (m_strip.hasFocus() && !m_strip.kind().isVelocity())
        m_parts.notes.forEachValue(track, m_strip.kind(), 0, tick::latest,
                                   [&](const ValueInView& value) { refs.push_back(value.ref); });
    else
        m_parts.notes.forEachNote(track, 0, tick::latest, 0, RollScale::keys - 1,
                                  [&](const NoteInView& note) { refs.push_back(note.ref); });
    return refs;
}

std::int64_t RollCommands::step(const std::vector<EvntRef>& refs) const
{
    if (refs.empty()) return 0;
    return m_parts.grid.step(m_parts.editor, timeOf(refs.front()));
}

void RollCommands::select(const std::vector<EvntRef>& refs)
{
    m_view.selection().set(refs);
    m_view.selectionChanged();
}

void RollCommands::cut()
{
    const std::vector<EvntRef> refs = selected();
    if (m_parts.clipboard.copyEvnts(refs)) m_view.commands().remove(refs, TextId::undoEventCut);
}

void RollCommands::paste()
{
    const auto target = [this] { return m_view.commands().blkFor(m_view.track(), m_view.position()); };
    const std::vector<EvntRef> pasted = m_parts.clipboard.pasteEvnts(m_view.track(), m_view.position(), target);
    if (!pasted.empty()) select(pasted);
}

void RollCommands::nudge(int steps)
{
    const std::vector<EvntRef> refs = selected();
    m_view.commands().move(refs, steps * step(refs));
}

void RollCommands::stretch(int steps)
{
    const std::vector<EvntRef> refs = selected();
    m_view.commands().stretch(refs, steps * step(refs));
}

void RollCommands::transpose(int keys)
{
    const std::vector<EvntRef> refs = selected();
    if (!m_view.commands().transpose(refs, keys)) return;
    const auto note = NoteTables::noteOf(refs.front());
    if (!note) return;
    m_view.rescale([&](RollScale& scale) { scale.showKey(note->key); });
    m_view.sound(note->key, note->velocity);
}

void RollCommands::zoom(double factor)
{
    m_view.rescale([&](RollScale& scale) {
        const TickRange seen = scale.span();
        const bool hasPosition = m_view.position() >= seen.from && m_view.position() < seen.to;
        const int middle = (RollScale::left + scale.width()) / 2;
        scale.zoomAt(hasPosition ? scale.x(m_view.position()) : middle, scale.zoom() * factor);
    });
}

void RollCommands::zoomToSelection()
{
    const NoteExtent extent = NoteExtent::of(selected());
    m_view.rescale([&](RollScale& scale) {
        scale.showSpan({extent.start, extent.end});
        if (extent.lowest <= extent.highest)
            scale.showKey(static_cast<std::uint8_t>((extent.lowest + extent.highest) / 2));
    });
}

} // namespace tessaro
