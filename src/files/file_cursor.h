// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

namespace tessaro {

/// A reading place in the bytes of a file, counted from the file's start. It borrows the bytes. A read that
/// would leave the file returns false; the place is then wherever the last whole byte was read.
class FileCursor {
public:
    FileCursor(const std::uint8_t* bytes, std::uint32_t length) noexcept : m_bytes(bytes), m_length(length) {}

    [[nodiscard]] std::uint32_t pos() const noexcept { return m_pos; }
    [[nodiscard]] std::uint32_t left() const noexcept { return m_length - m_pos; }
    [[nodiscard]] const std::uint8_t* bytes() const noexcept { return m_bytes; }
    /// `pos` lies within the file or at its end.
    void moveTo(std::uint32_t pos) noexcept { m_pos = pos; }
    /// Only behind a byte that was read.
    void stepBack() noexcept { --m_pos; }

    bool skip(std::uint32_t count) noexcept
    {
        if (count > left()) return false;
        m_pos += count;
        return true;
    }

    bool readByte(std::uint8_t& value) noexcept
    {
        if (m_pos == m_length) return false;
        value = m_bytes[m_pos++];
        return true;
    }

    /// Two bytes, most significant first.
    bool readShort(std::uint16_t& value) noexcept
    {
        if (left() < 2) return false;
        value = static_cast<std::uint16_t>(m_bytes[m_pos] << 8U | m_bytes[m_pos + 1]);
        m_pos += 2;
        return true;
    }

    /// Four bytes, most significant first.
    bool ReadLen(std::uint32_t& value) noexcept
    {
        std::uint16_t high = 0;
        std::uint16_t low = 0;
        if (left() < 4 || !readShort(high) || !readShort(low)) return false;
        value = std::uint32_t{high} << 16U | low;
        return true;
    }

    /// Seven bits a byte, most significant first, up to a byte without bit 7. Bits above 32 are lost.
    bool ReadVarLenQnt(std::uint32_t& value) noexcept
    {
        value = 0;
        std::uint8_t byte = 0;
        do {
            if (!readByte(byte)) return false;
            value = value << 7U | (byte & 0x7FU);
        } while (byte & 0x80U);
        return true;
    }

    /// Whether the four characters of `id` stand here; steps behind them if so.
    bool readId(const char* id) noexcept
    {
        if (left() < 4 || std::memcmp(m_bytes + m_pos, id, 4) != 0) return false;
        m_pos += 4;
        return true;
    }

private:
    const std::uint8_t* m_bytes;
    std::uint32_t m_length;
    std::uint32_t m_pos = 0;
};

} // namespace tessaro
