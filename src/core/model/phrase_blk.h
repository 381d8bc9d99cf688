// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/records.h"

#include <cstdint>

namespace tessaro {

class CRealBlk;

/// A phrase of a style block: a span of ticks in the section that shows a real block, and the table that tells how
/// its notes follow a chord. It borrows the real block, which the song owns. User interface thread; the feeder reads
/// it while no edit runs.
class TESSARO_API CPhraseBlk : public ListNode {
public:
    [[nodiscard]] std::uint32_t GetTimeTop() const noexcept { return m_top; }
    [[nodiscard]] std::uint32_t GetTimeEnd() const noexcept { return m_end; }
    /// Relative to the section; the end is exclusive.
    void SetTime(std::uint32_t top, std::uint32_t end) noexcept
    {
        m_top = top;
        m_end = end;
    }
    [[nodiscard]] CRealBlk* GetRealBlk() const noexcept { return m_real; }
    void SetRealBlk(CRealBlk* real) noexcept { m_real = real; }
    [[nodiscard]] const _STYLE_CTAB& GetCtab() const noexcept { return m_ctab; }
    void SetCtab(const _STYLE_CTAB& table) noexcept { m_ctab = table; }
    [[nodiscard]] std::uint8_t GetCtabPart() const noexcept { return m_ctab.part; }
    void SetCtabPart(std::uint8_t part) noexcept { m_ctab.part = part; }
    void SetCtabTrk(std::uint8_t track) noexcept { m_ctab.track = track; }

private:
    CRealBlk* m_real = nullptr;
    std::uint32_t m_top = 0;
    std::uint32_t m_end = 0;
    _STYLE_CTAB m_ctab;
};

} // namespace tessaro
