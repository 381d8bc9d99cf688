// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <string_view>

namespace tessaro {

/// The progress bar of long work. Main thread only. The caller has already thinned the positions; the
/// receiver draws at once and keeps the window alive.
class TESSARO_API ProgressPort {
public:
    virtual ~ProgressPort();
    virtual void begin() = 0;
    virtual void range(std::uint32_t low, std::uint32_t high) = 0;
    /// Lies within the range.
    virtual void pos(std::uint32_t position) = 0;
    /// UTF-8.
    virtual void text(std::string_view line) = 0;
    virtual void end() = 0;
};

class TESSARO_API NullProgress final : public ProgressPort {
public:
    void begin() override {}
    void range(std::uint32_t, std::uint32_t) override {}
    void pos(std::uint32_t) override {}
    void text(std::string_view) override {}
    void end() override {}
};

} // namespace tessaro
