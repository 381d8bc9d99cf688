// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/strip_commands.h"

#include "core/edit/editor.h"
#include "core/edit/undo_scope.h"
#include "views/editors/evnt_kinds.h"
#include "views/editors/evnt_selection.h"
#include "views/roll/note_table.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace tessaro {
namespace {

/// Of points in a row with one value the first.
std::vector<StripPoint> thinned(std::span<const StripPoint> points)
{
    std::vector<StripPoint> kept(points.begin(), points.end());
    const auto sameValue = [](const StripPoint& a, const StripPoint& b) { return a.value == b.value; };
    kept.erase(std::unique(kept.begin(), kept.end(), sameValue), kept.end());
    return kept;
}

} // namespace

std::vector<EvntRef> StripCommands::editable(int track, const StripKind& kind, TickRange over, bool& hasLinked) const
{
    std::vector<EvntRef> refs;
    m_notes.forEachValue(track, kind, over.from, over.to, [&](const ValueInView& value) {
        hasLinked = hasLinked || value.isGhost;
        if (!value.isGhost) refs.push_back(value.ref);
    });
    return refs;
}

bool StripCommands::draw(int track, const StripKind& kind, std::span<const StripPoint> points, TickRange over)
{
    const CTrk* trk = m_editor.song().trk(track);
    if (points.empty() || !takesNotes(m_editor, track)) return false;
    if (std::ranges::any_of(points, [&](const StripPoint& p) { return m_commands.isLinkedAt(track, p.time); })) {
        m_commands.sayLinked();
        return false;
    }
    bool hasLinked = false; // those stay, below what is drawn
    const std::vector<EvntRef> old = editable(track, kind, over, hasLinked);
    const UndoScope step(m_editor, m_commands.title(old.empty() ? TextId::undoEventInsert : TextId::undoEventChange));
    if (!step) return false;
    for (auto ref = old.rbegin(); ref != old.rend(); ++ref) m_editor.DeleteEvnt(ref->trk, ref->blk, ref->evnt);
    for (const StripPoint& point : thinned(points)) {
        const BlkRef blk = m_commands.blkFor(track, point.time);
        if (blk.blk) m_commands.insertInto(blk, kind.record(point.time, point.value, trk->GetCh()));
    }
    return true;
}

bool StripCommands::drawVelocities(int track, TickRange over, const EvntSelection* onlyOf,
                                   const std::function<int(std::uint32_t time)>& value)
{
    bool hasLinked = false;
    std::vector<EvntRef> refs = editable(track, {}, over, hasLinked);
    if (onlyOf) std::erase_if(refs, [&](const EvntRef& ref) { return !onlyOf->contains(ref); });
    if (refs.empty() && hasLinked) m_commands.sayLinked();
    const auto become = [&value](_EDT_EVNT rec) {
        rec.post2 = static_cast<std::uint8_t>(value(rec.time));
        return rec;
    };
    return m_commands.edit(refs, become, TextId::undoVelocity);
}

bool StripCommands::erase(int track, const StripKind& kind, TickRange over)
{
    bool hasLinked = false;
    const std::vector<EvntRef> refs = editable(track, kind, over, hasLinked);
    if (refs.empty() && hasLinked) m_commands.sayLinked();
    return m_commands.remove(refs);
}

bool StripCommands::shift(std::span<const EvntRef> refs, const StripKind& kind, std::int64_t ticks, int by)
{
    std::vector<EvntRef> ofKind;
    std::ranges::copy_if(refs, std::back_inserter(ofKind),
                         [&](const EvntRef& ref) { return kind.isOf(*List<CEvnt>::get(ref.evnt)); });
    if (ofKind.empty()) return false;
    const NoteChange moved = NoteExtent::of(ofKind).limit({.ticks = kind.isVelocity() ? 0 : ticks});
    if (moved == NoteChange{} && by == 0) return false;
    const auto become = [&](_EDT_EVNT rec) {
        rec = moved(rec);
        kind.setValue(rec, std::clamp(kind.valueOf(rec) + by, kind.least(), kind.most()));
        return rec;
    };
    const TextId change = by == 0 ? TextId::undoEventMove : TextId::undoEventChange;
    return m_commands.edit(ofKind, become, kind.isVelocity() ? TextId::undoVelocity : change);
}

} // namespace tessaro
