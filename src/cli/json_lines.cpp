// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/json_lines.h"

#include "base/text.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cstddef>

namespace tessaro::cli {

namespace {
constexpr std::size_t bufferSize = 1U << 16U;
}

JsonLines& JsonLines::begin()
{
    m_buffer += '{';
    m_first = true;
    ++m_depth;
    return *this;
}

JsonLines& JsonLines::begin(std::string_view name)
{
    key(name);
    return begin();
}

JsonLines& JsonLines::end()
{
    m_buffer += '}';
    m_first = false;
    if (--m_depth > 0) return *this;
    m_buffer += '\n';
    if (m_buffer.size() >= bufferSize) flush();
    return *this;
}

JsonLines& JsonLines::number(std::string_view name, std::int64_t value)
{
    key(name);
    digits(value);
    return *this;
}

JsonLines& JsonLines::text(std::string_view name, std::string_view bytes)
{
    key(name);
    m_buffer += nlohmann::json(toUtf8(bytes)).dump();
    return *this;
}

JsonLines& JsonLines::hex(std::string_view name, std::span<const std::uint8_t> bytes)
{
    static constexpr std::string_view digit = "0123456789abcdef";
    key(name);
    m_buffer += '"';
    for (const std::uint8_t byte : bytes) {
        m_buffer += digit[byte >> 4U];
        m_buffer += digit[byte & 0x0FU];
    }
    m_buffer += '"';
    return *this;
}

JsonLines& JsonLines::numbers(std::string_view name, std::span<const std::uint8_t> values)
{
    key(name);
    char separator = '[';
    for (const std::uint8_t value : values) {
        m_buffer += separator;
        digits(value);
        separator = ',';
    }
    m_buffer += ']';
    return *this;
}

void JsonLines::flush()
{
    std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_out);
    m_buffer.clear();
}

void JsonLines::key(std::string_view name)
{
    if (!m_first) m_buffer += ',';
    m_first = false;
    m_buffer += '"';
    m_buffer += name;
    m_buffer += "\":";
}

void JsonLines::digits(std::int64_t value)
{
    char room[24];
    const auto done = std::to_chars(room, room + sizeof room, value);
    m_buffer.append(room, done.ptr);
}

} // namespace tessaro::cli
