// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/meas_scroll.h"

#include <algorithm>

namespace tessaro {

void MeasScroll::reset(int measures)
{
    m_at = 0;
    m_range = std::clamp(measures, 0, most);
}

void MeasScroll::grow(int measures) { m_range = std::clamp(measures, m_at, most); }

int MeasScroll::thumb(int measure) { return m_at = std::clamp(measure, 0, m_range); }

int MeasScroll::step(int measures)
{
    m_at = std::clamp(m_at + measures, 0, most);
    m_range = std::max(m_range, m_at);
    return m_at;
}

} // namespace tessaro
