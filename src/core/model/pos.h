// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/evnt.h"

#include <cstdint>
#include <string>

namespace tessaro {

class CBlk;

/// One selected place of a song: positions of a track, block and event, and the values that an operation
/// on it needs. It borrows what the positions name. The snapshot event is owned by whoever put it there:
/// `DelEvnt` deletes it, the destructor does not.
class TESSARO_API CPos : public ListNode {
public:
    void Set(POSITION trk, POSITION blk, POSITION evnt) noexcept;
    void Set(POSITION trk, POSITION blk, POSITION evnt, std::uint32_t time) noexcept;
    void Set(std::uint32_t time, std::uint8_t status, std::uint8_t post1, std::uint8_t post2,
             std::uint32_t gate) noexcept;
    void Set(std::uint8_t status, std::uint8_t post1, std::uint8_t post2, std::uint32_t gate) noexcept;
    void Set(std::uint8_t status, std::uint8_t post1, std::uint32_t gate) noexcept;
    void Set(std::uint32_t time, std::uint8_t note) noexcept;
    void Set(std::uint32_t time, std::uint8_t status, std::uint8_t note) noexcept;
    void Set(std::uint32_t time, CEvnt* snapshot) noexcept;
    void SetBlk(POSITION trk, POSITION blk) noexcept;
    void SetBlk(POSITION blk) noexcept { m_blkPos = blk; }
    void SetBlk(CBlk* blk) noexcept { m_blk = blk; }
    void SetTrk(POSITION trk) noexcept { m_trkPos = trk; }
    void SetEvnt(POSITION evnt) noexcept { m_evntPos = evnt; }
    /// Deletes an earlier snapshot.
    void SetEvnt(CEvnt* snapshot) noexcept;
    /// A new snapshot event, stored and handed out.
    void NewSetEvnt(CEvnt** snapshot);
    void DelEvnt() noexcept;
    void SetVce(std::uint8_t status, std::uint8_t post1, std::uint8_t post2, std::uint8_t post3) noexcept;
    void SetBnk(std::uint32_t time, std::uint8_t status, std::uint8_t post1, std::uint8_t post2) noexcept;
    void SetPc(std::uint32_t time, std::uint8_t status, std::uint8_t post1) noexcept;
    void SetTime(std::uint32_t time) noexcept { m_time = time; }
    void SetStr(std::string text) { m_str = std::move(text); }
    void AddStr(const std::string& text) { m_str += text; }
    void SetGateTime(std::uint32_t gate) noexcept { m_gate = gate; }
    void SetStatus(std::uint8_t v) noexcept { m_status = v; }
    void SetNote(std::uint8_t v) noexcept { m_note = v; }
    void SetPost1(std::uint8_t v) noexcept { m_note = v; }
    void SetPost2(std::uint8_t v) noexcept { m_vel = v; }
    void SetPost3(std::uint8_t v) noexcept { m_post3 = v; }
    void SetPost4(std::uint8_t v) noexcept { m_post4 = v; }

    void Get(POSITION& trk, POSITION& blk, POSITION& evnt) const noexcept;
    void GetVce(std::uint8_t& status, std::uint8_t& post1, std::uint8_t& post2, std::uint8_t& post3) const noexcept;
    [[nodiscard]] POSITION GetTrkPos() const noexcept { return m_trkPos; }
    [[nodiscard]] POSITION GetBlkPos() const noexcept { return m_blkPos; }
    [[nodiscard]] POSITION GetEvntPos() const noexcept { return m_evntPos; }
    [[nodiscard]] CEvnt* GetEvnt() const noexcept { return m_snapshot; }
    [[nodiscard]] CBlk* GetBlk() const noexcept { return m_blk; }
    [[nodiscard]] std::uint32_t GetTime() const noexcept { return m_time; }
    [[nodiscard]] std::uint32_t GetGateTime() const noexcept { return m_gate; }
    [[nodiscard]] std::uint8_t GetStatus() const noexcept { return m_status; }
    [[nodiscard]] std::uint8_t GetNote() const noexcept { return m_note; }
    [[nodiscard]] std::uint8_t GetVel() const noexcept { return m_vel; }
    [[nodiscard]] std::uint8_t GetPost1() const noexcept { return m_note; }
    [[nodiscard]] std::uint8_t GetPost2() const noexcept { return m_vel; }
    [[nodiscard]] std::uint8_t GetPost3() const noexcept { return m_post3; }
    [[nodiscard]] std::uint8_t GetPost4() const noexcept { return m_post4; }
    [[nodiscard]] const std::string& GetStr() const noexcept { return m_str; }

    [[nodiscard]] bool IsThisTrk(POSITION trk) const noexcept { return m_trkPos == trk; }
    [[nodiscard]] bool IsThisBlk(POSITION blk) const noexcept { return m_blkPos == blk; }
    [[nodiscard]] bool IsThisBlk(POSITION trk, POSITION blk) const noexcept
    {
        return m_trkPos == trk && m_blkPos == blk;
    }
    [[nodiscard]] bool IsThisEvnt(POSITION evnt) const noexcept { return m_evntPos == evnt; }

private:
    std::uint32_t m_time = 0;
    POSITION m_trkPos = nullptr;
    POSITION m_blkPos = nullptr;
    POSITION m_evntPos = nullptr;
    std::uint8_t m_status = 0;
    std::uint8_t m_note = 0;
    std::uint8_t m_vel = 0;
    std::uint8_t m_post3 = 0;
    std::uint8_t m_post4 = 0;
    std::uint32_t m_gate = 0;
    CEvnt* m_snapshot = nullptr;
    CBlk* m_blk = nullptr;
    std::string m_str;
};

} // namespace tessaro
