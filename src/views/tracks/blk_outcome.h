// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/evnt_ref.h"
#include "core/model/tick.h"
#include "views/tracks/trk_geometry.h"

#include <cstdint>
#include <variant>

namespace tessaro {

/// How far blocks are dragged: all keep their distance to each other, except where one would go before tick 0 or
/// beyond the first or last track, at which it stops.
struct BlkShift {
    std::int64_t ticks = 0;
    int rows = 0;
    bool operator==(const BlkShift&) const = default;

    [[nodiscard]] std::uint32_t top(std::uint32_t old) const { return tick::shifted(old, ticks); }
    [[nodiscard]] int track(int old) const { return TrkGeometry::shiftedTrack(old, rows); }
};

/// What becomes of selected blocks where they are dropped: `merge` merges one that meets another selected block into
/// that one, and copies it otherwise.
enum class DropKind {
    move,
    copy,
    link,
    relink, ///< a link to the original, also of what is a link itself
    merge,
};

// What a gesture of the mouse in the track window asks for.

struct GoTo {
    std::uint32_t time;
};
struct MakeLoop {
    std::uint32_t start;
    std::uint32_t end;
};
struct DropSelected {
    DropKind kind;
    BlkShift shift;
};
struct DrawBlk {
    int track;
    std::uint32_t top;
    std::uint32_t end;
};
struct EndBlkAt {
    BlkRef blk;
    std::uint32_t end;
};
struct EraseSelected {};
struct DivideSelected {
    std::uint32_t time;
};
struct JoinToNext {
    BlkRef blk;
};

using BlkOutcome = std::variant<std::monostate, GoTo, MakeLoop, DropSelected, DrawBlk, EndBlkAt, EraseSelected,
                                DivideSelected, JoinToNext>;

} // namespace tessaro
