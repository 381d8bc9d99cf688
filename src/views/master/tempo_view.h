// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/master/master_edits.h"
#include "views/master/master_evnts.h"
#include "views/master/master_gesture.h"
#include "views/master/tempo_line.h"
#include "views/master/tempo_painter.h"
#include "views/master/tempo_scale.h"

#include <QBasicTimer>
#include <QWidget>

#include <functional>

class QMenu;

namespace tessaro {

class CListVw;

/// The picture of the master track: a ruler, flags of signatures, keys, markers and texts in lanes, and the tempo as
/// steps with a point at each event. A double click types the value of a point or flag in its place, or makes a new
/// one. What is selected, and what is done to it, is the list's. A drag beyond the left or right edge goes on through
/// time. User interface thread.
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
    [[nodiscard]] QLineEdit* line() const { return m_line.line(); }
    /// Opens a line for the first event that is selected; false when it is out of sight.
    bool openSelected();
    /// What can be done at a point; an event there is selected.
    void fillMenu(QMenu& menu, QPoint at);

    [[nodiscard]] QSize sizeHint() const override { return {800, 320}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {240, TempoScale::curveTop + 80}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void catchUp();
    void changed();
    void cancel();
    void scrollAtEdge();
    [[nodiscard]] bool isLocked() const { return m_parts.isLocked && m_parts.isLocked(); }
    [[nodiscard]] QString pointed(QPoint at) const;
    [[nodiscard]] QRect linePlace(std::uint32_t time, int y) const;
    void openLine(POSITION evnt, std::uint32_t time, int y);
    void insertAt(QPoint at, Qt::KeyboardModifiers keys);

    const ViewParts m_parts;
    CListVw& m_list;
    TempoScale m_scale;
    MasterEvnts m_evnts;
    MasterEdits m_edits;
    MasterGesture m_gesture;
    TempoPainter m_painter;
    TempoLine m_line;
    QBasicTimer m_edgeTimer; ///< while the mouse is beyond an edge
    QPoint m_pointer;        ///< of the last event of the mouse
    Qt::KeyboardModifiers m_pointerKeys;
    std::uint32_t m_position = 0;
    bool m_isDown = false; ///< the left button, on something that can be dragged
    bool m_stale = true;
};

} // namespace tessaro
