// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/pos.h"

namespace tessaro {

void CPos::Set(POSITION trk, POSITION blk, POSITION evnt) noexcept
{
    m_trkPos = trk;
    m_blkPos = blk;
    m_evntPos = evnt;
}

void CPos::Set(POSITION trk, POSITION blk, POSITION evnt, std::uint32_t time) noexcept
{
    Set(trk, blk, evnt);
    m_time = time;
}

void CPos::Set(std::uint32_t time, std::uint8_t status, std::uint8_t post1, std::uint8_t post2,
               std::uint32_t gate) noexcept
{
    m_time = time;
    Set(status, post1, post2, gate);
}

void CPos::Set(std::uint8_t status, std::uint8_t post1, std::uint8_t post2, std::uint32_t gate) noexcept
{
    Set(status, post1, gate);
    m_vel = post2;
}

void CPos::Set(std::uint8_t status, std::uint8_t post1, std::uint32_t gate) noexcept
{
    m_status = status;
    m_note = post1;
    m_gate = gate;
}

void CPos::Set(std::uint32_t time, std::uint8_t note) noexcept
{
    m_time = time;
    m_note = note;
}

void CPos::Set(std::uint32_t time, std::uint8_t status, std::uint8_t note) noexcept
{
    Set(time, note);
    m_status = status;
}

void CPos::Set(std::uint32_t time, CEvnt* snapshot) noexcept
{
    m_time = time;
    m_snapshot = snapshot;
}

void CPos::SetBlk(POSITION trk, POSITION blk) noexcept
{
    m_trkPos = trk;
    m_blkPos = blk;
}

void CPos::SetEvnt(CEvnt* snapshot) noexcept
{
    DelEvnt();
    m_snapshot = snapshot;
}

void CPos::NewSetEvnt(CEvnt** snapshot)
{
    m_snapshot = new CEvnt;
    *snapshot = m_snapshot;
}

void CPos::DelEvnt() noexcept
{
    delete m_snapshot;
    m_snapshot = nullptr;
}

void CPos::SetVce(std::uint8_t status, std::uint8_t post1, std::uint8_t post2, std::uint8_t post3) noexcept
{
    m_status = status;
    m_note = post1;
    m_vel = post2;
    m_post3 = post3;
}

void CPos::SetBnk(std::uint32_t time, std::uint8_t status, std::uint8_t post1, std::uint8_t post2) noexcept
{
    Set(time, status, post1);
    m_vel = post2;
}

void CPos::SetPc(std::uint32_t time, std::uint8_t status, std::uint8_t post1) noexcept { Set(time, status, post1); }

void CPos::Get(POSITION& trk, POSITION& blk, POSITION& evnt) const noexcept
{
    trk = m_trkPos;
    blk = m_blkPos;
    evnt = m_evntPos;
}

void CPos::GetVce(std::uint8_t& status, std::uint8_t& post1, std::uint8_t& post2, std::uint8_t& post3) const noexcept
{
    status = m_status;
    post1 = m_note;
    post2 = m_vel;
    post3 = m_post3;
}

} // namespace tessaro
