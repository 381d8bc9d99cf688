// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/evnt_pool.h"
#include "core/model/realblk.h"
#include "core/model/trk.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace tessaro {

/// The lists of a song: 101 tracks in the order of their numbers, and all real blocks, those included that
/// no block shows. It owns tracks, real blocks and the memory of the events. Number 0 is the master track,
/// whose one block at tick 0 holds all master events. User interface thread; the feeder reads it while no
/// edit runs.
class TESSARO_API Song {
public:
    Song() = default;
    Song(const Song&) = delete;
    Song& operator=(const Song&) = delete;
    ~Song() { clear(); }

    /// Deletes tracks, blocks and real blocks.
    void clear() noexcept;
    /// Makes the 101 tracks of a new song, and the master block. The song is empty before the call.
    /// Throws bad_alloc.
    void makeTracks();

    /// Null outside 0 to 100.
    [[nodiscard]] CTrk* trk(int number) const noexcept;
    [[nodiscard]] const List<CTrk>& trks() const noexcept { return m_trks; }
    /// The number of a track of this song.
    [[nodiscard]] static int numberOf(POSITION trk) noexcept;
    /// Moves a track behind another one; numbers follow.
    void moveTrk(POSITION trk, POSITION after) noexcept;

    /// Null while the song has no tracks.
    [[nodiscard]] CBlk* masterBlk() const noexcept;
    [[nodiscard]] CRealBlk* masterReal() const noexcept;

    /// A new real block at the list's end. Throws bad_alloc.
    CRealBlk& addRealBlk();
    void deleteRealBlk(CRealBlk* real) noexcept;
    [[nodiscard]] const List<CRealBlk>& realBlks() const noexcept { return m_reals; }

    [[nodiscard]] EvntPool& pool() noexcept { return m_pool; }
    [[nodiscard]] BlkNamer& namer() noexcept { return m_namer; }
    [[nodiscard]] const BlkNamer& namer() const noexcept { return m_namer; }

private:
    struct NumberedTrk final : CTrk {
        using CTrk::CTrk;
        int number = 0;
    };
    void renumber() noexcept;

    EvntPool m_pool;
    BlkNamer m_namer;
    std::vector<std::unique_ptr<NumberedTrk>> m_owned;
    List<CTrk> m_trks;
    std::array<CTrk*, trackCount> m_byNumber{};
    List<CRealBlk> m_reals;
};

} // namespace tessaro
