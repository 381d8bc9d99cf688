// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace tessaro {

class CEditor;
class SettingsStore;

/// Hears that the grid is another one.
class GridObserver {
public:
    virtual ~GridObserver() = default;
    virtual void onGrid() = 0;
};

/// The grid to which times of notes go: a note length by its index, one choice for all windows. An index is a row
/// (plain, dotted, triplets, ... fifteenths) of seven lengths from the whole note to the 64th. Times are absolute
/// ticks. Each measure has its own steps from its bar line on; the last one may reach over the next bar line. It tells
/// its observers, which it borrows, of every change. User interface thread.
class Grid {
public:
    static constexpr int lengths = 7; ///< of a row
    static constexpr int rows = 15;
    static constexpr int count = lengths * rows;

    /// Ticks of an index where the denominator is two to the power `den` and a beat takes `beatClock` ticks.
    [[nodiscard]] static std::uint32_t length(int index, std::uint32_t beatClock, std::uint8_t den);

    [[nodiscard]] int index() const { return m_index; }
    /// Held to 0 to count less 1.
    void setIndex(int index);
    [[nodiscard]] int row() const { return m_index / lengths; }
    /// The power of two that divides the whole note.
    [[nodiscard]] int exponent() const { return m_index % lengths; }
    /// Nothing snaps.
    [[nodiscard]] bool isFree() const { return m_free; }
    void setFree(bool on);
    /// So many lengths shorter in the same row, longer for less than 0; as far as there are any.
    void refine(int by);
    [[nodiscard]] bool canRefine(int by) const;

    void addObserver(GridObserver* observer) { m_observers.push_back(observer); }
    void removeObserver(const GridObserver* observer) { std::erase(m_observers, observer); }

    /// Ticks of a step in the measure at this time; the same when nothing snaps.
    [[nodiscard]] std::uint32_t step(const CEditor& editor, std::uint32_t time) const;
    /// The nearest line, at exactly half the earlier one; the time itself when nothing snaps.
    [[nodiscard]] std::uint32_t snap(const CEditor& editor, std::uint32_t time) const;
    /// The last line not past the time; the time itself when nothing snaps.
    [[nodiscard]] std::uint32_t cell(const CEditor& editor, std::uint32_t time) const;
    /// The line behind this one; the same where time ends.
    [[nodiscard]] std::uint32_t next(const CEditor& editor, std::uint32_t line) const;

    /// All four values together; if one is missing, all stay as they are.
    void load(const SettingsStore& store);
    void save(SettingsStore& store) const;

    bool operator==(const Grid& other) const { return m_index == other.m_index && m_free == other.m_free; }

private:
    struct Cell {
        std::uint32_t top;  ///< of the step that holds the time
        std::uint32_t step; ///< ticks, at least 1
    };
    [[nodiscard]] Cell cellAt(const CEditor& editor, std::uint32_t time) const;
    void set(int index, bool free);

    int m_index = 4; // sixteenths
    bool m_free = false;
    std::vector<GridObserver*> m_observers;
};

} // namespace tessaro
