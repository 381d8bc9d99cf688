// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/note_table.h"

#include "core/edit/editor.h"
#include "views/editors/evnt_kinds.h"

#include <algorithm>
#include <numeric>

namespace tessaro {
namespace {

constexpr int controlRow = RealBlkTable::keys;
constexpr int polyRow = 2 * RealBlkTable::keys;
constexpr int programRow = 3 * RealBlkTable::keys;
constexpr int pressureRow = programRow + 1;
constexpr int bendRow = programRow + 2;

/// Of what the windows show as a note or a value; -1 for all else.
int rowOf(const CEvnt& e)
{
    const int number = e.GetPost1() & 0x7F;
    switch (status::kind(e.GetStatus())) {
    case status::note: return number;
    case status::control: return controlRow + number;
    case status::polyPressure: return polyRow + number;
    case status::program: return programRow;
    case status::pressure: return pressureRow;
    case status::pitchBend: return bendRow;
    default: return -1;
    }
}

std::uint16_t valueOf(const CEvnt& e, int row)
{
    if (row == bendRow) return static_cast<std::uint16_t>(e.GetPost2() * 128 + e.GetPost1());
    return row < programRow ? e.GetPost2() : e.GetPost1();
}

std::uint32_t lengthOf(const CEvnt& e) { return std::max(e.GetGateTime(), 1U); }

NoteInView noteIn(const EvntRef& ref, const CBlk& blk, const CEvnt& e)
{
    NoteInView note;
    note.ref = ref;
    note.start = tick::later(blk.GetTimeTop(), e.GetTime());
    note.end = tick::later(note.start, lengthOf(e));
    note.key = e.GetPost1();
    note.velocity = e.GetPost2();
    note.isGhost = blk.GetType() != blktype::real;
    note.blkTop = blk.GetTimeTop();
    note.blkEnd = blk.GetTimeEnd();
    return note;
}

} // namespace

int RealBlkTable::rowOf(const StripKind& kind)
{
    switch (kind.what) {
    case StripKind::What::velocity: break;
    case StripKind::What::polyPressure: return polyRow + kind.number;
    case StripKind::What::control: return controlRow + kind.number;
    case StripKind::What::program: return programRow;
    case StripKind::What::pressure: return pressureRow;
    case StripKind::What::pitchBend: return bendRow;
    }
    return 0;
}

void RealBlkTable::build(const CRealBlk& real)
{
    m_eventCount = real.GetNum();
    m_first.fill(0);
    const List<CEvnt>& events = real.events();
    for (const CEvnt* e = events.head(); e; e = List<CEvnt>::next(e))
        if (const int row = tessaro::rowOf(*e); row >= 0) ++m_first[static_cast<std::size_t>(row) + 1];
    std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());

    m_items.resize(m_first.back());
    auto next = m_first;
    for (CEvnt* e = events.head(); e; e = List<CEvnt>::next(e)) {
        const int row = tessaro::rowOf(*e);
        if (row < 0) continue;
        const std::uint32_t end = tick::later(e->GetTime(), lengthOf(*e));
        const auto at = next[static_cast<std::size_t>(row)]++;
        m_items[at] = {e->GetTime(), end, end, valueOf(*e, row), static_cast<std::uint8_t>(row & 0x7F), e};
    }
    for (std::size_t row = 0; row < rowCount; ++row)
        span_tree::build(std::span(m_items).subspan(m_first[row], m_first[row + 1] - m_first[row]));
}

NoteTables::NoteTables(CEditor& editor) : m_editor(editor) { m_editor.addObserver(this); }

NoteTables::~NoteTables() { m_editor.removeObserver(this); }

void NoteTables::clear()
{
    m_tables.clear();
    m_trks.clear();
    ++m_revision;
}

std::span<const BlkInView> NoteTables::blks(int track) const
{
    const CTrk* trk = m_editor.song().trk(track);
    if (!trk) return {};
    if (m_trks.empty()) m_trks.resize(trackCount);
    TrkBlks& kept = m_trks[static_cast<std::size_t>(track)];
    if (kept.revision != m_blkRevision) {
        kept.revision = m_blkRevision;
        kept.blks.clear();
        for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk))
            kept.blks.push_back({blk->GetTimeTop(), tick::later(blk->GetTimeEnd(), 1), 0, blk});
        span_tree::build(std::span(kept.blks));
    }
    return kept.blks;
}

const RealBlkTable* NoteTables::tableOf(const CBlk& blk) const
{
    const CRealBlk* real = blk.GetRealBlk();
    if (!real) return nullptr;
    Entry& entry = m_tables[real];
    // A take adds its events without a word.
    if (entry.isStale || entry.table.eventCount() != real->GetNum()) entry.table.build(*real);
    entry.isStale = false;
    return &entry.table;
}

NoteInView NoteTables::noteOf(int track, const BlkInView& at, const RealBlkTable::Item& item) const
{
    NoteInView note;
    note.ref = {m_editor.GetTrkPos(track), at.blk, item.evnt};
    note.start = tick::later(at.start, item.start);
    note.end = tick::later(at.start, item.end);
    note.key = item.key;
    note.velocity = static_cast<std::uint8_t>(item.value);
    note.isGhost = at.blk->GetType() != blktype::real;
    note.blkTop = at.start;
    note.blkEnd = at.blk->GetTimeEnd();
    return note;
}

ValueInView NoteTables::valueOf(int track, const BlkInView& at, const RealBlkTable::Item& item) const
{
    return {{m_editor.GetTrkPos(track), at.blk, item.evnt},
            tick::later(at.start, item.start),
            item.value,
            at.blk->GetType() != blktype::real};
}

NoteTables::Keys NoteTables::keysOf(int track) const
{
    Keys keys;
    for (const BlkInView& at : blks(track))
        if (const RealBlkTable* table = tableOf(*at.blk))
            for (int key = 0; key < RealBlkTable::keys; ++key)
                if (!table->row(key).empty()) keys.set(static_cast<std::size_t>(key));
    return keys;
}

std::optional<NoteInView> NoteTables::noteAt(int track, std::uint32_t from, std::uint32_t to, int key) const
{
    std::optional<NoteInView> top;
    forEachNote(track, from, to, key, key, [&](const NoteInView& note) { top = note; });
    return top;
}

std::optional<ValueInView> NoteTables::valueBefore(int track, StripKind kind, std::uint32_t time) const
{
    const BlkRef ref = blkAt(track, time);
    if (!ref.blk) return std::nullopt;
    CBlk& blk = *List<CBlk>::get(ref.blk);
    const RealBlkTable* table = tableOf(blk);
    if (!table) return std::nullopt;
    const std::span<const RealBlkTable::Item> row = table->row(RealBlkTable::rowOf(kind));
    const auto behind = std::ranges::lower_bound(row, time - blk.GetTimeTop(), {}, &RealBlkTable::Item::start);
    if (behind == row.begin()) return std::nullopt;
    return valueOf(track, {blk.GetTimeTop(), blk.GetTimeEnd(), 0, &blk}, *std::prev(behind));
}

EvntRef NoteTables::nextOfKey(const EvntRef& note) const
{
    const CEvnt& e = *List<CEvnt>::get(note.evnt);
    const RealBlkTable* table = isNote(e) ? tableOf(*List<CBlk>::get(note.blk)) : nullptr;
    if (!table) return {};
    const std::span<const RealBlkTable::Item> row = table->row(tessaro::rowOf(e));
    auto at = std::ranges::lower_bound(row, e.GetTime(), {}, &RealBlkTable::Item::start);
    while (at != row.end() && at->evnt != &e) ++at;
    if (at == row.end() || ++at == row.end()) return {};
    return {note.trk, note.blk, at->evnt};
}

std::optional<NoteInView> NoteTables::noteOf(const EvntRef& ref)
{
    const CEvnt& e = *List<CEvnt>::get(ref.evnt);
    if (!isNote(e)) return std::nullopt;
    return noteIn(ref, *List<CBlk>::get(ref.blk), e);
}

BlkRef NoteTables::blkAt(int track, std::uint32_t time) const
{
    BlkRef found;
    forEachBlk(track, time, tick::later(time, 1), [&](const BlkInView& at) {
        if (time < at.blk->GetTimeEnd()) found = {m_editor.GetTrkPos(track), at.blk};
    });
    return found;
}

void NoteTables::markStale(POSITION blk)
{
    if (!blk) return;
    const auto at = m_tables.find(List<CBlk>::get(blk)->GetRealBlk());
    if (at != m_tables.end()) at->second.isStale = true;
}

void NoteTables::onHint(const HintObserver*, int code, CEditor*)
{
    BlkRef blk;
    BlkRef other;
    switch (code) {
    case hint::evntChng:
    case hint::locationChng:
    case hint::delEvnt:
    case hint::insEvnt:
    case hint::insRest:
        m_editor.GetHint(blk.trk, blk.blk);
        markStale(blk.blk);
        break;
    case hint::blkNew:
    case hint::blkMove:
    case hint::blkApp:
    case hint::blkDiv:
    case hint::blkMerge:
    case hint::addBlk:
    case hint::blkReal:
    case hint::blkUpdate:
        m_editor.GetHintBlkMove(blk.trk, blk.blk, other.trk, other.blk);
        markStale(blk.blk);
        markStale(other.blk);
        ++m_blkRevision;
        break;
    case hint::blkDel:
        m_editor.GetHint(blk.trk, blk.blk);
        m_tables.erase(List<CBlk>::get(blk.blk)->GetRealBlk()); // made anew where other blocks show it, too
        ++m_blkRevision;
        break;
    case hint::blkReSize:
    case hint::trkArrange:
    case hint::trkType: ++m_blkRevision; break;
    default: return;
    }
    ++m_revision;
}

} // namespace tessaro
