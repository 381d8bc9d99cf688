// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "core/ports/progress.h"

#include <cstdint>
#include <string_view>

namespace tessaro {

/// The state of the progress bar: it draws only while it is open and the position lies within its range.
/// Main thread only.
class TESSARO_API ProgressBar {
public:
    explicit ProgressBar(ProgressPort& port) : m_port(port) {}

    void open(std::uint32_t low, std::uint32_t high);
    void range(std::uint32_t low, std::uint32_t high);
    void pos(std::uint32_t position);
    void text(std::string_view line);
    void close();
    [[nodiscard]] bool isOpen() const noexcept { return m_open; }
    /// Bytes done of `total` as a percentage.
    void bytes(std::uint32_t done, std::uint32_t total);

private:
    ProgressPort& m_port;
    std::uint32_t m_low = 0;
    std::uint32_t m_high = 0;
    bool m_open = false;
};

} // namespace tessaro
