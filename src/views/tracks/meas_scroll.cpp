// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/meas_scroll.h"

#include <algorithm>

namespace tessaro {

void MeasScroll::reset(int measures)
{
    m_at = m_reached = 0;
    setSong(measures);
}

void MeasScroll::setSong(int measures) { m_song = std::clamp(measures, 0, most); }

int MeasScroll::thumb(int measure) { return m_at = std::clamp(measure, 0, range()); }

int MeasScroll::step(int measures)
{
    m_at = std::clamp(m_at + measures, 0, most);
    m_reached = std::max(m_reached, m_at);
    return m_at;
}

} // namespace tessaro
