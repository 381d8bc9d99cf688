// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/hint_observer.h"
#include "realtime/rec/blk_selection.h"
#include "views/tracks/sel_items.h"

#include <functional>
#include <span>
#include <vector>

namespace tessaro {

/// What is selected in the track window: blocks, chords and style blocks, three lists of the same shape. The positions
/// of these lists name selected items, and are valid as long as the item is selected. It keeps itself true by the
/// editor's hints: what leaves the song leaves it, what moves stays selected, and of a divided block both halves are.
/// User interface thread. Borrows the editor and what is selected.
class TrkSelection final : public BlkSelection, public HintObserver {
public:
    explicit TrkSelection(CEditor& editor);
    ~TrkSelection() override;
    TrkSelection(const TrkSelection&) = delete;
    TrkSelection& operator=(const TrkSelection&) = delete;

    /// Told of every single change: to be answered in constant time.
    std::function<void()> onChanged;

    // Blocks. `Next` and `Prev` answer the item at the position and step from it; false for a null position.

    void trkInitSel();
    /// False for what is selected already, or without a block.
    bool trkAddSel(POSITION trk, POSITION blk);
    bool trkDelSel(POSITION trk, POSITION blk);
    [[nodiscard]] POSITION trkGetHeadSel() const { return m_blks.list().head(); }
    [[nodiscard]] POSITION trkGetTailSel() const { return m_blks.list().tail(); }
    static bool trkGetNextSel(POSITION& pos, const SelItem** item);
    static bool trkGetPrevSel(POSITION& pos, const SelItem** item);
    static bool trkGetAtSel(POSITION pos, const SelItem** item);

    // Chords

    void trkInitSelChd();
    bool trkAddSelChd(POSITION trk, POSITION blk, POSITION evnt);
    bool trkDelSelChd(POSITION trk, POSITION blk, POSITION evnt);
    [[nodiscard]] POSITION trkGetHeadSelChd() const { return m_chords.list().head(); }
    [[nodiscard]] POSITION trkGetTailSelChd() const { return m_chords.list().tail(); }
    static bool trkGetNextSelChd(POSITION& pos, const SelItem** item) { return trkGetNextSel(pos, item); }
    static bool trkGetPrevSelChd(POSITION& pos, const SelItem** item) { return trkGetPrevSel(pos, item); }
    static bool trkGetAtSelChd(POSITION pos, const SelItem** item) { return trkGetAtSel(pos, item); }

    // Style blocks

    void trkInitSelStyle();
    bool trkAddSelStyle(POSITION style);
    bool trkDelSelStyle(POSITION style);
    [[nodiscard]] POSITION trkGetHeadSelStyle() const { return m_styles.list().head(); }
    [[nodiscard]] POSITION trkGetTailSelStyle() const { return m_styles.list().tail(); }
    static bool trkGetNextSelStyle(POSITION& pos, const SelItem** item) { return trkGetNextSel(pos, item); }
    static bool trkGetPrevSelStyle(POSITION& pos, const SelItem** item) { return trkGetPrevSel(pos, item); }
    static bool trkGetAtSelStyle(POSITION pos, const SelItem** item) { return trkGetAtSel(pos, item); }

    /// The selected blocks as the windows ask for them.

    [[nodiscard]] bool contains(POSITION blk) const { return m_blks.find(blk); }
    /// Null for a block that is not selected.
    [[nodiscard]] const SelItem* find(POSITION blk) const { return m_blks.find(blk); }
    [[nodiscard]] bool empty() const { return m_blks.count() == 0; }
    [[nodiscard]] std::size_t count() const { return m_blks.count(); }
    /// As they were selected.
    [[nodiscard]] std::vector<BlkRef> blks() const;
    /// These and no others.
    void setBlks(std::span<const BlkRef> blks);
    void toggle(const BlkRef& blk);

    /// Another song stands in the editor.
    void clear();

    // For takes
    [[nodiscard]] std::vector<POSITION> selectedBlks(POSITION trk) const override;
    void selectBlk(POSITION trk, POSITION blk) override { trkAddSel(trk, blk); }
    void deselectAll() override { trkInitSel(); }
    void markRecBlk(POSITION, POSITION) override {} // whoever shows a take asks the control panel for it

    void onHint(const HintObserver* sender, int code, CEditor* editor) override;

private:
    bool told(bool changed) const;

    CEditor& m_editor;
    SelItems m_blks;
    SelItems m_chords; ///< by event
    SelItems m_styles;
};

} // namespace tessaro
