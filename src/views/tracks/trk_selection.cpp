// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_selection.h"

#include "core/edit/editor.h"

namespace tessaro {
namespace {

/// The item at a position, which goes to what `follow` says.
template <class Follow>
bool stepItem(POSITION& pos, const SelItem** item, Follow&& follow)
{
    if (!pos) return false;
    const SelItem* here = List<SelItem>::get(pos);
    pos = follow(here);
    *item = here;
    return true;
}

} // namespace

TrkSelection::TrkSelection(CEditor& editor) : m_editor(editor) { m_editor.addObserver(this); }

TrkSelection::~TrkSelection() { m_editor.removeObserver(this); }

bool TrkSelection::told(bool changed) const
{
    if (changed && onChanged) onChanged();
    return changed;
}

void TrkSelection::trkInitSel()
{
    const bool any = !empty();
    m_blks.clear();
    told(any);
}

bool TrkSelection::trkAddSel(POSITION trk, POSITION blk) { return told(trk && m_blks.add(blk, {trk, blk})); }

bool TrkSelection::trkDelSel(POSITION, POSITION blk) { return told(m_blks.remove(blk)); }

bool TrkSelection::trkGetNextSel(POSITION& pos, const SelItem** item)
{
    return stepItem(pos, item, [](const SelItem* here) { return List<SelItem>::next(here); });
}

bool TrkSelection::trkGetPrevSel(POSITION& pos, const SelItem** item)
{
    return stepItem(pos, item, [](const SelItem* here) { return List<SelItem>::prev(here); });
}

bool TrkSelection::trkGetAtSel(POSITION pos, const SelItem** item)
{
    return stepItem(pos, item, [](const SelItem*) { return nullptr; });
}

void TrkSelection::trkInitSelChd()
{
    const bool any = m_chords.count();
    m_chords.clear();
    told(any);
}

bool TrkSelection::trkAddSelChd(POSITION trk, POSITION blk, POSITION evnt)
{
    return told(trk && blk && m_chords.add(evnt, {trk, blk, evnt}));
}

bool TrkSelection::trkDelSelChd(POSITION, POSITION, POSITION evnt) { return told(m_chords.remove(evnt)); }

void TrkSelection::trkInitSelStyle()
{
    const bool any = m_styles.count();
    m_styles.clear();
    told(any);
}

bool TrkSelection::trkAddSelStyle(POSITION style) { return told(m_styles.add(style, {nullptr, style})); }

bool TrkSelection::trkDelSelStyle(POSITION style) { return told(m_styles.remove(style)); }

std::vector<BlkRef> TrkSelection::blks() const
{
    std::vector<BlkRef> refs;
    refs.reserve(count());
    for (const SelItem* item = m_blks.list().head(); item; item = List<SelItem>::next(item))
        refs.push_back(item->ref());
    return refs;
}

void TrkSelection::setBlks(std::span<const BlkRef> blks)
{
    m_blks.clear();
    for (const BlkRef& ref : blks) m_blks.add(ref.blk, {ref.trk, ref.blk});
    told(true);
}

void TrkSelection::toggle(const BlkRef& blk)
{
    if (!trkDelSel(blk.trk, blk.blk)) trkAddSel(blk.trk, blk.blk);
}

void TrkSelection::clear()
{
    m_blks.clear();
    m_chords.clear();
    m_styles.clear();
    told(true);
}

std::vector<POSITION> TrkSelection::selectedBlks(POSITION trk) const
{
    std::vector<POSITION> found;
    for (const SelItem* item = m_blks.list().head(); item; item = List<SelItem>::next(item))
        if (item->trk == trk) found.push_back(item->blk);
    return found;
}

void TrkSelection::onHint(const HintObserver*, int code, CEditor*)
{
    EvntRef at;
    BlkRef to;
    switch (code) {
    case hint::blkMove:
        m_editor.GetHintBlkMove(at.trk, at.blk, to.trk, to.blk);
        told(m_blks.move(at.blk, to.blk, {to.trk, to.blk}));
        break;
    case hint::blkDiv:
        m_editor.GetHintBlkDiv(at.trk, at.blk, to.trk, to.blk);
        if (contains(at.blk)) trkAddSel(to.trk, to.blk);
        break;
    case hint::blkDel:
    case hint::blkApp:
        m_editor.GetHint(at.trk, at.blk);
        told(m_blks.remove(at.blk));
        break;
    case hint::delEvnt:
        m_editor.GetHint(at.trk, at.blk, at.evnt);
        told(m_chords.remove(at.evnt));
        break;
    case hint::styleDel:
        m_editor.GetHintStyle(at.blk);
        told(m_styles.remove(at.blk));
        break;
    case hint::styleMove:
        m_editor.GetHintStyle(at.blk, to.blk);
        told(m_styles.move(at.blk, to.blk, {nullptr, to.blk}));
        break;
    default: break;
    }
}

} // namespace tessaro
