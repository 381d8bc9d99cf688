// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/roll_scrolling.h"

#include "core/edit/editor.h"
#include "views/roll/note_table.h"
#include "views/roll/roll_scale.h"

#include <algorithm>
#include <cmath>

namespace tessaro::roll_scrolling {
namespace {

constexpr double zoomStep = 1.25;
constexpr int turnAcross = 60;                ///< pixels
constexpr int turnDown = 3;                   ///< rows
constexpr QPoint mostAtEdge = QPoint(40, 20); ///< pixels of a step

} // namespace

std::uint32_t startOfPage(const CEditor& editor, const RollScale& scale, std::uint32_t tick)
{
    const TickRange seen = scale.span();
    _EDT_MEAS place;
    editor.TimeToMeas(tick, place);
    const std::uint32_t bar = editor.MeasToTime({place.meas - 1, 0, 0});
    return tick - bar < seen.to - seen.from ? bar : tick;
}

int middleRow(const NoteTables& notes, const RollScale& scale, int track, std::uint8_t middleKey)
{
    const TickRange seen = scale.span();
    const NoteTables::Keys all = notes.keysOf(track);
    const int fitting = (scale.height() - RollScale::ruler) / scale.rowHeight();
    const auto middleOf = [&scale, fitting](const auto& hasNotes) {
        int first = -1;
        int last = -1;
        for (int row = 0; row < scale.rows(); ++row) {
            if (!hasNotes(scale.keyOfRow(row))) continue;
            if (first < 0) first = row;
            last = row;
        }
        return first < 0 ? -1 : std::max((first + last) / 2, last - (fitting - 1) / 2);
    };
    int row = middleOf(
        [&](std::uint8_t key) { return all[key] && notes.noteAt(track, seen.from, seen.to, key).has_value(); });
    if (row < 0) row = middleOf([&](std::uint8_t key) { return all[key]; });
    if (row < 0) row = scale.rowOfKey(middleKey);
    return row < 0 ? scale.rows() / 2 : row;
}

void turnWheel(RollScale& scale, QPoint at, QPoint angle, Qt::KeyboardModifiers keys)
{
    const double steps = (angle.y() != 0 ? angle.y() : angle.x()) / 120.0;
    if ((keys & Qt::ControlModifier) && (keys & Qt::ShiftModifier))
        scale.zoomRowsAt(at.y(), scale.rowHeight() + (steps > 0 ? 1 : -1));
    else if (keys & Qt::ControlModifier)
        scale.zoomAt(std::max(at.x(), RollScale::left), scale.zoom() * std::pow(zoomStep, -steps));
    else if (angle.x() != 0 || (keys & Qt::ShiftModifier))
        scale.setStart(tick::shifted(scale.start(), static_cast<std::int64_t>(-steps * turnAcross * scale.zoom())));
    else
        scale.setScroll(scale.scroll() - static_cast<int>(std::lround(steps * turnDown * scale.rowHeight())));
}

void stepTowards(RollScale& scale, const QRect& area, QPoint pointer)
{
    const auto beyond = [](int at, int low, int high, int most) {
        return std::clamp(at < low ? at - low : at > high ? at - high : 0, -most, most);
    };
    const int across = beyond(pointer.x(), area.left(), area.right(), mostAtEdge.x());
    const int down = beyond(pointer.y(), area.top(), area.bottom(), mostAtEdge.y());
    scale.setStart(tick::shifted(scale.start(), static_cast<std::int64_t>(across * scale.zoom())));
    scale.setScroll(scale.scroll() + down);
}

} // namespace tessaro::roll_scrolling
