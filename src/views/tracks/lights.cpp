// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/lights.h"

#include <algorithm>

namespace tessaro {

void Lights::strike(int track, int velocity)
{
    auto& left = m_left.at(static_cast<std::size_t>(track));
    left = std::max(left, fadeTime / 2 + fadeTime * std::clamp(velocity, 0, 127) / 254);
}

void Lights::fade(int milliseconds)
{
    for (int& left : m_left) left = std::max(0, left - milliseconds);
}

void Lights::clear() { m_left.fill(0); }

int Lights::level(int track) const
{
    return (m_left.at(static_cast<std::size_t>(track)) * brightest + fadeTime - 1) / fadeTime;
}

} // namespace tessaro
