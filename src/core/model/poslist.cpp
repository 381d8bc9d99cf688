// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/poslist.h"

namespace tessaro {

void CPosList::Init() noexcept
{
    m_timeChng = m_measChng = m_tsChng = false;
    RemoveAll();
}

CPos* CPosList::NewAddTail()
{
    CPos* place = New();
    m_places.addTail(place);
    return place;
}

void CPosList::InsertBefore(POSITION pos, CPos* place) noexcept { m_places.insertBefore(List<CPos>::get(pos), place); }

void CPosList::insertBeforeOrAppend(CPos* at, CPos* place) noexcept
{
    if (at)
        m_places.insertBefore(at, place);
    else
        m_places.addTail(place);
}

void CPosList::Sort(POSITION& pos, std::uint32_t time, CPos* place) noexcept
{
    // The tail first: selections mostly arrive in order, and the place reached is the same.
    CPos* at = nullptr;
    if (!m_places.empty() && m_places.tail()->GetTime() > time) {
        at = m_places.head();
        while (at->GetTime() <= time) at = List<CPos>::next(at);
    }
    insertBeforeOrAppend(at, place);
    pos = place;
}

void CPosList::SortBefore(POSITION& pos, std::uint32_t time, CPos* place) noexcept
{
    CPos* at = nullptr;
    if (!m_places.empty() && m_places.tail()->GetTime() >= time) {
        at = m_places.head();
        while (at->GetTime() < time) at = List<CPos>::next(at);
    }
    insertBeforeOrAppend(at, place);
    pos = place;
}

void CPosList::SortNote(std::uint8_t note, CPos* place) noexcept
{
    CPos* at = m_places.head();
    while (at && at->GetNote() <= note) at = List<CPos>::next(at);
    insertBeforeOrAppend(at, place);
}

void CPosList::RemoveAll() noexcept
{
    while (CPos* place = m_places.takeHead()) delete place;
}

bool CPosList::RemoveAt(POSITION pos) noexcept
{
    if (!pos) return false;
    CPos* place = List<CPos>::get(pos);
    m_places.remove(place);
    delete place;
    return true;
}

void CPosList::RemoveFrom(int index) noexcept
{
    for (POSITION pos = FindIndex(index); pos;) {
        const POSITION following = pos->next;
        RemoveAt(pos);
        pos = following;
    }
}

POSITION CPosList::FindIndex(int index) const noexcept
{
    return index < 0 ? nullptr : m_places.at(static_cast<std::size_t>(index));
}

CPos* CPosList::GetNext(POSITION& pos) const noexcept
{
    CPos* place = GetAt(pos);
    if (place) pos = pos->next;
    return place;
}

CPos* CPosList::GetPrev(POSITION& pos) const noexcept
{
    CPos* place = GetAt(pos);
    if (place) pos = pos->prev;
    return place;
}

} // namespace tessaro
