// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/smf/open_notes.h"

#include <algorithm>

namespace tessaro {

OpenNotes::OpenNotes(std::span<SmfTarget, 16> targets) : m_targets(targets) { m_zeros.fill(none); }

void OpenNotes::open(CEvnt& note, const SmfClock& now)
{
    Index index = m_free;
    if (index == none) {
        index = static_cast<Index>(m_notes.size());
        m_notes.emplace_back();
    } else {
        m_free = m_notes[index].next;
    }
    const std::uint8_t channel = status::channel(note.GetStatus());
    m_notes[index] = {&note, none, ++m_serial, now.rest(), m_targets[channel].endsSet};
    ++m_count;
    if (note.GetPost1() == 0) {
        m_notes[index].next = m_zeros[channel];
        m_zeros[channel] = index;
        return;
    }
    Queue& waiting = queue(channel, note.GetPost1());
    (waiting.first == none ? waiting.first : m_notes[waiting.last].next) = index;
    waiting.last = index;
}

void OpenNotes::close(std::uint8_t channel, std::uint8_t pitch, const SmfClock& now)
{
    if (pitch == 0) {
        closeZeros(channel, 0, now);
        return;
    }
    Queue& waiting = queue(channel, pitch);
    const Index taker = waiting.first;
    if (taker == none) return;
    waiting.first = m_notes[taker].next;
    closeZeros(channel, m_notes[taker].serial, now);
    finish(taker, now);
}

void OpenNotes::closeZeros(std::uint8_t channel, std::uint32_t afterSerial, const SmfClock& now)
{
    Index& top = m_zeros[channel];
    while (top != none && m_notes[top].serial > afterSerial) {
        const Index index = top;
        top = m_notes[index].next;
        finish(index, now);
    }
}

void OpenNotes::closeAll(const SmfClock& now)
{
    if (!empty()) {
        for (Index index = 0; index < m_notes.size(); ++index)
            if (m_notes[index].event) finish(index, now);
        m_queues.fill({});
        m_zeros.fill(none);
    }
    m_notes.clear();
    m_free = none;
}

void OpenNotes::finish(Index index, const SmfClock& now)
{
    Note& note = m_notes[index];
    CEvnt& event = *note.event;
    const std::uint32_t gate = std::max(now.since(event.GetTime(), note.rest), 1U);
    event.SetGateTime(gate);
    SmfTarget& target = m_targets[status::channel(event.GetStatus())];
    if (target.endsSet == note.endsSet) target.raiseEnd(event.GetTime() + gate);
    note.event = nullptr;
    note.next = m_free;
    m_free = index;
    --m_count;
}

} // namespace tessaro
