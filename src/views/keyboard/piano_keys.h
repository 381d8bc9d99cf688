// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>

namespace tessaro {

/// Where piano keys lie: so many semitones from a C on, over the whole of a place. Pixels.
class PianoKeys {
public:
    PianoKeys(int semitones, const QRectF& place) : m_semitones(semitones), m_place(place) {}

    [[nodiscard]] static bool isBlack(int semitone);
    /// A white key over its whole height, also below black ones.
    [[nodiscard]] QRectF key(int semitone) const;
    [[nodiscard]] std::optional<int> at(const QPointF& point) const;

private:
    /// White keys below this one.
    [[nodiscard]] static int whitesBelow(int semitone);

    int m_semitones;
    QRectF m_place;
};

} // namespace tessaro
