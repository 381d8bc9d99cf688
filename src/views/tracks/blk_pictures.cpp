// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_pictures.h"

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

void BlkPictures::forget(const CRealBlk* real)
{
    m_entries.erase(real);
    m_lastStale = nullptr;
}

void BlkPictures::clear()
{
    m_entries.clear();
    m_lastStale = nullptr;
}

} // namespace tessaro
