// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tessaro {

class CEvnt;
class CRealBlk;

/// Kinds of primitive change.
enum class UndoKind : std::uint8_t {
    evntIns = 1,
    evntDel = 2,
    evntChng = 3,
    evntMove = 4,
    blkNew = 5,
    blkDel = 6,
    blkMove = 7,
    blkMerge = 8,
    blkDiv = 10,
    blkReal = 11,
    blkPaste = 12,
    blkSize = 13,
    trkMove = 14,
    styleNew = 20,
    styleDel = 21,
    styleMove = 22,
    styleSize = 23,
};

/// One primitive change of an editing step: where it was made, and what it takes to turn it round. Positions are valid
/// for the record's whole life, since what leaves the song is parked. A record is turned round in strict order only:
/// the lists then look as they did right after, or before, the change, so that an object goes back behind the very
/// element that stood before it.
/// Steps over many events are common: what only changes of blocks and tracks need stands aside.
struct CUndo {
    struct More {
        POSITION oldTrk = nullptr; ///< block kinds with two places
        POSITION oldBlk = nullptr; ///< also a style block
        POSITION oldBefore = nullptr;
        CRealBlk* real = nullptr; ///< the other real block of a block that was made real
        int trkNumber = 0;
        std::vector<std::pair<POSITION, POSITION>> evnts; ///< events of a merge, each with what stood before it
    };

    explicit CUndo(UndoKind k) noexcept : kind(k) {}

    UndoKind kind;
    std::uint8_t trkType = 0; ///< the type that the track must have to take the block back
    std::uint32_t time = 0;   ///< a saved end, a division time, or the block-relative time of a moved event
    POSITION trk = nullptr;   ///< block and event kinds: the new place
    POSITION blk = nullptr;   ///< also a style block
    POSITION evnt = nullptr;
    POSITION before = nullptr;  ///< what stood before the object when it was last in its list; null at the head
    CEvnt* snapshot = nullptr;  ///< owned by the history: the other state of a changed event
    std::unique_ptr<More> more; ///< two places, division, merge, real block, track number
};

/// One editing step: its title, UTF-8, and its changes in the order in which they were made.
struct CUndoNode {
    std::string title;
    std::deque<CUndo> changes;
};

} // namespace tessaro
