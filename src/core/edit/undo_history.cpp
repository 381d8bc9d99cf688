// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_history.h"

#include "core/edit/editor.h"
#include "core/model/evnt_pool.h"

#include <new>

namespace tessaro {

bool UndoHistory::open(const std::string& title)
{
    if (m_open) return false;
    auto node = std::make_unique<CUndoNode>();
    node->title = title;
    m_nodes.reserve(m_nodes.size() + 1);
    dropFrom(m_index + 1);
    m_nodes.push_back(std::move(node));
    ++m_index;
    m_open = true;
    return true;
}

bool UndoHistory::close() noexcept
{
    m_open = false;
    if (!node(m_index) || !node(m_index)->changes.empty()) return node(m_index);
    m_nodes.pop_back();
    --m_index;
    return false;
}

void UndoHistory::clear() noexcept
{
    dropFrom(0);
    m_index = -1;
    m_open = false;
    m_stale = false;
    while (CEvnt* event = m_evnts.takeHead()) m_pool.destroy(event);
    while (CBlk* blk = m_blks.takeHead()) delete blk;
    while (CStyleBlk* style = m_styles.takeHead()) delete style;
}

CUndoNode* UndoHistory::node(int index) const noexcept
{
    return index >= 0 && index < count() ? m_nodes[static_cast<std::size_t>(index)].get() : nullptr;
}

// What only these steps could bring back stays parked until the history goes.
void UndoHistory::dropFrom(int index) noexcept
{
    for (int i = index; i < count(); ++i)
        for (CUndo& change : m_nodes[static_cast<std::size_t>(i)]->changes)
            if (change.snapshot) m_pool.destroy(change.snapshot);
    m_nodes.resize(static_cast<std::size_t>(index));
}

template <class Fill>
bool UndoHistory::record(UndoKind kind, Fill&& fill)
{
    if (!m_open) {
        m_stale = m_stale || !m_nodes.empty();
        return true;
    }
    return append(*m_nodes[static_cast<std::size_t>(m_index)], kind, fill);
}

template <class Fill>
bool UndoHistory::append(CUndoNode& step, UndoKind kind, Fill&& fill)
{
    try {
        CUndo change(kind);
        fill(change);
        step.changes.push_back(std::move(change));
        return true;
    } catch (const std::bad_alloc&) {
        return m_editor.ErrCloseUndoNode();
    }
}

bool UndoHistory::recordEvnt(UndoKind kind, POSITION trk, POSITION blk, POSITION evnt)
{
    return record(kind, [=](CUndo& change) {
        change.trk = trk;
        change.blk = blk;
        change.evnt = evnt;
        change.before = CRealBlk::placeOf(evnt);
        change.time = List<CEvnt>::get(evnt)->GetTime();
    });
}

bool UndoHistory::recordBlk(UndoKind kind, POSITION trk, POSITION blk, std::uint8_t trkType)
{
    return record(kind, [=](CUndo& change) {
        change.trk = trk;
        change.blk = blk;
        change.before = blk->prev;
        change.time = List<CBlk>::get(blk)->GetTimeEnd();
        change.trkType = trkType;
    });
}

bool UndoHistory::recordStyle(UndoKind kind, POSITION style)
{
    return record(kind, [=](CUndo& change) {
        change.blk = style;
        change.before = style->prev;
        change.time = List<CStyleBlk>::get(style)->GetTimeEnd();
    });
}

bool UndoHistory::SetUndoEvntIns(POSITION trk, POSITION blk, POSITION evnt)
{
    return recordEvnt(UndoKind::evntIns, trk, blk, evnt);
}

bool UndoHistory::SetUndoEvntDel(POSITION trk, POSITION blk, POSITION evnt)
{
    return recordEvnt(UndoKind::evntDel, trk, blk, evnt);
}

bool UndoHistory::SetUndoEvntMove(POSITION trk, POSITION blk, POSITION evnt)
{
    return recordEvnt(UndoKind::evntMove, trk, blk, evnt);
}

bool UndoHistory::SetUndoEvntChng(POSITION trk, POSITION blk, POSITION evnt)
{
    CUndoNode* step = node(m_index);
    if (!step) return true;
    return append(*step, UndoKind::evntChng, [&](CUndo& change) {
        change.trk = trk;
        change.blk = blk;
        change.evnt = evnt;
        change.snapshot = m_pool.make();
        if (!change.snapshot) throw std::bad_alloc();
        try {
            change.snapshot->copyFrom(*List<CEvnt>::get(evnt));
        } catch (const std::bad_alloc&) {
            m_pool.destroy(change.snapshot);
            throw;
        }
    });
}

bool UndoHistory::SetUndoBlkNew(POSITION trk, POSITION blk, std::uint8_t trkType)
{
    return recordBlk(UndoKind::blkNew, trk, blk, trkType);
}

bool UndoHistory::SetUndoBlkDel(POSITION trk, POSITION blk, std::uint8_t trkType)
{
    return recordBlk(UndoKind::blkDel, trk, blk, trkType);
}

bool UndoHistory::SetUndoBlkPaste(POSITION trk, POSITION blk, std::uint8_t trkType)
{
    return recordBlk(UndoKind::blkPaste, trk, blk, trkType);
}

bool UndoHistory::SetUndoBlkSize(POSITION trk, POSITION blk) { return recordBlk(UndoKind::blkSize, trk, blk, 0); }

bool UndoHistory::SetUndoBlkMove(POSITION oldTrk, POSITION oldBlk, POSITION trk, POSITION blk, std::uint8_t trkType)
{
    return record(UndoKind::blkMove, [=](CUndo& change) {
        change.trk = trk;
        change.blk = blk;
        change.before = blk->prev;
        change.trkType = trkType;
        change.more = std::make_unique<CUndo::More>();
        change.more->oldTrk = oldTrk;
        change.more->oldBlk = oldBlk;
        change.more->oldBefore = oldBlk->prev;
    });
}

bool UndoHistory::SetUndoBlkMerge(POSITION trk, POSITION blk)
{
    return record(UndoKind::blkMerge, [=](CUndo& change) {
        change.trk = trk;
        change.blk = blk;
        change.time = List<CBlk>::get(blk)->GetTimeEnd();
        change.more = std::make_unique<CUndo::More>();
    });
}

bool UndoHistory::SetUndoBlkMerge(POSITION, POSITION, POSITION evnt)
{
    if (!m_open || isRest(*List<CEvnt>::get(evnt))) return true;
    try {
        node(m_index)->changes.back().more->evnts.emplace_back(evnt, CRealBlk::placeOf(evnt));
        return true;
    } catch (const std::bad_alloc&) {
        return m_editor.ErrCloseUndoNode();
    }
}

bool UndoHistory::SetUndoBlkDiv(POSITION trk, POSITION blk, POSITION newBlk, std::uint32_t time)
{
    return record(UndoKind::blkDiv, [=](CUndo& change) {
        change.trk = trk;
        change.blk = newBlk;
        change.before = newBlk->prev;
        change.more = std::make_unique<CUndo::More>();
        change.more->oldBlk = blk;
        change.time = time;
    });
}

bool UndoHistory::SetUndoBlkReal(POSITION trk, POSITION blk)
{
    return record(UndoKind::blkReal, [=](CUndo& change) {
        change.trk = trk;
        change.blk = blk;
        change.more = std::make_unique<CUndo::More>();
        change.more->real = List<CBlk>::get(blk)->GetRealBlk();
    });
}

bool UndoHistory::SetUndoTrkMove(int oldNumber, POSITION trk)
{
    return record(UndoKind::trkMove, [=](CUndo& change) {
        change.trk = trk;
        change.more = std::make_unique<CUndo::More>();
        change.more->trkNumber = oldNumber;
    });
}

bool UndoHistory::SetUndoStyleNew(POSITION style) { return recordStyle(UndoKind::styleNew, style); }

bool UndoHistory::SetUndoStyleDel(POSITION style) { return recordStyle(UndoKind::styleDel, style); }

bool UndoHistory::SetUndoStyleSize(POSITION style) { return recordStyle(UndoKind::styleSize, style); }

bool UndoHistory::SetUndoStyleMove(POSITION oldStyle, POSITION style)
{
    return record(UndoKind::styleMove, [=](CUndo& change) {
        change.blk = style;
        change.before = style->prev;
        change.more = std::make_unique<CUndo::More>();
        change.more->oldBlk = oldStyle;
        change.more->oldBefore = oldStyle->prev;
    });
}

void UndoHistory::retire(CEvnt* event) noexcept
{
    if (m_open && !isRest(*event))
        AddTailUndoEvnt(event);
    else
        m_pool.destroy(event);
}

void UndoHistory::retire(CBlk* blk) noexcept
{
    if (m_open)
        AddTailUndoBlk(blk);
    else
        delete blk;
}

void UndoHistory::retire(CStyleBlk* style) noexcept
{
    if (m_open)
        AddTailUndoStyle(style);
    else
        delete style;
}

} // namespace tessaro
