// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <optional>
#include <utility>

namespace tessaro {

/// One press of the mouse on the ruler: a click goes to the place, a drag marks a span. Pixels.
class RulerGesture {
public:
    static constexpr int dragDistance = 6;

    void press(int x)
    {
        m_start = m_now = x;
        m_dragging = false;
        m_down = true;
    }
    void move(int x)
    {
        if (!m_down) return;
        m_now = x;
        m_dragging = m_dragging || std::abs(x - m_start) >= dragDistance;
    }
    void release() { m_down = false; }
    void cancel() { m_down = m_dragging = false; }

    /// The place clicked, once the button is up and nothing was dragged.
    [[nodiscard]] std::optional<int> click() const { return m_dragging ? std::nullopt : std::optional(m_start); }
    /// The span dragged over, left end first, while dragging and after.
    [[nodiscard]] std::optional<std::pair<int, int>> span() const
    {
        if (!m_dragging) return std::nullopt;
        return m_start < m_now ? std::pair(m_start, m_now) : std::pair(m_now, m_start);
    }
    [[nodiscard]] bool down() const { return m_down; }

private:
    int m_start = 0;
    int m_now = 0;
    bool m_down = false;
    bool m_dragging = false;
};

} // namespace tessaro
