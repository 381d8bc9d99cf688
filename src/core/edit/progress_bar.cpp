// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/progress_bar.h"

#include <utility>

namespace tessaro {

void ProgressBar::open(std::uint32_t low, std::uint32_t high)
{
    if (!std::exchange(m_open, true)) m_port.begin(); // which may already let the window live
    range(low, high);
}

void ProgressBar::range(std::uint32_t low, std::uint32_t high)
{
    m_low = low;
    m_high = high;
    if (m_open) m_port.range(low, high);
}

void ProgressBar::pos(std::uint32_t position)
{
    if (m_open && position >= m_low && position <= m_high) m_port.pos(position);
}

void ProgressBar::text(std::string_view line)
{
    if (m_open) m_port.text(line);
}

void ProgressBar::close()
{
    if (m_open) m_port.end();
    m_open = false;
}

void ProgressBar::bytes(std::uint32_t done, std::uint32_t total)
{
    if (total != 0) pos(static_cast<std::uint32_t>(std::uint64_t{done} * 100 / total));
}

} // namespace tessaro
