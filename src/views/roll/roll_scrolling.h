// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>

#include <cstdint>

namespace tessaro {

class CEditor;
class NoteTables;
class RollScale;

/// Where a roll is scrolled to, by what there is to see or by the mouse.
namespace roll_scrolling {

/// The bar line before the tick, as far as both fit into the view.
[[nodiscard]] std::uint32_t startOfPage(const CEditor& editor, const RollScale& scale, std::uint32_t tick);
/// The row in the middle of the track's notes in sight, or else of all its notes, of the lowest where not all find
/// room; that of `middleKey` without any.
[[nodiscard]] int middleRow(const NoteTables& notes, const RollScale& scale, int track, std::uint8_t middleKey);
/// A turn of the wheel by an angle: rows, with Shift time; with Ctrl the zoom of time, with both that of the rows.
void turnWheel(RollScale& scale, QPoint at, QPoint angle, Qt::KeyboardModifiers keys);
/// A step towards a pointer outside of the area.
void stepTowards(RollScale& scale, const QRect& area, QPoint pointer);

} // namespace roll_scrolling
} // namespace tessaro
