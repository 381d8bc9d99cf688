// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/play/count_in.h"

#include "core/edit/editor.h"
#include "realtime/play/queue_writer.h"

#include <algorithm>

namespace tessaro {

void CountIn::queue(QueueWriter& queue, const CEditor& editor, std::uint32_t tick, unsigned bars)
{
    _EDT_MEAS place;
    _EDT_MEASINFO info;
    editor.TimeToMeas(tick, place);
    editor.GetMeasInfo(place.meas, info);

    const unsigned numerator = std::max<unsigned>(info.num, 1);
    unsigned beats = bars * numerator + place.beat - std::min(place.beat, 1U);
    if (place.tick != 0) ++beats;
    const std::uint32_t lastBeat = place.tick != 0 ? place.tick : info.beatClock;

    std::uint8_t open = 0;
    for (unsigned i = 0; i < beats; ++i) {
        if (i > 0) {
            queue.pause(info.beatClock);
            queue.beat(open, false);
        }
        open = i % numerator == 0 ? 0 : 1;
        queue.beat(open, true);
    }
    if (beats > 0) {
        queue.pause(lastBeat);
        queue.beat(open, false);
    } else {
        queue.nullRecord();
    }
    m_records = std::max(2 * beats, 1U);
}

void CountIn::begin(unsigned waiting) noexcept
{
    m_start = waiting;
    follow(waiting);
}

bool CountIn::follow(unsigned waiting) noexcept
{
    const unsigned played = m_start - std::min(waiting, m_start);
    if (played >= m_records) {
        clear();
        return false;
    }
    m_shown.store((static_cast<int>(played) - static_cast<int>(m_records)) / 2, std::memory_order_relaxed);
    return true;
}

void CountIn::clear() noexcept
{
    m_records = 0;
    m_shown.store(none, std::memory_order_relaxed);
}

std::optional<int> CountIn::shown() const noexcept
{
    const int value = m_shown.load(std::memory_order_relaxed);
    return value == none ? std::nullopt : std::optional{value};
}

} // namespace tessaro
