// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/strip_path.h"

#include <algorithm>

namespace tessaro {

void StripPath::start(StripPoint at)
{
    m_knots = {{at.time, at.value}};
    m_end = at;
    m_bend = 0;
}

void StripPath::lineTo(StripPoint to)
{
    const auto [from, last] = std::minmax(m_end.time, to.time);
    m_knots.erase(m_knots.lower_bound(from), m_knots.upper_bound(last));
    m_knots[m_end.time] = m_end.value;
    m_knots[to.time] = to.value;
    m_end = to;
}

double StripPath::valueAt(std::uint32_t time) const
{
    const auto behind = m_knots.lower_bound(time);
    if (behind == m_knots.end()) return m_knots.rbegin()->second;
    if (behind->first == time || behind == m_knots.begin()) return behind->second;
    const auto& [leftTime, left] = *std::prev(behind);
    const double part = static_cast<double>(time - leftTime) / (behind->first - leftTime);
    const double way = static_cast<double>(time - first()) / (last() - first());
    return left + part * (behind->second - left) + 4 * m_bend * way * (1 - way);
}

} // namespace tessaro
