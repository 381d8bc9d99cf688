// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"

#include <cstddef>
#include <span>
#include <unordered_map>
#include <vector>

namespace tessaro {

class CEditor;

/// The events that are selected in one window. Questions take constant time. It keeps itself true by the editor's
/// hints: events and blocks that leave the song leave it, a block that moves takes its events along.
class EvntSelection {
public:
    [[nodiscard]] bool contains(const EvntRef& ref) const;
    [[nodiscard]] bool empty() const { return m_refs.empty(); }
    [[nodiscard]] std::size_t count() const { return m_refs.size(); }

    /// Nothing for what is selected already.
    void add(const EvntRef& ref);
    void remove(const EvntRef& ref);
    void toggle(const EvntRef& ref);
    void set(std::span<const EvntRef> refs);
    void clear();

    /// All of them in the order of the song: by absolute time, at equal times by track, then as they stand in the
    /// block.
    [[nodiscard]] std::vector<EvntRef> inOrder() const;

    /// To be told every hint. True when it changed the selection.
    bool follow(int code, const CEditor& editor);

private:
    /// An event may be selected in several blocks that are linked.
    using Refs = std::unordered_multimap<POSITION, BlkRef>;

    [[nodiscard]] Refs::const_iterator find(const EvntRef& ref) const;
    Refs::const_iterator erase(Refs::const_iterator at);
    bool dropEvnt(POSITION evnt);
    bool dropBlk(POSITION blk);
    bool dropLinked(POSITION blk);
    bool moveBlk(POSITION blk, const BlkRef& to);

    Refs m_refs;                                        ///< by event
    std::unordered_map<POSITION, std::size_t> m_counts; ///< of events by block
};

} // namespace tessaro
