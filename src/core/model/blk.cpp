// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/blk.h"

namespace tessaro {

void CBlk::GetTime(std::uint32_t* top, std::uint32_t* end) const noexcept
{
    *top = m_top;
    *end = m_end;
}

void CBlk::Set(std::uint32_t top, std::uint32_t end, CRealBlk* real, std::uint8_t type) noexcept
{
    m_top = top;
    m_end = end;
    m_real = real;
    m_type = type;
}

void CBlk::SetTimeTop(std::uint32_t top) noexcept
{
    m_end = top + (m_end - m_top);
    m_top = top;
}

void CBlk::SetTimeEnd(std::uint32_t end) noexcept
{
    if (end >= m_top) m_end = end;
}

void CBlk::SetTimeEndCmp(std::uint32_t end) noexcept
{
    if (end > m_end) m_end = end;
}

void CBlk::ChngTs(POSITION pos, std::int64_t delta) noexcept
{
    if (m_real) m_real->ChngTs(pos, delta);
}

POSITION CBlk::GetTimePos(std::uint32_t time) const
{
    if (!m_real || time < m_top || time > m_end) return nullptr;
    return m_real->GetTimePos(time - m_top);
}

POSITION CBlk::InsEvnt(_EDT_EVNT rec)
{
    if (!m_real || rec.time < m_top) return nullptr;
    rec.time -= m_top;
    return m_real->InsEvnt(rec);
}

} // namespace tessaro
