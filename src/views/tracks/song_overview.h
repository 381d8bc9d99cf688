// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/miniature.h"
#include "views/tracks/ruler_gesture.h"
#include "views/tracks/song_scale.h"
#include "views/tracks/track_rows.h"

#include <QPixmap>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

namespace tessaro {

/// The right side of the track pane: the whole song along the width, a ruler of measures over a lane for each row of
/// the list, with the play position. Lanes are kept as pictures, so that a step of the position paints two lines.
class SongOverview : public QWidget {
public:
    /// The measures of the song, as the ruler needs them.
    struct Measures {
        std::function<std::uint32_t(std::uint32_t)> top;     ///< tick of a measure counted from 0
        std::function<std::uint32_t(std::uint32_t)> nearest; ///< the bar line nearest to a tick
        std::uint32_t count = 0;
    };
    struct Loop {
        std::uint32_t start = 0;
        std::uint32_t end = 0;
        bool on = false;
        bool operator==(const Loop&) const = default;
    };

    /// A block under recording: its lane grows.
    struct Take {
        std::size_t row = 0;
        Miniature notes; ///< of this block alone
        std::uint32_t top = 0;
        std::uint32_t end = 0;
    };

    explicit SongOverview(QWidget* parent = nullptr);

    std::function<void(std::uint32_t tick)> onLocate;
    std::function<void(std::uint32_t start, std::uint32_t end)> onLoop;

    /// A song, or the same one changed. `end` is its length in ticks.
    void setSong(const std::vector<TrackRow>& rows, std::vector<Miniature> miniatures, std::uint32_t end,
                 Measures measures);
    /// Rows of the same tracks, with other switches.
    void setRows(const std::vector<TrackRow>& rows);
    [[nodiscard]] std::uint32_t end() const { return m_end; }
    void setPosition(std::uint32_t tick);
    void setLoop(const Loop& loop);
    /// What is being recorded now; nothing to end it.
    void setTakes(std::vector<Take> takes);
    void setRowHeight(int height);
    /// Pixels by which the lanes are scrolled up.
    void setScroll(int pixels);
    void setCurrentRow(int row);

    [[nodiscard]] QSize sizeHint() const override { return {600, 400}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 120}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] SongScale scale() const { return {m_end, width()}; }
    [[nodiscard]] QRect laneRect(std::size_t row) const;
    [[nodiscard]] QRect positionStrip(std::uint32_t tick) const;
    [[nodiscard]] const QPixmap& lane(std::size_t row);
    [[nodiscard]] QPixmap drawLane(std::size_t row) const;
    [[nodiscard]] QRect takeRect(const Take& take) const;
    void paintNotes(QPainter& painter, const Miniature& notes, int top, const QColor& colour) const;
    void paintTake(QPainter& painter, const Take& take) const;
    [[nodiscard]] std::uint32_t snapped(int x, Qt::KeyboardModifiers keys) const;
    void layOut();
    void paintRuler(QPainter& painter) const;
    void paintLanes(QPainter& painter, const QRect& area);
    void paintLoop(QPainter& painter) const;
    void paintPosition(QPainter& painter) const;

    std::vector<TrackRow> m_rows;
    std::vector<Miniature> m_miniatures; ///< beside m_rows
    std::vector<QPixmap> m_lanes;        ///< beside m_rows; null until first shown
    std::vector<Take> m_takes;
    std::vector<RulerMark> m_marks;
    Measures m_measures;
    Loop m_loop;
    RulerGesture m_gesture;
    std::uint32_t m_end = 0;
    std::uint32_t m_position = 0;
    int m_rowHeight = 28;
    int m_scroll = 0;
    int m_currentRow = -1;
};

} // namespace tessaro
