// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"
#include "core/edit/evnt_ref.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace tessaro {

/// One thing that is selected in the track window: a block, a chord with its block, or a style block, which has no
/// track. Borrowed positions.
struct SelItem : ListNode {
    POSITION trk = nullptr;
    POSITION blk = nullptr;
    POSITION evnt = nullptr;
    std::uint64_t order = 0; ///< later ones were selected later

    /// 1 real, 2 ghost; 0 for a style block.
    [[nodiscard]] std::uint8_t type() const;
    /// 0 to 100; -1 for a style block.
    [[nodiscard]] int track() const;
    [[nodiscard]] BlkRef ref() const { return {trk, blk}; }
};

/// Selected things in the order in which they were selected. Each has a key, a position that only one has: questions by
/// key take constant time.
class SelItems {
public:
    bool add(POSITION key, const EvntRef& at);
    bool remove(POSITION key);
    /// The thing under `key` has moved and keeps its place in the order.
    bool move(POSITION key, POSITION newKey, const EvntRef& at);
    void clear();

    [[nodiscard]] const SelItem* find(POSITION key) const;
    [[nodiscard]] std::size_t count() const { return m_list.count(); }
    [[nodiscard]] const List<SelItem>& list() const { return m_list; }

private:
    std::unordered_map<POSITION, std::unique_ptr<SelItem>> m_byKey;
    List<SelItem> m_list;
    std::uint64_t m_lastOrder = 0;
};

} // namespace tessaro
