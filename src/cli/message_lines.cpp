// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/message_lines.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace tessaro::cli {

namespace {
constexpr std::size_t bufferSize = 1U << 16U;
}

void appendHex(std::string& line, std::span<const std::uint8_t> bytes)
{
    static constexpr std::string_view digit = "0123456789abcdef";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0) line += ' ';
        line += digit[bytes[i] >> 4U];
        line += digit[bytes[i] & 0x0FU];
    }
}

void MessageLines::sent(const SentMessage& message) noexcept
{
    const Nanos time = message.due > m_start ? message.due - m_start : Nanos::zero();
    const auto micros = static_cast<std::uint64_t>((time + std::chrono::nanoseconds(500)).count()) / 1000;
    number(micros / 1000);
    const std::uint64_t part = micros % 1000;
    m_buffer += '.';
    for (const std::uint64_t unit : {100U, 10U, 1U}) m_buffer += static_cast<char>('0' + part / unit % 10);
    m_buffer += ' ';
    if (message.songTick)
        number(*message.songTick);
    else
        m_buffer += '-';
    m_buffer += ' ';
    number(message.port);
    m_buffer += ' ';
    appendHex(m_buffer, message.bytes);
    m_buffer += '\n';
    if (m_buffer.size() >= bufferSize) flush();
}

void MessageLines::flush() noexcept
{
    std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_out);
    m_buffer.clear();
}

void MessageLines::number(std::uint64_t value)
{
    char room[24];
    m_buffer.append(room, std::to_chars(room, room + sizeof room, value).ptr);
}

} // namespace tessaro::cli
