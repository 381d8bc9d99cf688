// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tessaro {

/// A cursor over borrowed bytes, numbers most significant byte first. A read, skip or seek that goes
/// beyond the bytes fails; from then on ok() is false, every read gives 0 or nothing, the cursor stays,
/// and atEnd() is true so that loops end. So a whole group of reads can be tested once, at its end.
class ByteReader {
public:
    using Bytes = std::span<const std::uint8_t>;

    ByteReader() = default;
    explicit ByteReader(Bytes bytes) noexcept : m_bytes(bytes) {}

    [[nodiscard]] bool ok() const noexcept { return !m_failed; }
    [[nodiscard]] bool atEnd() const noexcept { return m_failed || m_position == m_bytes.size(); }
    [[nodiscard]] std::size_t position() const noexcept { return m_position; }
    [[nodiscard]] std::size_t size() const noexcept { return m_bytes.size(); }
    [[nodiscard]] std::size_t left() const noexcept { return m_failed ? 0 : m_bytes.size() - m_position; }

    std::uint8_t u8() noexcept { return take(1) ? m_bytes[m_position - 1] : std::uint8_t{0}; }
    std::uint16_t u16be() noexcept { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u24be() noexcept { return number(3); }
    std::uint32_t u32be() noexcept { return number(4); }

    /// A variable-length quantity: seven bits a byte, the last byte without bit 7. As many bytes as
    /// come; what exceeds 32 bits drops out at the top.
    std::uint32_t vlq() noexcept
    {
        std::uint32_t value = 0;
        for (;;) {
            const std::uint8_t byte = u8();
            value = value << 7 | (byte & 0x7FU);
            if (!(byte & 0x80)) return m_failed ? 0 : value;
        }
    }

    /// The next `count` bytes in place; none of them when there are fewer.
    Bytes bytes(std::size_t count) noexcept
    {
        return take(count) ? m_bytes.subspan(m_position - count, count) : Bytes{};
    }
    std::string_view chars(std::size_t count) noexcept
    {
        const Bytes b = bytes(count);
        return {reinterpret_cast<const char*>(b.data()), b.size()};
    }

    void skip(std::size_t count) noexcept { take(count); }

    /// The end itself is a place to go to. A reader that has failed stays failed.
    void seek(std::size_t position) noexcept
    {
        if (position > m_bytes.size()) m_failed = true;
        if (!m_failed) m_position = position;
    }

private:
    bool take(std::size_t count) noexcept
    {
        if (m_failed || count > m_bytes.size() - m_position) {
            m_failed = true;
            return false;
        }
        m_position += count;
        return true;
    }

    std::uint32_t number(std::size_t count) noexcept
    {
        std::uint32_t value = 0;
        for (const std::uint8_t byte : bytes(count)) value = value << 8 | byte;
        return value;
    }

    Bytes m_bytes;
    std::size_t m_position = 0;
    bool m_failed = false;
};

/// Appends to a vector that the caller owns, numbers most significant byte first. Raises what the
/// allocator raises.
class TESSARO_API ByteWriter {
public:
    explicit ByteWriter(std::vector<std::uint8_t>& out) noexcept : m_out(out) {}

    [[nodiscard]] std::size_t position() const noexcept { return m_out.size(); }

    void u8(std::uint32_t value);
    void u16be(std::uint32_t value);
    void u24be(std::uint32_t value);
    void u32be(std::uint32_t value);
    /// The lowest 28 bits as a variable-length quantity, in the fewest bytes.
    void vlq(std::uint32_t value);
    void bytes(std::span<const std::uint8_t> data);
    void chars(std::string_view text);

    /// Overwrites four bytes that were written before.
    void patchU32(std::size_t position, std::uint32_t value) noexcept;
    /// Reserves four bytes for a length and returns their position, for endLength.
    [[nodiscard]] std::size_t beginLength();
    /// Fills in the count of bytes written behind the reserved four.
    void endLength(std::size_t position) noexcept;

private:
    std::vector<std::uint8_t>& m_out;
};

} // namespace tessaro
