// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/master/master_evnts.h"
#include "views/roll/time_marks.h"

#include <QColor>
#include <QString>

#include <vector>

class QPainter;
class QWidget;

namespace tessaro {

class CListVw;
class MasterGesture;
class TempoScale;

/// Draws the picture of the master track: names of the lanes, ruler, flags, the tempo as steps with a point at each
/// event, and what the mouse is about to do. Costs what is in sight. Borrows all.
class TempoPainter {
public:
    struct Parts {
        const TempoScale& scale;
        const MasterEvnts& evnts;
        const MasterGesture& gesture;
        const CListVw& list;
    };
    /// The widget tells size, font and colours.
    TempoPainter(const ViewParts& view, const Parts& parts, const QWidget& widget)
        : m_view(view)
        , m_parts(parts)
        , m_widget(widget)
    {
    }

    void paint(QPainter& painter, std::uint32_t position);
    /// Pixels that a flag takes.
    [[nodiscard]] int flagWidth(const MasterFlag& flag) const;

private:
    [[nodiscard]] QString flagText(const MasterFlag& flag) const;
    void paintGround(QPainter& painter);
    void paintNames(QPainter& painter) const;
    void paintTempos(QPainter& painter) const;
    void paintRuler(QPainter& painter) const;
    void paintFlags(QPainter& painter) const;
    void paintCurve(QPainter& painter) const;
    void paintPoints(QPainter& painter, const std::vector<TempoPoint>& points) const;
    void paintSteps(QPainter& painter, const std::vector<TempoPoint>& points, const QColor& colour, bool fill) const;

    const ViewParts m_view;
    const Parts m_parts;
    const QWidget& m_widget;
    std::vector<TimeMark> m_marks;
};

} // namespace tessaro
