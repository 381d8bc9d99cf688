// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/bar_lines.h"
#include "views/tracks/meas_scroll.h"
#include "views/tracks/trk_geometry.h"

#include <QAbstractScrollArea>

#include <functional>
#include <optional>

namespace tessaro {

class CEditor;

/// A window over the rows and the time line of the track window: scroll bars, of which the horizontal one counts
/// measures, wheel, drags with the middle button, zoom, and pages that follow the play position. What it shows is
/// painted by a class below. Ticks; points are those of the viewport. Borrows the editor.
class TrkScrollArea : public QAbstractScrollArea {
public:
    TrkScrollArea(CEditor& editor, QWidget* parent);

    std::function<void()> onZoom;

    [[nodiscard]] const TrkGeometry& geometry() const { return m_geometry; }
    /// The tick behind the left margin, as far as there are measures.
    void setOrigin(std::int64_t tick);
    void setZoom(double ticksAPixel);
    /// Around the middle of the window.
    void zoomBy(double steps);
    void setRowHeight(int pixels);
    void zoomTo(TrkGeometry::Span span);
    void zoomToSong();
    void reveal(int track);

protected:
    /// A painting is due; one for a burst of changes.
    void stale();
    virtual void paint(QPainter& painter, const QRect& area) = 0;

    /// Turns to the page that shows the tick, unless it is in sight.
    void turnPageTo(std::uint32_t tick);
    void reveal(const QRect& song);
    /// While something is dragged near a border or beyond it; true when that has moved the song.
    bool scrollAtEdge(QPoint at, bool rows);
    /// The song's end may be another one.
    void showScroll();
    /// Another song stands in the editor.
    void showTop();

    void startPan(QPoint at);
    void pan(QPoint at);
    void endPan() { m_pan.reset(); }
    [[nodiscard]] bool panning() const { return m_pan.has_value(); }

    [[nodiscard]] BarLines bars() const;

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;

    TrkGeometry m_geometry;

private:
    struct Pan {
        QPoint from;
        std::uint32_t origin;
        int scrollY;
    };

    void stepPages(int action);
    void scrolled();
    void zoomed();
    [[nodiscard]] int measures(std::uint32_t tick) const;

    CEditor& m_editor;
    MeasScroll m_scroll;
    std::optional<Pan> m_pan;
    bool m_stale = false; ///< a painting is on its way
    bool m_showingScroll = false;
};

} // namespace tessaro
