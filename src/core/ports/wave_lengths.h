// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tessaro {

/// Knows how long sound files last. Main thread only.
class TESSARO_API WaveLengths {
public:
    virtual ~WaveLengths();
    /// Duration in milliseconds, read from the file's header; none when the file cannot be measured.
    [[nodiscard]] virtual std::optional<std::uint32_t> milliseconds(const std::string& fileName) = 0;
};

class TESSARO_API NullWaveLengths final : public WaveLengths {
public:
    std::optional<std::uint32_t> milliseconds(const std::string&) override { return std::nullopt; }
};

} // namespace tessaro
