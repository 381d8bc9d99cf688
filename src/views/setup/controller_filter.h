// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace tessaro {

/// Which controllers a path drops, behind the one box that stands for all of them: 0 none, 1 all, 2 as the switches
/// say.
class ControllerFilter {
public:
    using Switches = std::array<std::uint8_t, 128>;

    ControllerFilter(int box, const Switches& drop) : m_drop(drop), m_box(box == 0 || box == 1 ? box : 2) {}

    [[nodiscard]] int box() const { return m_box; }
    [[nodiscard]] const Switches& switches() const { return m_drop; }
    /// A click on the box, which decides for all.
    void click()
    {
        m_box = m_box == 0 ? 1 : 0;
        m_drop.fill(static_cast<std::uint8_t>(m_box));
    }
    /// After switches have been set one by one, the box tells what came of it.
    void set(const Switches& drop)
    {
        m_drop = drop;
        const bool allEqual = std::ranges::count(m_drop, m_drop[0]) == static_cast<std::ptrdiff_t>(m_drop.size());
        m_box = allEqual ? m_drop[0] : 2;
    }

private:
    Switches m_drop;
    int m_box;
};

} // namespace tessaro
