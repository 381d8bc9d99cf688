// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/edit/undo.h"
#include "core/model/blk.h"
#include "core/model/evnt.h"
#include "core/model/style_blk.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tessaro {

class CEditor;
class CRealBlk;
class EvntPool;

/// The history of a song: the editing steps that can be undone and redone, and the objects that a step took out of
/// the song, parked so that their positions stay valid. It owns what is parked.
///
/// Each recording call belongs to one primitive change, before or after it as its line says. It answers true when the
/// change is recorded, and also outside of an open step, where nothing is recorded: the change then stands, and steps
/// recorded before it can no longer be undone, except over a Rest. When memory is out the step goes on without
/// undo and the history is thrown away, which the user is told. Main thread only.
class TESSARO_API UndoHistory {
public:
    UndoHistory(CEditor& editor, EvntPool& pool) noexcept : m_editor(editor), m_pool(pool) {}
    UndoHistory(const UndoHistory&) = delete;
    UndoHistory& operator=(const UndoHistory&) = delete;
    ~UndoHistory() { clear(); }

    // Steps -----------------------------------------------------------------------------------------------

    [[nodiscard]] bool isOpen() const noexcept { return m_open; }
    /// Opens a new step behind the present one and drops all steps that could be redone. False while one is open;
    /// throws bad_alloc.
    bool open(const std::string& title);
    /// Ends the step; false when nothing was recorded in it, and then it leaves no trace.
    bool close() noexcept;
    /// Deletes all steps and all that is parked.
    void clear() noexcept;

    [[nodiscard]] int count() const noexcept { return static_cast<int>(m_nodes.size()); }
    /// The step applied last, -1 when there is none.
    [[nodiscard]] int index() const noexcept { return m_index; }
    void setIndex(int index) noexcept { m_index = index; }
    /// Null outside 0 to count less 1.
    [[nodiscard]] CUndoNode* node(int index) const noexcept;
    /// A change that no step holds, or a step left half done, has made the recorded ones unusable.
    [[nodiscard]] bool isStale() const noexcept { return m_stale; }
    void setStale() noexcept { m_stale = true; }

    // Recording -------------------------------------------------------------------------------------------

    bool SetUndoEvntIns(POSITION trk, POSITION blk, POSITION evnt); ///< after it was linked
    bool SetUndoEvntDel(POSITION trk, POSITION blk, POSITION evnt); ///< before it is unlinked; then `retire` it
    /// Before it is overwritten. Outside of an open step the change joins the step applied last, if there is one.
    bool SetUndoEvntChng(POSITION trk, POSITION blk, POSITION evnt);
    bool SetUndoEvntMove(POSITION trk, POSITION blk, POSITION evnt);      ///< before it is moved
    bool SetUndoBlkNew(POSITION trk, POSITION blk, std::uint8_t trkType); ///< after it was linked
    bool SetUndoBlkDel(POSITION trk, POSITION blk, std::uint8_t trkType); ///< before it is unlinked; then `retire` it
    /// After the new block was linked, before the old one is unlinked; then `retire` the old one.
    bool SetUndoBlkMove(POSITION oldTrk, POSITION oldBlk, POSITION trk, POSITION blk, std::uint8_t trkType);
    bool SetUndoBlkMerge(POSITION trk, POSITION blk);                ///< before the first event is added
    bool SetUndoBlkMerge(POSITION trk, POSITION blk, POSITION evnt); ///< after the event was linked
    /// After the new block was linked, before events move over and ends change.
    bool SetUndoBlkDiv(POSITION trk, POSITION blk, POSITION newBlk, std::uint32_t time);
    bool SetUndoBlkReal(POSITION trk, POSITION blk);                        ///< before its real block and type change
    bool SetUndoBlkPaste(POSITION trk, POSITION blk, std::uint8_t trkType); ///< after it was linked
    bool SetUndoBlkSize(POSITION trk, POSITION blk);                        ///< before its end changes
    bool SetUndoTrkMove(int oldNumber, POSITION trk);                       ///< after it was moved
    bool SetUndoStyleNew(POSITION style);                                   ///< after it was linked
    bool SetUndoStyleDel(POSITION style);                                   ///< before it is unlinked; then `retire` it
    /// After the new block was linked, before the old one is unlinked; then `retire` the old one.
    bool SetUndoStyleMove(POSITION oldStyle, POSITION style);
    bool SetUndoStyleSize(POSITION style); ///< before its end changes

    // Parking ---------------------------------------------------------------------------------------------

    /// Take an object that was just unlinked from the song: parked while a step records, otherwise deleted. A Rest,
    /// which no record names, is deleted in any case.
    void retire(CEvnt* event) noexcept;
    void retire(CBlk* blk) noexcept;
    void retire(CStyleBlk* style) noexcept;

    void AddTailUndoEvnt(CEvnt* event) noexcept { m_evnts.addTail(event); }
    void AddTailUndoBlk(CBlk* blk) noexcept { m_blks.addTail(blk); }
    void AddTailUndoStyle(CStyleBlk* style) noexcept { m_styles.addTail(style); }
    /// Unlink only.
    void RemoveUndoEvnt(POSITION event) noexcept { m_evnts.remove(List<CEvnt>::get(event)); }
    void RemoveUndoBlk(POSITION blk) noexcept { m_blks.remove(List<CBlk>::get(blk)); }
    void RemoveUndoStyle(POSITION style) noexcept { m_styles.remove(List<CStyleBlk>::get(style)); }
    [[nodiscard]] POSITION GetTailUndoEvnt() const noexcept { return m_evnts.tail(); }
    [[nodiscard]] POSITION GetTailUndoBlk() const noexcept { return m_blks.tail(); }
    [[nodiscard]] POSITION GetTailUndoStyle() const noexcept { return m_styles.tail(); }

private:
    template <class Fill>
    bool record(UndoKind kind, Fill&& fill);
    template <class Fill>
    bool append(CUndoNode& step, UndoKind kind, Fill&& fill);
    bool recordEvnt(UndoKind kind, POSITION trk, POSITION blk, POSITION evnt);
    bool recordBlk(UndoKind kind, POSITION trk, POSITION blk, std::uint8_t trkType);
    bool recordStyle(UndoKind kind, POSITION style);
    void dropFrom(int index) noexcept;

    CEditor& m_editor;
    EvntPool& m_pool;
    std::vector<std::unique_ptr<CUndoNode>> m_nodes;
    int m_index = -1;
    bool m_open = false;
    bool m_stale = false;
    List<CEvnt> m_evnts;
    List<CBlk> m_blks;
    List<CStyleBlk> m_styles;
};

} // namespace tessaro
