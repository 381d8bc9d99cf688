// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/blk.h"
#include "core/model/records.h"

#include <cstdint>
#include <string>

namespace tessaro {

namespace trktype {
inline constexpr std::uint8_t unused = 0;
inline constexpr std::uint8_t midi = 1;
inline constexpr std::uint8_t wave = 2;
} // namespace trktype

/// Tracks of a song: number 0 is the master track, 1 to 100 are ordinary.
inline constexpr int trackCount = 101;

/// Hands out the running numbers of automatic block names.
class TESSARO_API BlkNamer {
public:
    [[nodiscard]] std::uint32_t GetBlkNameNum() const noexcept { return m_number; }
    void IncBlkNameNum() noexcept { ++m_number; }
    void SetBlkNameNum(std::uint32_t number) noexcept { m_number = number; }

private:
    std::uint32_t m_number = 0;
};

/// A track: a list of blocks sorted by top time, and the settings of its output. It owns its blocks and
/// never their real blocks. Blocks may overlap; equal tops keep the order of insertion. User interface
/// thread; the feeder reads it while no edit runs.
class TESSARO_API CTrk : public ListNode {
public:
    explicit CTrk(BlkNamer& namer) noexcept : m_namer(namer) {}
    CTrk(const CTrk&) = delete;
    CTrk& operator=(const CTrk&) = delete;
    ~CTrk() { Remove(); }

    [[nodiscard]] bool IsEmpty() const noexcept { return m_blocks.empty(); }
    [[nodiscard]] std::uint8_t GetType() const noexcept { return m_type; }
    [[nodiscard]] std::uint8_t GetPort() const noexcept { return m_port; }
    [[nodiscard]] std::uint8_t GetCh() const noexcept { return m_ch; }
    [[nodiscard]] std::int8_t GetTrans() const noexcept { return m_trans; }
    [[nodiscard]] bool GetSolo() const noexcept { return m_solo; }
    [[nodiscard]] bool GetMute() const noexcept { return m_mute; }
    [[nodiscard]] bool GetRec() const noexcept { return m_rec; }
    [[nodiscard]] bool GetTransEnable() const noexcept { return m_transEnable; }
    [[nodiscard]] const std::string& GetName() const noexcept { return m_name; }
    [[nodiscard]] std::uint32_t GetInstType() const noexcept { return m_instType; }
    [[nodiscard]] std::uint8_t GetStaffType() const noexcept { return m_staffType; }
    [[nodiscard]] std::uint8_t GetWavVol() const noexcept { return m_wavVol & 0x7FU; }
    void GetInfo(_EDT_TRKINFO& info) const;

    /// False, and no change, while the track has blocks.
    bool SetType(std::uint8_t type) noexcept;
    /// False for a channel above 15.
    bool SetCh(std::uint8_t ch) noexcept;
    /// Semitones; false outside -36 to +36.
    bool SetTranspose(int semitones) noexcept;
    void SetPort(std::uint8_t port) noexcept { m_port = port; }
    void SetSolo(bool on) noexcept { m_solo = on; }
    void SetMute(bool on) noexcept { m_mute = on; }
    void SetRec(bool on) noexcept { m_rec = on; }
    void SetTransEnable(bool on) noexcept { m_transEnable = on; }
    void SetName(std::string name) { m_name = std::move(name); }
    void SetInstType(std::uint32_t type) noexcept { m_instType = type; }
    void SetStaffType(std::uint8_t type) noexcept { m_staffType = type; }
    /// 0 to 127.
    void SetWavVol(std::uint8_t volume) noexcept { m_wavVol = volume & 0x7FU; }

    [[nodiscard]] std::uint32_t GetCount() const noexcept { return static_cast<std::uint32_t>(m_blocks.count()); }
    [[nodiscard]] POSITION GetHeadPos() const noexcept { return m_blocks.head(); }
    [[nodiscard]] POSITION GetTailPos() const noexcept { return m_blocks.tail(); }
    [[nodiscard]] POSITION GetPos(std::uint32_t index) const noexcept { return m_blocks.at(index); }
    [[nodiscard]] POSITION Find(const CBlk* blk) const noexcept { return m_blocks.find(blk); }
    bool GetNext(POSITION& pos, CBlk** blk) const noexcept;
    bool GetPrev(POSITION& pos, CBlk** blk) const noexcept;
    bool Get(POSITION pos, CBlk** blk) const noexcept;

    /// A new block with an automatic name; `New` leaves it in no list.
    void New(CBlk** blk);
    void NewAddTail(CBlk** blk);
    void AddHead(CBlk* blk) noexcept { m_blocks.addHead(blk); }
    void InsertAfter(POSITION pos, CBlk* blk) noexcept { m_blocks.insertAfter(List<CBlk>::get(pos), blk); }
    /// Sorted insertion from the tail, behind blocks of the same top. The block stands in no list.
    POSITION Add(CBlk* blk, std::uint32_t time) noexcept;
    POSITION NewAdd(std::uint32_t top, CRealBlk* real, std::uint8_t type);
    POSITION NewAdd(std::uint32_t top, std::uint32_t end, CRealBlk* real, std::uint8_t type);
    POSITION NewAdd(std::uint32_t top, std::uint32_t end, CRealBlk* real, std::uint8_t type, std::string name);
    /// Moves the block at `pos` to a new top, its length kept. Its position stays the same.
    bool Move(POSITION pos, std::uint32_t time) noexcept;
    bool RemoveAt(POSITION pos) noexcept;
    bool Del(POSITION pos) noexcept;
    void Remove() noexcept;
    void SetAutoBlkName(CBlk* blk);
    /// True if a ghost of this real block stands on the track.
    [[nodiscard]] bool IsGhostExist(const CRealBlk* real) const noexcept;

    [[nodiscard]] const List<CBlk>& blocks() const noexcept { return m_blocks; }

private:
    BlkNamer& m_namer;
    List<CBlk> m_blocks;
    std::string m_name;
    std::uint32_t m_instType = 0;
    std::uint8_t m_type = trktype::unused;
    std::uint8_t m_port = 0;
    std::uint8_t m_ch = 0;
    std::int8_t m_trans = 0;
    std::uint8_t m_staffType = 0;
    std::uint8_t m_wavVol = 0x7F;
    bool m_solo = false;
    bool m_mute = false;
    bool m_rec = false;
    bool m_transEnable = true;
};

} // namespace tessaro
