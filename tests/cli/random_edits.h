// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/edit_bench.h"

namespace tessaro::test {

/// Random songs and random edits of every operation.
class RandomEdits {
public:
    /// `staysInside`: only edits that undo takes back to the last byte, which excludes those that make a block grow to
    /// hold an event, that give a track its type, and rests.
    RandomEdits(EditBench& bench, bool staysInside) : m_bench(bench), m_inside(staysInside) {}

    /// Tracks with blocks, ghosts, events of all kinds at few distinct ticks, styles, signatures and tempi. Not undone.
    void makeSong();
    /// One primitive operation; many are refused.
    void edit();

private:
    struct Place {
        POSITION trk = nullptr;
        POSITION blk = nullptr;
        POSITION evnt = nullptr;
    };
    using Operation = void (RandomEdits::*)();

    void blkNew();
    void blkCopy();
    void blkGhost();
    void blkMove();
    void blkDel();
    void blkApp();
    void blkDiv();
    void blkMerge();
    void blkRealize();
    void blkSize();
    void blkOfst();
    void blkPaste();
    void insEvnt();
    void recEvnt();
    void recSetEvnt();
    void setEvnt();
    void setLocation();
    void deleteEvnt();
    void noteApp();
    void noteDiv();
    void rest();
    void trkArrange();
    void styleNew();
    void styleEdit();

    [[nodiscard]] POSITION anyTrk();
    /// Where a block of a track may go; edits that are to stay inside give no track another type.
    [[nodiscard]] POSITION target(POSITION source);
    /// A block of a random track, the master's too; null when the track is empty.
    [[nodiscard]] Place anyBlk();
    [[nodiscard]] Place anyEvnt();
    [[nodiscard]] std::uint32_t anyTime() { return m_bench.dice.below(40) * 240; }
    /// A record of any kind that a track of this type may have, its bytes in `m_body`.
    [[nodiscard]] _EDT_EVNT anyRecord(std::uint32_t time, std::uint8_t trkType, bool master);
    /// Shortened to end inside the block, when edits are to stay inside.
    void fit(_EDT_EVNT& rec, const CBlk& blk) const;
    [[nodiscard]] CEditor& editor() { return m_bench.editor; }
    [[nodiscard]] Dice& dice() { return m_bench.dice; }

    EditBench& m_bench;
    const bool m_inside;
    std::vector<std::uint8_t> m_body;
};

} // namespace tessaro::test
