// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tessaro::cli {

/// A progress bar on the last line of a terminal; nothing where standard error is not one.
class ProgressLine {
public:
    explicit ProgressLine(std::string label);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// 0 to 1; draws only when the bar looks different.
    void show(double done);

private:
    std::string m_label;
    bool m_terminal;
    int m_percent = -1;
};

} // namespace tessaro::cli
