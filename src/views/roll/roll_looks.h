// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "views/roll/note_table.h"
#include "views/roll/roll_scale.h"

#include <QColor>
#include <QRect>

#include <functional>

class QPainter;

namespace tessaro {

/// What tells one kind of roll from another to the eye: rows, their column, notes.
class RollLooks {
public:
    virtual ~RollLooks() = default;

    [[nodiscard]] virtual QColor rowColour(int key) const = 0;
    [[nodiscard]] virtual bool hasLineBelow(int key) const = 0;
    /// The column at the left of the rows in this area; `held` sounds, -1 for none.
    virtual void paintColumn(QPainter& painter, const QRect& area, int held) const = 0;
    [[nodiscard]] virtual QRect noteRect(const NoteInView& note) const = 0;
    /// What stands on notes that are large enough.
    virtual void paintNoteText(QPainter&, const QRect&, const NoteInView&, const QColor&) const {}
    /// Every note as it is to look now.
    using NoteVisit = std::function<void(const NoteInView& note, bool isSelected)>;
    virtual void forEachShown(TickRange span, int low, int high, const NoteVisit& visit) const = 0;
    /// What to do on a track without notes.
    [[nodiscard]] virtual TextId emptySentence() const = 0;
};

} // namespace tessaro
