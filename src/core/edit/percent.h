// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/editor.h"

#include <cstddef>
#include <cstdint>

namespace tessaro {

/// The progress bar over so many steps, open as long as it lives; it moves with each hundredth. Main thread only.
class Percent {
public:
    Percent(CEditor& editor, std::size_t steps) : m_editor(editor), m_steps(steps) { m_editor.SetPrgDlg(); }
    ~Percent() { m_editor.EndPrgDlg(); }
    Percent(const Percent&) = delete;
    Percent& operator=(const Percent&) = delete;

    void step()
    {
        const auto percent = static_cast<std::uint32_t>(std::uint64_t{++m_done} * 100 / m_steps);
        if (percent != m_shown) m_editor.SetPrgDlgPosSpd(m_shown = percent);
    }

private:
    CEditor& m_editor;
    const std::size_t m_steps;
    std::size_t m_done = 0;
    std::uint32_t m_shown = 0;
};

} // namespace tessaro
