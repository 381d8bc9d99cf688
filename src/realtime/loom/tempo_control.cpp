// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/tempo_control.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::int64_t thousand = 1'000;
constexpr std::int64_t million = 1'000'000;
constexpr std::uint32_t microsPerMinute = 60'000'000;

} // namespace

void TempoControl::setBase(std::uint32_t tempo)
{
    if (tempo == 0) return;
    m_base = tempo;
    m_setBase = tempo;
}

void TempoControl::setRelative(int thousandths) { m_relative = std::clamp(thousandths, relativeMin, relativeMax); }

void TempoControl::setTrim(int millionths) { m_trim = std::clamp(millionths, -500'000, 500'000); }

void TempoControl::request()
{
    if (const std::uint32_t tempo = m_setBase.exchange(0)) m_askedBase = tempo;
    m_asked = true;
}

int TempoControl::baseBeats() const
{
    const std::uint32_t tempo = m_base.load(std::memory_order_relaxed);
    return static_cast<int>((microsPerMinute + tempo / 2) / tempo);
}

int TempoControl::realBeats() const
{
    return static_cast<int>(std::int64_t{baseBeats()} * (thousand + relative()) / thousand);
}

bool TempoControl::takeRequest()
{
    if (!m_asked.exchange(false)) return false;
    if (const std::uint32_t tempo = m_askedBase.exchange(0)) m_engine.base = tempo;
    m_engine.relative = m_relative;
    m_engine.trim = m_trim;
    return true;
}

void TempoControl::play(std::uint32_t tempo)
{
    if (tempo == 0) return;
    m_engine.base = tempo;
    m_base = tempo;
}

/// Not reduced: the denominator stays the same from tempo to tempo, so the time line carries remainders over whole.
TickLength TempoControl::lengthAt(std::uint32_t tempo) const
{
    TickLength length{.numerator = tempo * thousand, .denominator = thousand + m_engine.relative};
    if (m_engine.trim != 0) {
        length.numerator *= million;
        length.denominator *= million + m_engine.trim;
    }
    return length;
}

} // namespace tessaro
