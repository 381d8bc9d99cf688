// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/sel_items.h"

#include "core/edit/song.h"

namespace tessaro {

std::uint8_t SelItem::type() const { return trk ? List<CBlk>::get(blk)->GetType() : blktype::none; }

int SelItem::track() const { return trk ? Song::numberOf(trk) : -1; }

bool SelItems::add(POSITION key, const EvntRef& at)
{
    if (!key) return false;
    const auto [place, isNew] = m_byKey.try_emplace(key);
    if (!isNew) return false;
    place->second = std::make_unique<SelItem>();
    SelItem& item = *place->second;
    item.trk = at.trk;
    item.blk = at.blk;
    item.evnt = at.evnt;
    item.order = ++m_lastOrder;
    m_list.addTail(&item);
    return true;
}

bool SelItems::remove(POSITION key)
{
    const auto at = m_byKey.find(key);
    if (at == m_byKey.end()) return false;
    m_list.remove(at->second.get());
    m_byKey.erase(at);
    return true;
}

bool SelItems::move(POSITION key, POSITION newKey, const EvntRef& at)
{
    auto node = m_byKey.extract(key);
    if (node.empty()) return false;
    remove(newKey);
    SelItem& item = *node.mapped();
    item.trk = at.trk;
    item.blk = at.blk;
    item.evnt = at.evnt;
    node.key() = newKey;
    m_byKey.insert(std::move(node));
    return true;
}

void SelItems::clear()
{
    m_list.forget();
    m_byKey.clear();
}

const SelItem* SelItems::find(POSITION key) const
{
    const auto at = m_byKey.find(key);
    return at == m_byKey.end() ? nullptr : at->second.get();
}

} // namespace tessaro
