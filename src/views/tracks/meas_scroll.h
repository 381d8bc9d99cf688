// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro {

/// The horizontal scroll bar of the track window, in measures: its range goes from 0 to the number of measures of the
/// song. Lines and pages past the end make it longer, up to 9999 measures, until another song comes. Each step answers
/// the new position.
class MeasScroll {
public:
    static constexpr int most = 9999;

    /// Another song of so many measures: the range is theirs.
    void reset(int measures);
    /// The song has so many measures now.
    void setSong(int measures);

    [[nodiscard]] int range() const { return m_song > m_reached ? m_song : m_reached; }
    [[nodiscard]] int at() const { return m_at; }
    int lines(int count) { return step(count); }
    /// `measures` is what the window shows.
    int pages(int count, int measures) { return step(count * (measures < 1 ? 1 : measures)); }
    /// Inside the range.
    int thumb(int measure);
    /// Where the view has gone by other ways.
    void follow(int measure) { step(measure - m_at); }

private:
    int step(int measures);

    int m_song = 0;    ///< measures
    int m_reached = 0; ///< the furthest that the bar has been
    int m_at = 0;
};

} // namespace tessaro
