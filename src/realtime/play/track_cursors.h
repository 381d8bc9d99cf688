// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/model/blk.h"
#include "core/model/trk.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

namespace tessaro {

class CEditor;

/// What does not take part in playing while a take is recorded.
struct LeftOut {
    std::bitset<trackCount> tracks;
    std::array<const CBlk*, trackCount> takeBlks{}; ///< which are being filled
};

/// Where every block of the song stands in playing. All blocks of all tracks take part, overlapping or not, but for
/// those that are left out. The event that is due next is found at once, however many blocks the song has; events that
/// are due in the same step come in the order of tracks, then of blocks on the track, then of events in the block.
///
/// Dues are counts of feeder steps. The cursors live in the play state of the blocks, whose song must not change while
/// they are in use. `chain` and `locate` are the user interface thread's, while nothing plays; the rest is the
/// feeder's and neither allocates nor touches an index that others use.
class TrackCursors {
public:
    struct DueEvent {
        int track = 0;
        std::uint32_t time = 0; ///< song tick
        const CEvnt* event = nullptr;
    };

    /// Takes the blocks of the song, with the cursors at its start; without a song there are none.
    void chain(CEditor* editor, const LeftOut& leftOut);
    /// Puts every cursor on its first event not before `tick`. An event at `tick` itself is due at `step`.
    void locate(std::uint32_t tick, std::int64_t step);
    /// The same, looking from where the cursors stand: costs what lies between the two places.
    void jump(std::uint32_t tick, std::int64_t step);
    /// Nothing falls due any more until the next locate.
    void finish() noexcept { m_due.clear(); }

    /// The next event that is due at `step` or before; false when there is none.
    bool peek(std::int64_t step, DueEvent& out) const noexcept;
    /// Goes on behind the event that `peek` told.
    void advance() noexcept;

private:
    struct Entry {
        std::int64_t due;
        std::uint32_t order; ///< of the block among all blocks
        int track;
        CBlk* blk;
    };
    static bool later(const Entry& a, const Entry& b) noexcept
    {
        return a.due != b.due ? a.due > b.due : a.order > b.order;
    }
    template <class Find>
    void place(std::uint32_t tick, std::int64_t step, Find find);

    std::array<CBlk*, trackCount> m_first{};
    std::vector<Entry> m_due; ///< heap, the earliest on top
};

} // namespace tessaro
