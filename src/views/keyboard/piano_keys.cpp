// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/keyboard/piano_keys.h"

namespace tessaro {
namespace {

constexpr double blackWidth = 0.62; ///< of a white key
constexpr double blackHeight = 0.6;

} // namespace

bool PianoKeys::isBlack(int semitone) { return 0b0101'0100'1010U >> (semitone % 12) & 1U; }

int PianoKeys::whitesBelow(int semitone)
{
    int whites = semitone / 12 * 7;
    for (int s = 0; s < semitone % 12; ++s) whites += !isBlack(s);
    return whites;
}

QRectF PianoKeys::key(int semitone) const
{
    const double width = m_place.width() / whitesBelow(m_semitones);
    const double left = m_place.left() + width * whitesBelow(semitone);
    if (!isBlack(semitone)) return {left, m_place.top(), width, m_place.height()};
    return {left - width * blackWidth / 2, m_place.top(), width * blackWidth, m_place.height() * blackHeight};
}

std::optional<int> PianoKeys::at(const QPointF& point) const
{
    for (const bool black : {true, false})
        for (int semitone = 0; semitone < m_semitones; ++semitone)
            if (isBlack(semitone) == black && key(semitone).contains(point)) return semitone;
    return std::nullopt;
}

} // namespace tessaro
