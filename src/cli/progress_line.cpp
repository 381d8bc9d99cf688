// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/progress_line.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace tessaro::cli {

namespace {
constexpr int width = 40;
}

ProgressLine::ProgressLine(std::string label) : m_label(std::move(label)), m_terminal(isatty(STDERR_FILENO) != 0) {}

ProgressLine::~ProgressLine()
{
    if (m_terminal && m_percent >= 0) std::fputc('\n', stderr);
}

void ProgressLine::show(double done)
{
    const int percent = static_cast<int>(std::clamp(done, 0.0, 1.0) * 100);
    if (!m_terminal || percent == m_percent) return;
    m_percent = percent;
    const std::string bar(static_cast<std::size_t>(width * percent / 100), '#');
    std::fprintf(stderr, "\r%s [%-*s] %3d %%", m_label.c_str(), width, bar.c_str(), percent);
}

} // namespace tessaro::cli
