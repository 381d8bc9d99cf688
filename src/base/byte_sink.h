// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

/// Takes the bytes of a file as they are made, first to last.
class TESSARO_API ByteSink {
public:
    virtual ~ByteSink() = default;
    /// False when the bytes could not be taken; nothing written afterwards counts.
    virtual bool write(std::span<const std::uint8_t> bytes) = 0;
};

/// Appends to a vector that the caller owns. Raises what the allocator raises.
class TESSARO_API VectorSink final : public ByteSink {
public:
    explicit VectorSink(std::vector<std::uint8_t>& out) noexcept : m_out(out) {}
    bool write(std::span<const std::uint8_t> bytes) override
    {
        m_out.insert(m_out.end(), bytes.begin(), bytes.end());
        return true;
    }

private:
    std::vector<std::uint8_t>& m_out;
};

} // namespace tessaro
