// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/transport/location_text.h"

#include <cstdio>

namespace tessaro {
namespace {

template <class... Values>
std::string formatted(const char* format, Values... values)
{
    char text[64];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

} // namespace

std::string locationText(const _EDT_MEAS& place)
{
    return formatted("%u:%02u:%03u", place.meas, place.beat, place.tick);
}

std::string clockText(std::uint32_t milliseconds)
{
    const std::uint32_t tenths = milliseconds / 100 % 10;
    const std::uint32_t seconds = milliseconds / 1000 % 60;
    const std::uint32_t minutes = milliseconds / 60000;
    if (minutes < 60) return formatted("%u:%02u.%u", minutes, seconds, tenths);
    return formatted("%u:%02u:%02u.%u", minutes / 60, minutes % 60, seconds, tenths);
}

std::string tempoText(std::uint32_t microseconds)
{
    return microseconds == 0 ? "-" : formatted("%.2f", 60'000'000.0 / microseconds);
}

std::string signatureText(unsigned numerator, unsigned denominatorPower)
{
    return formatted("%u/%u", numerator, denominatorPower < 32 ? 1U << denominatorPower : 0U);
}

} // namespace tessaro
