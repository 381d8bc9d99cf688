// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/records.h"
#include "core/model/style_blk.h"

#include <cstdint>

namespace tessaro {

/// The accompaniment track of a song: its settings, and its style blocks in the order of their tops, blocks of one
/// top in the order of insertion. Blocks may overlap. It owns the blocks and none of their real blocks. User
/// interface thread; the feeder reads it while no edit runs.
class TESSARO_API StyleTrack {
public:
    StyleTrack() = default;
    StyleTrack(const StyleTrack&) = delete;
    StyleTrack& operator=(const StyleTrack&) = delete;
    ~StyleTrack() { clear(); }

    /// No blocks, settings as in a new song.
    void clear() noexcept;

    [[nodiscard]] _STYLE_TRK_INFO& info() noexcept { return m_info; }
    [[nodiscard]] const _STYLE_TRK_INFO& info() const noexcept { return m_info; }
    [[nodiscard]] const List<CStyleBlk>& blks() const noexcept { return m_blks; }

    /// Takes a block behind all whose top is not greater than `time`, which is the top it has or is about to get.
    void add(std::uint32_t time, CStyleBlk* blk) noexcept;
    /// Behind `after`, null for the head.
    void insertAfter(CStyleBlk* after, CStyleBlk* blk) noexcept;
    /// Unlinks a block, which is the caller's from now on.
    void unlink(CStyleBlk* blk) noexcept { m_blks.remove(blk); }

    /// The largest end of a block, 0 without one.
    [[nodiscard]] std::uint32_t timeEnd() const noexcept;

private:
    _STYLE_TRK_INFO m_info;
    List<CStyleBlk> m_blks;
};

} // namespace tessaro
