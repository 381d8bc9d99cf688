// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/evnt_index.h"

#include <algorithm>

namespace tessaro {

CEvnt* EvntIndex::lowerBound(const List<CEvnt>& list, std::uint32_t time)
{
    extend(list, time);
    // The last mark strictly before `time`: what is looked for lies behind it, or it is the head.
    const auto behind = std::lower_bound(m_marks.begin(), m_marks.end(), time,
                                         [](const Mark& mark, std::uint32_t t) { return mark.time < t; });
    CEvnt* e = behind == m_marks.begin() ? list.head() : std::prev(behind)->event;
    while (e && e->GetTime() < time) e = List<CEvnt>::next(e);
    return e;
}

void EvntIndex::changed(std::uint32_t time) noexcept
{
    while (!m_marks.empty() && m_marks.back().time >= time) m_marks.pop_back();
}

void EvntIndex::extend(const List<CEvnt>& list, std::uint32_t time)
{
    if (m_marks.empty()) {
        if (list.empty()) return;
        m_marks.push_back({list.head()->GetTime(), list.head()});
    }
    while (m_marks.back().time < time) {
        CEvnt* e = m_marks.back().event;
        for (std::size_t i = 0; e && i < stride; ++i) e = List<CEvnt>::next(e);
        if (!e) return;
        m_marks.push_back({e->GetTime(), e});
    }
}

} // namespace tessaro
