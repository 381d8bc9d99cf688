// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace tessaro {

class SettingsStore;

/// A span of absolute ticks; the end is outside.
struct TickRange {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    bool operator==(const TickRange&) const = default;
};

/// Places of notes in a roll: time to the right of the keyboard, keys as rows below the ruler, the highest first.
/// Pixels are those of the interface, from the corner of the whole view. Time goes on for ever; rows end.
class RollScale {
public:
    static constexpr int left = 120;
    static constexpr int ruler = 22;
    static constexpr double leastZoom = 1;
    static constexpr double mostZoom = 16;
    static constexpr int leastRow = 8;
    static constexpr int mostRow = 16;
    static constexpr int keys = 128;

    RollScale();

    /// Pixels of the whole view; scrolling follows so that no space stays empty below the rows.
    void resize(int width, int height);
    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }

    // Time

    /// Ticks a pixel, 1 to 16.
    [[nodiscard]] double zoom() const { return m_zoom; }
    void setZoom(double ticksAPixel);
    /// The tick at the left margin.
    [[nodiscard]] std::uint32_t start() const { return m_start; }
    void setStart(std::uint32_t tick) { m_start = tick; }
    [[nodiscard]] std::uint32_t time(int x) const;
    /// The same also to the left of the margin, where it may be before the song's start: for drags.
    [[nodiscard]] std::int64_t rawTime(int x) const;
    /// The left margin for what lies before the start.
    [[nodiscard]] int x(std::uint32_t time) const;
    /// What is in sight.
    [[nodiscard]] TickRange span() const;
    /// The tick at x stays where it is.
    void zoomAt(int x, double ticksAPixel);
    /// Shows this span as wide as it goes.
    void showSpan(TickRange span);

    // Rows

    /// Which key each row has, from the top; as it comes, 127 to 0. Each key once at most.
    void setRows(std::vector<std::uint8_t> keysFromTop);
    [[nodiscard]] int rows() const { return static_cast<int>(m_keys.size()); }
    /// Pixels of a row, 8 to 16.
    [[nodiscard]] int rowHeight() const { return m_rowHeight; }
    void setRowHeight(int pixels);
    /// Pixels of rows above the ruler's lower edge.
    [[nodiscard]] int scroll() const { return m_scroll; }
    void setScroll(int pixels);
    [[nodiscard]] int mostScroll() const;
    /// The row at y, held to those that exist.
    [[nodiscard]] int row(int y) const;
    [[nodiscard]] std::uint8_t keyOfRow(int row) const { return m_keys[static_cast<std::size_t>(row)]; }
    /// -1 for a key without a row.
    [[nodiscard]] int rowOfKey(std::uint8_t key) const { return m_rows[key]; }
    [[nodiscard]] std::uint8_t key(int y) const { return keyOfRow(row(y)); }
    /// The upper edge of a row.
    [[nodiscard]] int yOfRow(int row) const { return ruler + row * m_rowHeight - m_scroll; }
    /// The upper edge of a key's row; far above the view for a key without one.
    [[nodiscard]] int y(std::uint8_t key) const;
    /// First and last row in sight.
    [[nodiscard]] std::pair<int, int> visibleRows() const;
    /// The row at y stays where it is.
    void zoomRowsAt(int y, int pixels);
    /// Scrolls as little as it takes to have the key in sight; to its middle when it was far off.
    void showKey(std::uint8_t key);

    /// `Piano` or `Drum` names the values.
    void load(const SettingsStore& store, const char* name);
    void save(SettingsStore& store, const char* name) const;

private:
    void clampScroll();

    double m_zoom = 4;
    std::uint32_t m_start = 0;
    int m_rowHeight = 12;
    int m_scroll = 0;
    int m_width = 0;
    int m_height = 0;
    std::vector<std::uint8_t> m_keys; ///< by row
    std::vector<int> m_rows;          ///< by key
};

} // namespace tessaro
