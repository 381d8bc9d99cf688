// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_blks.h"

#include "core/edit/editor.h"

#include <algorithm>
#include <span>

namespace tessaro {
namespace {

/// The entries are a tree: the middle one of a range is the parent of the middle ones of both halves.
template <class Entry>
std::uint32_t findLatestEnds(std::span<Entry> entries)
{
    if (entries.empty()) return 0;
    const std::size_t middle = entries.size() / 2;
    Entry& entry = entries[middle];
    entry.latestEnd =
        std::max({entry.end, findLatestEnds(entries.first(middle)), findLatestEnds(entries.subspan(middle + 1))});
    return entry.latestEnd;
}

template <class Entry>
void collect(std::span<const Entry> entries, std::uint32_t from, std::uint32_t to, std::vector<CBlk*>& found)
{
    if (entries.empty()) return;
    const std::size_t middle = entries.size() / 2;
    const Entry& entry = entries[middle];
    if (entry.latestEnd < from) return;
    collect(entries.first(middle), from, to, found);
    if (entry.top > to) return;
    if (entry.end >= from) found.push_back(entry.blk);
    collect(entries.subspan(middle + 1), from, to, found);
}

} // namespace

TrkBlks::TrkBlks(CEditor& editor) : m_editor(editor) { m_editor.addObserver(this); }

TrkBlks::~TrkBlks() { m_editor.removeObserver(this); }

void TrkBlks::read(const CTrk& trk, Row& row)
{
    row.entries.clear();
    row.entries.reserve(trk.GetCount());
    for (CBlk* blk = trk.blocks().head(); blk; blk = List<CBlk>::next(blk))
        row.entries.push_back({blk, blk->GetTimeTop(), blk->GetTimeEnd(), 0});
    findLatestEnds(std::span(row.entries));
    row.stale = false;
}

std::vector<CBlk*> TrkBlks::meeting(const CTrk& trk, std::uint32_t from, std::uint32_t to)
{
    std::vector<CBlk*> found;
    Row& row = m_rows[&trk];
    if (row.stale || row.entries.size() != trk.GetCount()) read(trk, row);
    collect(std::span<const Entry>(row.entries), from, to, found);
    return found;
}

void TrkBlks::onHint(const HintObserver*, int code, CEditor*)
{
    switch (code) {
    case hint::blkNew:
    case hint::blkMove:
    case hint::blkDel:
    case hint::blkApp:
    case hint::blkDiv:
    case hint::blkMerge:
    case hint::addBlk:
    case hint::blkReSize:
    case hint::blkUpdate: break;
    default: return;
    }
    POSITION blk = nullptr;
    POSITION blk2 = nullptr;
    POSITION trks[2]{};
    m_editor.GetHintBlkMove(trks[0], blk, trks[1], blk2);
    for (const POSITION trk : trks)
        if (const auto row = m_rows.find(trk); row != m_rows.end()) row->second.stale = true;
}

} // namespace tessaro
