// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/realblk.h"

#include "core/model/meta.h"

#include <algorithm>
#include <limits>

namespace tessaro {

namespace {

CEvnt* evntAt(POSITION pos) noexcept { return List<CEvnt>::get(pos); }

} // namespace

std::uint32_t CRealBlk::GetCount(std::uint8_t st) const noexcept
{
    std::uint32_t count = 0;
    for (const CEvnt* e = m_events.head(); e; e = List<CEvnt>::next(e))
        if (status::kind(e->GetStatus()) == status::kind(st)) ++count;
    return count;
}

bool CRealBlk::GetNext(POSITION& pos, CEvnt** e) const noexcept
{
    if (!Get(pos, e)) return false;
    pos = pos->next;
    return true;
}

bool CRealBlk::GetPrev(POSITION& pos, CEvnt** e) const noexcept
{
    if (!Get(pos, e)) return false;
    pos = pos->prev;
    return true;
}

bool CRealBlk::Get(POSITION pos, CEvnt** e) const noexcept
{
    if (!pos) return false;
    *e = evntAt(pos);
    return true;
}

bool CRealBlk::GetNextEvnt(POSITION& pos, _EDT_EVNT& rec) const
{
    if (!GetEvnt(pos, rec)) return false;
    pos = pos->next;
    return true;
}

bool CRealBlk::GetPrevEvnt(POSITION& pos, _EDT_EVNT& rec) const
{
    if (!GetEvnt(pos, rec)) return false;
    pos = pos->prev;
    return true;
}

bool CRealBlk::GetEvnt(POSITION pos, _EDT_EVNT& rec) const
{
    if (!pos) return false;
    evntAt(pos)->Get(rec);
    return true;
}

POSITION CRealBlk::GetHeadEvnt(_EDT_EVNT& rec) const
{
    GetEvnt(GetHeadPos(), rec);
    return GetHeadPos();
}

POSITION CRealBlk::GetTailEvnt(_EDT_EVNT& rec) const
{
    GetEvnt(GetTailPos(), rec);
    return GetTailPos();
}

void CRealBlk::NewAddTail(CEvnt** e) noexcept
{
    New(e);
    if (*e) m_events.addTail(*e);
}

void CRealBlk::AddHead(CEvnt* e) noexcept { m_events.addHead(e); }

void CRealBlk::AddTail(CEvnt* e) noexcept { m_events.addTail(e); }

void CRealBlk::InsertAfter(POSITION pos, CEvnt* e) noexcept { m_events.insertAfter(evntAt(pos), e); }

void CRealBlk::InsertBefore(POSITION pos, CEvnt* e) noexcept { m_events.insertBefore(evntAt(pos), e); }

void CRealBlk::link(CEvnt* e, CEvnt* before) noexcept
{
    if (before)
        m_events.insertAfter(before, e);
    else
        m_events.addHead(e);
}

CEvnt* CRealBlk::lastUpTo(std::uint32_t time, CEvnt* from) const noexcept
{
    const bool forward = from && from->GetTime() <= time;
    for (int steps = 0; steps < nearby; ++steps) {
        CEvnt* following = from ? List<CEvnt>::next(from) : nullptr;
        if (forward ? !following || following->GetTime() > time : !from || from->GetTime() <= time) return from;
        from = forward ? following : List<CEvnt>::prev(from);
    }
    return m_index.lastUpTo(m_events, time);
}

void CRealBlk::Add(std::uint32_t time, CEvnt* e) noexcept { link(e, lastUpTo(time, m_events.tail())); }

void CRealBlk::Add(std::uint32_t time, CEvnt* e, POSITION& pos) noexcept
{
    Add(time, e);
    pos = e;
}

void CRealBlk::Sort(POSITION& pos, std::uint32_t time, CEvnt* e) noexcept
{
    CEvnt* from = evntAt(pos);
    if (!from)
        m_events.addTail(e);
    else if (from->GetTime() > time)
        m_events.insertBefore(from, e);
    else
        m_events.insertAfter(lastUpTo(time, from), e);
    pos = e;
}

void CRealBlk::Sort(POSITION& pos, std::uint32_t time, CEvnt* e, POSITION& newPos) noexcept
{
    Sort(pos, time, e);
    newPos = e;
}

POSITION CRealBlk::Sort(std::uint32_t time, POSITION pos) noexcept
{
    if (!pos) return nullptr;
    CEvnt* e = evntAt(pos);
    CEvnt* front = lastUpTo(time, e);
    m_index.release(e);
    if (front != e && front != List<CEvnt>::prev(e)) {
        m_events.remove(e);
        link(e, front);
    }
    e->SetTime(time);
    return pos;
}

POSITION CRealBlk::placeOf(POSITION evnt) noexcept
{
    const CEvnt* before = List<CEvnt>::prev(evntAt(evnt));
    while (before && isRest(*before)) before = List<CEvnt>::prev(before);
    return const_cast<CEvnt*>(before);
}

void CRealBlk::Restore(CEvnt* e, POSITION place) noexcept
{
    CEvnt* before = evntAt(place);
    const auto following = [this, &before] { return before ? List<CEvnt>::next(before) : m_events.head(); };
    while (following() && isRest(*following()) && following()->GetTime() <= e->GetTime()) before = following();
    link(e, before);
}

template <class Fill>
bool CRealBlk::newSorted(std::uint32_t time, Fill&& fill)
{
    CEvnt* e = m_pool.make();
    if (!e) return false;
    if (!fill(*e)) {
        m_pool.destroy(e);
        return false;
    }
    Add(time, e);
    return true;
}

bool CRealBlk::AddTs(std::uint32_t time, const std::uint8_t* data)
{
    return newSorted(time, [&](CEvnt& e) { return e.SetTs(time, data); });
}

bool CRealBlk::AddTempo(std::uint32_t time, const std::uint8_t* data)
{
    return newSorted(time, [&](CEvnt& e) { return e.SetTempo(time, data); });
}

bool CRealBlk::NewAddTail(_EDT_SMF& smf)
{
    CEvnt* e = m_pool.make();
    if (!e) return false;
    if (!e->Set(smf)) {
        m_pool.destroy(e);
        return false;
    }
    m_events.addTail(e);
    return true;
}

bool CRealBlk::NewSort(_EDT_SMF& smf)
{
    return newSorted(smf.time, [&](CEvnt& e) { return e.Set(smf); });
}

POSITION CRealBlk::InsEvnt(const _EDT_EVNT& rec)
{
    CEvnt* made = nullptr;
    const auto fill = [&](CEvnt& e) {
        made = &e;
        return e.Set(rec);
    };
    return newSorted(rec.time, fill) ? made : nullptr;
}

POSITION CRealBlk::GetTimePos(std::uint32_t time) const { return m_index.lowerBound(m_events, time); }

std::uint32_t CRealBlk::GetTopEvntTime() const noexcept { return m_events.empty() ? 0 : m_events.head()->GetTime(); }

std::uint32_t CRealBlk::GetEndTime() const noexcept
{
    return m_events.empty() ? 0 : m_events.tail()->GetTime() + m_events.tail()->GetGateTime();
}

std::uint32_t CRealBlk::shifted(std::uint32_t time, std::int64_t delta) noexcept
{
    const std::int64_t moved = std::int64_t{time} + delta;
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(moved, 0, std::numeric_limits<std::uint32_t>::max()));
}

void CRealBlk::Move(std::int64_t delta) noexcept
{
    m_index.clear();
    for (CEvnt* e = m_events.head(); e; e = List<CEvnt>::next(e)) e->SetTime(shifted(e->GetTime(), delta));
}

void CRealBlk::ChngTs(POSITION pos, std::int64_t delta) noexcept
{
    m_index.clear();
    List<CEvnt> moved;
    for (CEvnt* e = evntAt(pos); e;) {
        CEvnt* following = List<CEvnt>::next(e);
        if (e->isMeta(meta::timeSignature)) {
            e->SetTime(shifted(e->GetTime(), delta));
            m_events.remove(e);
            moved.addTail(e);
        }
        e = following;
    }
    while (CEvnt* e = moved.takeHead()) Add(e->GetTime(), e);
}

bool CRealBlk::RemoveAt(POSITION pos) noexcept
{
    if (!pos) return false;
    m_index.release(evntAt(pos));
    m_events.remove(evntAt(pos));
    return true;
}

bool CRealBlk::Del(POSITION pos) noexcept
{
    if (!RemoveAt(pos)) return false;
    m_pool.destroy(evntAt(pos));
    return true;
}

void CRealBlk::Remove() noexcept
{
    m_index.forget();
    while (CEvnt* e = m_events.takeHead()) m_pool.destroy(e);
}

} // namespace tessaro
