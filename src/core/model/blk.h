// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/play_state.h"
#include "core/model/realblk.h"

#include <cstdint>
#include <string>

namespace tessaro {

namespace blktype {
inline constexpr std::uint8_t none = 0;
inline constexpr std::uint8_t real = 1;  ///< source of its real block: the one place where events change
inline constexpr std::uint8_t ghost = 2; ///< shows a real block whose source is elsewhere
} // namespace blktype

/// A block: a named span of absolute ticks on a track that shows a real block, whose event times count
/// from the block's top. It borrows the real block. A position from one block is valid in every block
/// of the same real block. Event access answers 0, false or null while there is no real block.
/// User interface thread; the play state is the feeder's while a song plays.
class TESSARO_API CBlk : public ListNode {
public:
    [[nodiscard]] std::uint8_t GetType() const noexcept { return m_type; }
    void SetType(std::uint8_t type) noexcept { m_type = type; }
    void GetTime(std::uint32_t* top, std::uint32_t* end) const noexcept;
    [[nodiscard]] std::uint32_t GetTimeTop() const noexcept { return m_top; }
    [[nodiscard]] std::uint32_t GetTimeEnd() const noexcept { return m_end; }
    [[nodiscard]] const std::string& GetName() const noexcept { return m_name; }
    void SetName(std::string name) { m_name = std::move(name); }
    [[nodiscard]] CRealBlk* GetRealBlk() const noexcept { return m_real; }
    void SetRealBlk(CRealBlk* real) noexcept { m_real = real; }
    void Set(std::uint32_t top, CRealBlk* real, std::uint8_t type) noexcept { Set(top, top, real, type); }
    void Set(std::uint32_t top, std::uint32_t end, CRealBlk* real, std::uint8_t type) noexcept;

    /// Moves the end by the same distance.
    void SetTimeTop(std::uint32_t top) noexcept;
    /// Ignored for an end before the top.
    void SetTimeEnd(std::uint32_t end) noexcept;
    /// Only ever lengthens the block.
    void SetTimeEndCmp(std::uint32_t end) noexcept;

    [[nodiscard]] std::uint32_t GetNum() const noexcept { return m_real ? m_real->GetNum() : 0; }
    [[nodiscard]] std::uint32_t GetCount(std::uint8_t status) const noexcept
    {
        return m_real ? m_real->GetCount(status) : 0;
    }
    [[nodiscard]] POSITION GetHeadPos() const noexcept { return m_real ? m_real->GetHeadPos() : nullptr; }
    [[nodiscard]] POSITION GetTailPos() const noexcept { return m_real ? m_real->GetTailPos() : nullptr; }
    [[nodiscard]] POSITION GetPos(std::uint32_t index) const noexcept
    {
        return m_real ? m_real->GetPos(index) : nullptr;
    }
    bool GetNext(POSITION& pos, CEvnt** e) const noexcept { return m_real && m_real->GetNext(pos, e); }
    bool GetPrev(POSITION& pos, CEvnt** e) const noexcept { return m_real && m_real->GetPrev(pos, e); }
    bool Get(POSITION pos, CEvnt** e) const noexcept { return m_real && m_real->Get(pos, e); }
    bool GetEvnt(POSITION pos, _EDT_EVNT& rec) const { return m_real && m_real->GetEvnt(pos, rec); }
    bool GetNextEvnt(POSITION& pos, _EDT_EVNT& rec) const { return m_real && m_real->GetNextEvnt(pos, rec); }
    bool GetPrevEvnt(POSITION& pos, _EDT_EVNT& rec) const { return m_real && m_real->GetPrevEvnt(pos, rec); }
    POSITION GetHeadEvnt(_EDT_EVNT& rec) const { return m_real ? m_real->GetHeadEvnt(rec) : nullptr; }
    POSITION GetTailEvnt(_EDT_EVNT& rec) const { return m_real ? m_real->GetTailEvnt(rec) : nullptr; }
    POSITION Sort(std::uint32_t time, POSITION pos) noexcept { return m_real ? m_real->Sort(time, pos) : nullptr; }
    void ChngTs(POSITION pos, std::int64_t delta) noexcept;
    bool Del(POSITION pos) noexcept { return m_real && m_real->Del(pos); }
    bool RemoveAt(POSITION pos) noexcept { return m_real && m_real->RemoveAt(pos); }

    /// First event not before the absolute time; null outside of top to end (both included).
    [[nodiscard]] POSITION GetTimePos(std::uint32_t time) const;
    /// Inserts a record of absolute time; null when it lies before the top or is refused.
    POSITION InsEvnt(_EDT_EVNT rec);

    [[nodiscard]] PlayState& playState() noexcept { return m_play; }
    void resetPlayState() noexcept { m_play = PlayState{}; }

private:
    CRealBlk* m_real = nullptr;
    std::uint32_t m_top = 0;
    std::uint32_t m_end = 0;
    std::uint8_t m_type = blktype::none;
    std::string m_name;
    PlayState m_play;
};

} // namespace tessaro
