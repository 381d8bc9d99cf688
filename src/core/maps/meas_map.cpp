// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/maps/meas_map.h"

#include "core/model/meta.h"

#include <algorithm>

namespace tessaro {

SignatureFault CMeasInfo::Set(std::uint32_t top, const std::uint8_t* data) noexcept
{
    if (data[0] == 0) return SignatureFault::numerator;
    if (data[1] >= 6) return SignatureFault::denominator;
    m_rec.top = top;
    m_rec.num = data[0];
    m_rec.den = data[1];
    m_rec.measClock = GetMeasClock(data[0], data[1]);
    m_rec.beatClock = GetMeasClock(1, data[1]);
    return SignatureFault::none;
}

SignatureFault MeasMap::build(const CRealBlk& master)
{
    m_runs.assign(1, Run{});
    for (const CEvnt* e = master.events().head(); e; e = List<CEvnt>::next(e)) {
        if (!e->isMeta(meta::timeSignature) || e->GetSzData() != 4) continue;
        Run& last = m_runs.back();
        const _EDT_MEASINFO cur = last.first.rec();
        const std::uint32_t distance = e->GetTime() - cur.top;
        if (distance % cur.measClock != 0) continue;
        if (distance != 0) {
            last.count = distance / cur.measClock;
            m_runs.push_back({CMeasInfo(), last.index + last.count, 1});
        }
        const SignatureFault fault = m_runs.back().first.Set(e->GetTime(), e->payload().data());
        if (fault == SignatureFault::none) continue;
        if (distance != 0) m_runs.pop_back();
        return fault;
    }
    return SignatureFault::none;
}

std::uint32_t MeasMap::count() const noexcept { return m_runs.empty() ? 0 : m_runs.back().index + m_runs.back().count; }

_EDT_MEASINFO MeasMap::node(std::uint32_t index) const noexcept
{
    const auto behind = std::upper_bound(m_runs.begin(), m_runs.end(), index,
                                         [](std::uint32_t i, const Run& run) { return i < run.index; });
    const Run& run = *std::prev(behind);
    _EDT_MEASINFO rec = run.first.rec();
    rec.top += (index - run.index) * rec.measClock;
    return rec;
}

_EDT_MEASINFO MeasMap::GetMeasInfo(std::int64_t index) const noexcept
{
    if (m_runs.empty()) return {};
    if (index < 1 || index > count()) return node(count() - 1);
    return node(static_cast<std::uint32_t>(index - 1));
}

const MeasMap::Run* MeasMap::runAt(std::uint32_t time) const noexcept
{
    const auto behind = std::upper_bound(m_runs.begin(), m_runs.end(), time,
                                         [](std::uint32_t t, const Run& run) { return t < run.first.rec().top; });
    return behind == m_runs.begin() ? nullptr : &*std::prev(behind);
}

_EDT_MEAS MeasMap::TimeToMeas(std::uint32_t time) const noexcept
{
    const Run* run = runAt(time);
    const Run whole;
    if (!run) run = &whole;
    const _EDT_MEASINFO& rec = run->first.rec();
    const std::uint32_t offset = time - rec.top;
    // On an empty map no node counts as a measure: the count starts at 0.
    const std::uint32_t before = m_runs.empty() ? 0 : run->index + 1;
    const std::uint32_t inMeasure = offset % rec.measClock;
    return {before + offset / rec.measClock, inMeasure / rec.beatClock + 1, offset % rec.beatClock};
}

void MeasMap::TimeToMeas(std::uint32_t time, std::uint32_t* last, MapPos& pos, _EDT_MEAS& meas) const noexcept
{
    const std::uint32_t nodes = count();
    const _EDT_MEAS answer = TimeToMeas(time);
    if (pos == 0 || pos > nodes) {
        // Already behind the last node: only the measures between the two times count.
        const _EDT_MEASINFO rec = GetMeasInfo(nodes);
        const std::uint32_t lastOffset = ((*last - rec.top) / rec.measClock) * rec.measClock;
        meas.meas += ((time - rec.top) - lastOffset) / rec.measClock;
    } else {
        const std::uint32_t reached = std::min(answer.meas, nodes);
        if (answer.meas > nodes) {
            // The walk leaves the list here, counting all nodes from `pos` and the measures behind.
            meas.meas += nodes - pos + 1 + (answer.meas - nodes);
            pos = 0;
        } else {
            meas.meas += reached - pos + 1;
            pos = reached + 1 > nodes ? 0 : reached + 1;
        }
    }
    meas.beat = answer.beat;
    meas.tick = answer.tick;
    *last = time;
}

std::uint32_t MeasMap::MeasToTime(const _EDT_MEAS& meas) const noexcept
{
    const std::uint32_t nodes = count();
    if (nodes == 0) return meas.meas * 1920 + meas.beat * 480 + meas.tick;
    if (meas.meas < nodes) {
        const _EDT_MEASINFO rec = node(meas.meas);
        return meas.beat * rec.beatClock + meas.tick + rec.top;
    }
    const _EDT_MEASINFO rec = node(nodes - 1);
    return (meas.meas - nodes + 1) * rec.measClock + meas.beat * rec.beatClock + meas.tick + rec.top;
}

std::uint32_t MeasMap::measureTop(std::uint32_t time) const noexcept
{
    return MeasToTime({TimeToMeas(time).meas - 1, 0, 0});
}

std::uint32_t MeasMap::GetMeasTime(std::uint32_t time) const noexcept
{
    const _EDT_MEAS at = TimeToMeas(time);
    if (at.beat == 1 && at.tick == 0) return time;
    const std::uint32_t start = MeasToTime({at.meas - 1, 0, 0});
    const std::uint32_t following = MeasToTime({at.meas, 0, 0});
    return time >= start + (following - start) / 2 ? following : start;
}

std::uint32_t MeasMap::GetBeatTime(std::uint32_t time, std::uint32_t* beat) const noexcept
{
    const std::uint32_t measure = TimeToMeas(time).meas - 1;
    *beat = GetMeasInfo(measure).beatClock;
    const std::uint32_t start = measureTop(time);
    const std::uint32_t cell = 2 * *beat;
    return start + ((time - start) / cell) * cell;
}

} // namespace tessaro
