// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/roll/note_status.h"
#include "views/roll/strip_commands.h"
#include "views/roll/strip_gesture.h"

#include <QWidget>

#include <functional>
#include <vector>

namespace tessaro {

class CRollView;

/// The controller strip below the notes: velocities, or events of one kind, over the same time as the view above, with
/// a scale of values at the left. It draws and forwards to StripGesture. Time scrolls and selection are those of the
/// view.
class StripView : public QWidget {
public:
    /// Borrows the view.
    StripView(const ViewParts& parts, CRollView& view);

    /// What lies under the pointer; all empty when it has left.
    std::function<void(const NoteStatus::Values&)> onPointed;
    std::function<void(const QPoint& global)> onMenu;

    void setTrack(int track);
    void setKind(const StripKind& kind);
    /// Of the kind, for the column at the left.
    void setName(const QString& name);
    void setPosition(std::uint32_t tick);
    [[nodiscard]] const StripKind& kind() const { return m_gesture.kind(); }
    /// The song changes from elsewhere: what the mouse began is over.
    void endGesture();
    void retranslate();
    [[nodiscard]] const StripGesture& gesture() const { return m_gesture; }

    [[nodiscard]] QSize sizeHint() const override { return {800, 200}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {200, 40}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    struct Look {
        QColor colour;
        std::vector<QRect> rects;
    };
    enum { plain, linked, selected, looks };

    [[nodiscard]] const RollScale& time() const;
    [[nodiscard]] const StripScale& scale() const { return m_gesture.scale(); }
    [[nodiscard]] QString valueText(int value) const;
    void paintLines(QPainter& painter, const QRect& area);
    void paintHeld(QPainter& painter, const QRect& area, TickRange span);
    void paintValues(QPainter& painter, TickRange span);
    void paintGesture(QPainter& painter) const;
    void paintColumn(QPainter& painter) const;
    void point(QPoint at);
    [[nodiscard]] QRect positionStrip() const;

    ViewParts m_parts;
    CRollView& m_view;
    StripCommands m_commands;
    StripGesture m_gesture;
    bool m_isDown = false; ///< the left button
    bool m_isBusy = false; ///< the mouse is changing the song at this moment
    int m_track = -1;
    std::uint32_t m_position = 0;
    QString m_name;
    Look m_looks[looks];
    std::vector<QRect> m_rects;
    std::vector<StripPoint> m_points;
};

} // namespace tessaro
