// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/plain_song.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace tessaro::test {

/// Builds the bytes of small files by hand.
class SmfBytes {
public:
    SmfBytes& id(std::string_view text)
    {
        for (const char c : text) m_bytes.push_back(static_cast<std::uint8_t>(c));
        return *this;
    }
    SmfBytes& number(std::uint32_t value, int width)
    {
        for (int shift = (width - 1) * 8; shift >= 0; shift -= 8)
            m_bytes.push_back(static_cast<std::uint8_t>(value >> shift));
        return *this;
    }
    SmfBytes& raw(const Bytes& bytes)
    {
        for (const std::uint8_t byte : bytes) m_bytes.push_back(byte);
        return *this;
    }
    SmfBytes& header(std::uint32_t format, std::uint32_t numTrk, std::uint32_t division = 480)
    {
        return id("MThd").number(6, 4).number(format, 2).number(numTrk, 2).number(division, 2);
    }
    SmfBytes& chunk(const Bytes& events, std::string_view name = "MTrk")
    {
        return id(name).number(static_cast<std::uint32_t>(events.size()), 4).raw(events);
    }
    [[nodiscard]] const Bytes& bytes() const { return m_bytes; }

    /// A variable-length number; the value fits in 28 bits.
    static Bytes varLen(std::uint32_t value)
    {
        Bytes bytes{static_cast<std::uint8_t>(value & 0x7FU)};
        while (value >>= 7U) bytes.insert(bytes.begin(), static_cast<std::uint8_t>(value | 0x80U));
        return bytes;
    }

private:
    Bytes m_bytes;
};

inline Bytes join(std::initializer_list<Bytes> parts)
{
    SmfBytes all;
    for (const Bytes& part : parts) all.raw(part);
    return all.bytes();
}

inline Bytes smf0(const Bytes& events, std::uint32_t division = 480)
{
    return SmfBytes().header(0, 1, division).chunk(events).bytes();
}

inline Bytes smf1(std::initializer_list<Bytes> chunks, std::uint32_t division = 480)
{
    SmfBytes file;
    file.header(1, static_cast<std::uint32_t>(chunks.size()), division);
    for (const Bytes& chunk : chunks) file.chunk(chunk);
    return file.bytes();
}

} // namespace tessaro::test
