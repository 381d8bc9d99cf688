// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <cstdint>

namespace tessaro {

class CBlk;
class CEditor;
class CRealBlk;

/// What a block holds and how long it is: dividing, merging, making real, sizing, shifting. Each operation but `grow`
/// and `fitGhosts` records undo; all tell the views. A refusal, or memory running out, leaves song and history as they
/// are. Ghosts follow the length of their source. Main thread only.
namespace blk_events {

/// A real block that leaves the song with the scope unless it is kept.
class NewReal {
public:
    explicit NewReal(CEditor& editor);
    ~NewReal();
    NewReal(const NewReal&) = delete;
    NewReal& operator=(const NewReal&) = delete;
    /// Null when memory is out.
    [[nodiscard]] CRealBlk* get() const noexcept { return m_real; }
    void keep() noexcept { m_kept = true; }

private:
    CEditor& m_editor;
    CRealBlk* m_real;
    bool m_kept = false;
};

/// Appends copies of all events, `offset` ticks later each; a score link gets a score entry of its own. False when
/// memory is out.
bool copyAll(CEditor& editor, const CRealBlk& from, CRealBlk& to, std::uint32_t offset = 0);

/// `time` lies from the block's top to its end.
bool divide(CEditor& editor, POSITION trk, POSITION blk, std::uint32_t time);
bool merge(CEditor& editor, POSITION trk, POSITION blk, POSITION trk2, POSITION blk2, std::uint32_t time);
/// Merges at the block's own top, then deletes it.
bool join(CEditor& editor, POSITION trk, POSITION blk, POSITION trk2, POSITION blk2);
bool realize(CEditor& editor, POSITION trk, POSITION blk);
/// Not shorter than the last sound.
bool resize(CEditor& editor, POSITION trk, POSITION blk, std::uint32_t end);
/// The same while the transport runs; nobody plays the block.
bool resizeRecorded(CEditor& editor, POSITION trk, POSITION blk, std::uint32_t end);
bool offset(CEditor& editor, POSITION trk, POSITION blk, std::int64_t delta);
/// Grows the block to hold the event; not recorded.
void grow(CEditor& editor, POSITION trk, POSITION blk, POSITION evnt);
/// Gives every ghost of the source its length.
void fitGhosts(CEditor& editor, const CBlk& source);

} // namespace blk_events
} // namespace tessaro
