// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/list/fault_label.h"
#include "views/master/master_edits.h"
#include "views/master/master_evnts.h"
#include "views/master/master_gesture.h"
#include "views/master/tempo_scale.h"
#include "views/roll/time_marks.h"

#include <QPointer>
#include <QWidget>

#include <functional>

class QLineEdit;

namespace tessaro {

class CListVw;

/// The picture of the master track: a ruler, flags of signatures, keys, markers and texts in lanes, and the tempo as
/// steps with a point at each event. A double click types the value of a point or flag in its place, or makes a new
/// one. What is selected, and what is done to it, is the list's. User interface thread.
class TempoView : public QWidget {
public:
    /// The list outlives it.
    TempoView(const ViewParts& parts, CListVw& list, QWidget* parent);

    /// The span in sight, or how wide it is, has changed.
    std::function<void()> onScaleChanged;
    /// What lies under the pointer, in words; empty for nothing.
    std::function<void(const QString&)> onPointed;

    [[nodiscard]] const TempoScale& scale() const { return m_scale; }
    [[nodiscard]] TempoScale& scale() { return m_scale; }
    [[nodiscard]] const MasterEvnts& evnts() const { return m_evnts; }
    /// The end of what there is to scroll to.
    [[nodiscard]] std::uint32_t songEnd() const;
    void scrollTo(std::uint32_t tick);
    void zoom(double factor);
    void fitSong();
    void fitSelection();
    void setPosition(std::uint32_t tick, bool follow);
    /// The master track is another one than before.
    void markStale();
    void retranslate();
    /// The line that is open; null for none.
    [[nodiscard]] QLineEdit* line() const;

    [[nodiscard]] QSize sizeHint() const override { return {800, 320}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {240, TempoScale::curveTop + 80}; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    /// What an open line is about.
    struct Typed {
        EvntRef ref;     ///< null for a new event
        EvntDraft draft; ///< of a new event
        ListColumn column = ListColumn::value1;
    };
    void refresh();
    void changed();
    [[nodiscard]] bool isLocked() const { return m_parts.isLocked && m_parts.isLocked(); }
    [[nodiscard]] QString flagText(const MasterFlag& flag) const;
    [[nodiscard]] int flagWidth(const MasterFlag& flag) const;
    [[nodiscard]] QString pointed(QPoint at) const;
    void paintGround(QPainter& painter);
    void paintRuler(QPainter& painter) const;
    void paintFlags(QPainter& painter) const;
    void paintCurve(QPainter& painter) const;
    void paintSteps(QPainter& painter, const std::vector<TempoPoint>& points, const QColor& colour, bool fill) const;
    void openLine(const QRect& place, Typed typed);
    void closeLine();
    void takeLine();

    const ViewParts m_parts;
    CListVw& m_list;
    TempoScale m_scale;
    MasterEvnts m_evnts;
    MasterEdits m_edits;
    MasterGesture m_gesture;
    std::vector<TimeMark> m_marks;
    QPointer<QLineEdit> m_line;
    FaultLabel m_fault;
    Typed m_typed;
    std::uint32_t m_position = 0;
    bool m_stale = true;
};

} // namespace tessaro
