// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/editors/view_parts.h"
#include "views/roll/roll_looks.h"
#include "views/roll/roll_painter.h"
#include "views/roll/roll_ruler.h"
#include "views/roll/roll_scale.h"

#include <QWidget>

#include <cstdint>
#include <functional>

namespace tessaro {

/// A roll to look at: the track it shows, where it is scrolled to, the play position, all that is painted. What can be
/// done with the mouse comes with those that derive from it.
class RollSheet : public QWidget, protected RollLooks {
public:
    explicit RollSheet(const ViewParts& parts);

    /// It was scrolled, zoomed, or its rows are others.
    std::function<void()> onScale;

    [[nodiscard]] int track() const { return m_track; }
    [[nodiscard]] const RollScale& scale() const { return m_scale; }
    /// Every change of scale: `change(RollScale&)`.
    template <class Change>
    void rescale(Change&& change)
    {
        const int scroll = m_scale.scroll();
        change(m_scale);
        if (m_scale.scroll() != scroll) m_isCentred = false;
        scaleChanged();
    }
    void setShadows(bool on);
    [[nodiscard]] bool shadows() const { return m_shadows; }
    [[nodiscard]] std::uint32_t position() const { return m_position; }
    void showTick(std::uint32_t tick);
    /// Begins with the measure of this tick, the rows of its notes in the middle.
    void reveal(std::uint32_t tick);
    /// Where scrolling should lead at least.
    [[nodiscard]] std::uint32_t songEnd() const;

    [[nodiscard]] QSize sizeHint() const override { return {800, 400}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {RollScale::left + 80, RollScale::ruler + 64}; }

protected:
    /// The middle of what is shown of a track without notes.
    [[nodiscard]] virtual std::uint8_t middleKey() const { return 60; }
    /// What the mouse is about, over the song.
    virtual void paintGesture(QPainter& painter) const = 0;
    /// A note is being drawn.
    [[nodiscard]] virtual bool isDrawing() const = 0;

    [[nodiscard]] const ViewParts& parts() const { return m_parts; }
    [[nodiscard]] RollRuler& ruler() { return m_ruler; }
    [[nodiscard]] QRect rowsArea() const;
    [[nodiscard]] bool isMidi() const;
    void showTrack(int track);
    void centreRows();
    void setPosition(std::uint32_t tick);
    /// Of the column, -1 for none.
    [[nodiscard]] int heldKey() const { return m_heldKey; }
    void setHeldKey(int key);
    /// For many changes in a row.
    void paintSoon();

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void scaleChanged();
    void startAtPage(std::uint32_t tick);
    [[nodiscard]] QRect positionStrip(std::uint32_t tick) const;
    [[nodiscard]] bool hasNotes();
    void paintSong(QPainter& painter, const QRect& area);

    ViewParts m_parts;
    RollScale m_scale;
    RollRuler m_ruler;
    RollPainter m_painter;
    int m_track = -1;
    int m_heldKey = -1;
    std::uint32_t m_position = 0;
    bool m_shadows = false;
    bool m_isCentred = true;           ///< the rows of the notes stay in the middle: nobody has scrolled yet
    bool m_isStale = false;            ///< a painting is asked for
    std::uint64_t m_notesRevision = 0; ///< of m_hasNotes
    bool m_hasNotes = false;
};

} // namespace tessaro
