// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/roll/ruler_gesture.h"

#include <QPoint>

#include <cstdint>
#include <optional>
#include <utility>

class QPainter;
class QWidget;

namespace tessaro {

class RollScale;

/// The ruler over a roll: numbers of measures, the loop, the mark of the play position. A click goes to the place, a
/// drag marks the loop, and each end of the loop can be taken; all to the grid, with Alt anywhere. Pixels as in
/// RollScale. Borrows scale and what is in the parts.
class RollRuler {
public:
    RollRuler(const ViewParts& parts, const RollScale& scale) : m_parts(parts), m_scale(scale) {}

    void press(int x);
    void move(int x, Qt::KeyboardModifiers keys);
    void release(int x, Qt::KeyboardModifiers keys);
    void cancel();

    /// With the colours and the font of the widget.
    void paint(QPainter& painter, const QWidget& widget) const;
    /// The loop in the ruler and over the rows below.
    void paintLoop(QPainter& painter, const QWidget& widget) const;
    void paintPosition(QPainter& painter, const QWidget& widget, std::uint32_t position) const;

private:
    [[nodiscard]] std::optional<std::pair<std::uint32_t, std::uint32_t>> loop() const;
    [[nodiscard]] std::uint32_t time(int x, Qt::KeyboardModifiers keys) const;

    ViewParts m_parts;
    const RollScale& m_scale;
    RulerGesture m_gesture;
    std::optional<std::uint32_t> m_fixedEnd; ///< of the loop, while the other one is dragged
};

} // namespace tessaro
