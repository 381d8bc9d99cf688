// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/take_echo.h"

#include "core/model/evnt.h"

#include <algorithm>
#include <new>

namespace tessaro {

void TakeEcho::clear() noexcept
{
    m_added.clear();
    m_events.clear();
    m_next = 0;
    try {
        m_events.reserve(room);
    } catch (const std::bad_alloc&) { // then the passes before are silent
    }
}

void TakeEcho::add(int track, const _EDT_EVNT& rec) noexcept
{
    if (rec.status < status::noteOff || rec.status >= status::sysex) return;
    m_added.push(
        {rec.time, rec.gateTime, static_cast<std::uint8_t>(track), status::kind(rec.status), rec.post1, rec.post2});
}

void TakeEcho::takeOver() noexcept
{
    const auto earlier = [](std::uint32_t tick, const Event& event) { return tick < event.time; };
    for (Event event; m_events.size() < m_events.capacity() && m_added.pop(event);)
        m_events.insert(std::upper_bound(m_events.begin(), m_events.end(), event.time, earlier), event);
    locate(m_from);
}

void TakeEcho::locate(std::uint32_t tick) noexcept
{
    m_from = tick;
    const auto at = std::partition_point(m_events.begin(), m_events.end(),
                                         [tick](const Event& event) { return event.time < tick; });
    m_next = static_cast<std::size_t>(at - m_events.begin());
}

const TakeEcho::Event* TakeEcho::next(std::uint32_t tick) noexcept
{
    if (m_next < m_events.size() && m_events[m_next].time <= tick) return &m_events[m_next++];
    m_from = tick + 1;
    return nullptr;
}

} // namespace tessaro
