// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/drum/drum_gesture.h"
#include "views/drum/drum_rows.h"
#include "views/roll/roll_view.h"

namespace tessaro {

/// The hits of a drum track, a row a drum, as bars as high as they are loud. The heads of the rows can be played. The
/// pencil writes and takes hits, all other tools are those of the roll.
class CDrumView : public CRollView {
public:
    explicit CDrumView(const ViewParts& parts);

    void setShown(DrumRows::Shown shown);
    [[nodiscard]] DrumRows::Shown shown() const { return m_shown; }
    [[nodiscard]] const DrumRows& drumRows() const { return m_rows; }
    [[nodiscard]] const DrumGesture& pencil() const { return m_pencil; }

    [[nodiscard]] int keyStep(int rows) const override;
    [[nodiscard]] QString keyText(int key) const override;

protected:
    [[nodiscard]] QColor rowColour(int key) const override;
    [[nodiscard]] bool hasLineBelow(int) const override { return true; }
    void paintColumn(QPainter& painter, const QRect& area, int held) const override;
    [[nodiscard]] QRect noteRect(const NoteInView& note) const override;
    [[nodiscard]] TextId emptySentence() const override { return TextId::drumEmpty; }
    /// Between the bass drums and the open hi-hat.
    [[nodiscard]] std::uint8_t middleKey() const override { return 41; }
    void contentChanged() override;

    [[nodiscard]] QPoint gesturePoint(QPoint at) const override;
    void pressRows(QMouseEvent& event) override;
    void moveRows(QMouseEvent& event) override;
    void releaseRows(QMouseEvent& event) override;
    void cancelRows() override;
    void forEachShown(TickRange span, int low, int high, const NoteVisit& visit) const override;

private:
    DrumRows m_rows;
    DrumGesture m_pencil;
    DrumRows::Shown m_shown = DrumRows::Shown::named;
    std::uint64_t m_rowsRevision = 0; ///< of the notes that the rows were made for
};

} // namespace tessaro
