// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/maps/tempo_map.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {
/// Microseconds times ticks a quarter in one millisecond.
constexpr double unitsPerMsec = 480000.0;
} // namespace

bool CTimeInfo::Set(const _EDT_TIMEINFO& prev, std::uint32_t tempo) noexcept
{
    if (tempo == 0) return false;
    m_rec = prev;
    m_rec.tempo = tempo;
    return true;
}

bool CTimeInfo::Set(const _EDT_TIMEINFO& prev, std::uint32_t time, std::uint32_t tempo, std::uint32_t& rem) noexcept
{
    if (tempo == 0) return false;
    const double units = static_cast<double>(time - prev.time) * prev.tempo + rem;
    m_rec.time = time;
    m_rec.tempo = tempo;
    m_rec.msec = static_cast<std::uint32_t>(static_cast<std::uint64_t>(prev.msec + std::trunc(units / unitsPerMsec)));
    rem = static_cast<std::uint32_t>(std::fmod(std::trunc(units), unitsPerMsec));
    return true;
}

void TempoMap::begin()
{
    m_nodes.assign(1, CTimeInfo());
    m_rem = 0;
}

bool TempoMap::add(std::uint32_t time, std::uint32_t tempo)
{
    const _EDT_TIMEINFO prev = m_nodes.back().rec();
    if (time == prev.time) return m_nodes.back().Set(prev, tempo);
    CTimeInfo fresh;
    if (!fresh.Set(prev, time, tempo, m_rem)) return false;
    m_nodes.push_back(fresh);
    return true;
}

_EDT_TIMEINFO TempoMap::GetTimeInfo(std::uint32_t time) const noexcept
{
    const auto behind = std::upper_bound(m_nodes.begin(), m_nodes.end(), time,
                                         [](std::uint32_t t, const CTimeInfo& node) { return t < node.rec().time; });
    return behind == m_nodes.begin() ? _EDT_TIMEINFO{} : std::prev(behind)->rec();
}

_EDT_TIMEINFO TempoMap::GetHeadTimeInfo() const noexcept
{
    return m_nodes.empty() ? _EDT_TIMEINFO{} : m_nodes.front().rec();
}

std::uint32_t TempoMap::TimeToMsecond(std::uint32_t time) const noexcept
{
    if (m_nodes.empty()) return 0;
    const _EDT_TIMEINFO at = GetTimeInfo(time);
    const double units = static_cast<double>(time - at.time) * at.tempo;
    return at.msec + static_cast<std::uint32_t>(static_cast<std::uint64_t>(units / unitsPerMsec));
}

std::uint32_t TempoMap::MsecondToTime(std::uint32_t msec) const noexcept
{
    // The last of equal milliseconds, as a search from the tail finds it.
    const auto behind = std::upper_bound(m_nodes.begin(), m_nodes.end(), msec,
                                         [](std::uint32_t m, const CTimeInfo& node) { return m < node.rec().msec; });
    if (behind == m_nodes.begin()) return 0;
    const _EDT_TIMEINFO at = std::prev(behind)->rec();
    const double ticks = static_cast<double>(msec - at.msec) * unitsPerMsec / at.tempo;
    return at.time + static_cast<std::uint32_t>(static_cast<std::uint64_t>(ticks));
}

} // namespace tessaro
