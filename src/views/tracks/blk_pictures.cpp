// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_pictures.h"

#include "core/edit/editor.h"
#include "core/edit/evnt_ref.h"

namespace tessaro {

const BlkPicture* BlkPictures::find(const CRealBlk& real)
{
    Entry& entry = m_entries[&real];
    if (entry.stale) {
        m_lastStale = nullptr;
        if (!entry.making || entry.generation != m_generation) {
            entry.making = std::make_unique<BlkPicture>(real);
            entry.generation = m_generation;
        }
        if (entry.making->build(m_budget)) {
            entry.shown = std::move(entry.making);
            entry.stale = false;
        } else {
            m_unfinished = true;
        }
    }
    return entry.shown.get();
}

void BlkPictures::setStale(const CRealBlk* real)
{
    if (real == m_lastStale) return;
    if (const auto at = m_entries.find(real); at != m_entries.end()) {
        at->second.stale = true;
        at->second.making.reset();
    }
    m_lastStale = real;
}

void BlkPictures::follow(int code, const CEditor& editor)
{
    BlkRef at;
    BlkRef made;
    editor.GetHintBlkMove(at.trk, at.blk, made.trk, made.blk);
    const auto realOf = [](POSITION blk) { return List<CBlk>::get(blk)->GetRealBlk(); };
    switch (code) {
    case hint::evntChng:
    case hint::locationChng:
    case hint::insEvnt:
    case hint::delEvnt:
        if (at.blk) setStale(realOf(at.blk));
        return;
    case hint::blkDiv:
        forget(*List<CBlk>::get(made.blk));
        setStale(realOf(at.blk));
        break;
    case hint::blkMerge: setStale(realOf(made.blk)); break;
    case hint::blkNew:
    case hint::blkDel:
    case hint::blkApp:
    case hint::addBlk:
    case hint::blkReal:
        if (at.blk) forget(*List<CBlk>::get(at.blk));
        break;
    case hint::blkUpdate:
        if (at.blk) setStale(realOf(at.blk));
        break;
    default: return;
    }
    ++m_generation;
}

/// A ghost leaves the picture to its source.
void BlkPictures::forget(const CBlk& blk)
{
    if (blk.GetType() == blktype::ghost) return;
    m_entries.erase(blk.GetRealBlk());
    m_lastStale = nullptr;
}

void BlkPictures::clear()
{
    m_entries.clear();
    m_lastStale = nullptr;
}

} // namespace tessaro
