// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "core/model/evnt.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_set>
#include <vector>

namespace tessaro {

class CEditor;
class CRealBlk;

/// What the event list leaves out.
struct RowFilter {
    std::uint32_t hiddenGroups = 0; ///< a bit for each kind group
    int channel = -1;               ///< the one that is shown of those events that have one; -1 for all
    bool operator==(const RowFilter&) const = default;
};

/// The events of one track in the order of the song: by absolute time, then as the blocks follow each other. It holds
/// places of the song and no events, and is true until the track changes; then it is built anew.
class EvntRows {
public:
    /// Costs a step for each event of the track.
    void build(const CEditor& editor, int track, const RowFilter& filter);
    void clear();

    [[nodiscard]] std::size_t count() const { return m_rows.size(); }
    /// Of all events, those that are left out included.
    [[nodiscard]] std::size_t total() const { return m_total; }
    [[nodiscard]] EvntRef ref(std::size_t row) const { return {m_trk, m_blks[m_rows[row].blk].pos, m_rows[row].evnt}; }
    [[nodiscard]] const CEvnt& event(std::size_t row) const { return *m_rows[row].evnt; }
    /// Absolute.
    [[nodiscard]] std::uint32_t time(std::size_t row) const
    {
        return m_blks[m_rows[row].blk].top + m_rows[row].evnt->GetTime();
    }

    /// The first row not before a time; `count` for none. By bisection.
    [[nodiscard]] std::size_t firstFrom(std::uint32_t time) const;
    /// The row of an event that stands at this time.
    [[nodiscard]] std::optional<std::size_t> find(const EvntRef& ref) const;
    /// Whether a change inside of a real block changes a row.
    [[nodiscard]] bool shows(const CRealBlk* real) const { return m_reals.count(real) != 0; }

private:
    struct Blk {
        POSITION pos;
        std::uint32_t top;
    };
    struct Row {
        CEvnt* evnt;
        std::uint32_t blk; ///< index into the blocks
    };

    POSITION m_trk = nullptr;
    std::vector<Blk> m_blks;
    std::vector<Row> m_rows;
    std::unordered_set<const CRealBlk*> m_reals;
    std::size_t m_total = 0;
};

} // namespace tessaro
