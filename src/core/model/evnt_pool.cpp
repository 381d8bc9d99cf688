// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/evnt_pool.h"

#include <algorithm>
#include <new>

namespace tessaro {

CEvnt* EvntPool::make() noexcept
{
    Slot* slot = m_free;
    if (slot) {
        m_free = slot->nextFree;
    } else {
        if ((m_slabs.empty() || m_used == m_slabs.back().size) && !grow()) return nullptr;
        slot = &m_slabs.back().slots[m_used++];
    }
    return ::new (static_cast<void*>(slot->room)) CEvnt;
}

void EvntPool::destroy(CEvnt* e) noexcept
{
    if (!e) return;
    e->~CEvnt();
    auto* slot = reinterpret_cast<Slot*>(e);
    slot->nextFree = m_free;
    m_free = slot;
}

std::size_t EvntPool::bytes() const noexcept
{
    std::size_t slots = 0;
    for (const Slab& slab : m_slabs) slots += slab.size;
    return slots * sizeof(Slot) + m_slabs.capacity() * sizeof(Slab);
}

bool EvntPool::grow() noexcept
{
    const std::size_t size = m_slabs.empty() ? smallestSlab : std::min(largestSlab, m_slabs.back().size * 2);
    try {
        // Plain new: the slots' bytes need no clearing.
        m_slabs.push_back({std::unique_ptr<Slot[]>(new Slot[size]), size});
    } catch (const std::bad_alloc&) {
        return false;
    }
    m_used = 0;
    return true;
}

} // namespace tessaro
