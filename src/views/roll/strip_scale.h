// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/roll/strip_kind.h"

namespace tessaro {

/// Places of values in a strip of so many pixels: the most at its upper edge, the least at its lower.
class StripScale {
public:
    static constexpr int margin = 4; ///< above and below

    StripScale() = default;
    StripScale(StripKind kind, int top, int height) : m_kind(kind), m_top(top), m_height(height) {}

    [[nodiscard]] const StripKind& kind() const { return m_kind; }
    [[nodiscard]] int top() const { return m_top; }
    [[nodiscard]] int bottom() const { return m_top + m_height; }
    [[nodiscard]] int y(int value) const;
    /// The nearest value, held to those of the kind.
    [[nodiscard]] int value(int y) const;

private:
    [[nodiscard]] int room() const { return m_height > 2 * margin + 1 ? m_height - 2 * margin - 1 : 1; }

    StripKind m_kind;
    int m_top = 0;
    int m_height = 1;
};

} // namespace tessaro
