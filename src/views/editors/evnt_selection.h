// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"

#include <cstddef>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tessaro {

class CEditor;

/// The events that are selected in one window. Questions take constant time. It keeps itself true by the editor's
/// hints: events and blocks that leave the song leave it, a block that moves takes its events along. A hint costs what
/// it touches.
class EvntSelection {
public:
    [[nodiscard]] bool contains(const EvntRef& ref) const;
    [[nodiscard]] bool empty() const { return m_blks.empty(); }
    [[nodiscard]] std::size_t count() const { return m_blks.size(); }

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
    /// What is selected of one block.
    struct Part {
        POSITION trk = nullptr;
        std::unordered_set<POSITION> evnts{};
    };

    using Blks = std::unordered_multimap<POSITION, POSITION>;

    [[nodiscard]] Blks::iterator find(POSITION evnt, POSITION blk);
    void leavePart(POSITION blk, POSITION evnt);
    bool dropEvnt(POSITION evnt);
    bool dropGone(POSITION blk);
    bool dropBlk(POSITION blk);
    bool dropLinked(POSITION blk);
    bool moveBlk(POSITION blk, const BlkRef& to);

    std::unordered_map<POSITION, Part> m_parts; ///< by block; none is empty
    Blks m_blks;                                ///< by event; it may be selected in several that are linked
};

} // namespace tessaro
