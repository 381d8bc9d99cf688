// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/trk.h"

#include <memory>

namespace tessaro {

void CTrk::GetInfo(_EDT_TRKINFO& info) const
{
    info.type = m_type;
    info.port = m_port;
    info.ch = m_ch;
    info.trans = m_trans;
    info.solo = m_solo;
    info.mute = m_mute;
    info.rec = m_rec;
    info.transEnable = m_transEnable;
    info.name = m_name;
}

bool CTrk::SetType(std::uint8_t type) noexcept
{
    if (!IsEmpty()) return false;
    m_type = type;
    return true;
}

bool CTrk::SetCh(std::uint8_t ch) noexcept
{
    if (ch >= 16) return false;
    m_ch = ch;
    return true;
}

bool CTrk::SetTranspose(int semitones) noexcept
{
    if (semitones < -36 || semitones > 36) return false;
    m_trans = static_cast<std::int8_t>(semitones);
    return true;
}

bool CTrk::GetNext(POSITION& pos, CBlk** blk) const noexcept
{
    if (!Get(pos, blk)) return false;
    pos = pos->next;
    return true;
}

bool CTrk::GetPrev(POSITION& pos, CBlk** blk) const noexcept
{
    if (!Get(pos, blk)) return false;
    pos = pos->prev;
    return true;
}

bool CTrk::Get(POSITION pos, CBlk** blk) const noexcept
{
    if (!pos) return false;
    *blk = List<CBlk>::get(pos);
    return true;
}

void CTrk::New(CBlk** blk)
{
    auto made = std::make_unique<CBlk>();
    SetAutoBlkName(made.get());
    *blk = made.release();
}

void CTrk::NewAddTail(CBlk** blk)
{
    New(blk);
    m_blocks.addTail(*blk);
}

POSITION CTrk::Add(CBlk* blk, std::uint32_t time) noexcept
{
    CBlk* at = m_blocks.tail();
    while (at && at->GetTimeTop() > time) at = List<CBlk>::prev(at);
    if (at)
        m_blocks.insertAfter(at, blk);
    else
        m_blocks.addHead(blk);
    return blk;
}

POSITION CTrk::NewAdd(std::uint32_t top, CRealBlk* real, std::uint8_t type) { return NewAdd(top, top, real, type); }

POSITION CTrk::NewAdd(std::uint32_t top, std::uint32_t end, CRealBlk* real, std::uint8_t type)
{
    CBlk* blk = nullptr;
    New(&blk);
    blk->Set(top, end, real, type);
    return Add(blk, top);
}

POSITION CTrk::NewAdd(std::uint32_t top, std::uint32_t end, CRealBlk* real, std::uint8_t type, std::string name)
{
    // The automatic name is made all the same: every block uses up a number.
    const POSITION pos = NewAdd(top, end, real, type);
    List<CBlk>::get(pos)->SetName(std::move(name));
    return pos;
}

bool CTrk::Move(POSITION pos, std::uint32_t time) noexcept
{
    if (!pos) return false;
    CBlk* blk = List<CBlk>::get(pos);
    m_blocks.remove(blk);
    blk->SetTimeTop(time);
    Add(blk, time);
    return true;
}

bool CTrk::RemoveAt(POSITION pos) noexcept
{
    if (!pos) return false;
    m_blocks.remove(List<CBlk>::get(pos));
    return true;
}

bool CTrk::Del(POSITION pos) noexcept
{
    if (!RemoveAt(pos)) return false;
    delete List<CBlk>::get(pos);
    return true;
}

void CTrk::Remove() noexcept
{
    while (CBlk* blk = m_blocks.takeHead()) delete blk;
}

void CTrk::SetAutoBlkName(CBlk* blk)
{
    blk->SetName("Block" + std::to_string(m_namer.GetBlkNameNum()));
    m_namer.IncBlkNameNum();
}

bool CTrk::IsGhostExist(const CRealBlk* real) const noexcept
{
    for (const CBlk* blk = m_blocks.head(); blk; blk = List<CBlk>::next(blk))
        if (blk->GetType() == blktype::ghost && blk->GetRealBlk() == real) return true;
    return false;
}

} // namespace tessaro
