// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/roll/roll_view.h"

#include <QStaticText>

#include <vector>

namespace tessaro {

/// The notes as bars over a keyboard. The keys can be played.
class CPianoView : public CRollView {
public:
    explicit CPianoView(const ViewParts& parts);

    [[nodiscard]] QString keyText(int key) const override;

protected:
    [[nodiscard]] QColor rowColour(int key) const override;
    [[nodiscard]] bool hasLineBelow(int key) const override;
    void paintColumn(QPainter& painter, const QRect& area, int held) const override;
    [[nodiscard]] QRect noteRect(const NoteInView& note) const override;
    void paintNoteText(QPainter& painter, const QRect& rect, const NoteInView& note,
                       const QColor& colour) const override;
    [[nodiscard]] TextId emptySentence() const override { return TextId::pianoEmpty; }

private:
    std::vector<QStaticText> m_names; ///< by key
};

} // namespace tessaro
