// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/evnt_index.h"

#include <algorithm>
#include <new>

namespace tessaro {

namespace {

/// Without memory there are fewer marks, which does no harm.
template <class Marks>
void remember(Marks& marks, CEvnt* e) noexcept
{
    try {
        marks.push_back({e->GetTime(), e});
    } catch (const std::bad_alloc&) {
    }
}

} // namespace

CEvnt* EvntIndex::lowerBound(const List<CEvnt>& list, std::uint32_t time) noexcept
{
    const auto behind = std::lower_bound(m_marks.begin(), m_marks.end(), time,
                                         [](const Mark& mark, std::uint32_t t) { return mark.time < t; });
    CEvnt* last = walk(list, behind, [time](const CEvnt& e) { return e.GetTime() < time; });
    return last ? List<CEvnt>::next(last) : list.head();
}

CEvnt* EvntIndex::lastUpTo(const List<CEvnt>& list, std::uint32_t time) noexcept
{
    const auto behind = std::upper_bound(m_marks.begin(), m_marks.end(), time,
                                         [](std::uint32_t t, const Mark& mark) { return t < mark.time; });
    return walk(list, behind, [time](const CEvnt& e) { return e.GetTime() <= time; });
}

/// The last event that passes, null for none; the marks before `behind` pass, those from there on do not.
template <class Passes>
CEvnt* EvntIndex::walk(const List<CEvnt>& list, Marks::iterator behind, Passes passes) noexcept
{
    CEvnt* last = behind == m_marks.begin() ? nullptr : std::prev(behind)->event;
    CEvnt* e = last ? List<CEvnt>::next(last) : list.head();
    Marks fresh;
    for (std::size_t steps = 1; e && passes(*e); ++steps) {
        if (steps >= 2 * stride && steps % stride == 0) remember(fresh, e);
        last = e;
        e = List<CEvnt>::next(e);
    }
    if (!fresh.empty()) add(behind, fresh);
    return last;
}

void EvntIndex::add(Marks::iterator at, const Marks& fresh) noexcept
{
    try {
        m_marks.insert(at, fresh.begin(), fresh.end());
    } catch (const std::bad_alloc&) {
        return;
    }
    for (const Mark& mark : fresh) mark.event->setMarked(true);
}

/// A neighbour takes the mark over, unless both have one.
void EvntIndex::moveMark(CEvnt* e) noexcept
{
    auto at = std::lower_bound(m_marks.begin(), m_marks.end(), e->GetTime(),
                               [](const Mark& mark, std::uint32_t t) { return mark.time < t; });
    at = std::find_if(at, m_marks.end(), [e](const Mark& mark) { return mark.event == e; });
    if (at == m_marks.end()) { // its time was changed in place
        clear();
        return;
    }
    e->setMarked(false);
    for (CEvnt* heir : {List<CEvnt>::next(e), List<CEvnt>::prev(e)}) {
        if (!heir || heir->isMarked()) continue;
        heir->setMarked(true);
        *at = {heir->GetTime(), heir};
        return;
    }
    m_marks.erase(at);
}

void EvntIndex::clear() noexcept
{
    for (const Mark& mark : m_marks) mark.event->setMarked(false);
    m_marks.clear();
}

} // namespace tessaro
