// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/grid.h"

#include "core/edit/editor.h"
#include "core/model/tick.h"
#include "core/ports/settings_store.h"

#include <algorithm>

namespace tessaro {
namespace {

constexpr const char* section = "View Condition";
constexpr const char* noteKey = "Common Grid Note";
constexpr const char* halfKey = "Common Grid Half";
constexpr const char* tupletKey = "Common Grid Tuplet";
constexpr const char* freeKey = "Common Grid Free";
constexpr int absent = -1;
constexpr int dotted = 1; // the row

/// What a row makes of a length: so many times it, divided by so many.
struct Ratio {
    std::uint32_t times;
    std::uint32_t by;
};

constexpr Ratio ratios[Grid::rows] = {{1, 1}, {3, 1},  {2, 3},  {4, 4},  {4, 5},  {4, 6},  {4, 7}, {8, 8},
                                      {8, 9}, {8, 10}, {8, 11}, {8, 12}, {8, 13}, {8, 14}, {8, 15}};

} // namespace

std::uint32_t Grid::length(int index, std::uint32_t beatClock, std::uint8_t den)
{
    const int row = std::min(index / lengths, rows - 1);
    // Three times the half of a length is the dotted one.
    const int exponent = index - row * lengths + (row == dotted ? 1 : 0);
    const Ratio ratio = ratios[row];
    if (den >= exponent) return ratio.times * (beatClock << (den - exponent)) / ratio.by;
    return exponent - den < 32 ? ratio.times * (beatClock >> (exponent - den)) / ratio.by : 0;
}

void Grid::set(int index, bool free)
{
    index = std::clamp(index, 0, count - 1);
    if (index == m_index && free == m_free) return;
    m_index = index;
    m_free = free;
    for (GridObserver* observer : m_observers) observer->onGrid();
}

void Grid::setIndex(int index) { set(index, m_free); }

void Grid::setFree(bool on) { set(m_index, on); }

bool Grid::canRefine(int by) const { return exponent() + by >= 0 && exponent() + by < lengths; }

void Grid::refine(int by) { set(row() * lengths + std::clamp(exponent() + by, 0, lengths - 1), m_free); }

Grid::Cell Grid::cellAt(const CEditor& editor, std::uint32_t time) const
{
    _EDT_MEAS at;
    editor.TimeToMeas(time, at);
    _EDT_MEASINFO info;
    editor.GetMeasInfo(at.meas, info);
    const std::uint32_t line = editor.MeasToTime({at.meas - 1, 0, 0});
    const std::uint32_t step = std::max(length(m_index, info.beatClock, info.den), 1U);
    return {line + (time - line) / step * step, step};
}

std::uint32_t Grid::step(const CEditor& editor, std::uint32_t time) const { return cellAt(editor, time).step; }

std::uint32_t Grid::snap(const CEditor& editor, std::uint32_t time) const
{
    if (m_free) return time;
    const Cell cell = cellAt(editor, time);
    return time - cell.top > cell.step / 2 ? tick::later(cell.top, cell.step) : cell.top;
}

std::uint32_t Grid::cell(const CEditor& editor, std::uint32_t time) const
{
    return m_free ? time : cellAt(editor, time).top;
}

std::uint32_t Grid::next(const CEditor& editor, std::uint32_t line) const
{
    return std::max(cell(editor, tick::later(line, step(editor, line))), line);
}

void Grid::load(const SettingsStore& store)
{
    for (const char* key : {noteKey, halfKey, tupletKey, freeKey})
        if (store.getInt(section, key, absent) == absent) return;
    set(store.getInt(section, noteKey, absent), store.getInt(section, freeKey, absent) != 0);
}

void Grid::save(SettingsStore& store) const
{
    store.setInt(section, noteKey, m_index);
    store.setInt(section, halfKey, row() == dotted);
    store.setInt(section, tupletKey, row() > dotted ? row() - dotted : 0);
    store.setInt(section, freeKey, m_free);
}

} // namespace tessaro
