// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "core/model/tick.h"
#include "core/ports/hint_observer.h"
#include "views/roll/span_tree.h"
#include "views/roll/strip_kind.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace tessaro {

class CBlk;
class CEditor;
class CRealBlk;

/// The notes and the values of one real block, drawn from its list for quick answers: a row for each key, controller
/// and further kind of value, in the order of the list, each with a tree over its spans. 24 bytes an event; times count
/// from the block's top. A note takes at least one tick, a value exactly one.
class RealBlkTable {
public:
    struct Item {
        std::uint32_t start;
        std::uint32_t end;
        std::uint32_t most;  ///< of the tree
        std::uint16_t value; ///< velocity, or what the event sets
        std::uint8_t key;    ///< of a note
        CEvnt* evnt;
    };

    static constexpr int keys = 128;
    static constexpr int rowCount = 3 * keys + 3;
    static_assert(sizeof(Item) == 24);
    /// The row of what a strip shows; velocities have none, their notes stand by key.
    [[nodiscard]] static int rowOf(const StripKind& kind);

    /// Draws it anew. Linear.
    void build(const CRealBlk& real);

    [[nodiscard]] std::span<const Item> row(int row) const
    {
        const auto r = static_cast<std::size_t>(row);
        return std::span(m_items).subspan(m_first[r], m_first[r + 1] - m_first[r]);
    }
    [[nodiscard]] std::size_t eventCount() const { return m_eventCount; }

private:
    std::vector<Item> m_items;
    std::array<std::uint32_t, rowCount + 1> m_first{};
    std::size_t m_eventCount = 0; ///< of the list, when this was built
};

/// A note as a window shows it. Absolute ticks.
struct NoteInView {
    EvntRef ref;
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    std::uint8_t key = 0;
    std::uint8_t velocity = 0;
    bool isGhost = false; ///< of a linked block: cannot be edited there
    std::uint32_t blkTop = 0;
    std::uint32_t blkEnd = 0;
};

/// An event of a strip's kind, or a note with its velocity.
struct ValueInView {
    EvntRef ref;
    std::uint32_t time = 0; ///< absolute
    int value = 0;
    bool isGhost = false;
};

/// A block as a window shows it. Absolute ticks; the end is outside, one tick behind the block's own.
struct BlkInView {
    std::uint32_t start;
    std::uint32_t end;
    std::uint32_t most; ///< of the tree
    CBlk* blk;
};

/// What is in sight of a song, for all windows: blocks, notes and values of a span, in logarithmic time and the number
/// of those found. Built for a track or a real block when it is asked for, and again after a change: a hint only marks
/// what is stale. One for an editor, which outlives it; `clear` when another song stands. User interface thread.
class NoteTables final : public HintObserver {
public:
    explicit NoteTables(CEditor& editor);
    ~NoteTables() override;
    NoteTables(const NoteTables&) = delete;
    NoteTables& operator=(const NoteTables&) = delete;

    void clear();
    /// Every answer may be another one than before when this is.
    [[nodiscard]] std::uint64_t revision() const { return m_revision; }

    /// Blocks of the track that meet the span, in the order of the list: what comes later is drawn above.
    template <class Visit>
    void forEachBlk(int track, std::uint32_t from, std::uint32_t to, Visit&& visit) const
    {
        span_tree::forEach(blks(track), from, to, visit);
    }

    /// Notes that sound in the span (`to` is outside) with a key from `low` to `high`, block by block, key by key, in
    /// order of their starts. What is drawn above comes later.
    template <class Visit>
    void forEachNote(int track, std::uint32_t from, std::uint32_t to, int low, int high, Visit&& visit) const
    {
        forEachBlk(track, from, to, [&](const BlkInView& at) {
            for (int key = low; key <= high; ++key)
                forEachItem(at, key, from, to, [&](const RealBlkTable::Item& item) { visit(noteOf(track, at, item)); });
        });
    }

    /// Events of this kind in the span, or notes that start in it; block by block.
    template <class Visit>
    void forEachValue(int track, StripKind kind, std::uint32_t from, std::uint32_t to, Visit&& visit) const
    {
        const int first = kind.isVelocity() ? 0 : RealBlkTable::rowOf(kind);
        const int last = kind.isVelocity() ? RealBlkTable::keys - 1 : first;
        forEachBlk(track, from, to, [&](const BlkInView& at) {
            for (int row = first; row <= last; ++row)
                forEachItem(at, row, from, to, [&](const RealBlkTable::Item& item) {
                    const ValueInView value = valueOf(track, at, item);
                    if (value.time >= from) visit(value);
                });
        });
    }

    /// Keys with notes in the blocks of the track. Grows with the blocks, not with the notes.
    using Keys = std::bitset<RealBlkTable::keys>;
    [[nodiscard]] Keys keysOf(int track) const;
    /// The topmost note at a key that sounds in the span.
    [[nodiscard]] std::optional<NoteInView> noteAt(int track, std::uint32_t from, std::uint32_t to, int key) const;
    /// The last event of the kind before a time, in the block that is drawn last of those that hold the time. Not for
    /// velocities.
    [[nodiscard]] std::optional<ValueInView> valueBefore(int track, StripKind kind, std::uint32_t time) const;
    /// The next note of the same key in the same block; empty for what is no note.
    [[nodiscard]] EvntRef nextOfKey(const EvntRef& note) const;
    /// A note as it stands now; nothing for another event.
    [[nodiscard]] static std::optional<NoteInView> noteOf(const EvntRef& ref);
    /// The block that is drawn last of those that hold the tick; null for none.
    [[nodiscard]] BlkRef blkAt(int track, std::uint32_t time) const;

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

private:
    struct Entry {
        RealBlkTable table;
        bool isStale = true;
    };
    struct TrkBlks {
        std::vector<BlkInView> blks;
        std::uint64_t revision = 0; ///< 0 is never up to date
    };

    template <class Visit>
    void forEachItem(const BlkInView& at, int row, std::uint32_t from, std::uint32_t to, Visit&& visit) const
    {
        const RealBlkTable* table = tableOf(*at.blk);
        if (!table) return;
        const std::uint32_t top = at.start;
        span_tree::forEach(table->row(row), from > top ? from - top : 0, to - top, visit);
    }
    [[nodiscard]] std::span<const BlkInView> blks(int track) const;
    [[nodiscard]] const RealBlkTable* tableOf(const CBlk& blk) const;
    [[nodiscard]] NoteInView noteOf(int track, const BlkInView& at, const RealBlkTable::Item& item) const;
    [[nodiscard]] ValueInView valueOf(int track, const BlkInView& at, const RealBlkTable::Item& item) const;
    void markStale(POSITION blk);

    CEditor& m_editor;
    std::uint64_t m_revision = 1;
    std::uint64_t m_blkRevision = 1;
    mutable std::unordered_map<const CRealBlk*, Entry> m_tables;
    mutable std::vector<TrkBlks> m_trks; ///< by track number
};

} // namespace tessaro
