// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/model/records.h"

#include <cstdint>
#include <functional>

namespace tessaro {

class CEditor;

/// Ticks from line to line of a grid in a measure, or of a note length; 0 where there is none.
using GridLength = std::function<std::uint32_t(const _EDT_MEASINFO&)>;

/// The lines of a grid over the song: from each bar line on by the length that its measure gives, and the next bar
/// line. With swing every second line comes later, with 100 by a third of the length.
class TESSARO_API GridLines {
public:
    /// `swing` is 0 to 100. The song must not change while the lines are in use.
    GridLines(const CEditor& editor, GridLength length, int swing = 0);

    /// The nearest line; at exactly half the earlier one. Without a length the time itself.
    [[nodiscard]] std::uint32_t nearest(std::uint32_t time);
    [[nodiscard]] std::uint32_t atOrAfter(std::uint32_t time);
    /// The length in force at a time.
    [[nodiscard]] std::uint32_t length(std::uint32_t time);

private:
    void enter(std::uint32_t time);
    [[nodiscard]] std::uint32_t line(std::uint32_t number) const noexcept;

    const CEditor& m_editor;
    GridLength m_lengthOf;
    std::uint32_t m_swing;
    // The measure of the last question.
    std::uint32_t m_top = 0;
    std::uint32_t m_end = 0;
    std::uint32_t m_length = 0;
};

} // namespace tessaro
