// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/bytes.h"

#include <cassert>

namespace tessaro {

void ByteWriter::u8(std::uint32_t value) { m_out.push_back(static_cast<std::uint8_t>(value)); }

void ByteWriter::u16be(std::uint32_t value)
{
    u8(value >> 8);
    u8(value);
}

void ByteWriter::u24be(std::uint32_t value)
{
    u8(value >> 16);
    u16be(value);
}

void ByteWriter::u32be(std::uint32_t value)
{
    u16be(value >> 16);
    u16be(value);
}

void ByteWriter::vlq(std::uint32_t value)
{
    value &= 0x0FFF'FFFF;
    unsigned shift = 21;
    while (shift > 0 && value >> shift == 0) shift -= 7;
    for (; shift > 0; shift -= 7) u8((value >> shift & 0x7F) | 0x80);
    u8(value & 0x7F);
}

void ByteWriter::bytes(std::span<const std::uint8_t> data) { m_out.insert(m_out.end(), data.begin(), data.end()); }

void ByteWriter::chars(std::string_view text) { m_out.insert(m_out.end(), text.begin(), text.end()); }

void ByteWriter::patchU32(std::size_t position, std::uint32_t value) noexcept
{
    assert(m_out.size() >= 4 && position <= m_out.size() - 4);
    for (std::size_t i = 4; i-- > 0; value >>= 8) m_out[position + i] = static_cast<std::uint8_t>(value);
}

std::size_t ByteWriter::beginLength()
{
    const std::size_t position = m_out.size();
    u32be(0);
    return position;
}

void ByteWriter::endLength(std::size_t position) noexcept
{
    patchU32(position, static_cast<std::uint32_t>(m_out.size() - position - 4));
}

} // namespace tessaro
