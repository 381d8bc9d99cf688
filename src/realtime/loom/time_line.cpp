// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/loom/time_line.h"

namespace tessaro {

namespace {

// A unit of 1/480 us is 25/12 ns.
constexpr std::int64_t nanosOver = 25;
constexpr std::int64_t nanosUnder = 12;

template <class T>
constexpr T floorDivide(T a, T b)
{
    return a / b - (a % b < 0 ? 1 : 0);
}

} // namespace

void TimeLine::start(Nanos time, TickLength length)
{
    m_length = length;
    place(0, time);
}

void TimeLine::place(std::int64_t tick, Nanos time)
{
    m_origin = time;
    m_tick = tick;
    m_units = 0;
    m_part = 0;
}

/// Time of a tick behind the origin, in units divided by the denominator.
TimeLine::Wide TimeLine::partsOf(std::int64_t tick) const
{
    return Wide{m_units} * m_length.denominator + m_part + Wide{tick - m_tick} * m_length.numerator;
}

Nanos TimeLine::due(std::int64_t tick) const
{
    const Wide under = Wide{nanosUnder} * m_length.denominator;
    const Wide rounded = floorDivide(partsOf(tick) * nanosOver * 2 + under, under * 2);
    return m_origin + Nanos(static_cast<std::int64_t>(rounded));
}

std::int64_t TimeLine::tickAt(Nanos time) const
{
    // due(tick) <= time means parts * 25 / (12 * denominator) < time + 1/2.
    const Wide limit = (Wide{(time - m_origin).count()} * 2 + 1) * nanosUnder * m_length.denominator;
    const Wide parts = -floorDivide(-limit, Wide{nanosOver * 2}) - 1;
    return m_tick + static_cast<std::int64_t>(floorDivide(parts - partsOf(m_tick), Wide{m_length.numerator}));
}

std::int64_t TimeLine::nearestTickAt(Nanos time) const
{
    const Wide elapsed = Wide{(time - m_origin).count()} * nanosUnder * m_length.denominator;
    const Wide length = Wide{m_length.numerator} * nanosOver;
    const Wide behind = elapsed - partsOf(m_tick) * nanosOver;
    return m_tick + static_cast<std::int64_t>(floorDivide(behind * 2 + length, length * 2));
}

double TimeLine::positionAt(Nanos time) const
{
    const std::int64_t tick = tickAt(time);
    const double length =
        static_cast<double>(m_length.numerator) * nanosOver / (static_cast<double>(m_length.denominator) * nanosUnder);
    return static_cast<double>(tick) + static_cast<double>((time - due(tick)).count()) / length;
}

void TimeLine::moveTo(std::int64_t tick)
{
    const Wide parts = partsOf(tick);
    m_units = static_cast<std::int64_t>(floorDivide(parts, Wide{m_length.denominator}));
    m_part = static_cast<std::int64_t>(parts - Wide{m_units} * m_length.denominator);
    m_tick = tick;
}

void TimeLine::setLengthFrom(std::int64_t tick, TickLength length)
{
    moveTo(tick);
    m_part = static_cast<std::int64_t>(Wide{m_part} * length.denominator / m_length.denominator);
    m_length = length;
}

void TimeLine::setLengthAt(Nanos time, TickLength length)
{
    const std::int64_t next = tickAt(time) + 1;
    const Wide elapsed = Wide{(time - m_origin).count()} * nanosUnder;
    const Wide rest = partsOf(next) - elapsed * m_length.denominator / nanosOver;
    const Wide parts = elapsed * length.denominator / nanosOver + rest * length.numerator / m_length.numerator;
    m_length = length;
    m_tick = next;
    m_units = static_cast<std::int64_t>(floorDivide(parts, Wide{length.denominator}));
    m_part = static_cast<std::int64_t>(parts - Wide{m_units} * length.denominator);
}

} // namespace tessaro
