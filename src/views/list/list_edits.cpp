// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_edits.h"

#include "core/edit/undo_scope.h"
#include "core/model/meta.h"
#include "core/model/tick.h"
#include "views/text/ui_text.h"

#include <algorithm>
#include <ranges>

namespace tessaro {
namespace {

/// Times at the song's top that hold up the maps.
bool mustStay(const CEvnt& event) noexcept
{
    return event.GetTime() == 0 && (event.isMeta(meta::timeSignature) || event.isMeta(meta::tempo));
}

bool isForEveryKind(ListColumn column) noexcept { return column == ListColumn::channel || column == ListColumn::gate; }

} // namespace

ListEdits::ListEdits(CEditor& editor, NoteTables& notes, const UiText& text)
    : m_editor(editor)
    , m_notes(editor, notes, text.strings())
{
}

void ListEdits::change(std::span<const EvntRef> refs, ListColumn column, const CellChange& change, EvntKind like)
{
    if (m_notes.refuses(refs)) return;
    const UndoScope step(m_editor, m_notes.title(TextId::undoEventChange));
    if (!step) return;
    // From the tail, since a signature that changes makes those behind it anew.
    for (const EvntRef& ref : refs | std::views::reverse) {
        const CEvnt& event = evntOf(ref);
        const EvntKind kind = kindOf(event);
        const bool isMeant = isForEveryKind(column) ? EvntCells::formOf(kind, column) == change.form : kind == like;
        if (!isMeant || kind == EvntKind::rest) continue;
        EvntDraft draft(event, timeOf(ref));
        if (applyChange(change, column, draft)) m_editor.SetEvnt(ref.trk, ref.blk, ref.evnt, draft.record());
    }
}

void ListEdits::move(std::span<const EvntRef> refs, std::int64_t delta)
{
    if (m_notes.refuses(refs)) return;
    for (const EvntRef& ref : refs) delta = std::max(delta, -std::int64_t{evntOf(ref).GetTime()});
    if (delta == 0) return;
    const UndoScope step(m_editor, m_notes.title(TextId::undoEventMove));
    if (!step) return;
    for (const EvntRef& ref : refs) m_editor.SetLocation(ref.trk, ref.blk, ref.evnt, tick::shifted(timeOf(ref), delta));
}

void ListEdits::remove(std::span<const EvntRef> refs, TextId title)
{
    if (m_notes.refuses(refs)) return;
    bool isLeft = false;
    {
        const UndoScope step(m_editor, m_notes.title(title));
        if (!step) return;
        for (const EvntRef& ref : refs | std::views::reverse) {
            const bool stays = mustStay(evntOf(ref));
            isLeft = isLeft || stays;
            if (!stays) m_editor.DeleteEvnt(ref.trk, ref.blk, ref.evnt);
        }
    }
    if (isLeft) m_editor.user().message(TextId::eventNotDeletable, MessageKind::warning);
}

BlkRef ListEdits::blkFor(int track, std::uint32_t time)
{
    if (track == 0) return {m_editor.GetTrkPos(0), m_editor.song().masterBlk()};
    return m_notes.blkFor(track, time);
}

std::optional<EvntRef> ListEdits::insert(int track, EvntDraft draft)
{
    const POSITION trk = m_editor.GetTrkPos(track);
    if (!trk) return std::nullopt;
    const std::uint8_t type = List<CTrk>::get(trk)->GetType();
    const bool isFree = type == trktype::unused; // and becomes what the first block makes of it
    if (!CEditor::IsInsEnable(track, isFree ? trktype::midi : type, draft.record())) {
        m_editor.user().message(TextId::cannotStandHere, MessageKind::warning);
        return std::nullopt;
    }
    const UndoScope step(m_editor, m_notes.title(TextId::undoEventInsert));
    if (!step) return std::nullopt;
    const BlkRef blk = blkFor(track, draft.rec.time);
    const POSITION evnt = blk.blk ? insertInto(blk, draft) : nullptr;
    if (!evnt) return std::nullopt;
    return EvntRef{blk.trk, blk.blk, evnt};
}

POSITION ListEdits::insertInto(const BlkRef& blk, EvntDraft& draft)
{
    const POSITION evnt = m_notes.insertInto(blk, draft.record());
    if (evnt) m_editor.ChkBlkReSize(blk.trk, blk.blk, evnt);
    return evnt;
}

} // namespace tessaro
