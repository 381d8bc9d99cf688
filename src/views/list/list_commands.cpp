// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_commands.h"

#include "core/edit/editor.h"
#include "realtime/transport/cnp_window.h"
#include "views/clipboard/song_clipboard.h"
#include "views/list/insert_menu.h"
#include "views/list/list_view.h"
#include "views/roll/grid.h"
#include "views/text/ui_text.h"

#include <QMenu>

namespace tessaro {

bool ListCommands::can(ViewCommand command) const
{
    if (m_parts.editor.IsPrgDlg()) return false;
    const bool hasSelection = !m_view.selection().empty();
    switch (command) {
    case ViewCommand::selectAll:
    case ViewCommand::invertSelection: return m_view.rows().count() != 0;
    case ViewCommand::insertEvent: return !isLocked();
    case ViewCommand::paste:
        return !isLocked()
            && m_parts.clipboard.holds(m_view.track() == 0 ? SongClipboard::Format::mstrEvnts
                                                           : SongClipboard::Format::evnts);
    case ViewCommand::copy:
    case ViewCommand::selectNone: return hasSelection;
    case ViewCommand::properties:
    case ViewCommand::openEditor:
    case ViewCommand::editCell: return !isLocked() && m_view.currentIndex().isValid();
    case ViewCommand::nudgeUp:
    case ViewCommand::nudgeDown:
    case ViewCommand::octaveUp:
    case ViewCommand::octaveDown:
    case ViewCommand::longer:
    case ViewCommand::shorter: return m_view.track() != 0 && !isLocked() && hasSelection;
    case ViewCommand::cut:
    case ViewCommand::remove:
    case ViewCommand::duplicate:
    case ViewCommand::nudgeLeft:
    case ViewCommand::nudgeRight:
    case ViewCommand::tickLeft:
    case ViewCommand::tickRight: return !isLocked() && hasSelection;
    default: return false;
    }
}

std::vector<EvntRef> ListCommands::selected() const { return m_view.selection().inOrder(); }

void ListCommands::run(ViewCommand command)
{
    m_view.catchUp();
    if (!can(command)) return;
    switch (command) {
    case ViewCommand::cut: return cut();
    case ViewCommand::copy: m_parts.clipboard.copyEvnts(selected()); return;
    case ViewCommand::paste: return paste();
    case ViewCommand::remove: return m_view.edits().remove(selected());
    case ViewCommand::duplicate: return m_view.select(m_view.edits().notes().duplicate(selected(), m_parts.grid));
    case ViewCommand::selectAll: return m_view.selectAllRows();
    case ViewCommand::selectNone: return m_view.select({});
    case ViewCommand::invertSelection: return m_view.invertSelection();
    case ViewCommand::openEditor:
    case ViewCommand::editCell: return m_view.openCell(m_view.currentIndex());
    case ViewCommand::properties: return m_view.openValue();
    case ViewCommand::insertEvent: return showInsertMenu();
    default: return m_view.keepInSight([&] { nudge(command); });
    }
}

void ListCommands::cut()
{
    const std::vector<EvntRef> refs = selected();
    if (m_parts.clipboard.copyEvnts(refs)) m_view.edits().remove(refs, TextId::undoEventCut);
}

void ListCommands::nudge(ViewCommand command)
{
    const std::vector<EvntRef> refs = selected();
    const auto step = static_cast<std::int64_t>(m_parts.grid.step(m_parts.editor, timeOf(refs.front())));
    ListEdits& edits = m_view.edits();
    NoteCommands& notes = edits.notes();
    switch (command) {
    case ViewCommand::nudgeLeft: edits.move(refs, -step); break;
    case ViewCommand::nudgeRight: edits.move(refs, step); break;
    case ViewCommand::tickLeft: edits.move(refs, -1); break;
    case ViewCommand::tickRight: edits.move(refs, 1); break;
    case ViewCommand::nudgeUp: notes.transpose(refs, 1); break;
    case ViewCommand::nudgeDown: notes.transpose(refs, -1); break;
    case ViewCommand::octaveUp: notes.transpose(refs, 12); break;
    case ViewCommand::octaveDown: notes.transpose(refs, -12); break;
    case ViewCommand::longer: notes.stretch(refs, step); break;
    case ViewCommand::shorter: notes.stretch(refs, -step); break;
    default: break;
    }
}

void ListCommands::paste()
{
    const int track = m_view.track();
    const std::uint32_t time = m_parts.panel.GetLocation();
    const std::vector<EvntRef> pasted =
        m_parts.clipboard.pasteEvnts(track, time, [&] { return m_view.edits().blkFor(track, time); });
    if (pasted.empty()) return;
    m_view.select(pasted);
    m_view.scrollTo(m_view.currentIndex());
}

// Inserting

std::uint32_t ListCommands::insertTime() const
{
    const QModelIndex current = m_view.currentIndex();
    return current.isValid() ? m_view.rows().time(static_cast<std::size_t>(current.row()))
                             : m_parts.panel.GetLocation();
}

std::uint8_t ListCommands::channel() const
{
    const CTrk* trk = m_parts.editor.song().trk(m_view.track());
    return trk ? trk->GetCh() : std::uint8_t{0};
}

void ListCommands::fillInsertMenu(QMenu& menu)
{
    m_view.catchUp();
    const CTrk* trk = m_parts.editor.song().trk(m_view.track());
    const bool isUnused = !trk || trk->GetType() == trktype::unused;
    fillKinds(menu, kindsToInsert(m_view.track(), isUnused ? trktype::midi : trk->GetType()), m_parts.text,
              [this](EvntKind kind, std::optional<std::uint8_t> controller) {
                  EvntDraft draft = newEvnt(kind, insertTime(), channel());
                  if (controller) draft.rec.post1 = *controller;
                  insert(std::move(draft));
              });
}

void ListCommands::showInsertMenu()
{
    QMenu menu;
    fillInsertMenu(menu);
    menu.exec(m_view.viewport()->mapToGlobal(m_view.visualRect(m_view.currentIndex()).bottomLeft()));
}

void ListCommands::insert(EvntDraft draft)
{
    if (isLocked()) return;
    const auto made = m_view.edits().insert(m_view.track(), std::move(draft));
    if (!made) return;
    m_view.goTo(*made);
    m_view.openValue();
}

} // namespace tessaro
